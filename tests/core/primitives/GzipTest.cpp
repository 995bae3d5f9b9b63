// SPDX-License-Identifier: MIT
#include "core/primitives/Gzip.h"

#include "core/primitives/Random.h"
#include "tests/support/Hex.h"

#include <gtest/gtest.h>

namespace {

TEST(GzipTest, whatIsCompressedIsDecompressed) {
    for (const std::size_t size : {0, 1, 2, 1000, 65536, 1000000}) {
        const auto data = randomBytes(size);
        const auto repetitive = Bytes(size, 'a');
        EXPECT_TRUE(Gzip::decompress(Gzip::compress(data)) == data) << size;
        EXPECT_TRUE(Gzip::decompress(Gzip::compress(repetitive)) == repetitive) << size;
    }
}

}  // namespace
