// SPDX-License-Identifier: MIT
// Runs a fuzzer over the files of a folder, so that what it once found stays found.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char** argv) {
    if (argc != 2)
        return 2;
    int count = 0;
    for (const auto& file : std::filesystem::directory_iterator(argv[1])) {
        std::ifstream stream(file.path(), std::ios::binary);
        const std::vector<char> content{std::istreambuf_iterator<char>(stream), {}};
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(content.data()), content.size());
        ++count;
    }
    std::printf("%d inputs\n", count);
    return count > 0 ? 0 : 1;
}
