// SPDX-License-Identifier: MIT
#include "core/container/KdbxInnerHeader.h"

#include "core/model/KdbxError.h"
#include "core/primitives/LittleEndian.h"

namespace {

using FieldID = KdbxInnerHeader::FieldID;

KdbxXML::Binary binaryOf(ByteView value) {
    if (value.empty())
        throw KdbxError::corruptedData("boş iç başlık ikili verisi");
    return {.flags = value[0], .data = copyOf(value.subspan(1))};
}

/// A field up to its value, which has `size` bytes.
void appendFieldHead(Bytes& out, FieldID id, std::size_t size) {
    out.push_back(static_cast<std::uint8_t>(id));
    appendLE(out, static_cast<std::uint32_t>(size));
}

}  // namespace

KdbxInnerHeader KdbxInnerHeader::parse(KdbxReader& reader) {
    KdbxInnerHeader header;
    for (;;) {
        const auto id = FieldID{reader.u8()};
        const auto value = reader.read(reader.u32());
        switch (id) {
            case FieldID::end:
                return header;
            case FieldID::innerRandomStreamID:
                header.streamID = leadingLE<std::uint32_t>(value);  // 0 is the stream that changes nothing
                break;
            case FieldID::innerRandomStreamKey:
                header.streamKey = copyOf(value);
                break;
            case FieldID::binary:
                header.binaries.push_back(binaryOf(value));
                break;
        }
    }
}

Bytes KdbxInnerHeader::serialize() const {
    Bytes out;
    appendFieldHead(out, FieldID::innerRandomStreamID, sizeof streamID);
    appendLE(out, streamID);
    appendFieldHead(out, FieldID::innerRandomStreamKey, streamKey.size());
    append(out, streamKey);
    for (const auto& binary : binaries) {
        appendFieldHead(out, FieldID::binary, 1 + binary.data.size());
        out.push_back(binary.flags);
        append(out, binary.data);
    }
    appendFieldHead(out, FieldID::end, 0);
    return out;
}
