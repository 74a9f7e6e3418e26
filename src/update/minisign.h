// Signatures as minisign makes them (its format: https://jedisct1.github.io/minisign/, chapter
// "Signature format").
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace bw {

using MinisignKeyId = std::array<uint8_t, 8>;
using MinisignDigest = std::array<uint8_t, 64>;  // BLAKE2b-512 of the signed file

struct MinisignKey {
    MinisignKeyId id{};
    std::array<uint8_t, 32> key{};  // Ed25519
};

struct MinisignSignature {
    MinisignKeyId id{};
    std::array<uint8_t, 64> file{};   // Ed25519 over the file's digest
    std::string comment;              // the trusted one
    std::array<uint8_t, 64> whole{};  // over `file` and `comment`
};

// The 56 characters of base64 that minisign prints, and nothing before or behind them.
std::optional<MinisignKey> ReadMinisignKey(std::string_view text);

// The four lines of a .minisig file, which end in LF or CR LF; the last one's end may be missing.
// What comes behind them isn't looked at, as minisign doesn't. Nothing for texts longer than
// kLongestMinisign, and for signatures over a whole file instead of its digest (the form before
// minisign 0.11, or its option -l): for those the whole file would have to be in memory.
inline constexpr size_t kLongestMinisign = 4096;  // bytes
std::optional<MinisignSignature> ReadMinisignSignature(std::string_view text);

// Whether the key has signed the file of this digest, and the comment. Both false for a key that
// isn't one, such as 32 zeros. Whether the ids are the same is not looked at.
bool SignsFile(const MinisignKey& key, const MinisignSignature& signature,
               const MinisignDigest& digest);
bool SignsComment(const MinisignKey& key, const MinisignSignature& signature);

}  // namespace bw
