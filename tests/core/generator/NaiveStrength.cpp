// SPDX-License-Identifier: MIT
#include "tests/core/generator/NaiveStrength.h"

#include "core/text/Text.h"

#include <cmath>
#include <regex>

namespace {

using Characters = std::vector<std::string>;

const std::vector<std::string> known{
    "password", "passw0rd", "123456", "12345678", "123456789",   "1234567890", "qwerty",   "qwertyuiop", "abc123",
    "111111",   "123123",   "admin",  "letmein",  "welcome",     "monkey",     "dragon",   "iloveyou",   "sunshine",
    "princess", "football", "master", "login",    "starwars",    "trustno1",   "superman", "baseball",   "shadow",
    "parola",   "sifre",    "þifre",  "sifre123", "galatasaray", "fenerbahce", "besiktas"};

const std::vector<std::string> rows{"qwertyuiop", "asdfghjkl", "zxcvbnm", "1234567890", "qwertzuiop", "azertyuiop"};

bool isIn(const std::vector<std::string>& list, const std::string& text) {
    for (const auto& one : list)
        if (one == text)
            return true;
    return false;
}

Characters split(const std::string& text) {
    Characters characters;
    for (const auto character : Text::characters(text))
        characters.emplace_back(character);
    return characters;
}

bool isBetween(const std::string& character, char first, char last) {
    return character.size() == 1 && character[0] >= first && character[0] <= last;
}

double pool(const Characters& characters) {
    bool lower = false;
    bool upper = false;
    bool number = false;
    bool sign = false;
    bool foreign = false;
    for (const auto& c : characters) {
        lower = lower || isBetween(c, 'a', 'z') || isIn({"é", "ş", "ı"}, c);
        upper = upper || isBetween(c, 'A', 'Z') || isIn({"Ş", "İ"}, c);
        number = number || isBetween(c, '0', '9') || isIn({"٣", "½"}, c);
        sign = sign || isBetween(c, '!', '/') || isBetween(c, ':', '@') || isBetween(c, '[', '`') ||
               isBetween(c, '{', '~') || isIn({"€", "😀", "…"}, c);
        foreign = foreign || (c.size() > 1 && c != "\r\n");
    }
    const double sum = 26 * lower + 26 * upper + 10 * number + 28 * sign + 100 * foreign;
    return sum < 2 ? 2 : sum;
}

int distinct(const Characters& characters) {
    Characters seen;
    for (const auto& character : characters)
        if (!isIn(seen, character))
            seen.push_back(character);
    return static_cast<int>(seen.size());
}

int repeats(const Characters& characters) {
    int longest = 1;
    for (std::size_t from = 0; from < characters.size(); ++from) {
        std::size_t to = from;
        while (to + 1 < characters.size() && characters[to + 1] == characters[from])
            ++to;
        longest = std::max(longest, static_cast<int>(to - from + 1));
    }
    return longest;
}

long value(const std::string& character) {
    const auto lowered = Text::lowercased(character);
    const auto byte = [&](std::size_t i) { return static_cast<long>(static_cast<unsigned char>(lowered.at(i))); };
    if (byte(0) < 0x80)
        return byte(0);
    if (byte(0) < 0xE0)
        return (byte(0) & 0x1F) << 6 | (byte(1) & 0x3F);
    if (byte(0) < 0xF0)
        return (byte(0) & 0x0F) << 12 | (byte(1) & 0x3F) << 6 | (byte(2) & 0x3F);
    return (byte(0) & 0x07) << 18 | (byte(1) & 0x3F) << 12 | (byte(2) & 0x3F) << 6 | (byte(3) & 0x3F);
}

int sequences(const Characters& characters) {
    const int count = static_cast<int>(characters.size());
    if (count < 3)
        return 0;
    int total = 0;
    int i = 0;
    while (i < count - 1) {
        const long d = value(characters[i + 1]) - value(characters[i]);
        if (d != 1 && d != -1) {
            i += 1;
            continue;
        }
        int j = i + 1;
        while (j < count - 1 && value(characters[j + 1]) - value(characters[j]) == d)
            j += 1;
        const int run = j - i + 1;
        if (run >= 3)
            total += run;
        i = j;
    }
    return total;
}

int keyboardRun(const std::string& lowered) {
    int longest = 0;
    for (const auto& row : rows)
        for (const auto& keys : {row, std::string(row.rbegin(), row.rend())})
            for (std::size_t start = 0; start < keys.size(); ++start)
                for (std::size_t length = 3; start + length <= keys.size(); ++length)
                    if (lowered.find(keys.substr(start, length)) != std::string::npos)
                        longest = std::max(longest, static_cast<int>(length));
    return longest;
}

double ceiling(const std::string& lowered) {
    const std::regex digitsAtTheEnd("[0-9]+$");
    std::string trimmed = lowered;
    const std::string signs = "!@#$%^&*()_+-=.,";
    while (!trimmed.empty() && signs.find(trimmed.front()) != std::string::npos)
        trimmed.erase(0, 1);
    while (!trimmed.empty() && signs.find(trimmed.back()) != std::string::npos)
        trimmed.pop_back();
    trimmed = std::regex_replace(trimmed, digitsAtTheEnd, "");
    if (isIn(known, lowered))
        return 8;
    if (!trimmed.empty() && isIn(known, trimmed))
        return 16;
    std::string letters;
    for (const char c : lowered)
        letters += c == '4' || c == '@'   ? 'a'
                   : c == '3'             ? 'e'
                   : c == '1' || c == '!' ? 'i'
                   : c == '0'             ? 'o'
                   : c == '5' || c == '$' ? 's'
                   : c == '7'             ? 't'
                                          : c;
    if (isIn(known, std::regex_replace(letters, digitsAtTheEnd, "")))
        return 20;
    if (std::regex_match(lowered, std::regex("^[0-9]{4,8}$")))
        return 14;
    return HUGE_VAL;
}

}  // namespace

PasswordGenerator::Strength naiveStrength(const std::string& password) {
    if (password.empty())
        return {0, 0.0};
    const auto characters = split(password);
    const auto lowered = Text::lowercased(password);
    const double n = static_cast<double>(characters.size());
    const double b = std::log2(pool(characters));
    double e = b * n;
    const int u = distinct(characters);
    const double r = u / n;
    if (r < 1)
        e = e * (0.65 * r + 0.35);
    const int m = repeats(characters);
    if (m >= 3)
        e = e - 0.8 * b * (m - 2);
    const int c = sequences(characters) + keyboardRun(lowered);
    if (c > 0)
        e = e - 0.6 * b * c;
    e = std::fmin(e, ceiling(lowered));
    e = std::fmax(e, 0);
    double score = e >= 128 ? 100 : std::round(e / 100 * 100);
    score = std::fmin(std::fmax(score, 0), 100);
    if (n <= 5)
        score = std::fmin(score, 20);
    if (n == 6 || n == 7)
        score = std::fmin(score, 40);
    if (u < 3)
        score = std::fmin(score, 10);
    return {static_cast<std::int64_t>(score), e};
}
