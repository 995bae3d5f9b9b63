// SPDX-License-Identifier: MIT
#include "app/ui/components/SelectableText.h"

#include "app/ui/components/LongText.h"
#include "app/ui/theme/Theme.h"

#include <QKeyEvent>
#include <QMimeData>
#include <QWheelEvent>

#include <cmath>

namespace {

constexpr std::size_t mostHeights = 8;

}  // namespace

SelectableText::SelectableText(const QString& name, const QString& text, QWidget* parent) : QTextEdit(parent) {
    setAccessibleName(name);
    setFrameShape(QFrame::NoFrame);
    setFont(BrandFont::bodyText());
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setTabChangesFocus(true);
    setUndoRedoEnabled(false);
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
    ensurePolished();  // a style that comes later has the whole text laid out once more
    showText(text);
}

void SelectableText::showText(const QString& text) {
    m_heights.clear();
    setWordWrapMode(LongText::wrapMode(text));
    setPlainText(text);
    updateGeometry();
}

// A long text takes its time to be laid out, and layouts ask many times over for the same few widths.
int SelectableText::heightForWidth(int width) const {
    if (const auto known = m_heights.find(width); known != m_heights.end())
        return known->second;
    document()->setTextWidth(width);
    const int height = static_cast<int>(std::ceil(document()->size().height()));
    if (m_heights.size() == mostHeights)
        m_heights.clear();
    m_heights.emplace(width, height);
    m_lastWidth = width;
    return height;
}

// The height for that width is asked for too, so it is one that is known.
QSize SelectableText::sizeHint() const {
    return {m_lastWidth, heightForWidth(m_lastWidth)};
}

QSize SelectableText::minimumSizeHint() const {
    return {0, fontMetrics().height()};
}

void SelectableText::setWholeText(std::function<QString()> wholeText) {
    m_wholeText = std::move(wholeText);
}

/// Who has selected all of a text that goes on elsewhere means all of it.
QMimeData* SelectableText::createMimeDataFromSelection() const {
    const auto selection = textCursor();
    if (!m_wholeText || selection.selectionEnd() - selection.selectionStart() < document()->characterCount() - 1)
        return QTextEdit::createMimeDataFromSelection();
    auto* const data = new QMimeData;
    data->setText(m_wholeText());
    return data;
}

// What is around it scrolls.
void SelectableText::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

/// What was measured for another width is laid out for the shown one again.
void SelectableText::paintEvent(QPaintEvent* event) {
    if (document()->textWidth() != viewport()->width())
        document()->setTextWidth(viewport()->width());
    QTextEdit::paintEvent(event);
}

void SelectableText::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown)
        event->ignore();
    else
        QTextEdit::keyPressEvent(event);
}
