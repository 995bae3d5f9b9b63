// SPDX-License-Identifier: MIT
#include "platform/x11/SpareKeys.h"

#include "platform/x11/XKeycode.h"

#include <algorithm>
#include <cstddef>
#include <ranges>
#include <span>
#include <thread>

namespace {

using namespace std::chrono_literals;

constexpr auto loan = 1s;            // from the last stroke until the keys are taken back
constexpr auto readingTime = 100ms;  // what a program may need between a stroke and its reading of the map
constexpr auto rest = 200ms;         // the same, between two characters of one key, where nothing hurries

// Symbols are Latin-1's code points, and beyond it the code points in a range of their own.
constexpr xcb_keysym_t unicodeSymbols = 0x01000000;

constexpr bool isPrintableLatin1(char32_t character) {
    return (character >= 0x20 && character <= 0x7E) || (character >= 0xA0 && character <= 0xFF);
}

constexpr xcb_keysym_t symbolOf(char32_t character) {
    return character <= 0xFF ? character : unicodeSymbols + character;
}

constexpr bool isCharacter(xcb_keysym_t symbol) {
    return isPrintableLatin1(symbol) || (symbol > unicodeSymbols + 0xFF && symbol <= unicodeSymbols + 0x10FFFF);
}

bool isEmpty(std::span<const xcb_keysym_t> symbols) {
    return std::ranges::all_of(symbols, [](xcb_keysym_t symbol) { return symbol == XCB_NO_SYMBOL; });
}

// As we lend a key: with and without Shift the same. It is our own, or was left by a program that crashed. A key of a
// layout that gives one character has nothing in the second place.
bool isLent(std::span<const xcb_keysym_t> symbols) {
    return symbols.size() >= 2 && isCharacter(symbols[0]) && symbols[0] == symbols[1] &&
           std::ranges::all_of(symbols.subspan(2),
                               [&](xcb_keysym_t symbol) { return symbol == symbols[0] || symbol == XCB_NO_SYMBOL; });
}

}  // namespace

SpareKeys::SpareKeys(XConnection& connection) : m_connection(connection) {
    m_untilTakenBack.setSingleShot(true);
    m_untilTakenBack.setInterval(loan);
    QObject::connect(&m_untilTakenBack, &QTimer::timeout, &m_untilTakenBack, [this] { takeBack(); });
}

SpareKeys::~SpareKeys() {
    if (m_lent.empty())
        return;
    std::this_thread::sleep_until(m_lastUse + readingTime);
    takeBack();
}

bool SpareKeys::canStandFor(char32_t character) noexcept {
    return character > 0xFF || isPrintableLatin1(character);
}

bool SpareKeys::areThere() const {
    return !spareKeycodes(KeySymbols(m_connection.get())).empty();
}

std::optional<xcb_keycode_t> SpareKeys::lendTo(char32_t character) {
    const KeySymbols symbols(m_connection.get());
    const auto spare = spareKeycodes(symbols);
    if (spare.empty())
        return std::nullopt;
    const auto wanted = symbolOf(character);
    const auto present =
        std::ranges::find_if(spare, [&](xcb_keycode_t keycode) { return symbols.of(keycode)[0] == wanted; });
    const auto keycode = present != spare.end() ? *present : longestRested(spare);
    if (present == spare.end()) {
        waitUntilRested(keycode);
        give(keycode, wanted);
    }
    use(keycode);
    return keycode;
}

// A code that stands in our tables would be found there by the next search of the layout, and would outlive its loan in
// what the search remembers.
std::vector<xcb_keycode_t> SpareKeys::spareKeycodes(const KeySymbols& symbols) const {
    const auto* setup = xcb_get_setup(m_connection.get());
    std::vector<xcb_keycode_t> spare;
    for (unsigned keycode = setup->min_keycode; keycode <= setup->max_keycode; ++keycode) {
        const auto meaning = symbols.of(static_cast<xcb_keycode_t>(keycode));
        const bool isUnused = keycode > 8 && !XKeycode::hasKeyCode(keycode);  // 8 is evdev's 0, which is no key
        if (isUnused && !meaning.empty() && (isEmpty(meaning) || isLent(meaning)))
            spare.push_back(static_cast<xcb_keycode_t>(keycode));
    }
    return spare;
}

xcb_keycode_t SpareKeys::longestRested(const std::vector<xcb_keycode_t>& keycodes) const {
    return *std::ranges::min_element(keycodes, {}, [this](xcb_keycode_t keycode) { return m_lastUses[keycode]; });
}

void SpareKeys::waitUntilRested(xcb_keycode_t keycode) const {
    if (m_lastUses[keycode] != Clock::time_point())
        std::this_thread::sleep_until(m_lastUses[keycode] + rest);
}

// The same at both levels, so that a lock of Shift makes no difference. Once the server has it, the stroke may follow
// at once: each program hears of the change before it hears of the stroke.
void SpareKeys::give(xcb_keycode_t keycode, xcb_keysym_t symbol) {
    const std::array symbols{symbol, symbol};
    xcb_change_keyboard_mapping(m_connection.get(), 1, keycode, symbols.size(), symbols.data());
    m_connection.roundTrip();
}

void SpareKeys::use(xcb_keycode_t keycode) {
    if (std::ranges::find(m_lent, keycode) == m_lent.end())
        m_lent.push_back(keycode);
    m_lastUse = m_lastUses[keycode] = Clock::now();
    m_untilTakenBack.start();
}

// Another layout that was loaded meanwhile, or another program, may have given a key a meaning of its own.
void SpareKeys::takeBack() {
    const KeySymbols symbols(m_connection.get());
    const std::array none{xcb_keysym_t{XCB_NO_SYMBOL}, xcb_keysym_t{XCB_NO_SYMBOL}};
    for (const auto keycode : m_lent)
        if (isLent(symbols.of(keycode)))
            xcb_change_keyboard_mapping(m_connection.get(), 1, keycode, none.size(), none.data());
    m_lent.clear();
    m_connection.roundTrip();
}
