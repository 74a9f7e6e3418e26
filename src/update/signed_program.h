// Whether a fetched program is one of ours.
#pragma once

#include <atomic>
#include <filesystem>
#include <string>
#include <string_view>

#include "update/update_outcome.h"

namespace bw {

// `signature` is what stands in the .minisig file. Done only if it was made with `key` (56
// characters of base64) over the whole file, and its trusted comment is
// "bankweaver VERSION FILE". Reads the file once, in pieces. kStopped if `stop` was set.
UpdateOutcome VerifyProgram(const std::filesystem::path& file, std::string_view signature,
                            std::string_view key, std::u16string_view version,
                            std::string_view name, const std::atomic<bool>& stop);

}  // namespace bw
