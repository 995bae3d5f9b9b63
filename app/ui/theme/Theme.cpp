// SPDX-License-Identifier: MIT
#include "app/ui/theme/Theme.h"

#include "app/ui/theme/FontRegistrar.h"

#include <QFontDatabase>

namespace Palette {

QColor withOpacity(QColor colour, double opacity) {
    colour.setAlphaF(static_cast<float>(opacity));
    return colour;
}

QColor selection() {
    return withOpacity(accent, 0.18);
}

}  // namespace Palette

namespace BrandFont {
namespace {

QFont font(const QString& family, int size, QFont::Weight weight) {
    QFont font = FontRegistrar::isAvailable() ? QFont(family) : QFontDatabase::systemFont(QFontDatabase::GeneralFont);
    font.setPixelSize(size);
    font.setWeight(weight);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

}  // namespace

QFont display(int size, QFont::Weight weight) {
    return font(QStringLiteral("Brenvik Display"), size, weight);
}

QFont body(int size, QFont::Weight weight) {
    return font(QStringLiteral("Brenvik Text"), size, weight);
}

QFont mono(int size, QFont::Weight weight) {
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPixelSize(size);
    font.setWeight(weight);
    return font;
}

QFont screenTitle() {
    return display(26, QFont::Bold);
}

QFont sheetTitle() {
    return display(19, QFont::DemiBold);
}

QFont sectionTitle() {
    return body(14, QFont::DemiBold);
}

QFont rowTitle() {
    return body(13, QFont::DemiBold);
}

QFont bodyText() {
    return body(13);
}

QFont secondary() {
    return body(12);
}

QFont label() {
    return body(11, QFont::Medium);
}

}  // namespace BrandFont
