// SPDX-License-Identifier: MIT
// memory-program PID: looks for secrets in all memory that the process can write to. Each line of the input is a
// secret: its name, a space and its bytes as hexadecimal digits. Each line of the output is a form in which one was
// found: name, form, how often, and where at first.
//
// Found are eight letters of a secret in a row, or backwards, each the same number of bytes behind the other, 1 to 64:
// UTF-8 is at 1, the letters of UTF-16 and UTF-32 are at 2 and 4, and those of a list of keystrokes further apart. What
// freed memory has lost of a long secret's beginning does not hide the rest.
#include "core/text/TextUTF8.h"
#include "tests/support/Hex.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <map>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

constexpr std::size_t letters = 8;
constexpr std::size_t widestStride = 64;
constexpr std::size_t widest = letters * widestStride;
constexpr std::size_t windowSize = std::size_t(8) << 20;

using Letters = std::array<std::uint8_t, letters>;

struct Needle {
    Letters letters;
    std::string name;
    bool isBackwards;
};

struct Found {
    int count = 0;
    std::string first;
};

using Table = std::map<std::pair<std::string, std::string>, Found>;

/// The lowest byte of each character: what UTF-16 and UTF-32 have of it at even distances.
std::vector<std::uint8_t> lowestBytes(const std::vector<std::uint8_t>& utf8) {
    std::vector<std::uint8_t> bytes;
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const auto byte = utf8[i];
        if (byte < 0x80)
            bytes.push_back(byte);
        else if (byte >= 0xC0 && byte < 0xE0 && i + 1 < utf8.size())
            bytes.push_back(static_cast<std::uint8_t>(byte << 6 | (utf8[i + 1] & 0x3F)));
    }
    return bytes;
}

class Needles {
public:
    void add(const std::string& name, const std::vector<std::uint8_t>& bytes) {
        if (bytes.size() < letters)
            throw std::runtime_error(name + " is too short to be looked for");
        for (std::size_t start = 0; start < bytes.size(); start += letters) {
            Needle needle{{}, name, false};
            std::copy_n(bytes.begin() + static_cast<std::ptrdiff_t>(std::min(start, bytes.size() - letters)), letters,
                        needle.letters.begin());
            add(needle);
            std::reverse(needle.letters.begin(), needle.letters.end());
            needle.isBackwards = true;
            add(needle);
        }
    }
    [[nodiscard]] const std::vector<Needle>& startingWith(std::uint8_t byte) const { return m_byFirst[byte]; }

private:
    void add(const Needle& needle) { m_byFirst[needle.letters[0]].push_back(needle); }

    std::array<std::vector<Needle>, 256> m_byFirst;
};

bool isAt(const std::uint8_t* place, const Letters& wanted, std::size_t stride) {
    for (std::size_t i = 2; i < letters; ++i)
        if (place[i * stride] != wanted[i])
            return false;
    return true;
}

std::string formOf(const Needle& needle, std::size_t stride) {
    std::string form = stride == 1   ? "UTF-8"
                       : stride == 2 ? "UTF-16"
                       : stride == 4 ? "UTF-32"
                                     : std::to_string(stride) + " bytes apart";
    return needle.isBackwards ? form + ", backwards" : form;
}

/// What starts within `size` bytes at `window`, behind which `widest` more can be read.
void look(const std::uint8_t* window, std::size_t size, const Needles& needles, const std::string& mapping,
          std::uint64_t address, Table& table) {
    for (std::size_t at = 0; at < size; ++at) {
        const auto* const place = window + at;
        for (const auto& needle : needles.startingWith(*place)) {
            const auto* second = place;
            const auto* const last = place + widestStride;
            while (second < last && (second = static_cast<const std::uint8_t*>(std::memchr(
                                         second + 1, needle.letters[1], static_cast<std::size_t>(last - second))))) {
                const auto stride = static_cast<std::size_t>(second - place);
                if (!isAt(place, needle.letters, stride))
                    continue;
                auto& found = table[{needle.name, formOf(needle, stride)}];
                if (found.count++ == 0) {
                    std::ostringstream where;
                    where << std::hex << address + at << " in " << mapping;
                    found.first = where.str();
                }
            }
        }
    }
}

class Memory {
public:
    explicit Memory(const std::string& process)
        : m_folder("/proc/" + process), m_memory(::open((m_folder + "/mem").c_str(), O_RDONLY | O_CLOEXEC)) {
        if (m_memory < 0)
            throw std::runtime_error("the memory of " + process + " cannot be read");
    }
    ~Memory() { ::close(m_memory); }
    Memory(const Memory&) = delete;
    Memory& operator=(const Memory&) = delete;

    void look(const Needles& needles, Table& table) {
        std::ifstream maps(m_folder + "/maps");
        for (std::string line; std::getline(maps, line);) {
            std::uint64_t begin = 0;
            std::uint64_t end = 0;
            std::array<char, 5> rights{};
            if (std::sscanf(line.c_str(), "%lx-%lx %4s", &begin, &end, rights.data()) != 3)
                throw std::runtime_error("a mapping that is none: " + line);
            if (std::string_view(rights.data()).starts_with("rw"))
                look(begin, end, line.substr(std::min(line.size(), line.rfind(' ') + 1)), needles, table);
        }
        if (m_bytes == 0)
            throw std::runtime_error("no memory was read");
    }
    [[nodiscard]] std::uint64_t bytes() const { return m_bytes; }

private:
    void look(std::uint64_t begin, std::uint64_t end, const std::string& mapping, const Needles& needles,
              Table& table) {
        for (auto address = begin; address < end; address += windowSize) {
            std::fill(m_window.begin(), m_window.end(), 0);
            const auto wanted = std::min<std::uint64_t>(windowSize + widest, end - address);
            const auto size = ::pread(m_memory, m_window.data(), wanted, static_cast<off_t>(address));
            if (size <= 0)
                continue;
            const auto starts = std::min(static_cast<std::size_t>(size), windowSize);
            m_bytes += starts;
            ::look(m_window.data(), starts, needles, mapping.empty() ? "memory without a name" : mapping, address,
                   table);
        }
    }

    std::string m_folder;
    int m_memory;
    std::uint64_t m_bytes = 0;
    std::vector<std::uint8_t> m_window = std::vector<std::uint8_t>(windowSize + widest);
};

Needles readNeedles(std::istream& input) {
    Needles needles;
    std::set<std::string> names;
    for (std::string name, hex; input >> name >> hex; names.insert(name)) {
        const auto bytes = fromHex(hex);
        const std::vector<std::uint8_t> utf8(bytes.begin(), bytes.end());
        needles.add(name, utf8);
        if (const auto low = lowestBytes(utf8); low != utf8 && low.size() >= letters)
            needles.add(name, low);
    }
    if (names.empty())
        throw std::runtime_error("there is nothing to look for");
    return needles;
}

}  // namespace

int main(int argc, char** argv) try {
    if (argc != 2) {
        std::cerr << "usage: memory-program PID <SECRETS\n";
        return EXIT_FAILURE;
    }
    const auto needles = readNeedles(std::cin);
    Memory memory(argv[1]);
    Table table;
    memory.look(needles, table);
    for (const auto& [what, found] : table)
        std::cout << what.first << '\t' << what.second << '\t' << found.count << '\t' << found.first << '\n';
    std::cerr << memory.bytes() << " bytes were read\n";
    return EXIT_SUCCESS;
} catch (const std::exception& failure) {
    std::cerr << failure.what() << '\n';
    return EXIT_FAILURE;
}
