#include "designer/model/chunk_file.h"

#include "designer/model/stored_numbers.h"
#include "support/text.h"

namespace bw {
namespace {

using Kind = ChunkFault::Kind;

struct FaultWords {
    std::u16string_view chinese;
    std::u16string_view english;
};

FaultWords WordsOf(Kind kind) {
    switch (kind) {
        case Kind::kHeaderCut:
            return {u"块头不完整：剩余 %d 字节，应为 %d 字节",
                    u"%d bytes are left, but a header "
                    u"takes %d"};
        case Kind::kPayloadCut:
            return {u"数据长度为 %d 字节，但文件只剩 %d 字节",
                    u"its size is %d bytes, but %d are left in the file"};
        case Kind::kTooLarge:
            return {u"数据为 %d 字节，最多 %d 字节", u"it has %d bytes, at most %d were expected"};
        case Kind::kTextCut:
            return {u"文字块为 %d 字节，至少应为 %d 字节",
                    u"it has %d bytes, a placed text takes at least %d"};
        case Kind::kTextOutside:
            return {u"文字长度为 %d 字节，但块内只剩 %d 字节",
                    u"its text has %d bytes, but %d are left in the chunk"};
        case Kind::kTextTooLong:
            return {u"文字长度为 %d 字节，最多 %d 字节",
                    u"its text has %d bytes, at most %d were expected"};
        default:
            return {u"文字长度为 %d 字节，应为偶数",
                    u"its text has %d bytes, an even number was expected"};
    }
}

}  // namespace

std::u16string FaultReason(const ChunkFault& fault, Language language) {
    const FaultWords words = WordsOf(fault.kind);
    const std::u16string_view format =
        language == Language::kChinese ? words.chinese : words.english;
    return fault.kind == Kind::kTextOdd ? FormatText(format, fault.found)
                                        : FormatText(format, fault.found, fault.expected);
}

std::u16string FaultText(const ChunkFault& fault, Language language) {
    const bool chinese = language == Language::kChinese;
    const std::u16string place =
        fault.kind == Kind::kHeaderCut
            ? FormatText(chinese ? u"偏移 %d，块：" : u"chunk at offset %d: ", fault.offset)
            : FormatText(chinese ? u"偏移 %d，类型 %d 的块：" : u"chunk at offset %d, type %d: ",
                         fault.offset, fault.type);
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
    for (const uint32_t word : {type, reserved, version, static_cast<uint32_t>(payload.size())}) {
        Append32(bytes, word);
    }
    bytes.insert(bytes.end(), payload.begin(), payload.end());
}

}  // namespace bw
