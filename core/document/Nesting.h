// SPDX-License-Identifier: MIT
#pragma once

#include "core/document/XMLParser.h"
#include "core/model/KdbxDatabase.h"

#include <cstddef>

/// How deep a document may be nested: one limit for what is read, what is changed and what is saved, so that nothing
/// is saved that cannot be opened again. It is the parser's.
namespace Nesting {

inline constexpr int deepestElement = XMLParser::deepestElement;

/// How deep in the document the root group is.
inline constexpr int depthOfRootGroup = 3;
/// How far below a group or an entry the writer goes by itself (`Times`, `CreationTime`), whatever was read there.
inline constexpr int depthWrittenBelow = 2;

/// Whether a group, with all that is in it, can be read again as the `level`th group from the top; the root group is
/// the first.
[[nodiscard]] bool fits(const KdbxGroup& group, std::size_t level);

/// The deepest level at which a group fits; 0 where none is high enough.
[[nodiscard]] std::size_t deepestLevelFor(const KdbxGroup& group);

/// Makes sure that a group fits.
///
/// @throws KdbxError nestedTooDeep.
void require(const KdbxGroup& group, std::size_t level);

/// The same for an entry, with its history, in the `level`th group.
void require(const KdbxEntry& entry, std::size_t level);

}  // namespace Nesting
