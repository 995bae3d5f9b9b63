// SPDX-License-Identifier: MIT
// Vault files with one fault each. A file's name begins with the failure that is right for it.
#include "core/container/KdbxFile.h"
#include "tests/support/Failures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

namespace fs = std::filesystem;

const fs::path folder = fs::path(BRENVIK_TEST_DATA) / "vaults" / "refused";

std::vector<std::string> vaultNames() {
    std::vector<std::string> names;
    for (const auto& file : fs::directory_iterator(folder))
        names.push_back(file.path().stem().string());
    std::ranges::sort(names);
    return names;
}

class RefusedVaultsTest : public testing::TestWithParam<std::string> {};

TEST_P(RefusedVaultsTest, isRefusedWithTheFailureOfItsName) {
    std::ifstream stream(folder / (GetParam() + ".kdbx"), std::ios::binary);
    const Bytes file(std::istreambuf_iterator<char>(stream), {});
    const auto failure = GetParam().substr(0, GetParam().find('-'));

    const auto outcome = outcomeOf([&] { return KdbxFile::load(file, {"parola", std::nullopt}); });

    EXPECT_TRUE(outcome.starts_with(failure + ": ")) << outcome;
}

INSTANTIATE_TEST_SUITE_P(, RefusedVaultsTest, testing::ValuesIn(vaultNames()), [](const auto& info) {
    auto name = info.param;
    std::ranges::replace_if(
        name, [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); }, '_');
    return name;
});

TEST(RefusedVaultsFolderTest, hasAVaultForEveryFailureOfALoad) {
    EXPECT_EQ(vaultNames().size(), 21U);
}

}  // namespace
