// The running program's own file.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>

#include "update/update_outcome.h"

namespace bw {

// As it was when this was made, which should be early: once the file is replaced, the system may
// not tell any more where it was.
class ProgramFile {
  public:
    static ProgramFile OfThisProcess();
    explicit ProgramFile(std::filesystem::path path);

    const std::filesystem::path& Path() const { return path_; }
    std::filesystem::path Folder() const { return path_.parent_path(); }
    // Where the program of this version is fetched to, beside the running one.
    std::filesystem::path DownloadTarget(std::u16string_view version) const;
    // What the running program is called once it is replaced.
    std::filesystem::path OldProgram() const;

    // Whether it may be replaced, by all that can be seen now: kDone, kNotOurs, kReadOnly,
    // kChangedMeanwhile, kFile.
    UpdateOutcome Replaceable() const;

  private:
    struct Identity {
        uint64_t device = 0;
        uint64_t file = 0;
        bool operator==(const Identity&) const = default;
    };
    static Identity IdentityOf(const std::filesystem::path& path);

    std::filesystem::path path_;
    Identity identity_;
};

}  // namespace bw
