// SPDX-License-Identifier: MIT
#include "app/ui/components/TextArea.h"

#include "app/ui/components/LongText.h"
#include "app/ui/theme/Painting.h"
#include "app/ui/theme/Theme.h"

#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>

namespace {

constexpr int textHeight = 5 * Metric::controlHeightSmall;
constexpr double disabledOpacity = 0.4;

}  // namespace

TextArea::TextArea(const QString& name, QWidget* parent) : QPlainTextEdit(parent) {
    setAccessibleName(name);
    setTabChangesFocus(true);
    setFrameShape(QFrame::NoFrame);
    setFont(BrandFont::bodyText());
    viewport()->setAutoFillBackground(false);
    setViewportMargins(1, Metric::hairline, 1, Metric::hairline);
    document()->setDocumentMargin(Metric::s);
    QPalette colours = palette();
    colours.setColor(QPalette::Base, Qt::transparent);
    colours.setColor(QPalette::Text, Palette::text);
    colours.setColor(QPalette::PlaceholderText, Palette::textMuted);
    setPalette(colours);
}

void TextArea::setWholeText(const QString& text) {
    m_givenText = text;
    setKept(LongText::isTooLongForArea(text));
    setPlainText(m_isKept ? LongText::beginning(text) : text);
    document()->setModified(false);
}

void TextArea::setKept(bool isKept) {
    m_isKept = isKept;
    setReadOnly(isKept);
    if (isKept)
        setTextInteractionFlags(textInteractionFlags() | Qt::TextSelectableByKeyboard);
    setToolTip(isKept ? LongText::whyItIsKept() : QString());
    setAccessibleDescription(toolTip());
}

QString TextArea::wholeText() const {
    return m_isKept || !document()->isModified() ? m_givenText : documentText();
}

/// The raw text keeps the blanks that do not break, which the plain one makes common ones.
QString TextArea::documentText() const {
    return document()->toRawText().replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
}

bool TextArea::isAllSelected() const {
    const auto selection = textCursor();
    return selection.hasSelection() &&
           selection.selectionEnd() - selection.selectionStart() == document()->characterCount() - 1;
}

QMimeData* TextArea::createMimeDataFromSelection() const {
    if (!m_isKept || !isAllSelected())
        return QPlainTextEdit::createMimeDataFromSelection();
    auto* const data = new QMimeData;
    data->setText(m_givenText);
    return data;
}

/// What would be too long to be edited afterwards is put in its place without being laid out.
void TextArea::insertFromMimeData(const QMimeData* source) {
    const auto selection = textCursor();
    QString whole = documentText();
    whole.replace(selection.selectionStart(), selection.selectionEnd() - selection.selectionStart(), source->text());
    if (LongText::isTooLongForArea(whole))
        setWholeText(whole);
    else
        QPlainTextEdit::insertFromMimeData(source);
}

QSize TextArea::sizeHint() const {
    return {200, textHeight};
}

bool TextArea::event(QEvent* event) {
    if (event->type() != QEvent::Paint)
        return QPlainTextEdit::event(event);
    // The frame goes around the scroll bar too; the text is painted by the viewport above it.
    QPainter painter(this);
    if (!isEnabled())
        painter.setOpacity(disabledOpacity);
    Painting::roundedBox(painter, rect(), Radius::control, Palette::canvas,
                         hasFocus() ? Palette::accent : Palette::line);
    return true;
}

void TextArea::paintEvent(QPaintEvent* event) {
    QPlainTextEdit::paintEvent(event);
    if (!hasFocus() || isReadOnly() || textCursor().hasSelection())
        return;
    QPainter painter(viewport());
    Painting::tintCaret(painter, QRectF(cursorRect()).adjusted(-1, 0, 1, 0));
}

void TextArea::focusInEvent(QFocusEvent* event) {
    QPlainTextEdit::focusInEvent(event);
    update();
}

void TextArea::focusOutEvent(QFocusEvent* event) {
    QPlainTextEdit::focusOutEvent(event);
    update();
}

void TextArea::keyPressEvent(QKeyEvent* event) {
    // Ctrl+Return is the form's, and a Shift that is still down must not make another kind of line end.
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && event->modifiers().testFlag(Qt::ControlModifier))
        return event->ignore();
    if (isReturn && event->modifiers().testFlag(Qt::ShiftModifier) && !isReadOnly())
        return insertPlainText(QStringLiteral("\n"));
    const bool deletes = event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace;
    if (m_isKept && deletes && isAllSelected())
        return setWholeText({});
    QPlainTextEdit::keyPressEvent(event);
}
