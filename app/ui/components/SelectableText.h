// SPDX-License-Identifier: MIT
#pragma once

#include <QTextEdit>

#include <functional>
#include <map>

/// A text to read and to select from, as high as it takes at its width. It does not scroll by itself.
class SelectableText : public QTextEdit {
    Q_OBJECT

public:
    SelectableText(const QString& name, const QString& text, QWidget* parent = nullptr);

    /// Shows another text in its place.
    void showText(const QString& text);
    /// Makes what is shown the part of a longer text, which is copied when all of the part is.
    void setWholeText(std::function<QString()> wholeText);

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    [[nodiscard]] QMimeData* createMimeDataFromSelection() const override;
    void wheelEvent(QWheelEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    std::function<QString()> m_wholeText;  // none where all of it shows
    mutable std::map<int, int> m_heights;  // for widths that were asked for
    mutable int m_lastWidth = 300;
};
