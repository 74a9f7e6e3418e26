// The exchange of the program's file: whole, refused, or killed on its way.
#include <chrono>
#include <csignal>
#include <fstream>
#include <map>
#include <set>
#include <thread>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "common/temporary_folder.h"
#include "support/files.h"
#include "support/process.h"
#include "update/program_replacement.h"

namespace bw {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using Kind = UpdateOutcome::Kind;
using Names = std::set<std::string>;

constexpr uid_t kNobody = 65534;
const std::string kFetched = "Bankweaver_0.3.0.0.exe";

// A folder with a program, and a newer one beside it.
struct Place {
    TemporaryFolder folder;
    fs::path settings = folder / "settings/store";
    fs::path home = folder / "home";
    fs::path program = home / "prog";
    fs::path fetched = home / kFetched;
    const std::atomic<bool> stop = false;

    Place() {
        fs::create_directory(home);
        chmod(folder.Path().c_str(), 0755);
        Write(program, "old", 0755);
        Write(fetched, "new", 0644);
    }
    static void Write(const fs::path& file, const std::string& says, mode_t mode) {
        WriteFile(file, "#!/bin/sh\necho " + says + "\n");
        chmod(file.c_str(), mode);
    }
    static std::string Says(const fs::path& file) {
        Process process;
        return process.Start(file, {}, "/") ? process.ReadOutput(60s) : "doesn't start";
    }
    Names Files() const {
        Names names;
        for (const auto& entry : fs::directory_iterator(home))
            names.insert(entry.path().filename());
        return names;
    }
    std::u16string Ordered() const {
        std::u16string path = u"none";
        MakeSqliteStore(settings)->RegReadString(kMainKey, "Delete", path);
        return path;
    }
    void Order(const fs::path& path) const {
        MakeSqliteStore(settings)->RegWriteString(kMainKey, "Delete", path.u16string());
    }
    Kind Replace(const std::function<void(std::string_view)>& step = {}) const {
        return ReplaceProgram(ProgramFile(program), fetched, *MakeSqliteStore(settings), step).kind;
    }
    void NextStart(const std::atomic<bool>& end) const {
        RemoveOldProgram(*MakeSqliteStore(settings), end);
    }
};

// What a child of this process answers, or 128 and the signal that ended it.
template <typename Work>
int InChild(const Work& work) {
    const pid_t child = fork();
    if (child == 0) _exit(static_cast<int>(work()));
    int status = 0;
    waitpid(child, &status, 0);
    return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

// With the fetched file taken away before the last step, too, which makes that fail.
TEST(Replacement, KilledAtAnyStepLeavesOneWholeProgram) {
    for (const bool fails : {false, true}) {
        int steps = 0;
        for (int end = 128 + SIGKILL; end == 128 + SIGKILL; ++steps) {
            const Place place;
            end = InChild([&] {
                int left = steps;
                return place.Replace([&](std::string_view step) {
                    if (left-- == 0) raise(SIGKILL);
                    if (fails && step == "put the new program in place") fs::remove(place.fetched);
                });
            });
            EXPECT_EQ(Place::Says(place.program), fails || steps < 7 ? "old\n" : "new\n") << steps;
            place.NextStart(place.stop);
            // Killed before anything was done, what was fetched is as it was before.
            EXPECT_EQ(place.Files(), steps < 2 ? Names({"prog", kFetched}) : Names{"prog"})
                << steps;
        }
        EXPECT_EQ(steps, fails ? 10 : 9);
    }
}

TEST(Replacement, NewProgramHasTheOldOnesRights) {
    const Place place;
    chmod(place.program.c_str(), 0751);
    chmod(place.fetched.c_str(), 04666);
    Place::Write(place.home / "prog.bak", "older", 0755);
    fs::create_hard_link(place.program, place.home / "second");
    EXPECT_EQ(place.Replace(), Kind::kDone);
    EXPECT_EQ(fs::status(place.program).permissions(), fs::perms(0751));
    EXPECT_EQ(place.Files(), Names({"prog", "prog.bak", "second"}));
    EXPECT_EQ(Place::Says(place.home / "second"), "old\n") << "another name of the old program";
    EXPECT_EQ(place.Ordered(), place.home.u16string() + u"/prog.bak");
    place.NextStart(place.stop);
    EXPECT_EQ(place.Files(), Names({"prog", "second"}));
    EXPECT_EQ(place.Ordered(), u"");
}

TEST(Replacement, NothingUnfitTakesThePlace) {
    const std::map<std::string, std::function<void(const Place&)>> cases{
        {"missing", [](const Place& place) { fs::remove(place.fetched); }},
        {"a folder",
         [](const Place& place) {
             fs::remove(place.fetched);
             fs::create_directory(place.fetched);
         }},
        {"a link",
         [](const Place& place) {
             fs::rename(place.fetched, place.home / "elsewhere");
             fs::create_symlink(place.home / "elsewhere", place.fetched);
         }},
        {"with a second name",
         [](const Place& place) { fs::create_hard_link(place.fetched, place.home / "second"); }},
        {"another user's",
         [](const Place& place) { ASSERT_EQ(chown(place.fetched.c_str(), kNobody, kNobody), 0); }},
        {"over a folder",
         [](const Place& place) { fs::create_directory(place.home / "prog.bak"); }},
        {"over a link",
         [](const Place& place) { fs::create_symlink("prog", place.home / "prog.bak"); }},
    };
    for (const auto& [what, prepare] : cases) {
        if (what == "another user's" && getuid() != 0) continue;
        const Place place;
        prepare(place);
        const Names before = place.Files();
        EXPECT_EQ(place.Replace(), Kind::kFile) << what;
        EXPECT_EQ(place.Ordered(), u"none") << what;
        place.Order("/as/it/was");
        EXPECT_EQ(place.Replace(), Kind::kFile) << what;
        EXPECT_EQ(place.Ordered(), u"/as/it/was") << what;
        EXPECT_EQ(place.Files(), before) << what;
        EXPECT_EQ(Place::Says(place.program), "old\n") << what;
    }
    const Place place;
    Place::Write(place.folder / kFetched, "new", 0644);
    const auto store = MakeMemoryStore();
    for (const fs::path& other : {place.folder / kFetched, place.program})
        EXPECT_EQ(ReplaceProgram(ProgramFile(place.program), other, *store).kind, Kind::kFile);
}

TEST(Replacement, LooksWhetherItMay) {
    const struct {
        const char* what;
        std::function<void(const Place&)> prepare;
        Kind expected;
        bool asNobody = false;
    } cases[] = {
        {"as it is", [](const Place&) {}, Kind::kDone},
        {"read-only", [](const Place& p) { chmod(p.program.c_str(), 0555); }, Kind::kReadOnly},
        {"set-user-id", [](const Place& p) { chmod(p.program.c_str(), 04755); }, Kind::kNotOurs},
        {"root's folder", [](const Place&) {}, Kind::kNotOurs, true},
        {"root's file where all may write", [](const Place& p) { chmod(p.home.c_str(), 0777); },
         Kind::kReadOnly, true},
        {"a folder as /tmp",
         [](const Place& p) {
             chmod(p.home.c_str(), 01777);
             chmod(p.program.c_str(), 0777);
         },
         Kind::kNotOurs, true},
        {"gone", [](const Place& p) { fs::remove(p.program); }, Kind::kChangedMeanwhile},
        {"another", [](const Place& p) { fs::rename(p.fetched, p.program); },
         Kind::kChangedMeanwhile},
        {"a link",
         [](const Place& p) {
             fs::rename(p.program, p.home / "old");
             fs::create_symlink("old", p.program);
         },
         Kind::kChangedMeanwhile},
    };
    for (const auto& [what, prepare, expected, asNobody] : cases) {
        if (asNobody && getuid() != 0) continue;
        const Place place;
        const ProgramFile program(place.program);
        prepare(place);
        const int kind = InChild([&] {
            if (asNobody && (setgid(kNobody) != 0 || setuid(kNobody) != 0)) return -1;
            return static_cast<int>(program.Replaceable().kind);
        });
        EXPECT_EQ(kind, static_cast<int>(expected)) << what;
    }
    EXPECT_EQ(ProgramFile("/bin/sh").Replaceable().kind, Kind::kNotOurs);
    EXPECT_EQ(ProgramFile("/usr/missing").Replaceable().kind, Kind::kNotOurs);
    const ProgramFile program("/opt/b/prog");
    EXPECT_EQ(program.DownloadTarget(u"0.3.0.0"), "/opt/b/Bankweaver_0.3.0.0.exe");
    for (const char16_t* version : {u"", u"../0", u"1.0.0.0/", u"1\\0", u"１.0"})
        EXPECT_EQ(program.DownloadTarget(version), "") << fs::path(version);
}

// Run by the next test, as a copy of this program.
TEST(ProgramFile, DISABLED_Removed) {
    const fs::path path = fs::read_symlink("/proc/self/exe");
    EXPECT_TRUE(ProgramFile::OfThisProcess().Replaceable());
    fs::remove(path);
    fs::copy_file("/proc/self/exe", path.string() + " (deleted)");
    EXPECT_EQ(ProgramFile::OfThisProcess().Replaceable().kind, Kind::kChangedMeanwhile);
}

TEST(ProgramFile, OfAProcessWhoseFileIsGone) {
    const TemporaryFolder folder;
    fs::copy_file("/proc/self/exe", folder / "copy");
    Process copy;
    ASSERT_TRUE(copy.Start(folder / "copy",
                           {"--gtest_also_run_disabled_tests", "--gtest_filter=*DISABLED_Removed"},
                           "/"));
    const std::string output = copy.ReadOutput(60s);
    EXPECT_EQ(copy.ExitStatus(60s), 0) << output;
    EXPECT_NE(output.find("PASSED  ] 1 test"), output.npos) << output;
}

TEST(Replacement, OnlyPlainFilesAreRemoved) {
    const Place place;
    place.Order(place.home / "gone");
    place.NextStart(place.stop);
    EXPECT_EQ(place.Ordered(), u"");
    fs::create_symlink("prog", place.home / "link");
    for (const fs::path& path : {place.home, place.home / "link", fs::path("prog")}) {
        place.Order(path);
        const auto start = std::chrono::steady_clock::now();
        place.NextStart(place.stop);
        const auto taken = std::chrono::steady_clock::now() - start;
        EXPECT_EQ(place.Ordered(), path.u16string());
        EXPECT_EQ(place.Files(), Names({"prog", "link", kFetched}));
        EXPECT_GE(taken, path.is_absolute() ? 800ms : 0ms);
    }
    place.Order(place.home);
    std::atomic<bool> end = false;
    std::thread starting([&] { place.NextStart(end); });
    std::this_thread::sleep_for(50ms);
    const auto start = std::chrono::steady_clock::now();
    end = true;
    starting.join();
    EXPECT_LT(std::chrono::steady_clock::now() - start, 150ms);
}

TEST(Replacement, StartedProgramStandsAlone) {
    const Place place;
    const ProgramFile program(place.program);
    Place::Write(place.program,
                 "$$ $(cut -d' ' -f6 /proc/$$/stat) $(pwd) $(readlink /proc/$$/fd/0) >../part\n"
                 "mv ../part ../told",
                 0755);
    ASSERT_TRUE(StartProgram(program));
    while (!fs::exists(place.folder / "told"))
        std::this_thread::sleep_for(5ms);
    std::ifstream told(place.folder / "told");
    pid_t process = 0, session = 0;
    std::string folder, input;
    told >> process >> session >> folder >> input;
    EXPECT_EQ(session, process);
    EXPECT_EQ(folder, place.home);
    EXPECT_EQ(input, "/dev/null");
    while (kill(process, 0) == 0)  // else it stays a zombie
        std::this_thread::sleep_for(5ms);
    fs::remove(place.program);
    EXPECT_FALSE(StartProgram(program));
}

}  // namespace
}  // namespace bw
