// SPDX-License-Identifier: MIT
#include "tests/probe/Probe.h"

#include <iostream>

int main() {
    Probe::Operations operations;
    Probe::addVault(operations);
    Probe::addPrimitives(operations);
    Probe::addText(operations);
    Probe::addBrowsing(operations);
    Probe::addPasswords(operations);
    Probe::addState(operations);

    std::ios::sync_with_stdio(false);
    for (std::string line; std::getline(std::cin, line);)
        std::cout << Probe::answer(operations, line) << std::endl;
    return 0;
}
