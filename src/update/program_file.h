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
    // If the file that runs isn't there any more, it is none that may be replaced.
    static ProgramFile OfThisProcess();
    // The file itself, if `path` is a link to it.
    explicit ProgramFile(const std::filesystem::path& path);

    const std::filesystem::path& Path() const { return path_; }
    std::filesystem::path Folder() const { return path_.parent_path(); }
    // Where the program of this version is fetched to, beside the running one; empty for a version
    // of anything else than digits and points.
    std::filesystem::path DownloadTarget(std::u16string_view version) const;
    // What the running program is called once it is replaced.
    std::filesystem::path OldProgram() const;

    // Whether it may be replaced, by all that can be seen now: kDone, kNotOurs, kReadOnly,
    // kChangedMeanwhile.
    UpdateOutcome Replaceable() const;

  private:
    struct Identity {
        uint64_t device = 0;
        uint64_t file = 0;
        bool operator==(const Identity&) const = default;
    };
    // Of no file: the same as of a new Identity.
    static Identity IdentityOf(const std::filesystem::path& path);

    std::filesystem::path path_;
    Identity identity_;
};

}  // namespace bw
