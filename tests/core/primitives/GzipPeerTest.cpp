// SPDX-License-Identifier: MIT
#include "core/primitives/Gzip.h"
#include "tests/core/primitives/Material.h"
#include "tests/support/Hex.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

namespace fs = std::filesystem;

/// Data of every kind: random, repetitive, text, and stretches of each.
Bytes mixture(Material& material, std::size_t size) {
    Bytes data;
    while (data.size() < size) {
        const auto length = material.number(1, 2000);
        switch (material.number(0, 3)) {
            case 0:
                append(data, material.bytes(length));
                break;
            case 1:
                data.insert(data.end(), length, static_cast<std::uint8_t>(material.number(0, 255)));
                break;
            case 2:
                append(data, bytesOf("<Value Protected=\"True\">"));
                break;
            default:
                append(data, copyOf(ByteView(data).first(std::min<std::size_t>(length, data.size()))));
                break;
        }
    }
    data.resize(size);
    return data;
}

struct ZlibHeader {
    Bytes extra;
    std::string name;
    std::string comment;
    bool crc;
};

/// A member by zlib, with the header's fields where they are not empty.
Bytes zlibMember(ByteView data, int level, int strategy, const ZlibHeader& fields) {
    z_stream stream{};
    EXPECT_EQ(deflateInit2(&stream, level, Z_DEFLATED, MAX_WBITS + 16, MAX_MEM_LEVEL, strategy), Z_OK);
    gz_header header{};
    auto extra = fields.extra;
    auto name = fields.name;
    auto comment = fields.comment;
    header.time = 1700000000;
    header.os = 3;
    header.hcrc = fields.crc;
    header.extra = extra.empty() ? nullptr : extra.data();
    header.extra_len = static_cast<uInt>(extra.size());
    header.name = name.empty() ? nullptr : reinterpret_cast<Bytef*>(name.data());
    header.comment = comment.empty() ? nullptr : reinterpret_cast<Bytef*>(comment.data());
    EXPECT_EQ(deflateSetHeader(&stream, &header), Z_OK);
    Bytes out(deflateBound(&stream, data.size()) + 1000);
    stream.next_in = const_cast<Bytef*>(data.data());
    stream.avail_in = static_cast<uInt>(data.size());
    stream.next_out = out.data();
    stream.avail_out = static_cast<uInt>(out.size());
    EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
    out.resize(stream.total_out);
    deflateEnd(&stream);
    return out;
}

Bytes zlibDecompressed(ByteView member, std::size_t size) {
    z_stream stream{};
    EXPECT_EQ(inflateInit2(&stream, MAX_WBITS + 16), Z_OK);
    Bytes out(size + 1);
    stream.next_in = const_cast<Bytef*>(member.data());
    stream.avail_in = static_cast<uInt>(member.size());
    stream.next_out = out.data();
    stream.avail_out = static_cast<uInt>(out.size());
    EXPECT_EQ(inflate(&stream, Z_FINISH), Z_STREAM_END);
    EXPECT_EQ(stream.avail_in, 0U);
    out.resize(stream.total_out);
    inflateEnd(&stream);
    return out;
}

TEST(GzipPeerTest, zlibReadsWhatIsWritten) {
    Material material(1);
    for (int i = 0; i < 200; ++i) {
        const auto data = mixture(material, material.number(0, 30000));
        EXPECT_TRUE(zlibDecompressed(Gzip::compress(data), data.size()) == data) << i;
    }
}

TEST(GzipPeerTest, readsWhatZlibWritesAtEveryLevelAndStrategy) {
    Material material(2);
    for (int level = 0; level <= 9; ++level)
        for (const int strategy : {Z_DEFAULT_STRATEGY, Z_FILTERED, Z_HUFFMAN_ONLY, Z_RLE, Z_FIXED}) {
            const auto data = mixture(material, material.number(0, 100000));
            EXPECT_TRUE(Gzip::decompress(zlibMember(data, level, strategy, {})) == data) << level << " " << strategy;
        }
}

TEST(GzipPeerTest, readsEveryCombinationOfZlibsHeaderFields) {
    Material material(3);
    for (unsigned fields = 0; fields < 16; ++fields) {
        const auto data = mixture(material, 1000);
        const ZlibHeader header{.extra = fields & 1 ? material.bytes(300) : Bytes(),
                                .name = fields & 2 ? "belge.xml" : "",
                                .comment = fields & 4 ? "bir yorum" : "",
                                .crc = (fields & 8) != 0};
        EXPECT_TRUE(Gzip::decompress(zlibMember(data, 6, Z_DEFAULT_STRATEGY, header)) == data) << fields;
    }
}

TEST(GzipPeerTest, crc32AgreesWithZlib) {
    Material material(4);
    for (int i = 0; i < 100; ++i) {
        const auto data = material.bytes(material.number(0, 10000));
        EXPECT_EQ(Gzip::crc32(data), crc32_z(0, data.data(), data.size()));
    }
}

/// A folder for the system's own program, gone at the end.
class GzipProgramTest : public testing::Test {
protected:
    void SetUp() override { fs::create_directories(m_folder); }
    void TearDown() override { fs::remove_all(m_folder); }

    [[nodiscard]] fs::path file(const std::string& name) const { return m_folder / name; }
    void write(const std::string& name, ByteView data) const {
        std::ofstream(file(name), std::ios::binary) << textOf(data);
    }
    [[nodiscard]] Bytes read(const std::string& name) const {
        std::ifstream stream(file(name), std::ios::binary);
        EXPECT_TRUE(stream.is_open()) << name;
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    void run(const std::string& command) const {
        ASSERT_EQ(std::system(("cd '" + m_folder.string() + "' && " + command).c_str()), 0) << command;
    }

private:
    fs::path m_folder = fs::path(testing::TempDir()) /
                        ("gzip-" + std::string(testing::UnitTest::GetInstance()->current_test_info()->name()));
};

TEST_F(GzipProgramTest, theSystemsProgramReadsWhatIsWritten) {
    Material material(5);
    for (const std::size_t size : {0, 1, 1000, 300000}) {
        const auto data = mixture(material, size);
        write("belge.gz", Gzip::compress(data));
        run("gzip -t belge.gz && gzip -d -c belge.gz > belge");
        EXPECT_TRUE(read("belge") == data) << size;
    }
}

TEST_F(GzipProgramTest, readsWhatTheSystemsProgramWritesWithAndWithoutAName) {
    Material material(6);
    for (const std::size_t size : {0, 1, 1000, 300000})
        for (const auto* options : {"-1", "-6", "-9", "-n", "-N"}) {
            const auto data = mixture(material, size);
            write("belge.xml", data);
            run(std::string("gzip -f -k ") + options + " belge.xml");
            EXPECT_TRUE(Gzip::decompress(read("belge.xml.gz")) == data) << options << " " << size;
        }
}

}  // namespace
