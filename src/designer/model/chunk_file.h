// Files of chunks: a plain sequence without a header, a count or an end mark. A chunk is a type, a
// reserved word, a version and the payload's size (32 bits each, little-endian), then the payload.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "language/language.h"

namespace bw {

inline constexpr size_t kChunkHeaderSize = 16;

// One chunk of a file in memory, which must outlive it.
struct ChunkView {
    uint64_t offset = 0;  // of the header, from the file's start
    uint32_t type = 0;
    uint32_t reserved = 0;
    uint32_t version = 1;
    std::span<const uint8_t> payload;
};

// What is wrong with a chunk.
struct ChunkFault {
    enum class Kind {
        kHeaderCut,    // `found` bytes are left for a header
        kPayloadCut,   // the size is `found`, `expected` bytes are left in the file
        kTooLarge,     // a payload of `found` bytes for a field of `expected`
        kTextCut,      // a placed text of `found` bytes, less than the `expected` of its fields
        kTextOutside,  // a text of `found` bytes where the payload has `expected` left
        kTextTooLong,  // a text of `found` bytes, `expected` at most
        kTextOdd,      // a text of `found` bytes, which ends in half a character
    };
    Kind kind = Kind::kHeaderCut;
    uint64_t offset = 0;  // of the chunk's header, from the file's start
    uint32_t type = 0;    // of the chunk; 0 where the header itself is cut
    uint64_t found = 0;
    uint64_t expected = 0;
};

// Says where, what was found and what was expected, for people.
std::u16string FaultText(const ChunkFault& fault, Language language);
// The same without the place, for who knows a better one.
std::u16string FaultReason(const ChunkFault& fault, Language language);

struct ChunkList {
    std::vector<ChunkView> chunks;    // those in front of the fault
    std::optional<ChunkFault> fault;  // a header or a payload that leaves the file
};

ChunkList ReadChunks(std::span<const uint8_t> bytes);

// The payload is below 4 GB.
void AppendChunk(std::vector<uint8_t>& bytes, uint32_t type, std::span<const uint8_t> payload,
                 uint32_t reserved = 0, uint32_t version = 1);

}  // namespace bw
