#include "update/signed_program.h"

#include <algorithm>
#include <span>
#include <vector>

#include <fmt/format.h>
#include <sodium.h>

#include "support/files.h"
#include "support/text.h"
#include "update/minisign.h"

namespace bw {
namespace {

using Kind = UpdateOutcome::Kind;

constexpr size_t kPiece = size_t{1} << 20;  // bytes; what `stop` waits for

UpdateOutcome Problem(FileProblem problem) {
    return {.kind = Kind::kFile, .file = std::move(problem)};
}

UpdateOutcome DigestOf(const std::filesystem::path& path, const std::atomic<bool>& stop,
                       MinisignDigest& digest) {
    if (const FileResult<> regular = CheckRegularFile(path); !regular)
        return Problem(regular.Problem());
    const FileResult<File> file = File::OpenForReading(path);
    if (!file) return Problem(file.Problem());
    crypto_generichash_state state;
    crypto_generichash_init(&state, nullptr, 0, digest.size());
    std::vector<uint8_t> piece(kPiece);
    for (uint64_t offset = 0;;) {
        if (stop) return {Kind::kStopped};
        const FileResult<size_t> count = file->ReadAt(offset, piece);
        if (!count) return Problem(count.Problem());
        crypto_generichash_update(&state, piece.data(), *count);
        if (*count < piece.size()) break;
        offset += *count;
    }
    crypto_generichash_final(&state, digest.data(), digest.size());
    return {};
}

}  // namespace

UpdateOutcome VerifyProgram(const std::filesystem::path& file, std::string_view signature,
                            std::string_view key, std::u16string_view version,
                            std::string_view name, const std::atomic<bool>& stop) {
    const std::optional<MinisignKey> ours = ReadMinisignKey(key);
    const std::optional<MinisignSignature> made = ReadMinisignSignature(signature);
    if (!made) return {Kind::kNoSignature};
    if (!ours || ours->id != made->id) return {Kind::kOtherKey};
    MinisignDigest digest{};
    if (UpdateOutcome read = DigestOf(file, stop, digest); !read) return read;
    if (!SignsFile(*ours, *made, digest)) return {Kind::kBadSignature};
    if (!SignsComment(*ours, *made)) return {Kind::kBadSignature};
    if (made->comment != fmt::format("bankweaver {} {}", ToUtf8(version), name))
        return {Kind::kOtherProgram};
    return {};
}

}  // namespace bw
