// SPDX-License-Identifier: MIT
#pragma once

#include "core/document/WipingText.h"

#include <string_view>

/// How text goes into XML, for everything that the program prints.
///
/// `KdbxXMLEscape::text` works by whole characters and leaves "<" bare where a combining mark follows. A parser works
/// by code points and would take that for markup, so that a document with such a text could never be opened again. What
/// is printed here is escaped wherever it is.
namespace XMLText {

/// The text of an element: sanitised, with "&", "<" and ">" escaped.
void appendContent(WipingText& out, std::string_view text);

/// The text of an attribute between quotation marks: as content, with `"`, line feed and carriage return escaped too.
void appendAttributeValue(WipingText& out, std::string_view text);

/// The text without what XML cannot carry, for a value that will be masked.
void appendSanitised(WipingText& out, std::string_view text);

}  // namespace XMLText
