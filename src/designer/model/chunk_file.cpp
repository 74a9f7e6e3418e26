#include "designer/model/chunk_file.h"

#include <array>

#include "designer/model/stored_numbers.h"
#include "support/text.h"

namespace bw {
namespace {

using Kind = ChunkFault::Kind;

TextId WordsOf(Kind kind) {
    switch (kind) {
        case Kind::kHeaderCut:
            return TextId::kChunkHeaderCut;
        case Kind::kPayloadCut:
            return TextId::kChunkDataCut;
        case Kind::kTooLarge:
            return TextId::kChunkTooLarge;
        case Kind::kTextCut:
            return TextId::kChunkTextCut;
        case Kind::kTextOutside:
            return TextId::kChunkTextOutside;
        case Kind::kTextTooLong:
            return TextId::kChunkTextTooLong;
        default:
            return TextId::kChunkTextOdd;
    }
}

}  // namespace

std::u16string FaultReason(const ChunkFault& fault, Language language) {
    const std::u16string format = LoadText(WordsOf(fault.kind), language);
    return fault.kind == Kind::kTextOdd ? FormatText(format, fault.found)
                                        : FormatText(format, fault.found, fault.expected);
}

std::u16string FaultText(const ChunkFault& fault, Language language) {
    const std::u16string place =
        fault.kind == Kind::kHeaderCut
            ? FormatText(LoadText(TextId::kChunkAt, language), fault.offset)
            : FormatText(LoadText(TextId::kChunkAtOfType, language), fault.offset, fault.type);
    return place + FaultReason(fault, language);
}

ChunkList ReadChunks(std::span<const uint8_t> bytes) {
    ChunkList list;
    for (uint64_t offset = 0; offset < bytes.size();) {
        const std::span<const uint8_t> rest = bytes.subspan(offset);
        if (rest.size() < kChunkHeaderSize) {
            list.fault = ChunkFault{.kind = Kind::kHeaderCut,
                                    .offset = offset,
                                    .found = rest.size(),
                                    .expected = kChunkHeaderSize};
            return list;
        }
        const uint32_t type = Read32(rest, 0);
        const uint32_t size = Read32(rest, 12);
        const std::span<const uint8_t> behind = rest.subspan(kChunkHeaderSize);
        if (size > behind.size()) {
            list.fault = ChunkFault{.kind = Kind::kPayloadCut,
                                    .offset = offset,
                                    .type = type,
                                    .found = size,
                                    .expected = behind.size()};
            return list;
        }
        list.chunks.push_back({.offset = offset,
                               .type = type,
                               .reserved = Read32(rest, 4),
                               .version = Read32(rest, 8),
                               .payload = behind.first(size)});
        offset += kChunkHeaderSize + size;
    }
    return list;
}

void AppendChunk(std::vector<uint8_t>& bytes, uint32_t type, std::span<const uint8_t> payload,
                 uint32_t reserved, uint32_t version) {
    std::array<uint8_t, kChunkHeaderSize> header;
    Write32(header, 0, type);
    Write32(header, 4, reserved);
    Write32(header, 8, version);
    Write32(header, 12, static_cast<uint32_t>(payload.size()));
    bytes.insert(bytes.end(), header.begin(), header.end());
    bytes.insert(bytes.end(), payload.begin(), payload.end());
}

}  // namespace bw
