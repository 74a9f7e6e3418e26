#include "update/minisign.h"

#include <algorithm>
#include <span>
#include <vector>

#include <sodium.h>

namespace bw {
namespace {

using Algorithm = std::array<uint8_t, 2>;
constexpr Algorithm kKeyAlgorithm{'E', 'd'};
constexpr Algorithm kDigestAlgorithm{'E', 'D'};
constexpr std::string_view kUntrusted = "untrusted comment: ";
constexpr std::string_view kTrusted = "trusted comment: ";

// The text's bytes, if it is base64 of as many as `bytes` has, in the one form that stands for
// them.
bool ReadBase64(std::string_view text, std::span<uint8_t> bytes) {
    size_t size = 0;
    return sodium_base642bin(bytes.data(), bytes.size(), text.data(), text.size(), nullptr, &size,
                             nullptr, sodium_base64_VARIANT_ORIGINAL) == 0 &&
           size == bytes.size();
}

// Takes the fields, which lie one behind the other, from the text.
template <typename... Fields>
bool ReadFields(std::string_view text, Fields&... fields) {
    std::array<uint8_t, (sizeof(Fields) + ...)> bytes{};
    if (!ReadBase64(text, bytes)) return false;
    auto at = bytes.begin();
    const auto take = [&](auto& field) {
        std::copy_n(at, field.size(), field.begin());
        at += std::ssize(field);
    };
    (take(fields), ...);
    return true;
}

// The next line without its end, which is cut off the text.
std::string_view TakeLine(std::string_view& text) {
    const size_t length = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, length);
    text.remove_prefix(std::min(length + 1, text.size()));
    if (line.ends_with('\r')) line.remove_suffix(1);
    return line;
}

bool Signs(const MinisignKey& key, std::span<const uint8_t, 64> signature,
           std::span<const uint8_t> bytes) {
    return sodium_init() >= 0 && crypto_sign_verify_detached(signature.data(), bytes.data(),
                                                             bytes.size(), key.key.data()) == 0;
}

}  // namespace

std::optional<MinisignKey> ReadMinisignKey(std::string_view text) {
    Algorithm algorithm{};
    MinisignKey key;
    if (!ReadFields(text, algorithm, key.id, key.key)) return std::nullopt;
    if (algorithm != kKeyAlgorithm) return std::nullopt;
    return key;
}

std::optional<MinisignSignature> ReadMinisignSignature(std::string_view text) {
    if (text.size() > kLongestMinisign) return std::nullopt;
    Algorithm algorithm{};
    MinisignSignature signature;
    if (!TakeLine(text).starts_with(kUntrusted)) return std::nullopt;
    if (!ReadFields(TakeLine(text), algorithm, signature.id, signature.file)) return std::nullopt;
    if (algorithm != kDigestAlgorithm) return std::nullopt;
    const std::string_view comment = TakeLine(text);
    if (!comment.starts_with(kTrusted)) return std::nullopt;
    signature.comment = comment.substr(kTrusted.size());
    if (!ReadFields(TakeLine(text), signature.whole)) return std::nullopt;
    return signature;
}

bool SignsFile(const MinisignKey& key, const MinisignSignature& signature,
               const MinisignDigest& digest) {
    return Signs(key, signature.file, digest);
}

bool SignsComment(const MinisignKey& key, const MinisignSignature& signature) {
    std::vector<uint8_t> bytes(signature.file.begin(), signature.file.end());
    bytes.insert(bytes.end(), signature.comment.begin(), signature.comment.end());
    return Signs(key, signature.whole, bytes);
}

}  // namespace bw
