// SPDX-License-Identifier: MIT
#include "core/container/KdbxFile.h"
#include "tests/desktop/DemoVault.h"

#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>

// demo-vault FILE [COUNT [ROUNDS]]: writes the demo vault, and COUNT further entries in it, to FILE under the password
// "parola". With ROUNDS, its key takes as many rounds of AES.

int main(int argc, char** argv) try {
    if (argc < 2 || argc > 4) {
        std::cerr << "usage: demo-vault FILE [COUNT [ROUNDS]]\n";
        return EXIT_FAILURE;
    }
    const auto count = argc > 2 ? std::stoul(argv[2]) : 0;
    auto vault = count == 0 ? demoVault() : demoVaultWithFurtherEntries(count);
    if (argc > 3)
        vault.kdf = {KdfSettings::AesKdf{.rounds = std::stoull(argv[3])}};
    const auto bytes = KdbxFile::save(vault, KdbxKey("parola", std::nullopt));

    std::ofstream file(argv[1], std::ios::binary | std::ios::trunc);
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    file.flush();
    return file ? EXIT_SUCCESS : EXIT_FAILURE;
} catch (const std::exception& failure) {
    std::cerr << failure.what() << '\n';
    return EXIT_FAILURE;
}
