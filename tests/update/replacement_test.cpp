// The exchange of the program's file: whole, refused, or killed on its way.
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <set>
#include <thread>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "common/environment_variable.h"
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

// A folder with a program, and a newer one beside it.
struct Place {
    TemporaryFolder folder;
    fs::path settings = folder / "settings/store";
    fs::path home = folder / "home";
    fs::path program = home / "prog";
    const std::atomic<bool> stop = false;

    // By a shell's commands in the program's folder.
    explicit Place(const std::string& prepare = "true") {
        fs::create_directory(home);
        Shell(
            "chmod 755 .. .; printf '#!/bin/sh\necho old\n' >prog; chmod 755 prog;"
            "printf '#!/bin/sh\necho new\n' >new;" +
            prepare);
    }
    void Shell(const std::string& commands) const {
        ASSERT_EQ(std::system(("cd '" + home.string() + "';" + commands).c_str()), 0) << commands;
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
        const auto store = MakeSqliteStore(settings);
        return ReplaceProgram(ProgramFile(program), home / "new", *store, step).kind;
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
                    if (fails && step == "put the new program in place")
                        fs::remove(place.home / "new");
                });
            });
            EXPECT_EQ(Place::Says(place.program), fails || steps < 7 ? "old\n" : "new\n") << steps;
            place.NextStart(place.stop);
            // Killed before anything was done, what was fetched is as it was before.
            EXPECT_EQ(place.Files(), steps < 2 ? Names({"prog", "new"}) : Names{"prog"}) << steps;
        }
        EXPECT_EQ(steps, fails ? 10 : 9);
    }
}

TEST(Replacement, NewProgramHasTheOldOnesRights) {
    const Place place("chmod 751 prog; chmod 4666 new; echo older >prog.bak; ln prog second");
    place.Order(place.home.u16string() + u"/prog.bak");  // of an update before this one
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
    for (const char* prepare :
         {"rm new", "rm new; mkdir new", "mv new x; ln -s x new", "ln new x", "mkdir prog.bak",
          "ln -s prog prog.bak", "chown 1 new || rm new", "cp prog prog.bak"}) {
        const Place place(prepare);
        const Names before = place.Files();
        for (const char16_t* ordered : {u"none", u"", u"/as/it/was"}) {
            if (ordered != std::u16string(u"none")) place.Order(ordered);
            EXPECT_EQ(place.Replace(), Kind::kFile) << prepare;
            EXPECT_EQ(place.Ordered(), ordered) << prepare;
        }
        place.NextStart(place.stop);
        EXPECT_EQ(place.Files(), before) << prepare;
        EXPECT_EQ(Place::Says(place.program), "old\n") << prepare;
    }
    const Place place("cp new ..");
    const auto store = MakeMemoryStore();
    for (const fs::path& other : {place.folder / "new", place.program})
        EXPECT_EQ(ReplaceProgram(ProgramFile(place.program), other, *store).kind, Kind::kFile);
}

TEST(Replacement, LooksWhetherItMay) {
    const struct {
        const char* prepare;
        Kind expected;
        bool asNobody = false;
    } cases[] = {
        {"true", Kind::kDone},
        {"chmod 555 prog", Kind::kReadOnly},
        {"chmod 4755 prog", Kind::kNotOurs},
        {"rm prog", Kind::kChangedMeanwhile},
        {"mv new prog", Kind::kChangedMeanwhile},
        {"mv prog x; ln -s x prog", Kind::kChangedMeanwhile},
        {"true", Kind::kNotOurs, true},
        {"chmod 777 .", Kind::kReadOnly, true},
        {"chmod 1777 .; chmod 777 prog", Kind::kNotOurs, true},  // as /tmp
    };
    for (const auto& [prepare, expected, asNobody] : cases) {
        if (asNobody && getuid() != 0) continue;
        const Place place;
        const ProgramFile program(place.program);
        place.Shell(prepare);
        const int kind = InChild([&] {
            if (asNobody && (setgid(kNobody) != 0 || setuid(kNobody) != 0)) return -1;
            return static_cast<int>(program.Replaceable().kind);
        });
        EXPECT_EQ(kind, static_cast<int>(expected)) << prepare;
    }
    EXPECT_EQ(ProgramFile("/bin/sh").Replaceable().kind, Kind::kNotOurs);
    EXPECT_EQ(ProgramFile("/usr/missing").Replaceable().kind, Kind::kNotOurs);
    const ProgramFile program("/opt/b/prog");
    EXPECT_EQ(program.DownloadTarget(u"0.3.0.0"), "/opt/b/Bankweaver_0.3.0.0.exe");
    for (const char16_t* version : {u"", u"../0", u"1.0.0.0/", u"1\\0", u"１.0"})
        EXPECT_EQ(program.DownloadTarget(version), "") << fs::path(version);
}

TEST(ProgramFile, OfAProcessWhoseFileIsGone) {
    if (std::getenv("BANKWEAVER_IS_COPY") != nullptr) {
        const fs::path path = fs::read_symlink("/proc/self/exe");
        EXPECT_TRUE(ProgramFile::OfThisProcess().Replaceable());
        fs::remove(path);
        fs::copy_file("/proc/self/exe", path.string() + " (deleted)");
        EXPECT_EQ(ProgramFile::OfThisProcess().Replaceable().kind, Kind::kChangedMeanwhile);
        return;
    }
    const TemporaryFolder folder;
    fs::copy_file("/proc/self/exe", folder / "copy");
    const EnvironmentVariable isCopy("BANKWEAVER_IS_COPY", "1");
    Process copy;
    ASSERT_TRUE(copy.Start(folder / "copy", {"--gtest_filter=*WhoseFileIsGone"}, "/"));
    const std::string output = copy.ReadOutput(60s);
    EXPECT_EQ(copy.ExitStatus(60s), 0) << output;
    EXPECT_NE(output.find("PASSED  ] 1 test"), output.npos) << output;
}

TEST(Replacement, OnlyPlainFilesAreRemoved) {
    const Place place;
    place.Order(place.home / "gone");
    place.NextStart(place.stop);
    EXPECT_EQ(place.Ordered(), u"");
    place.Shell("ln -s prog link");
    for (const fs::path& path : {place.home, place.home / "link", fs::path("prog")}) {
        place.Order(path);
        const auto start = std::chrono::steady_clock::now();
        place.NextStart(place.stop);
        const auto taken = std::chrono::steady_clock::now() - start;
        EXPECT_EQ(place.Ordered(), path.u16string());
        EXPECT_EQ(place.Files(), Names({"prog", "link", "new"}));
        EXPECT_GE(taken, path.is_absolute() ? 800ms : 0ms);
    }
    place.Order(place.home);
    std::atomic<bool> end = false;
    std::thread starting([&] { place.NextStart(end); });
    std::this_thread::sleep_for(50ms);
    const auto start = std::chrono::steady_clock::now();
    end = true;
    starting.join();
    EXPECT_LT(std::chrono::steady_clock::now() - start, 500ms) << "the tries take 800";
}

TEST(Replacement, StartedProgramStandsAlone) {
    const Place place;
    const ProgramFile program(place.program);
    std::ofstream(place.program)
        << "#!/bin/sh\necho $$ $(cut -d' ' -f6 /proc/$$/stat) $(pwd) $(readlink /proc/$$/fd/0) "
           ">../part\nmv ../part ../told\n";
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
