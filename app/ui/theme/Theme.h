// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QFont>

#include <chrono>

/// The one dark theme: warm near-black ground, orange accent. No view spells a colour, a size or a font of its own.

/// Colours in sRGB.
namespace Palette {

inline constexpr QColor canvas{0x15, 0x11, 0x0E};      // window
inline constexpr QColor surface{0x1D, 0x18, 0x15};     // panes
inline constexpr QColor elevated{0x25, 0x20, 0x17};    // sheets, menus, popovers
inline constexpr QColor hover{0x2E, 0x28, 0x23};       // what is under the pointer
inline constexpr QColor line{0x34, 0x2D, 0x27};        // hairlines
inline constexpr QColor lineStrong{0x4A, 0x41, 0x39};  // strong outlines
inline constexpr QColor text{0xF6, 0xF0, 0xEA};        // read first
inline constexpr QColor textSoft{0xC3, 0xB8, 0xAD};    // explains it
inline constexpr QColor textMuted{0x8E, 0x83, 0x79};   // on canvas and surface only: too faint on raised ground
inline constexpr QColor accent{0xFF, 0x6B, 0x3D};      // the way on, the focus, the selection
inline constexpr QColor accentHover{0xFF, 0x80, 0x4F};
inline constexpr QColor info{0x7B, 0x92, 0xFF};
inline constexpr QColor warn{0xFF, 0xC2, 0x4B};
inline constexpr QColor success{0x4F, 0xCB, 0x90};
inline constexpr QColor danger{0xFF, 0x6B, 0x6B};

/// A colour at an opacity from 0 to 1.
[[nodiscard]] QColor withOpacity(QColor colour, double opacity);

/// Selected rows: the accent at 0.18.
[[nodiscard]] QColor selection();

}  // namespace Palette

/// Corner radii, in logical pixels.
namespace Radius {

inline constexpr int small = 6;
inline constexpr int control = 8;
inline constexpr int card = 12;
inline constexpr int panel = 16;
inline constexpr int pill = 999;  // as round as it goes

}  // namespace Radius

/// Distances and heights, in logical pixels, and the time of the standard motion.
namespace Metric {

inline constexpr int hairline = 1;
inline constexpr int xs = 4;
inline constexpr int s = 8;
inline constexpr int m = 12;
inline constexpr int l = 16;
inline constexpr int xl = 24;
inline constexpr int xxl = 32;
inline constexpr int controlHeight = 30;
inline constexpr int controlHeightSmall = 24;
inline constexpr std::chrono::milliseconds motion{140};  // ease-out

}  // namespace Metric

/// Font roles. Sizes are logical pixels.
namespace BrandFont {

[[nodiscard]] QFont display(int size, QFont::Weight weight = QFont::Bold);
[[nodiscard]] QFont body(int size, QFont::Weight weight = QFont::Normal);
[[nodiscard]] QFont mono(int size, QFont::Weight weight = QFont::Normal);

[[nodiscard]] QFont screenTitle();
[[nodiscard]] QFont sheetTitle();
[[nodiscard]] QFont sectionTitle();
[[nodiscard]] QFont rowTitle();
[[nodiscard]] QFont bodyText();
[[nodiscard]] QFont secondary();
[[nodiscard]] QFont label();

}  // namespace BrandFont
