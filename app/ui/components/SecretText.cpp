// SPDX-License-Identifier: MIT
#include "app/ui/components/SecretText.h"

#include "app/state/WipedAtEnd.h"
#include "app/ui/components/LongText.h"
#include "app/ui/components/ShownSecrets.h"
#include "app/ui/theme/Theme.h"
#include "core/text/Text.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QPaintEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <unordered_map>

namespace {

constexpr int fontSize = 13;
constexpr int usualLines = 2;  // what takes more is written smaller
constexpr double lineSpacing = 1.35;
constexpr double widestInColumn = 1.25;
constexpr double dotRadius = 0.16;  // of the font's size
constexpr QChar dot(0x2022);
constexpr QChar none(0x2014);

int lineHeight(const QFont& font) {
    return qRound(lineSpacing * font.pixelSize());
}

double columnWidth(const QFont& font) {
    return std::ceil(QFontMetricsF(font).horizontalAdvance(QLatin1Char('0')));
}

QString textOf(std::string_view character) {
    return QString::fromUtf8(character.data(), static_cast<qsizetype>(character.size()));
}

/// A character, and in what colour, so that l differs from 1 and a space shows.
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

/// Answers with what shows when it is asked, so that no copy of a revealed secret lies about in a property.
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

bool isShownWhole(std::string_view secret) {
    return secret.size() <= LongText::pageBytes;
}

/// Whether a character is a letter, digit or sign of ASCII.
bool isPlain(std::string_view character) {
    return character.size() == 1 && character[0] > ' ' && character[0] <= '~';
}

}  // namespace

SecretText::SecretText(const SecureString& secret, Dots dots, const QString& field, QWidget* parent)
    : SecretText(std::string_view(), dots, field, parent) {
    setSecret(secret);
}

SecretText::SecretText(std::string_view secret, Dots dots, const QString& field, QWidget* parent)
    : QWidget(parent), m_dots(dots), m_usualSize(fontSize), m_longSize(fontSize) {
    [[maybe_unused]] static const bool isTaught = (QAccessible::installFactory(accessibleFor), true);
    setAccessibleDescription(field);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    setBeginning(secret);
}

SecretText::~SecretText() {
    if (m_isRevealed)
        ShownSecrets::noteEnd();
}

void SecretText::setSecret(const SecureString& secret) {
    auto text = secret.value();
    const WipedAtEnd textEnd(text);
    if (isShownWhole(text))
        show(secret, Text::characterCount(text));
    else
        setBeginning(text);
}

/// Of a secret of megabytes the beginning shows, and nothing else of it is needed here: what copies it copies its
/// field.
void SecretText::setBeginning(std::string_view secret) {
    std::string shown(LongText::prefix(secret, LongText::pageBytes));
    const WipedAtEnd shownEnd(shown);
    if (!isShownWhole(secret))
        shown += "…";
    show(SecureString(shown), Text::characterCount(shown));
}

void SecretText::show(SecureString secret, std::size_t characterCount) {
    if (m_isRevealed)
        ShownSecrets::noteEnd();
    m_secret = std::move(secret);
    m_dotCount = std::clamp(characterCount, m_dots.fewest, m_dots.most);
    showAnew();
}

void SecretText::setFontSizes(int usual, int whenLong) {
    m_usualSize = usual;
    m_longSize = whenLong;
    showAnew();
}

void SecretText::setRevealed(bool isRevealed) {
    if (m_isRevealed == isRevealed)
        return;
    m_isRevealed = isRevealed;
    showAnew();
    if (!isRevealed)
        ShownSecrets::noteEnd();
}

void SecretText::showAnew() {
    updateGeometry();
    update();
    QAccessibleEvent changed(this, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&changed);
}

/// An empty secret that shows dots all the same says that it is empty once it is revealed.
QString SecretText::shownText() const {
    if (!m_isRevealed)
        return QString(static_cast<qsizetype>(m_dotCount), dot);
    auto text = m_secret.value();
    const WipedAtEnd textEnd(text);
    return text.empty() && m_dots.fewest > 0 ? QString(none) : textOf(text);
}

