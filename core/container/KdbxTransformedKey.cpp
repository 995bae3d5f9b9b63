// SPDX-License-Identifier: MIT
#include "core/container/KdbxTransformedKey.h"

#include "core/container/KdbxFileSteps.h"

KdbxKeys::Transformation KdbxTransformedKey::remembering(KdbxKeys::Transformation transformation,
                                                         std::optional<KdbxTransformedKey>& outcome) {
    return [transformation = std::move(transformation), &outcome](ByteView compositeKey, const KdbxHeader& header) {
        auto key = transformation(compositeKey, header);
        outcome = {.parameters = header.derivationParameters(), .key = key};
        return key;
    };
}

KdbxKeys::Transformation KdbxTransformedKey::orElse(KdbxKeys::Transformation otherwise) const {
    return [this, otherwise = std::move(otherwise)](ByteView compositeKey, const KdbxHeader& header) {
        return header.derivationParameters() == parameters ? key : otherwise(compositeKey, header);
    };
}

Bytes KdbxFile::saveUnder(const KdbxDatabase& database, const KdbxTransformedKey& key) {
    auto header = freshHeader(database);
    header.kdfParameters = key.parameters;
    header.rawData = header.serialize();
    return saveBehind(header, database, KdbxKeys::derive({}, header, [&](ByteView, const auto&) { return key.key; }));
}
