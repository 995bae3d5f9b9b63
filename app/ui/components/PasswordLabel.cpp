// SPDX-License-Identifier: MIT
#include "app/ui/components/PasswordLabel.h"

#include "app/state/WipedAtEnd.h"
#include "app/ui/Theme.h"
#include "core/text/Text.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>

#include <algorithm>
#include <cmath>

namespace {

constexpr QChar dot(0x2022);
constexpr int usualLines = 2;  // what takes more is written smaller
constexpr double lineSpacing = 1.2;

int lineHeight(const QFont& font) {
    return static_cast<int>(std::ceil(font.pixelSize() * lineSpacing));
}

double columnWidth(const QFont& font) {
    return QFontMetricsF(font).horizontalAdvance(QLatin1Char('0'));
}

QColor tintOf(const QString& character) {
    const QChar first = character.at(0);
    if (first.isDigit())
        return Palette::info;
    return first.isLetter() || first.isSurrogate() || first.isSpace() ? Palette::text : Palette::warn;
}

/// Tells what is shown when it is asked, so that no copy of a revealed password lies about in a property.
class PasswordLabelAccessible final : public QAccessibleWidget {
public:
    explicit PasswordLabelAccessible(PasswordLabel* label)
        : QAccessibleWidget(label, QAccessible::StaticText), m_label(label) {}

    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        if (kind != QAccessible::Name)
            return QAccessibleWidget::text(kind);
        return widget()->accessibleName() + QStringLiteral(": ") + m_label->shownText();
    }

private:
    PasswordLabel* m_label;
};

QAccessibleInterface* accessibleFor(const QString&, QObject* object) {
    auto* const label = qobject_cast<PasswordLabel*>(object);
    return label ? new PasswordLabelAccessible(label) : nullptr;
}

void teachAccessibility() {
    static const bool isTaught = [] {
        QAccessible::installFactory(accessibleFor);
        return true;
    }();
    Q_UNUSED(isTaught)
}

}  // namespace

PasswordLabel::PasswordLabel(const QString& name, QWidget* parent) : QWidget(parent) {
    teachAccessibility();
    setAccessibleName(name);
    setFocusPolicy(Qt::StrongFocus);
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

PasswordLabel::~PasswordLabel() {
    wipe(m_password);
}

void PasswordLabel::setPassword(std::string_view password) {
    m_characters.clear();
    wipe(m_password);
    m_password = password;
    m_characters = Text::characters(m_password);
    deselect();
    measure();
}

void PasswordLabel::setRevealed(bool isRevealed) {
    if (m_isRevealed == isRevealed)
        return;
    m_isRevealed = isRevealed;
    measure();
}

void PasswordLabel::setFontSizes(int usual, int whenLong) {
    m_usualSize = usual;
    m_longSize = whenLong;
    measure();
}

void PasswordLabel::measure() {
    setCursor(m_isRevealed ? Qt::IBeamCursor : Qt::ArrowCursor);
    updateGeometry();
    update();
    QAccessibleEvent changed(this, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&changed);
}

QString PasswordLabel::shownText() const {
    if (!m_isRevealed)
        return QString(static_cast<qsizetype>(m_characters.size()), dot);
    return QString::fromUtf8(m_password.data(), static_cast<qsizetype>(m_password.size()));
}

QString PasswordLabel::shown(std::size_t index) const {
    if (!m_isRevealed)
        return dot;
    const auto character = m_characters[index];
    return QString::fromUtf8(character.data(), static_cast<qsizetype>(character.size()));
}

/// A password has no words: a line ends where it is full, and goes from left to right whatever the language.
std::vector<PasswordLabel::Cell> PasswordLabel::cells(int width, const QFont& font) const {
    const QFontMetricsF metrics(font);
    const double column = columnWidth(font);
    const int columnsInLine = std::max(2, static_cast<int>(width / column));
    std::vector<Cell> cells;
    cells.reserve(m_characters.size());
    Cell next{.line = 0, .column = 0, .columns = 1};
    for (std::size_t index = 0; index < m_characters.size(); ++index) {
        next.columns = metrics.horizontalAdvance(shown(index)) > 1.25 * column ? 2 : 1;
        if (next.column + next.columns > columnsInLine)
            next = {.line = next.line + 1, .column = 0, .columns = next.columns};
        cells.push_back(next);
        next.column += next.columns;
    }
    return cells;
}

PasswordLabel::Grid PasswordLabel::grid(int width) const {
    const QFont usual = BrandFont::mono(m_usualSize);
    Grid grid{.font = usual, .cells = cells(width, usual)};
    if (grid.lines() > usualLines) {
        grid.font = BrandFont::mono(m_longSize);
        grid.cells = cells(width, grid.font);
    }
    return grid;
}

int PasswordLabel::Grid::height() const {
    return lines() * lineHeight(font);
}

QRectF PasswordLabel::Grid::box(const Cell& cell, int widgetHeight) const {
    const double column = columnWidth(font);
    const int line = lineHeight(font);
    const double top = (widgetHeight - height()) / 2.0;
    return {cell.column * column, top + cell.line * line, cell.columns * column, double(line)};
}

int PasswordLabel::heightForWidth(int width) const {
    return grid(width).height();
}

QSize PasswordLabel::sizeHint() const {
    const int usualWidth = 200;
    return {usualWidth, heightForWidth(usualWidth)};
}

QSize PasswordLabel::minimumSizeHint() const {
    return {2 * static_cast<int>(std::ceil(columnWidth(BrandFont::mono(m_usualSize)))),
            lineHeight(BrandFont::mono(m_longSize))};
}

void PasswordLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const Grid grid = this->grid(width());
    painter.setFont(grid.font);
    const auto [selectedFrom, selectedTo] = std::minmax(m_anchor, m_end);
    for (int index = 0; index < characterCount(); ++index) {
        const QRectF box = grid.box(grid.cells[static_cast<std::size_t>(index)], height());
        if (index >= selectedFrom && index < selectedTo)
            painter.fillRect(box, palette().color(QPalette::Highlight));
        const QString character = shown(static_cast<std::size_t>(index));
        painter.setPen(m_isRevealed ? tintOf(character) : Palette::text);
        painter.drawText(box, Qt::AlignCenter | Qt::TextSingleLine | Qt::TextDontClip, character);
    }
}