/// A secret has no words: a line ends where it is full, and goes from left to right whatever the language.
std::vector<SecretText::Cell> SecretText::cells(const std::vector<std::string_view>& characters, const QFont& font,
                                                int width) const {
    const QFontMetricsF metrics(font);
    const double column = columnWidth(font);
    const int columnsInLine = std::max(2, static_cast<int>(width / column));
    std::vector<Cell> cells;
    const auto count = m_isRevealed ? characters.size() : m_dotCount;
    cells.reserve(count);
    // To measure a thousand letters takes a tenth of a second: each is measured once, and none of those that every such
    // face has in its column.
    std::unordered_map<std::string_view, bool> isWideKnown;
    const auto isWideOnce = [&](std::string_view character) {
        const auto [known, isNew] = isWideKnown.try_emplace(character);
        if (isNew)
            known->second = metrics.horizontalAdvance(glyphOf(character).text) > widestInColumn * column;
        return known->second;
    };
    Cell next{.line = 0, .column = 0, .columns = 1};
    for (std::size_t i = 0; i < count; ++i) {
        const bool isWide = m_isRevealed && !isPlain(characters[i]) && isWideOnce(characters[i]);
        next.columns = isWide ? 2 : 1;
        if (next.column + next.columns > columnsInLine)
            next = {.line = next.line + 1, .column = 0, .columns = next.columns};
        cells.push_back(next);
        next.column += next.columns;
    }
    return cells;
}

SecretText::Grid SecretText::grid(const std::vector<std::string_view>& characters, int width) const {
    const QFont usual = BrandFont::mono(m_usualSize);
    auto placed = cells(characters, usual, width);
    if (placed.empty() || placed.back().line < usualLines)
        return {.font = usual, .cells = std::move(placed)};
    const QFont small = BrandFont::mono(m_longSize);
    return {.font = small, .cells = cells(characters, small, width)};
}

SecretText::Grid SecretText::grid(int width) const {
    auto text = m_secret.value();
    const WipedAtEnd textEnd(text);
    return grid(Text::characters(text), width);
}

int SecretText::Grid::height() const {
    return lineHeight(font) * (cells.empty() ? 1 : cells.back().line + 1);
}

QRectF SecretText::Grid::box(const Cell& cell, int widgetHeight) const {
    const double column = columnWidth(font);
    const int line = lineHeight(font);
    const int top = (widgetHeight - height()) / 2;
    return {cell.column * column, double(top + cell.line * line), cell.columns * column, double(line)};
}

int SecretText::heightForWidth(int width) const {
    return grid(width).height();
}

QSize SecretText::sizeHint() const {
    const int usual = static_cast<int>(columnWidth(BrandFont::mono(m_usualSize)) * 24);
    return {usual, heightForWidth(usual)};
}

QSize SecretText::minimumSizeHint() const {
    const QFont font = BrandFont::mono(m_usualSize);
    return {static_cast<int>(2 * columnWidth(font)), lineHeight(font)};
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
    const auto dots = grid({}, width());
    const double radius = dotRadius * dots.font.pixelSize();
    for (const auto& cell : dots.cells)
        painter.drawEllipse(dots.box(cell, height()).center(), radius, radius);
}

void SecretText::paintCharacters(QPainter& painter, const QRect& area) const {
    auto text = m_secret.value();
    const WipedAtEnd textEnd(text);
    const auto characters = Text::characters(text);
    const auto placed = grid(characters, width());
    painter.setFont(placed.font);
    if (text.empty()) {
        painter.setPen(Palette::textMuted);
        painter.drawText(rect(), Qt::AlignVCenter | Qt::AlignLeft, shownText());
        return;
    }
    for (std::size_t i = 0; i < characters.size(); ++i) {
        const QRectF box = placed.box(placed.cells[i], height());
        if (!box.intersects(area))
            continue;
        const auto glyph = glyphOf(characters[i]);
        painter.setPen(glyph.colour);
        painter.drawText(box, Qt::AlignCenter | Qt::TextSingleLine | Qt::TextDontClip, glyph.text);
    }
}
