// SPDX-License-Identifier: MIT
#include "core/container/KdbxReader.h"

#include "core/model/KdbxError.h"
#include "core/primitives/LittleEndian.h"

#include <string>

ByteView KdbxReader::read(std::int64_t count) {
    if (count < 0 || count > remaining())
        throw KdbxError::corruptedData("beklenenden kısa veri (" + std::to_string(count) + " bayt istendi, " +
                                       std::to_string(remaining()) + " kaldı)");
    const auto bytes = m_bytes.subspan(static_cast<std::size_t>(m_offset), static_cast<std::size_t>(count));
    m_offset += count;
    return bytes;
}

std::uint8_t KdbxReader::u8() {
    return read(1)[0];
}

std::uint16_t KdbxReader::u16() {
    return loadLE<std::uint16_t>(read(2).data());
}

std::uint32_t KdbxReader::u32() {
    return loadLE<std::uint32_t>(read(4).data());
}

std::uint64_t KdbxReader::u64() {
    return loadLE<std::uint64_t>(read(8).data());
}

std::int32_t KdbxReader::i32() {
    return loadLE<std::int32_t>(read(4).data());
}

std::int64_t KdbxReader::i64() {
    return loadLE<std::int64_t>(read(8).data());
}
