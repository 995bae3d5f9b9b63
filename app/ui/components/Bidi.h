// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Texts of a vault beside other texts: one that runs from right to left, or holds marks that turn what follows, stays
/// by itself (Unicode Standard Annex 9). For what is painted; names, copies and data have the text as it is.
namespace Bidi {

/// The text between isolating marks. Whatever directions it opens end with it, and one that needs no marks has none.
[[nodiscard]] QString isolated(const QString& text);

/// The sentence with each name in “quotes” in it isolated.
[[nodiscard]] QString withQuotesIsolated(const QString& sentence);

}  // namespace Bidi
