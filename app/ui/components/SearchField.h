// SPDX-License-Identifier: MIT
#pragma once

#include "app/ui/components/TextField.h"

class IconButton;

/// A field with a magnifying glass before its text, and a cross behind it that empties it; Escape empties it too. What
/// is dragged from elsewhere in this program is not dropped here: rows carry their ids, and those are never searched
/// for.
class SearchField : public TextField {
    Q_OBJECT

public:
    explicit SearchField(const QString& placeholder, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

signals:
    /// The user is done with searching: the text is empty.
    void finished();
    /// The user wants to go to what was found: to the first of it, or to wherever they were in it.
    void firstResultWanted();
    void resultsWanted();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;

private:
    IconButton* m_clear;
};
