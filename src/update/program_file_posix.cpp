// ProgramFile by POSIX calls.
#include <algorithm>
#include <array>
#include <string_view>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/paths.h"
#include "update/program_file.h"

namespace bw {
namespace {

namespace fs = std::filesystem;
using Kind = UpdateOutcome::Kind;

// The link to the file that this process runs; it leads there even if the file has no name any
// more.
constexpr const char* kRunning = "/proc/self/exe";

// What package managers keep, who would take a file that isn't theirs for damaged: root may write
// there, and still shouldn't.
bool IsPackaged(const fs::path& path) {
    constexpr std::array<std::string_view, 9> kFolders{
        "/usr/", "/bin/", "/sbin/", "/lib/", "/lib64/", "/nix/", "/gnu/", "/snap/", "/app/"};
    const std::string_view text = path.native();
    return !text.starts_with("/usr/local/") &&
           std::ranges::any_of(kFolders,
                               [&](std::string_view folder) { return text.starts_with(folder); });
}

bool MayAccess(const fs::path& path, int how) {
    return faccessat(AT_FDCWD, path.c_str(), how, AT_EACCESS) == 0;
}

// Whether this user may give the name in this folder to another file.
bool MayRename(const fs::path& folder, uid_t owner) {
    struct stat status {};
    if (stat(folder.c_str(), &status) != 0 || !MayAccess(folder, W_OK | X_OK)) return false;
    // In folders like /tmp everyone keeps what is theirs.
    const uid_t user = geteuid();
    return (status.st_mode & S_ISVTX) == 0 || user == 0 || user == owner || user == status.st_uid;
}

}  // namespace

ProgramFile ProgramFile::OfThisProcess() {
    ProgramFile program(ExecutablePath());
    // Not that of the path's file, which may be another one by now.
    struct stat status {};
    program.identity_ = {};
    if (stat(kRunning, &status) == 0) program.identity_ = {status.st_dev, status.st_ino};
    return program;
}

ProgramFile::Identity ProgramFile::IdentityOf(const fs::path& path) {
    struct stat status {};
    if (lstat(path.c_str(), &status) != 0) return {};
    return {status.st_dev, status.st_ino};
}

UpdateOutcome ProgramFile::Replaceable() const {
    if (IsPackaged(path_)) return {Kind::kNotOurs};
    struct stat status {};
    if (lstat(path_.c_str(), &status) != 0 || !S_ISREG(status.st_mode) ||
        identity_ != Identity{status.st_dev, status.st_ino})
        return {Kind::kChangedMeanwhile};
    if (!MayRename(Folder(), status.st_uid)) return {Kind::kNotOurs};
    // Whoever lets others run it as its owner wants to say by hand what that is.
    if ((status.st_mode & (S_ISUID | S_ISGID)) != 0) return {Kind::kNotOurs};
    // The owner's bit holds for root, too, who could write without it.
    if ((status.st_mode & S_IWUSR) == 0 || !MayAccess(path_, W_OK)) return {Kind::kReadOnly};
    return {};
}

}  // namespace bw
