// SPDX-License-Identifier: MIT
// What parses as XML prints as XML that parses to the same.
#include "core/document/KdbxXMLNode.h"
#include "core/document/PrintedForm.h"
#include "fuzz/Require.h"

namespace {

std::string printedAgain(const std::string& printed) {
    const auto node = KdbxXMLNode::parse(bytesOf(printed), nullptr);
    require(node != nullptr);
    return node->rawXMLString();
}

/// Line ends and, in attributes, tabs do not come back as they were: XML normalises them when it reads.
bool isNormalised(const std::string& printed) {
    return printed.find_first_of("\r\t") == std::string::npos;
}

void checkPrinting(const KdbxXMLNode& node) {
    const auto printed = node.rawXMLString();
    const auto again = printedAgain(printed);
    require(printedAgain(again) == again);
    require(!isNormalised(printed) || again == printed);
}

/// A text that is passed on unparsed is what parsing and printing would have made of it.
void checkPrintedForm(std::string_view text, const std::shared_ptr<const KdbxXMLNode>& node) {
    const auto name = PrintedForm::nameOf(text);
    if (name)
        require(node && node->name == *name && node->rawXMLString() == text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const ByteView bytes(data, size);
    const auto node = KdbxXMLNode::parse(bytes, nullptr);
    NullStreamCipher stream;
    const auto unmasked = KdbxXMLNode::parse(bytes, &stream);
    require((node == nullptr) == (unmasked == nullptr));
    checkPrintedForm(textOf(bytes), node);
    if (node) {
        checkPrinting(*node);
        checkPrinting(*unmasked);
        checkPrintedForm(node->rawXMLString(), KdbxXMLNode::parse(bytesOf(node->rawXMLString()), nullptr));
    }
    return 0;
}
