// SPDX-License-Identifier: MIT
#include "app/ui/components/SecretText.h"

#include "app/state/WipedAtEnd.h"
#include "app/ui/Theme.h"
#include "core/text/Text.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QPaintEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

constexpr int fontSize = 13;
constexpr int lineHeight = 18;
constexpr double dotRadius = 2.1;
constexpr QChar dot(0x2022);
constexpr QChar none(0x2014);

QFont face() {
    return BrandFont::mono(fontSize);
}

double columnWidth() {
    return std::ceil(QFontMetricsF(face()).horizontalAdvance(QLatin1Char('0')));
}

QString textOf(std::string_view character) {
    return QString::fromUtf8(character.data(), static_cast<qsizetype>(character.size()));
}

/// A character, and in what colour, so that a reader can tell l from 1 and sees a space.
struct Glyph {
    QString text;
    QColor colour;
};

Glyph glyphOf(std::string_view character) {
    const QString text = textOf(character);
    const QChar first = text.at(0);
    if (first == QLatin1Char('\n') || first == QLatin1Char('\r'))
        return {QChar(0x21B5), Palette::textMuted};
    if (first == QLatin1Char('\t'))
        return {QChar(0x21E5), Palette::textMuted};
    if (first.isSpace())
        return {QChar(0x2423), Palette::textMuted};
    if (first.isDigit())
        return {text, Palette::info};
    return {text, first.isLetter() || first.isSurrogate() ? Palette::text : Palette::warn};
}

/// Tells what shows when it is asked, so that no copy of a revealed secret lies about in a property.
class SecretTextAccessible final : public QAccessibleWidget {
public:
    explicit SecretTextAccessible(SecretText* secret)
        : QAccessibleWidget(secret, QAccessible::StaticText), m_secret(secret) {}

    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name ? m_secret->shownText() : QAccessibleWidget::text(kind);
    }

private:
    SecretText* m_secret;
};

QAccessibleInterface* accessibleFor(const QString&, QObject* object) {
    auto* const secret = qobject_cast<SecretText*>(object);
    return secret != nullptr ? new SecretTextAccessible(secret) : nullptr;
}

}  // namespace

SecretText::SecretText(SecureString secret, Dots dots, const QString& field, QWidget* parent)
    : QWidget(parent), m_secret(std::move(secret)) {
    [[maybe_unused]] static const bool isTaught = (QAccessible::installFactory(accessibleFor), true);
    auto text = m_secret.value();
    const WipedAtEnd textEnd(text);
    m_dotCount = std::clamp(Text::characterCount(text), dots.fewest, dots.most);
    setAccessibleDescription(field);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void SecretText::setRevealed(bool isRevealed) {
    if (m_isRevealed == isRevealed)
        return;
    m_isRevealed = isRevealed;
    updateGeometry();
    update();
    QAccessibleEvent changed(this, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&changed);
}

QString SecretText::shownText() const {
    if (!m_isRevealed)
        return QString(static_cast<qsizetype>(m_dotCount), dot);
    auto text = m_secret.value();
    const WipedAtEnd textEnd(text);
    return text.empty() ? QString(none) : textOf(text);
}

/// A secret has no words: a line ends where it is full, and goes from left to right whatever the language.
std::vector<SecretText::Cell> SecretText::cells(const std::vector<std::string_view>& characters, int width) const {
    const QFontMetricsF metrics(face());
    const double column = columnWidth();
    const int columnsInLine = std::max(2, static_cast<int>(width / column));
    std::vector<Cell> cells;
    cells.reserve(characters.size());
    Cell next{.line = 0, .column = 0, .columns = 1};
    for (const auto character : characters) {
        next.columns = metrics.horizontalAdvance(glyphOf(character).text) > 1.25 * column ? 2 : 1;
        if (next.column + next.columns > columnsInLine)
            next = {.line = next.line + 1, .column = 0, .columns = next.columns};
        cells.push_back(next);
        next.column += next.columns;
    }
    return cells;
}

int SecretText::heightForWidth(int width) const {
    if (!m_isRevealed) {
        const int dotsInLine = std::max(1, static_cast<int>(width / columnWidth()));
        return lineHeight * ((static_cast<int>(m_dotCount) + dotsInLine - 1) / dotsInLine);
    }
    auto text = m_secret.value();
    const WipedAtEnd textEnd(text);
    const auto placed = cells(Text::characters(text), width);
    return placed.empty() ? lineHeight : lineHeight * (placed.back().line + 1);
}

QSize SecretText::sizeHint() const {
    const int usual = static_cast<int>(columnWidth() * 24);
    return {usual, heightForWidth(usual)};
}

QSize SecretText::minimumSizeHint() const {
    return {static_cast<int>(2 * columnWidth()), lineHeight};
}

void SecretText::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    if (m_isRevealed)
        paintCharacters(painter, event->rect());
    else
        paintDots(painter);
}

void SecretText::paintDots(QPainter& painter) const {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Palette::text);
    const double column = columnWidth();
    const int dotsInLine = std::max(1, static_cast<int>(width() / column));
    for (int i = 0; i < static_cast<int>(m_dotCount); ++i)
        painter.drawEllipse(QPointF((i % dotsInLine + 0.5) * column, (i / dotsInLine + 0.5) * lineHeight), dotRadius,
                            dotRadius);
}

void SecretText::paintCharacters(QPainter& painter, const QRect& area) const {
    painter.setFont(face());
    if (m_secret.isEmpty()) {
        painter.setPen(Palette::textMuted);
        painter.drawText(QRect(0, 0, width(), lineHeight), Qt::AlignVCenter | Qt::AlignLeft, none);
        return;
    }
    auto text = m_secret.value();
    const WipedAtEnd textEnd(text);
    const auto characters = Text::characters(text);
    const auto placed = cells(characters, width());
    const double column = columnWidth();
    for (std::size_t i = 0; i < placed.size(); ++i) {
        const auto& cell = placed[i];
        const QRectF box(cell.column * column, cell.line * lineHeight, cell.columns * column, lineHeight);
        if (!box.intersects(area))
            continue;
        const auto glyph = glyphOf(characters[i]);
        painter.setPen(glyph.colour);
        painter.drawText(box, Qt::AlignCenter | Qt::TextSingleLine | Qt::TextDontClip, glyph.text);
    }
}