/// The place between two characters that is nearest to a point.
int PasswordLabel::positionAt(const QPointF& point) const {
    const Grid grid = this->grid(width());
    int position = 0;
    for (const auto& cell : grid.cells) {
        const QRectF box = grid.box(cell, height());
        if (point.y() < box.top() || (point.y() < box.bottom() && point.x() < box.center().x()))
            break;
        ++position;
    }
    return position;
}

void PasswordLabel::selectAll() {
    m_anchor = 0;
    moveEnd(characterCount());
}

void PasswordLabel::deselect() {
    m_anchor = 0;
    moveEnd(0);
}

void PasswordLabel::moveEnd(int position) {
    m_end = std::clamp(position, 0, characterCount());
    update();
}

void PasswordLabel::copySelection() {
    if (!hasSelection() || !m_isRevealed)
        return;
    const auto [from, to] = std::minmax(m_anchor, m_end);
    std::string part;
    part.reserve(m_password.size());  // or growing would leave copies behind
    const WipedAtEnd partEnd(part);
    for (int index = from; index < to; ++index)
        part += m_characters[static_cast<std::size_t>(index)];
    emit copyRequested(part);
}

void PasswordLabel::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    const int position = positionAt(event->position());
    if (!event->modifiers().testFlag(Qt::ShiftModifier))
        m_anchor = position;
    moveEnd(position);
}

void PasswordLabel::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons().testFlag(Qt::LeftButton))
        moveEnd(positionAt(event->position()));
}

void PasswordLabel::mouseDoubleClickEvent(QMouseEvent*) {
    selectAll();
}

bool PasswordLabel::event(QEvent* event) {
    // While it has the focus, these keys mean its text and no command of a menu.
    if (event->type() == QEvent::ShortcutOverride) {
        auto* const key = static_cast<QKeyEvent*>(event);
        if (key->matches(QKeySequence::Copy) || key->matches(QKeySequence::SelectAll)) {
            event->accept();
            return true;
        }
    }
    return QWidget::event(event);
}

void PasswordLabel::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy))
        copySelection();
    else if (event->matches(QKeySequence::SelectAll))
        selectAll();
    else if (event->matches(QKeySequence::SelectPreviousChar))
        moveEnd(m_end - 1);
    else if (event->matches(QKeySequence::SelectNextChar))
        moveEnd(m_end + 1);
    else if (event->matches(QKeySequence::SelectStartOfLine))
        moveEnd(0);
    else if (event->matches(QKeySequence::SelectEndOfLine))
        moveEnd(characterCount());
    else
        QWidget::keyPressEvent(event);
}

void PasswordLabel::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    if (event->reason() != Qt::ActiveWindowFocusReason && event->reason() != Qt::PopupFocusReason)
        deselect();
}
