// SPDX-License-Identifier: MIT
#pragma once

#include "core/container/KdbxReader.h"
#include "core/document/KdbxXML.h"
#include "core/primitives/Bytes.h"

#include <cstdint>
#include <vector>

/// What precedes the document in the payload of a KDBX 4 file: how its protected values are enciphered, and the
/// attachments.
struct KdbxInnerHeader {
    /// As the format numbers them.
    enum class FieldID : std::uint8_t {
        end = 0,                   // empty
        innerRandomStreamID = 1,   // 32 bits
        innerRandomStreamKey = 2,  // any bytes
        binary = 3                 // 1 byte of flags, then the attachment
    };

    std::uint32_t streamID = 3;  // as the file has it, known or not
    Bytes streamKey;
    std::vector<KdbxXML::Binary> binaries;  // in pool order

    /// Reads up to the first byte of the document, where `reader` is left. Unknown fields are skipped.
    ///
    /// @throws KdbxError corruptedData.
    [[nodiscard]] static KdbxInnerHeader parse(KdbxReader& reader);

    [[nodiscard]] Bytes serialize() const;

    friend bool operator==(const KdbxInnerHeader&, const KdbxInnerHeader&) = default;
};
