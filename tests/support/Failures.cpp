// SPDX-License-Identifier: MIT
#include "tests/support/Failures.h"

#include "core/model/KdbxError.h"
#include "core/primitives/AESCipher.h"
#include "core/primitives/Argon2.h"
#include "core/primitives/Gzip.h"
#include "core/primitives/Overloaded.h"

namespace {

const char* caseName(const KdbxError::Case& failure) {
    return std::visit(Overloaded{
                          [](const KdbxError::UnsupportedVersion&) { return "unsupportedVersion"; },
                          [](const KdbxError::CorruptedData&) { return "corruptedData"; },
                          [](const KdbxError::UnsupportedCipher&) { return "unsupportedCipher"; },
                          [](const KdbxError::UnsupportedKdf&) { return "unsupportedKdf"; },
                          [](const KdbxError::BlockHmacMismatch&) { return "blockHmacMismatch"; },
                          [](const KdbxError::XmlParseFailure&) { return "xmlParseFailure"; },
                          [](const KdbxError::CryptoFailure&) { return "cryptoFailure"; },
                          [](const KdbxError::NotAKdbxFile&) { return "notAKdbxFile"; },
                          [](const KdbxError::InvalidCredentials&) { return "invalidCredentials"; },
                          [](const KdbxError::HeaderHashMismatch&) { return "headerHashMismatch"; },
                          [](const KdbxError::NestedTooDeep&) { return "nestedTooDeep"; },
                      },
                      failure);
}

const char* caseName(const AESCipher::Error::Case& failure) {
    using AESCipher::Error;
    return std::visit(Overloaded{
                          [](const Error::InvalidKeyLength&) { return "invalidKeyLength"; },
                          [](const Error::InvalidIVLength&) { return "invalidIVLength"; },
                          [](const Error::InvalidBlockAlignment&) { return "invalidBlockAlignment"; },
                          [](const Error::CryptoFailure&) { return "cryptoFailure"; },
                      },
                      failure);
}

const char* caseName(const Argon2::Error::Case& failure) {
    using Argon2::Error;
    return std::visit(Overloaded{
                          [](const Error::InvalidParallelism&) { return "invalidParallelism"; },
                          [](const Error::InvalidMemory&) { return "invalidMemory"; },
                          [](const Error::InvalidIterations&) { return "invalidIterations"; },
                          [](const Error::InvalidOutputLength&) { return "invalidOutputLength"; },
                          [](const Error::InvalidSaltLength&) { return "invalidSaltLength"; },
                          [](const Error::UnsupportedVersion&) { return "unsupportedVersion"; },
                          [](const Error::AllocationFailed&) { return "allocationFailed"; },
                      },
                      failure);
}

const char* caseName(const Gzip::Error::Case& failure) {
    using Gzip::Error;
    return std::visit(Overloaded{
                          [](const Error::CrcMismatch&) { return "crcMismatch"; },
                          [](const Error::SizeMismatch&) { return "sizeMismatch"; },
                          [](const Error::NotGzip&) { return "notGzip"; },
                          [](const Error::Truncated&) { return "truncated"; },
                          [](const Error::HeaderCRCMismatch&) { return "headerCRCMismatch"; },
                          [](const Error::StreamFailure&) { return "streamFailure"; },
                      },
                      failure);
}

template <class Error>
std::optional<Failure> failureIf(const std::exception& exception, const std::string& typeName) {
    const auto* error = dynamic_cast<const Error*>(&exception);
    if (!error)
        return std::nullopt;
    return Failure{typeName + "." + caseName(error->failure()), error->errorDescription()};
}

}  // namespace

std::optional<Failure> failureOf(const std::exception& exception) {
    if (auto failure = failureIf<KdbxError>(exception, "KdbxError"))
        return failure;
    if (auto failure = failureIf<AESCipher::Error>(exception, "AESCipher.Error"))
        return failure;
    if (auto failure = failureIf<Argon2::Error>(exception, "Argon2.Error"))
        return failure;
    return failureIf<Gzip::Error>(exception, "Gzip.Error");
}
