// SPDX-License-Identifier: MIT
#include "app/ui/components/SelectableText.h"

#include "app/ui/Theme.h"

#include <QKeyEvent>
#include <QWheelEvent>

#include <cmath>

namespace {

constexpr int usualWidth = 300;

}  // namespace

SelectableText::SelectableText(const QString& name, const QString& text, QWidget* parent) : QTextEdit(parent) {
    setAccessibleName(name);
    setFrameShape(QFrame::NoFrame);
    setFont(BrandFont::bodyText());
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setTabChangesFocus(true);
    setUndoRedoEnabled(false);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    document()->setDocumentMargin(0);
    QPalette colours = palette();
    colours.setColor(QPalette::Base, Qt::transparent);
    colours.setColor(QPalette::Text, Palette::text);
    setPalette(colours);
    viewport()->setAutoFillBackground(false);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    setPlainText(text);
}

int SelectableText::heightForWidth(int width) const {
    const double shown = document()->textWidth();
    document()->setTextWidth(width);
    const int height = static_cast<int>(std::ceil(document()->size().height()));
    document()->setTextWidth(shown);
    return height;
}

QSize SelectableText::sizeHint() const {
    return {usualWidth, heightForWidth(usualWidth)};
}

QSize SelectableText::minimumSizeHint() const {
    return {0, fontMetrics().height()};
}

// What is around it scrolls.
void SelectableText::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

void SelectableText::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown)
        event->ignore();
    else
        QTextEdit::keyPressEvent(event);
}
