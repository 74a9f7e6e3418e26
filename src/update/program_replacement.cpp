#include "update/program_replacement.h"

#include <chrono>
#include <thread>
#include <utility>

#include "support/files.h"
#include "support/process.h"
#include "support/text.h"
#include "update/program_place.h"

namespace bw {
namespace {

namespace fs = std::filesystem;
using Kind = UpdateOutcome::Kind;
using namespace std::chrono_literals;

// Paths of files to remove at the next start: the program that was replaced, and the one that was
// about to take its place when the program was killed. Both under kMainKey.
constexpr std::string_view kDelete = "Delete";
constexpr std::string_view kDeleteFetched = "DeleteFetched";

constexpr int kTries = 5;
constexpr auto kBetweenTries = 200ms;
constexpr auto kSlice = 10ms;  // what `stop` waits for

using Step = std::function<void(std::string_view)>;

// A file to remove at the next start, until that is taken back. Where the settings can't be
// written, files may stay; that is no reason against a new program.
class Removal {
  public:
    Removal(SettingsStore& store, std::string_view name) : store_(store), name_(name) {
        known_ = store_.RegReadString(kMainKey, name_, before_);
    }
    void Order(const fs::path& path) { store_.RegWriteString(kMainKey, name_, PathText(path)); }
    void TakeBack() {
        if (known_) {
            store_.RegWriteString(kMainKey, name_, before_);
        } else {
            store_.RegDeleteValue(kMainKey, name_);
        }
    }
    void Done() { store_.RegWriteString(kMainKey, name_, u""); }

  private:
    SettingsStore& store_;
    std::string_view name_;
    std::u16string before_;
    bool known_ = false;
};

// True if it is gone. Whatever a path in the settings names, no folder and no link is removed.
FileResult<> RemovePlainFile(const fs::path& path) {
    std::error_code error;
    const fs::file_type type = fs::symlink_status(path, error).type();
    if (type == fs::file_type::not_found) return {};
    if (type == fs::file_type::none) return ProblemOf(path, error);
    if (type != fs::file_type::regular)
        return FileProblem{.file = path, .kind = FileProblem::Kind::kNotRegular};
    return DeleteFile(path);
}

FileResult<> Exchange(const ProgramFile& program, const fs::path& downloaded, const Step& before) {
    const fs::path old = program.OldProgram();
    before("make the new program runnable");
    FileResult<> done = MakeRunnable(downloaded, program.Path());
    if (!done) return done;
    before("clear the old program's name");
    done = RemovePlainFile(old);
    if (!done) return done;
    before("keep the old program");
    done = KeepAs(old, program.Path());
    if (!done) return done;
    before("put the new program in place");
    done = PutInPlace(downloaded, program.Path());
    if (done) return done;
    before("drop what was kept");
    DropKept(old, program.Path());
    return done;
}

// A file that an earlier update has left has its order; any other one of that name is the user's.
bool IsUsers(const fs::path& old, const SettingsStore& store) {
    std::error_code error;
    std::u16string ordered;
    return fs::exists(fs::symlink_status(old, error)) &&
           !(store.RegReadString(kMainKey, kDelete, ordered) && TextPath(ordered) == old);
}

// Sleeps; false if it was cut short.
bool Wait(std::chrono::milliseconds time, const std::atomic<bool>& stop) {
    const auto end = std::chrono::steady_clock::now() + time;
    while (!stop && std::chrono::steady_clock::now() < end)
        std::this_thread::sleep_for(kSlice);
    return !stop;
}

void RemoveOrdered(SettingsStore& store, std::string_view name, const std::atomic<bool>& stop) {
    std::u16string text;
    if (!store.RegReadString(kMainKey, name, text) || text.empty()) return;
    const fs::path path = TextPath(text);
    if (!path.is_absolute()) return;
    for (int i = 0; i < kTries && !stop; ++i) {
        if (i > 0 && !Wait(kBetweenTries, stop)) return;
        if ((name == kDelete && PutBack(path)) || RemovePlainFile(path)) {
            store.RegWriteString(kMainKey, name, u"");
            return;
        }
    }
}

}  // namespace

UpdateOutcome ReplaceProgram(const ProgramFile& program, const fs::path& downloaded,
                             SettingsStore& store, const Step& step) {
    const Step before = step ? step : [](std::string_view) {};
    before("look at the program");
    if (UpdateOutcome can = program.Replaceable(); !can) return can;
    if (downloaded.parent_path() != program.Folder() || downloaded == program.Path())
        return {Kind::kFile,
                FileProblem{.file = downloaded, .kind = FileProblem::Kind::kWrongKind}};
    if (const fs::path old = program.OldProgram(); IsUsers(old, store))
        return {Kind::kFile, ProblemOf(old, std::errc::file_exists)};
    // Ordered before there is anything to remove: whenever this ends, nothing stays for ever.
    Removal fetched(store, kDeleteFetched);
    before("order the removal of what was fetched");
    fetched.Order(downloaded);
    Removal old(store, kDelete);
    before("order the removal of the old program");
    old.Order(program.OldProgram());
    if (const FileResult<> done = Exchange(program, downloaded, before); !done) {
        before("take back the orders");
        old.TakeBack();
        fetched.TakeBack();
        return {Kind::kFile, done.Problem()};
    }
    before("end the first order");
    fetched.Done();
    return {};
}

bool StartProgram(const ProgramFile& program) {
    return StartDetached(program.Path(), program.Folder());
}

void RemoveOldProgram(SettingsStore& store, const std::atomic<bool>& stop) {
    RemoveOrdered(store, kDelete, stop);
    RemoveOrdered(store, kDeleteFetched, stop);
}

}  // namespace bw
