// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <string>
#include <vector>

class Button;
class SelectableText;
class TextLabel;

/// A text of any length to read and to select from. One page of it is laid out; where there are more, a line below says
/// which one shows and turns the pages.
class PagedText : public QWidget {
    Q_OBJECT

public:
    /// `key` begins the object names of what takes the focus.
    PagedText(const QString& name, const QString& key, std::string text, QWidget* parent = nullptr);

    [[nodiscard]] std::size_t pageCount() const noexcept { return m_pages.size(); }
    /// One line of text: what it takes beyond follows from its width.
    [[nodiscard]] QSize minimumSizeHint() const override;

signals:
    /// Another page shows, which may be higher.
    void turned();

private:
    void addPager(const QString& key);
    void turnTo(std::size_t page);
    void showPage();

    std::string m_text;
    std::vector<std::size_t> m_pages;  // where each begins
    std::size_t m_page = 0;
    SelectableText* m_shown;
    TextLabel* m_place = nullptr;  // none of these where there is one page alone
    std::vector<Button*> m_back;
    std::vector<Button*> m_forth;
};
