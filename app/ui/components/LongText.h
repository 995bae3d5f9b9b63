// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QTextOption>

#include <cstddef>
#include <string_view>
#include <vector>

/// Texts of a vault have no limit, and what is laid out must have one: the time that a layout takes grows with the
/// text, and with the square of a word that no line holds. What is cut here is cut between two characters (grapheme
/// clusters), unless one alone is longer than a few hundred bytes.
namespace LongText {

/// Letters that are laid out where a text cannot be turned over.
inline constexpr qsizetype mostLetters = 2000;
/// Bytes on one page of a text that can be.
inline constexpr std::size_t pageBytes = 8192;

/// The text, or where it is longer its beginning with an ellipsis behind.
[[nodiscard]] QString beginning(const QString& text, qsizetype most = mostLetters);
/// The same of a text in UTF-8, of which no more than that is read.
[[nodiscard]] QString beginning(std::string_view text, qsizetype most = mostLetters);

/// The first so many bytes of a text in UTF-8, or fewer.
[[nodiscard]] std::string_view prefix(std::string_view text, std::size_t most);

/// Whether a field of one line would stand still at each letter with a text of so many bytes, and whether an area of
/// many lines would with this one.
[[nodiscard]] bool isTooLongForField(std::size_t size);
[[nodiscard]] bool isTooLongForArea(const QString& text);
/// The explanation for the user where a text is shown in part and kept as it is.
[[nodiscard]] QString whyItIsKept();

/// Where a text is broken into lines: between words, unless one is so long that looking for its end at each line would
/// take its time.
[[nodiscard]] QTextOption::WrapMode wrapMode(const QString& text);

/// Where the pages of a text begin: behind the end of a line where there is one on the page, else behind a blank, else
/// between two characters. One page at the least.
[[nodiscard]] std::vector<std::size_t> pagesOf(std::string_view text);

}  // namespace LongText
