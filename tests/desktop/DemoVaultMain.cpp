// SPDX-License-Identifier: MIT
#include "core/container/KdbxFile.h"
#include "tests/desktop/DemoVault.h"

#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>

// demo-vault FILE [COUNT]: writes the demo vault, and COUNT further entries in it, to FILE under the password "parola".

int main(int argc, char** argv) try {
    if (argc != 2 && argc != 3) {
        std::cerr << "usage: demo-vault FILE [COUNT]\n";
        return EXIT_FAILURE;
    }
    const auto vault = argc == 2 ? demoVault() : demoVaultWithFurtherEntries(std::stoul(argv[2]));
    const auto bytes = KdbxFile::save(vault, KdbxKey("parola", std::nullopt));

    std::ofstream file(argv[1], std::ios::binary | std::ios::trunc);
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    file.flush();
    return file ? EXIT_SUCCESS : EXIT_FAILURE;
} catch (const std::exception& failure) {
    std::cerr << failure.what() << '\n';
    return EXIT_FAILURE;
}
