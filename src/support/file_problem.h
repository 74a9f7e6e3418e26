// What is wrong with a file or a folder, as a value: what an operation on files gives back instead
// of its result. language/problem_text.h has the words for people.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>
#include <variant>

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

// The form of every operation on files: true with its result, or false with the problem.
template <typename Value = void>
class FileResult {
  public:
    FileResult(Value value) : result_(std::in_place_index<0>, std::move(value)) {}
    FileResult(FileProblem problem) : result_(std::in_place_index<1>, std::move(problem)) {}

    explicit operator bool() const { return result_.index() == 0; }
    // For a true result.
    Value& operator*() { return std::get<0>(result_); }
    const Value& operator*() const { return std::get<0>(result_); }
    Value* operator->() { return &std::get<0>(result_); }
    const Value* operator->() const { return &std::get<0>(result_); }
    Value ValueOr(Value other) const { return *this ? **this : std::move(other); }
    // For a false result.
    const FileProblem& Problem() const { return std::get<1>(result_); }

  private:
    std::variant<Value, FileProblem> result_;
};

// An operation that has nothing to give: true if it is done.
template <>
class FileResult<void> {
  public:
    FileResult() = default;
    FileResult(FileProblem problem) : problem_(std::move(problem)) {}

    explicit operator bool() const { return !problem_; }
    const FileProblem& Problem() const { return *problem_; }
    // The result of several operations that don't wait for each other: the first problem stays.
    void Join(FileResult other) {
        if (!problem_) problem_ = std::move(other.problem_);
    }

  private:
    std::optional<FileProblem> problem_;
};

}  // namespace bw
