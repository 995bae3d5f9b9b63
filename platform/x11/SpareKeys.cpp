// SPDX-License-Identifier: MIT
#include "platform/x11/SpareKeys.h"

#include "platform/x11/KeySymbols.h"
#include "platform/x11/XKeycode.h"

#include <algorithm>
#include <cstddef>
#include <ranges>
#include <span>
#include <thread>

namespace {

using namespace std::chrono_literals;

constexpr auto loan = 1s;     // from the last stroke until the keys are taken back
constexpr auto lead = 200ms;  // from a loan to the first stroke
constexpr auto rest = 1s;     // from a stroke to another character: by how much a program may lag behind
constexpr auto readingTime =
    100ms;  // from the last stroke to the end of the process, which a session's end may wait for

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
// layout that gives one character has no second symbol.
bool isLent(std::span<const xcb_keysym_t> symbols) {
    return symbols.size() >= 2 && isCharacter(symbols[0]) && symbols[0] == symbols[1] &&
           std::ranges::all_of(symbols.subspan(2),
                               [&](xcb_keysym_t symbol) { return symbol == symbols[0] || symbol == XCB_NO_SYMBOL; });
}

}  // namespace

SpareKeys::SpareKeys(XConnection& connection) : m_connection(connection) {
    m_untilTakenBack.setSingleShot(true);
    m_untilTakenBack.setInterval(loan);
    QObject::connect(&m_untilTakenBack, &QTimer::timeout, &m_untilTakenBack, [this] { takeBackUnlessExpecting(); });
}

SpareKeys::~SpareKeys() {
    if (m_lent.empty())
        return;
    std::this_thread::sleep_until(m_lastStroke + readingTime);
    takeBack();
}

bool SpareKeys::canStandFor(char32_t character) noexcept {
    return character > 0xFF || isPrintableLatin1(character);
}

bool SpareKeys::areThere() const {
    return !keys().empty();
}

void SpareKeys::expect(const Characters& characters) {
    if (characters.empty())
        return;
    m_expected.insert(m_expected.end(), characters.begin(), characters.end());
    auto all = keys();
    giveAhead(all, 0);
    m_connection.roundTrip();
}

std::optional<xcb_keycode_t> SpareKeys::lendTo(char32_t character) {
    auto all = keys();
    if (all.empty())
        return std::nullopt;
    forgetUntil(character);
    auto key = std::ranges::find(all, symbolOf(character), &Key::symbol);
    if (key == all.end()) {
        key = longestRested(all);
        std::this_thread::sleep_until(m_times[key->keycode].struck + rest);
        give(*key, symbolOf(character));
    }
    giveAhead(all, key->keycode);
    m_connection.roundTrip();
    remember(key->keycode);  // it may be one that a program left which crashed
    auto& times = m_times[key->keycode];
    std::this_thread::sleep_until(times.lent + lead);
    m_lastStroke = times.struck = Clock::now();
    m_untilTakenBack.start();
    return key->keycode;
}

// A keycode that has a virtual key code would be found by the next search of the layout, and the cache of strokes would
// outlive its loan.
std::vector<SpareKeys::Key> SpareKeys::keys() const {
    const KeySymbols symbols(m_connection.get());
    const auto* setup = xcb_get_setup(m_connection.get());
    std::vector<Key> keys;
    for (unsigned keycode = setup->min_keycode; keycode <= setup->max_keycode; ++keycode) {
        const auto meaning = symbols.of(static_cast<xcb_keycode_t>(keycode));
        const bool isUnused = keycode > 8 && !XKeycode::hasKeyCode(keycode);  // 8 is evdev's 0, which is no key
        if (isUnused && !meaning.empty() && (isEmpty(meaning) || isLent(meaning)))
            keys.push_back({.keycode = static_cast<xcb_keycode_t>(keycode), .symbol = meaning[0]});
    }
    return keys;
}

bool SpareKeys::isExpected(const Key& key) const {
    return std::ranges::any_of(m_expected, [&](char32_t character) { return symbolOf(character) == key.symbol; });
}

// Rather one whose character is not expected.
std::vector<SpareKeys::Key>::iterator SpareKeys::longestRested(std::vector<Key>& keys) const {
    return std::ranges::min_element(
        keys, {}, [this](const Key& key) { return std::pair(isExpected(key), m_times[key.keycode].struck); });
}

void SpareKeys::forgetUntil(char32_t character) {
    const auto next = std::ranges::find(m_expected, character);
    if (next != m_expected.end())
        m_expected.erase(m_expected.begin(), next + 1);
}

void SpareKeys::giveAhead(std::vector<Key>& keys, xcb_keycode_t exception) {
    const auto now = Clock::now();
    const auto isFree = [&](const Key& key) {
        return key.keycode != exception && m_times[key.keycode].struck + rest <= now && !isExpected(key);
    };
    for (const auto character : m_expected) {
        if (std::ranges::find(keys, symbolOf(character), &Key::symbol) != keys.end())
            continue;
        auto free = keys | std::views::filter(isFree);
        if (free.empty())
            return;
        give(*std::ranges::min_element(free, {}, [this](const Key& key) { return m_times[key.keycode].struck; }),
             symbolOf(character));
    }
}

// The same at both levels, so that a lock of Shift makes no difference.
void SpareKeys::give(Key& key, xcb_keysym_t symbol) {
    const std::array symbols{symbol, symbol};
    xcb_change_keyboard_mapping(m_connection.get(), 1, key.keycode, symbols.size(), symbols.data());
    key.symbol = symbol;
    m_times[key.keycode].lent = Clock::now();
    remember(key.keycode);
    m_untilTakenBack.start();
}

void SpareKeys::remember(xcb_keycode_t keycode) {
    if (std::ranges::find(m_lent, keycode) == m_lent.end())
        m_lent.push_back(keycode);
}

void SpareKeys::takeBackUnlessExpecting() {
    if (m_expected.empty())
        takeBack();
    else
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
