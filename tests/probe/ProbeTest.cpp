// SPDX-License-Identifier: MIT
#include "tests/probe/ProbeAnswers.h"
#include "tests/support/Hex.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>

namespace {

using Probe::Json;
namespace fs = std::filesystem;

const std::string vaults = std::string(BRENVIK_TEST_DATA) + "/vaults/";

void expectFailure(const Json& request, const std::string& name, const std::string& message) {
    EXPECT_EQ(answerTo(request), (Json{{"ok", false}, {"case", name}, {"message", message}})) << request;
}

/// A vault of the test data, with the password that its answer names.
Json vaultRequest(const std::string& op, const std::string& name) {
    const auto answer = Json::parse(std::ifstream(vaults + name + ".json"));
    const bool hasKeyFile = answer["keyfile"];
    return {{"op", op},
            {"file", vaults + name + ".kdbx"},
            {"password", answer["password"]},
            {"keyFile", hasKeyFile ? Json(vaults + name + ".key") : Json(nullptr)}};
}

TEST(ProbeTest, answersABadLineAndGoesOn) {
    for (const std::string line :
         {"", " ", "nonsense", "{", "[]", "1", "null", "\"load\"", "{}", "{\"op\": 1}", "{\"op\": \"\"}",
          "{\"op\": \"unknown\"}", "{\"op\": \"date\"}", "{\"op\": \"escape\", \"text\": \"\xFF\"}"}) {
        const auto answer = answerToLine(line);
        EXPECT_EQ(answer["ok"], false) << line;
        EXPECT_EQ(answer["case"], "probe") << line;
        EXPECT_TRUE(answer["message"].is_string()) << line;
    }
    EXPECT_EQ(answerToLine(std::string(100000, '['))["case"], "probe");
}

TEST(ProbeTest, theProgramAnswersEachLineInOrderUntilItsInputEnds) {
    const auto input = fs::temp_directory_path() / ("brenvik-probe-" + std::to_string(::getpid()));
    std::ofstream(input) << "bozuk\n"
                            "{\"op\": \"parseBool\", \"text\": \"TRUE\"}\n"
                            "\n"
                            "{\"op\": \"splitTags\", \"text\": \"a; b, c\"}\n"
                            "{\"op\": \"parseBool\", \"text\": \"null\"}";
    const auto command = std::string(BRENVIK_PROBE) + " < " + input.string();
    const std::unique_ptr<FILE, int (*)(FILE*)> probe(::popen(command.c_str(), "r"), ::pclose);
    std::string output;
    std::array<char, 4096> buffer{};
    while (const auto count = std::fread(buffer.data(), 1, buffer.size(), probe.get()))
        output.append(buffer.data(), count);
    fs::remove(input);

    std::istringstream lines(output);
    std::vector<Json> answers;
    for (std::string line; std::getline(lines, line);)
        answers.push_back(Json::parse(line));
    ASSERT_EQ(answers.size(), 5u) << output;
    EXPECT_EQ(answers[0]["case"], "probe");
    EXPECT_EQ(answers[1], (Json{{"ok", true}, {"result", true}}));
    EXPECT_EQ(answers[2]["case"], "probe");
    EXPECT_EQ(answers[3], (Json{{"ok", true}, {"result", {"a", "b", "c"}}}));
    EXPECT_EQ(answers[4], (Json{{"ok", true}, {"result", nullptr}}));
}

TEST(ProbeVaultTest, loadsAVaultWithEveryFieldOfTheModel) {
    const auto vault = resultOf(vaultRequest("load", "v02-4.0-aes256-argon2id-key"));

    EXPECT_EQ(vault["formatVersion"], Json::array({4, 0}));
    EXPECT_EQ(vault["cipher"], "AES-256-CBC");
    EXPECT_EQ(vault["compressed"], true);
    EXPECT_EQ(vault["kdf"], (Json{{"case", "argon2id"}, {"memoryKiB", 2048}, {"iterations", 3}, {"parallelism", 4}}));
    EXPECT_EQ(vault["meta"]["databaseName"], "Kasa ılık Banka ağ");
    EXPECT_EQ(vault["meta"].size(), 8u);
    const auto& root = vault["root"];
    EXPECT_EQ(root.size(), 11u);
    EXPECT_EQ(root["iconID"], 46);
    EXPECT_EQ(root["id"], "61C817AC-EF66-B0AE-D479-9622C9CC08EB");
    const auto& entry = root["entries"][0];
    EXPECT_EQ(entry.size(), 20u);
    EXPECT_EQ(entry["password"], "ağ Ödeme0.6670489904420104");
    EXPECT_EQ(entry["created"], 658067275);
    EXPECT_EQ(entry["expiryTime"], 1748846577);
    EXPECT_EQ(entry["autoTypeSequence"], nullptr);
    EXPECT_EQ(entry["customFields"], (Json{{"PIN 0", "\"q\" <x>"}}));
    const auto& history = entry["historyItems"][0];
    EXPECT_EQ(history["protectedCustomFields"], Json::array({"PIN 0"}));
    EXPECT_EQ(history["autoTypeWindowAssociations"],
              Json::array({Json{{"window", "*şifre*"}, {"sequence", nullptr}},
                           Json{{"window", "*tab\tbed*"}, {"sequence", nullptr}}}));
}

TEST(ProbeVaultTest, givesTheAesDerivationByItsRounds) {
    const auto vault = resultOf(vaultRequest("load", "v37-3.1-aes256-aes"));
    EXPECT_EQ(vault["kdf"], (Json{{"case", "aesKdf"}, {"rounds", 1}}));
    EXPECT_EQ(vault["formatVersion"], Json::array({3, 1}));
}

TEST(ProbeVaultTest, savesUnderTheSameKey) {
    const auto path = (fs::temp_directory_path() / ("brenvik-probe-" + std::to_string(::getpid()) + ".kdbx")).string();
    auto request = vaultRequest("save", "v06-4.0-chacha20-argon2d-key");
    const auto before = resultOf(vaultRequest("load", "v06-4.0-chacha20-argon2d-key"));
    request["to"] = path;

    const auto saved = resultOf(request);
    EXPECT_EQ(saved["bytes"], fs::file_size(path));
    request["op"] = "load";
    request["file"] = path;
    const auto after = resultOf(request);
    fs::remove(path);

    EXPECT_EQ(after["meta"], before["meta"]);
    EXPECT_EQ(after["kdf"], before["kdf"]);
    EXPECT_EQ(after["root"]["id"], before["root"]["id"]);
}

TEST(ProbeVaultTest, reportsATypedFailureByTypeCaseAndMessage) {
    auto request = vaultRequest("load", "v37-3.1-aes256-aes");
    request["password"] = "yanlış";
    expectFailure(request, "KdbxError.invalidCredentials", "Ana parola veya anahtar dosyası hatalı.");
    request["password"] = nullptr;
    expectFailure(request, "KdbxError.invalidCredentials", "Ana parola veya anahtar dosyası hatalı.");
    request["file"] = vaults + "v37-3.1-aes256-aes.json";
    expectFailure(request, "KdbxError.notAKdbxFile", "Bu bir KeePass veritabanı dosyası değil.");
}

TEST(ProbeVaultTest, refusesFilesThatCannotBeReadOrWritten) {
    auto request = vaultRequest("load", "v37-3.1-aes256-aes");
    request["keyFile"] = vaults + "absent";
    expectRefusal(request);
    request["keyFile"] = nullptr;
    request["file"] = vaults + "absent.kdbx";
    expectRefusal(request);
    request["file"] = vaults;
    expectRefusal(request);
    auto saving = vaultRequest("save", "v37-3.1-aes256-aes");
    expectRefusal(saving);
    saving["to"] = vaults + "absent/x.kdbx";
    expectRefusal(saving);
    request.erase("password");
    expectRefusal(request);
}

TEST(ProbeVaultTest, givesAHeaderFieldByField) {
    const auto header = resultOf({{"op", "header"}, {"file", vaults + "v00-4.0-aes256-argon2d.kdbx"}});

    EXPECT_EQ(header.size(), 16u);
    EXPECT_EQ(header["major"], 4);
    EXPECT_EQ(header["cipherUUID"], "31C1F2E6-BF71-4350-BE58-05216AFC5AFF");
    EXPECT_EQ(header["transformSeed"], nullptr);
    const auto& parameters = header["kdfParameters"];
    ASSERT_TRUE(parameters.is_array());
    Json uuid;
    for (const auto& item : parameters) {
        if (item[0] == "$UUID")
            uuid = item[1];
    }
    EXPECT_EQ(uuid, (Json{{"case", "bytes"}, {"value", "ef636ddf8c29444b91f7a9a403e30a0c"}}));
    EXPECT_EQ(header["rawData"].get<std::string>().size(), 2 * header["endOffset"].get<std::size_t>());

    const auto three = resultOf({{"op", "header"}, {"file", vaults + "v37-3.1-aes256-aes.kdbx"}});
    EXPECT_EQ(three["kdfParameters"], nullptr);
    EXPECT_EQ(three["transformRounds"], 1);
}

TEST(ProbeVaultTest, readsAKeyFile) {
    EXPECT_EQ(resultOf({{"op", "keyFile"}, {"data", std::string(64, 'a')}}),
              (Json{{"key", std::string(64, 'a')}, {"kind", "rawBinary32"}}));
    EXPECT_EQ(resultOf({{"op", "keyFile"}, {"data", ""}})["kind"], "hashed");
    expectFailure({{"op", "keyFile"}, {"data", toHex(bytesOf("<KeyFile/>"))}}, "KdbxError.corruptedData",
                  "Veritabanı bozuk: anahtar dosyasında <Key><Data> yok");
}

TEST(ProbeVaultTest, readsAndWritesADocument) {
    const std::string document =
        "<KeePassFile><Meta><HeaderHash>AQI=</HeaderHash></Meta><Root><Group><Entry><String><Key>Password</Key>"
        "<Value Protected=\"True\">Z2l6bGk=</Value></String></Entry></Group></Root></KeePassFile>";
    Json request{
        {"op", "document"}, {"data", toHex(bytesOf(document))}, {"streamID", 0}, {"streamKey", ""}, {"major", 3}};

    const auto three = resultOf(request);
    EXPECT_EQ(three["headerHash"], "0102");
    const auto xml = three["xml"].get<std::string>();
    EXPECT_NE(xml.find("<HeaderHash>AQI=</HeaderHash>"), std::string::npos);
    EXPECT_NE(xml.find("<Value Protected=\"True\">Z2l6bGk=</Value>"), std::string::npos);

    request["major"] = 4;
    EXPECT_EQ(resultOf(request)["xml"].get<std::string>().find("HeaderHash"), std::string::npos);
    request["streamID"] = 1;
    expectFailure(request, "KdbxError.unsupportedCipher", "Desteklenmeyen şifreleme algoritması: ARCFour inner stream");
    request["streamID"] = 4;
    expectRefusal(request);
    request["streamID"] = 2;
    request["data"] = "";
    expectFailure(request, "KdbxError.xmlParseFailure", "XML çözümlenemedi: belge çözümlenemedi");
}

TEST(ProbePrimitivesTest, runsArgon2) {
    // RFC 9106, section 5.3.
    Json request{{"op", "argon2"},
                 {"password", toHex(Bytes(32, 1))},
                 {"salt", toHex(Bytes(16, 2))},
                 {"secret", toHex(Bytes(8, 3))},
                 {"associatedData", toHex(Bytes(12, 4))},
                 {"memoryKiB", 32},
                 {"iterations", 3},
                 {"parallelism", 4},
                 {"outputLength", 32},
                 {"variant", "id"},
                 {"version", 19}};
    EXPECT_EQ(resultOf(request), "0d640df58d78766c08c037a34a8b53c9d01ef0452d75b65eb52520e96b01e659");
    request["salt"] = "00";
    EXPECT_EQ(answerTo(request)["case"], "Argon2.Error.invalidSaltLength");
    request["variant"] = "x";
    expectRefusal(request);
    request["variant"] = "i";
    request["memoryKiB"] = std::uint64_t{1} << 32;
    expectRefusal(request);
    request["memoryKiB"] = -1;
    expectRefusal(request);
}

TEST(ProbePrimitivesTest, hashesByBlake2b) {
    // RFC 7693, appendix A.
    EXPECT_EQ(resultOf({{"op", "blake2b"}, {"data", "616263"}, {"key", ""}, {"outputLength", 64}}),
              "ba80a53f981c4d0d6a2797b69f12f6e94c212f14685ac4b74b12bb6fdbffa2d1"
              "7d87c5392aab792dc252d5de4533cc9518d38aa8dbf1925ab92386edd4009923");
    expectRefusal({{"op", "blake2b"}, {"data", ""}, {"key", ""}, {"outputLength", 0}});
    expectRefusal({{"op", "blake2b"}, {"data", ""}, {"key", ""}, {"outputLength", 65}});
    expectRefusal({{"op", "blake2b"}, {"data", ""}, {"key", std::string(130, '0')}, {"outputLength", 1}});
    EXPECT_EQ(resultOf({{"op", "longHash"}, {"data", ""}, {"outputLength", 100}}).get<std::string>().size(), 200u);
    expectRefusal({{"op", "longHash"}, {"data", ""}, {"outputLength", 0}});
}

TEST(ProbePrimitivesTest, runsStreamsChunkByChunk) {
    const std::string key(64, '0');
    Json request{
        {"op", "chacha20"}, {"key", key}, {"nonce", std::string(24, '0')}, {"counter", 0}, {"chunks", {"0000", "00"}}};
    const auto chunks = resultOf(request);
    request["chunks"] = Json::array({"000000"});
    const auto whole = resultOf(request);
    // RFC 8439, appendix A.1, test vector 1.
    EXPECT_EQ(whole, Json::array({"76b8e0"}));
    EXPECT_EQ(chunks, Json::array({"76b8", "e0"}));

    for (const auto& [name, value] : std::map<std::string, Json>{
             {"key", "00"}, {"nonce", "00"}, {"counter", -1}, {"chunks", "00"}, {"chunks", {1}}}) {
        auto bad = request;
        bad[name] = value;
        expectRefusal(bad);
    }
    Json salsa{{"op", "salsa20"}, {"key", key}, {"nonce", std::string(16, '0')}, {"chunks", {"00000000"}}};
    EXPECT_EQ(resultOf(salsa), Json::array({"9a97f65b"}));
    salsa["nonce"] = std::string(24, '0');
    expectRefusal(salsa);
    salsa["nonce"] = std::string(16, '0');
    salsa["key"] = "00";
    expectRefusal(salsa);
}

TEST(ProbePrimitivesTest, runsAESInEveryMode) {
    // FIPS 197, appendix C.3.
    const auto key = "000102030405060708090a0b0c0d0e0f101112131415161718191a1b1c1d1e1f";
    const auto plain = "00112233445566778899aabbccddeeff";
    const auto ciphertext = "8ea2b7ca516745bfeafc49904b496089";
    EXPECT_EQ(resultOf({{"op", "aes"}, {"mode", "ecbEncrypt"}, {"data", plain}, {"key", key}, {"iv", ""}}), ciphertext);
    EXPECT_EQ(resultOf({{"op", "aes"}, {"mode", "ecbDecrypt"}, {"data", ciphertext}, {"key", key}, {"iv", ""}}), plain);
    const std::string iv(32, '0');
    const auto sealed = resultOf({{"op", "aes"}, {"mode", "cbcEncrypt"}, {"data", plain}, {"key", key}, {"iv", iv}});
    EXPECT_EQ(resultOf({{"op", "aes"}, {"mode", "cbcDecrypt"}, {"data", sealed}, {"key", key}, {"iv", iv}}), plain);
    EXPECT_EQ(answerTo(Json{{"op", "aes"}, {"mode", "cbcDecrypt"}, {"data", "00"}, {"key", key}, {"iv", iv}})["case"],
              "AESCipher.Error.cryptoFailure");
    expectRefusal({{"op", "aes"}, {"mode", "ofb"}, {"data", ""}, {"key", ""}, {"iv", ""}});
    EXPECT_EQ(resultOf({{"op", "aesKdf"}, {"input", std::string(64, '0')}, {"seed", key}, {"rounds", 0}}),
              "66687aadf862bd776c8fc18b8e9f8e20089714856ee233b3902a591d0d5f2925");
    EXPECT_EQ(answerTo(Json{{"op", "aesKdf"}, {"input", ""}, {"seed", key}, {"rounds", 0}})["case"],
              "KdbxError.cryptoFailure");
}

TEST(ProbePrimitivesTest, compressesAndDecompresses) {
    const auto member = resultOf({{"op", "gzip"}, {"mode", "compress"}, {"data", "616263"}});
    EXPECT_EQ(resultOf({{"op", "gzip"}, {"mode", "decompress"}, {"data", member}}), "616263");
    EXPECT_EQ(answerTo(Json{{"op", "gzip"}, {"mode", "decompress"}, {"data", std::string(60, '0')}})["case"],
              "Gzip.Error.notGzip");
    expectRefusal({{"op", "gzip"}, {"mode", "decompress"}, {"data", "abc"}});
    expectRefusal({{"op", "gzip"}, {"mode", "x"}, {"data", ""}});
}

TEST(ProbePrimitivesTest, takesADictionaryApart) {
    const auto result = resultOf({{"op", "variantDictionary"},
                                  {"data",
                                   "0501"
                                   "050100000062080000000500000000000000"
                                   "1801000000610300000061626308010000006301000000ff"
                                   "00ff"}});
    EXPECT_EQ(result["items"], Json::array({Json::array({"b", Json{{"case", "uint64"}, {"value", 5}}}),
                                            Json::array({"a", Json{{"case", "string"}, {"value", "abc"}}}),
                                            Json::array({"c", Json{{"case", "bool"}, {"value", true}}})}));
    EXPECT_EQ(result["serialized"],
              "0001"
              "050100000062080000000500000000000000"
              "180100000061030000006162630801000000630100000001"
              "00");
}

TEST(ProbeTextTest, readsAndWritesDates) {
    EXPECT_EQ(resultOf({{"op", "date"}, {"parse", "2024-01-02T03:04:05Z"}}), 1704164645);
    EXPECT_EQ(resultOf({{"op", "date"}, {"parse", "dün"}}), nullptr);
    EXPECT_EQ(resultOf({{"op", "date"}, {"encode", 1704164645}, {"major", 3}}), "2024-01-02T03:04:05Z");
    EXPECT_EQ(resultOf({{"op", "date"}, {"encode", 1704164645}, {"major", 4}}), "JXQl3Q4AAAA=");
    expectRefusal({{"op", "date"}, {"encode", 1e300}, {"major", 4}});
    expectRefusal({{"op", "date"}, {"encode", "x"}, {"major", 4}});
    expectRefusal({{"op", "date"}, {"encode", 1}});
    expectRefusal({{"op", "date"}, {"parse", 1}});
}

TEST(ProbeTextTest, escapesAndSanitises) {
    EXPECT_EQ(resultOf({{"op", "escape"}, {"text", "a<b & \"c\""}}), "a&lt;b &amp; \"c\"");
    EXPECT_EQ(resultOf({{"op", "sanitise"}, {"text", "a\u0001<b"}}), "a<b");
    EXPECT_EQ(resultOf({{"op", "parseBool"}, {"text", "0"}}), false);
    expectRefusal({{"op", "sanitise"}, {"text", nullptr}});
}

}  // namespace
