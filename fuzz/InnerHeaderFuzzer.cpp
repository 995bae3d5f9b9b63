// SPDX-License-Identifier: MIT
// An inner header that parses is written as one that parses to the same, up to the same place.
#include "core/container/KdbxCrypto.h"
#include "core/container/KdbxInnerHeader.h"
#include "core/model/KdbxError.h"
#include "fuzz/Require.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    KdbxReader reader({data, size});
    KdbxInnerHeader header;
    try {
        header = KdbxInnerHeader::parse(reader);
    } catch (const KdbxError&) {
        return 0;
    }
    require(reader.offset() >= 0 && reader.remaining() >= 0);
    const auto written = header.serialize();
    KdbxReader again(written);
    require(KdbxInnerHeader::parse(again) == header && again.isAtEnd());
    try {
        if (const auto id = KdbxCrypto::innerStreamID(header.streamID))
            require(KdbxCrypto::makeInnerStream(*id, header.streamKey)->process(written).size() == written.size());
    } catch (const KdbxError&) {
        return 0;
    }
    return 0;
}
