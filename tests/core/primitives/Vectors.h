// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/Hex.h"

#include <fstream>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

/// One published vector: its fields by name. A field that it lacks ends the test.
class Vector {
public:
    void set(const std::string& field, const std::string& value) { m_fields[field] = value; }
    [[nodiscard]] bool has(const std::string& field) const { return m_fields.contains(field); }
    [[nodiscard]] const std::string& text(const std::string& field) const { return m_fields.at(field); }
    [[nodiscard]] Bytes bytes(const std::string& field) const { return fromHex(text(field)); }
    [[nodiscard]] const std::string& name() const { return text("name"); }

private:
    std::map<std::string, std::string> m_fields;
};

/// The vectors of a file under tests/data/primitives: lines `field = value`, each vector beginning with its name, and
/// comments after `#`. A file without any is a failure and not an empty list.
inline std::vector<Vector> vectorsIn(const std::string& file) {
    std::ifstream stream(BRENVIK_TEST_DATA "/primitives/" + file);
    std::vector<Vector> vectors;
    for (std::string line; std::getline(stream, line);) {
        if (line.empty() || line.starts_with('#'))
            continue;
        const auto equals = line.find('=');
        if (equals == std::string::npos)
            throw std::runtime_error(file + ": not a field: " + line);
        const auto field = line.substr(0, line.find(' '));
        if (field == "name")
            vectors.emplace_back();
        if (vectors.empty())
            throw std::runtime_error(file + ": a field before the first name: " + line);
        vectors.back().set(field, equals + 2 < line.size() ? line.substr(equals + 2) : "");
    }
    if (vectors.empty())
        throw std::runtime_error(file + ": no vectors");
    return vectors;
}
