// SPDX-License-Identifier: MIT
#include "core/container/KdbxFile.h"
#include "tests/desktop/DemoVault.h"

#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>

// long-text-vault FILE: writes a vault to FILE under the password "parola" whose texts are longer than people write.

namespace {

KdbxEntry entry(const std::string& title, const std::string& url, const std::string& notes) {
    KdbxEntry entry;
    entry.title = title;
    entry.url = url;
    entry.notes = notes;
    return entry;
}

KdbxDatabase vault() {
    std::string note;
    while (note.size() < 2'000'000)
        note += "Bir satır not, iki üç sözcük.\n";
    auto vault = demoVault();
    KdbxGroup group;
    group.name = "Uzun";
    group.entries = {entry("Adres", "https://ornek.example/" + std::string(65'536, 'a'), ""),
                     entry("Satır", "", std::string(1'048'576, 'b')), entry("Not", "", note),
                     entry("Dev", "", std::string(16'777'216, 'c'))};
    vault.root.groups.append(std::move(group));
    return vault;
}

}  // namespace

int main(int argc, char** argv) try {
    if (argc != 2) {
        std::cerr << "usage: long-text-vault FILE\n";
        return EXIT_FAILURE;
    }
    const auto bytes = KdbxFile::save(vault(), KdbxKey("parola", std::nullopt));
    std::ofstream file(argv[1], std::ios::binary | std::ios::trunc);
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    file.flush();
    return file ? EXIT_SUCCESS : EXIT_FAILURE;
} catch (const std::exception& failure) {
    std::cerr << failure.what() << '\n';
    return EXIT_FAILURE;
}
