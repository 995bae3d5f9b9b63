// SPDX-License-Identifier: MIT
// secret-vault make FILE PASSWORD [KEY-FILE]: writes a vault with the entries of the input, one a line: title, user
// name, password, notes, the value of a field and of a protected one, with tabs between them. secret-vault keys FILE
// PASSWORD [KEY-FILE]: the keys of a vault file, one a line: name, space, hexadecimal digits.
#include "core/container/KdbxFile.h"
#include "core/container/KdbxKeys.h"
#include "core/primitives/LittleEndian.h"
#include "tests/support/Hex.h"

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <span>
#include <sstream>

namespace {

Bytes contentOf(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        throw std::runtime_error(file + " cannot be read");
    return {std::istreambuf_iterator<char>(stream), {}};
}

KdbxEntry entryOf(const std::string& line) {
    std::istringstream parts(line);
    const auto next = [&] {
        std::string part;
        std::getline(parts, part, '\t');
        return part;
    };
    KdbxEntry entry;
    entry.title = next();
    entry.username = next();
    entry.password = SecureString(next());
    entry.notes = next();
    entry.customFields.emplace("Düz", next());
    entry.customFields.emplace("Korumalı", next());
    entry.protectedCustomFields.insert("Korumalı");
    return entry;
}

void make(const std::string& file, const KdbxKey& key) {
    KdbxDatabase vault{.meta = {},
                       .root = {},
                       .cipher = KdbxCipher::aes256,
                       .kdf = {KdfSettings::AesKdf{.rounds = 10}},
                       .compressed = true,
                       .formatVersion = {.major = 4, .minor = 1}};
    vault.root.name = "Kök";
    for (std::string line; std::getline(std::cin, line);)
        vault.root.entries.append(entryOf(line));
    const auto bytes = KdbxFile::save(vault, key);
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    stream.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    if (!stream.flush())
        throw std::runtime_error(file + " cannot be written");
}

void printKeys(const std::string& file, const KdbxKey& key) {
    const auto bytes = contentOf(file);  // which the header points into
    const auto composite = KdbxKeys::compositeKey(key);
    const auto derived = KdbxKeys::derive(composite, KdbxHeader::parse(bytes));
    std::cout << "composite-key " << toHex(composite) << "\ntransformed-key " << toHex(derived.transformed)
              << "\nmaster-key " << toHex(derived.master) << "\nhmac-key " << toHex(derived.hmac.value()) << '\n';
}

}  // namespace

int main(int argc, char** argv) try {
    const std::vector<std::string> words(argv + 1, argv + argc);
    if (words.size() != 3 && words.size() != 4) {
        std::cerr << "usage: secret-vault make|keys FILE PASSWORD [KEY-FILE]\n";
        return EXIT_FAILURE;
    }
    KdbxKey key(words[2], std::nullopt);
    if (words.size() == 4)
        key.keyFileData = contentOf(words[3]);
    if (words[0] == "make")
        make(words[1], key);
    else
        printKeys(words[1], key);
    return EXIT_SUCCESS;
} catch (const std::exception& failure) {
    std::cerr << failure.what() << '\n';
    return EXIT_FAILURE;
}
