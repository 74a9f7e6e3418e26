// The operations of a replacement by POSIX calls.
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "update/program_place.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

constexpr mode_t kRights = 0777;  // without those to run as another user

FileProblem ProblemNow(const fs::path& file) {
    return ProblemOf(file, {errno, std::generic_category()});
}

class Descriptor {
  public:
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (number_ != -1) close(number_);
    }
    operator int() const { return number_; }

  private:
    int number_;
};

}  // namespace

FileResult<> MakeRunnable(const fs::path& fetched, const fs::path& program) {
    struct stat old {};
    if (lstat(program.c_str(), &old) != 0) return ProblemNow(program);
    const Descriptor file(open(fetched.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    struct stat status {};
    if (file == -1 || fstat(file, &status) != 0) return ProblemNow(fetched);
    if (!S_ISREG(status.st_mode))
        return FileProblem{.file = fetched, .kind = FileProblem::Kind::kNotRegular};
    // Another user who has put the file there could still write to it, and whoever gave it a second
    // name would have that file run.
    if (status.st_uid != geteuid() || status.st_nlink != 1)
        return FileProblem{.file = fetched, .kind = FileProblem::Kind::kWrongKind};
    // Root hands the program back to whom it belonged, others at most to one of their groups. A
    // group that stays another one gets no right to write.
    mode_t mode = old.st_mode & kRights;
    if (fchown(file, old.st_uid, old.st_gid) != 0 &&
        fchown(file, static_cast<uid_t>(-1), old.st_gid) != 0 && status.st_gid != old.st_gid)
        mode &= ~mode_t{S_IWGRP};
    // A power failure right behind the rename must not leave the name with an empty file.
    if (fchmod(file, mode) != 0 || fsync(file) != 0) return ProblemNow(fetched);
    return {};
}

FileResult<> KeepAs(const fs::path& old, const fs::path& program) {
    std::error_code error;
    fs::create_hard_link(program, old, error);
    if (!error) return {};
    if (error == std::errc::file_exists) return ProblemOf(old, error);
    // Not every file system has them. A copy that is cut short is never run, and removed as a whole
    // one is.
    fs::copy_file(program, old, error);
    if (!error) return {};
    DropKept(old, program);
    return ProblemOf(old, error);
}

void DropKept(const fs::path& old, const fs::path&) {
    std::error_code error;
    if (fs::is_regular_file(fs::symlink_status(old, error))) fs::remove(old, error);
}

// A program keeps its name here: where it has none the user has taken it away.
bool PutBack(const fs::path&) {
    return false;
}

FileResult<> PutInPlace(const fs::path& fetched, const fs::path& program) {
    std::error_code error;
    fs::rename(fetched, program, error);
    return error ? FileResult<>(ProblemOf(program, error)) : FileResult<>();
}

}  // namespace bw
