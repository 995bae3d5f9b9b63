// SPDX-License-Identifier: MIT
#include "platform/x11/OldWindowTitle.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <memory>
#include <vector>

namespace {

struct CloseDisplay {
    void operator()(Display* display) const noexcept { XCloseDisplay(display); }
};

struct FreeTexts {
    void operator()(char** texts) const noexcept { XFreeStringList(texts); }
};

}  // namespace

std::string OldWindowTitle::decoded(std::span<const std::uint8_t> value, std::uint32_t encoding) {
    const std::unique_ptr<Display, CloseDisplay> display(XOpenDisplay(nullptr));
    if (!display)
        return {};
    std::vector<std::uint8_t> bytes(value.begin(), value.end());
    bytes.push_back(0);  // Xlib keeps one behind every property
    const XTextProperty property{.value = bytes.data(), .encoding = encoding, .format = 8, .nitems = value.size()};
    char** texts = nullptr;
    int count = 0;
    // A positive result counts the characters that had to be left out.
    const int result = Xutf8TextPropertyToTextList(display.get(), &property, &texts, &count);
    const std::unique_ptr<char*, FreeTexts> owner(texts);
    return result >= Success && count > 0 ? std::string(texts[0]) : std::string();
}
