// SPDX-License-Identifier: MIT
#include "core/primitives/Base64.h"
#include "core/primitives/Gzip.h"

#include <benchmark/benchmark.h>
#include <zlib.h>

#include <random>
#include <string>

namespace {

constexpr std::size_t documentSize = 10'000'000;

/// Text as a vault's document has it: the same elements over and over, around names, random identifiers, times and
/// enciphered values. The same one in every run.
Bytes makeDocument() {
    std::mt19937_64 random(20240521);
    const auto base64 = [&](std::size_t size) {
        Bytes bytes(size);
        for (auto& byte : bytes)
            byte = static_cast<std::uint8_t>(random());
        return Base64::encode(bytes);
    };
    const auto field = [](const std::string& key, const std::string& attribute, const std::string& value) {
        return "\t\t\t\t<String>\n\t\t\t\t\t<Key>" + key + "</Key>\n\t\t\t\t\t<Value" + attribute + ">" + value +
               "</Value>\n\t\t\t\t</String>\n";
    };
    const char* const words[] = {"posta", "banka", "market", "forum", "okul", "sunucu", "radyo", "kitap"};
    std::string text = "<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"yes\"?>\n";
    while (text.size() < documentSize) {
        const std::string site = words[random() % 8] + std::to_string(random() % 10000);
        text += "\t\t\t<Entry>\n\t\t\t\t<UUID>" + base64(16) + "</UUID>\n\t\t\t\t<IconID>0</IconID>\n";
        text += field("Title", "", site) + field("UserName", "", std::string(words[random() % 8]) + "@example.com");
        text += field("URL", "", "https://" + site + ".example.com/") + field("Notes", "", "");
        text += field("Password", " Protected=\"True\"", base64(12 + random() % 12));
        text += "\t\t\t\t<Times>\n\t\t\t\t\t<CreationTime>" + base64(8) + "</CreationTime>\n\t\t\t\t</Times>\n";
        text += "\t\t\t</Entry>\n";
    }
    return copyOf(bytesOf(text).first(documentSize));
}

const Bytes& document() {
    static const Bytes document = makeDocument();
    return document;
}

/// A raw DEFLATE stream by zlib at its own level.
Bytes zlibDeflate(const Bytes& data) {
    z_stream stream{};
    deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, -MAX_WBITS, MAX_MEM_LEVEL, Z_DEFAULT_STRATEGY);
    Bytes out(deflateBound(&stream, data.size()));
    stream.next_in = const_cast<Bytef*>(data.data());
    stream.avail_in = static_cast<uInt>(data.size());
    stream.next_out = out.data();
    stream.avail_out = static_cast<uInt>(out.size());
    deflate(&stream, Z_FINISH);
    out.resize(stream.total_out);
    deflateEnd(&stream);
    return out;
}

Bytes zlibInflate(const Bytes& data, std::size_t size) {
    z_stream stream{};
    inflateInit2(&stream, -MAX_WBITS);
    Bytes out(size);
    stream.next_in = const_cast<Bytef*>(data.data());
    stream.avail_in = static_cast<uInt>(data.size());
    stream.next_out = out.data();
    stream.avail_out = static_cast<uInt>(out.size());
    inflate(&stream, Z_FINISH);
    inflateEnd(&stream);
    return out;
}

/// Runs a step over the document, and tells how much smaller its deflated form is.
void measure(benchmark::State& state, std::size_t deflatedSize, const auto& step) {
    for (auto _ : state)
        benchmark::DoNotOptimize(step());
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(documentSize));
    state.counters["ratio"] = static_cast<double>(documentSize) / static_cast<double>(deflatedSize);
}

void deflateOurs(benchmark::State& state) {
    measure(state, Gzip::compress(document()).size(), [] { return Gzip::compress(document()); });
}

/// With the check sum, which a member has too.
void deflateZlib(benchmark::State& state) {
    measure(state, zlibDeflate(document()).size(), [] {
        benchmark::DoNotOptimize(crc32_z(0, document().data(), document().size()));
        return zlibDeflate(document());
    });
}

void inflateOurs(benchmark::State& state) {
    const auto member = Gzip::compress(document());
    measure(state, member.size(), [&] { return Gzip::decompress(member); });
}

void inflateZlib(benchmark::State& state) {
    const auto deflated = zlibDeflate(document());
    measure(state, deflated.size(), [&] {
        auto inflated = zlibInflate(deflated, documentSize);
        benchmark::DoNotOptimize(crc32_z(0, inflated.data(), inflated.size()));
        return inflated;
    });
}

BENCHMARK(deflateOurs)->Name("Gzip_deflate_10MB/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(deflateZlib)->Name("Gzip_deflate_10MB/zlib")->Unit(benchmark::kMillisecond);
BENCHMARK(inflateOurs)->Name("Gzip_inflate_10MB/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(inflateZlib)->Name("Gzip_inflate_10MB/zlib")->Unit(benchmark::kMillisecond);

}  // namespace
