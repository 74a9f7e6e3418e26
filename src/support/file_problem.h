// What is wrong with a file or a folder, as a value: what an operation on files gives back instead
// of its result. language/problem_text.h has the words for people.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <system_error>

#include "support/result.h"

namespace bw {

struct FileProblem {
    enum class Kind : uint8_t {
        kNotFound,
        kNoPermission,
        kIsFolder,    // where a file was expected
        kNotFolder,   // a file, where a folder was expected
        kNotRegular,  // a device, a pipe
        kTooLarge,
        kDiskFull,
        kReadOnly,
        kNameTooLong,
        kCutShort,   // only a part could be written
        kWrongKind,  // could be read, and isn't what was looked for
        kDamaged,    // of a file in an archive: it can't be unpacked
        kEncrypted,  // likewise: it needs a password
        kOther,
    };

    std::filesystem::path file;
    Kind kind = Kind::kOther;
    // What the system said; none where it is the program that finds fault.
    std::error_code system{};
    uint64_t size = 0;   // kTooLarge: bytes of the file
    uint64_t limit = 0;  // kTooLarge: bytes that are taken; 0 where the system sets the limit
};

// The problem that the system's answer stands for. Where a file stands in a folder's place, the
// problem names that file instead of what was looked for below it.
FileProblem ProblemOf(const std::filesystem::path& file, std::error_code answer);
inline FileProblem ProblemOf(const std::filesystem::path& file, std::errc answer) {
    return ProblemOf(file, std::make_error_code(answer));
}

// What the system says of its own answer, in the user's language where the system speaks it.
std::u16string SystemMessage(std::error_code answer);

// The form of every operation on files.
template <typename Value = void>
using FileResult = Result<Value, FileProblem>;

}  // namespace bw
