// The exchange of the program's file where a file that runs can be renamed and nothing else.
#include <chrono>
#include <cstdlib>
#include <set>
#include <thread>

#include <gtest/gtest.h>

#include "common/environment_variable.h"
#include "common/game_image.h"
#include "common/temporary_folder.h"
#include "support/environment.h"
#include "support/paths.h"
#include "support/process.h"
#include "support/windows_path.h"
#include "update/program_replacement.h"

namespace bw {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using Kind = UpdateOutcome::Kind;
using Names = std::set<fs::path>;
constexpr const char* kPlace = "BANKWEAVER_TEST_PLACE";
constexpr const char* kStep = "BANKWEAVER_TEST_STEP";

// A folder of a long Chinese name with a program and a newer one: what stands behind a program's
// own bytes tells them apart.
struct Place {
    TemporaryFolder folder;
    fs::path home = folder / fs::path(u"程序 of the user's");
    const std::atomic<bool> stop = false;

    Place() {
        fs::create_directory(home);
        test::WriteText(home / "prog.exe", test::ReadText(BANKWEAVER_PROCESS_CHILD) + "old");
        Fetch();
    }
    void Fetch() const {
        test::WriteText(home / "new.exe", test::ReadText(BANKWEAVER_PROCESS_CHILD) + "new");
    }
    static std::string Says(const fs::path& file) {
        const std::string bytes = test::ReadText(file);
        return bytes.substr(bytes.size() < 3 ? 0 : bytes.size() - 3);
    }
    Names Files() const {
        Names names;
        for (const auto& entry : fs::directory_iterator(home))
            names.insert(entry.path().filename());
        return names;
    }
    static Kind Replace(const fs::path& home, const std::function<void(std::string_view)>& step) {
        const auto store = MakeSqliteStore(home.parent_path() / "store");
        return ReplaceProgram(ProgramFile(home / "prog.exe"), home / "new.exe", *store, step).kind;
    }
    void NextStart() const {
        RemoveOldProgram(*MakeSqliteStore(home.parent_path() / "store"), stop);
    }
};

// Runs in a process of its own, for the test below.
TEST(Replacement, EndsAtTheStepThatItIsTold) {
    const auto place = EnvironmentPath(kPlace);
    if (!place) return;
    int left = std::atoi(std::getenv(kStep));
    const Kind kind = Place::Replace(*place, [&](std::string_view) {
        if (left-- == 0) TerminateProcess(GetCurrentProcess(), 9);
    });
    std::_Exit(kind == Kind::kDone ? 0 : 1);
}

TEST(Replacement, KilledAtAnyStepLeavesOneWholeProgram) {
    int steps = 0;
    for (int end = 9; end == 9; ++steps) {
        const Place place;
        const EnvironmentVariable home(kPlace, place.home);
        const EnvironmentVariable step(kStep, std::to_string(steps).c_str());
        Process process;
        ASSERT_TRUE(process.Start(ExecutablePath(), {"--gtest_filter=*EndsAtTheStep*"}, {}));
        process.ReadOutput(60s);
        end = process.ExitStatus(60s);
        place.NextStart();
        const bool isNew = steps > 6;
        EXPECT_EQ(Place::Says(place.home / "prog.exe"), isNew ? "new" : "old") << steps;
        // Killed before anything was ordered, what was fetched is as it was before.
        EXPECT_EQ(place.Files(), steps < 2 ? Names({"prog.exe", "new.exe"}) : Names{"prog.exe"})
            << steps;
    }
    EXPECT_EQ(steps, 9);
}

TEST(Replacement, ARunningProgramMakesRoomAndGoesWhenItHasEnded) {
    const Place place;
    Process running;
    ASSERT_TRUE(running.Start(place.home / "prog.exe", {"wait:100000"}, place.home));
    // Whatever looks into every new file holds this one for a moment.
    const HANDLE held = CreateFileW((place.home / "new.exe").c_str(), GENERIC_READ, 0, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
    std::jthread looker([&] {
        std::this_thread::sleep_for(500ms);
        CloseHandle(held);
    });
    EXPECT_EQ(Place::Replace(place.home, {}), Kind::kDone);
    EXPECT_EQ(Place::Says(place.home / "prog.exe"), "new");
    place.NextStart();  // of a second copy: the first one runs on
    EXPECT_EQ(place.Files(), Names({"prog.exe", "prog.exe.bak"}));
    place.Fetch();
    EXPECT_EQ(Place::Replace(place.home, {}), Kind::kFile) << "the old program's name is in use";
    EXPECT_EQ(place.Files(), Names({"prog.exe", "prog.exe.bak", "new.exe"}));
    running.Close();
    place.NextStart();
    EXPECT_EQ(place.Files(), Names({"prog.exe", "new.exe"}));
}

TEST(Replacement, LooksWhetherItMay) {
    const Place place;
    const ProgramFile program(place.home / "prog.exe");
    EXPECT_EQ(program.Replaceable().kind, Kind::kDone);
    SetFileAttributesW(program.Path().c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(program.Replaceable().kind, Kind::kReadOnly);
    SetFileAttributesW(program.Path().c_str(), FILE_ATTRIBUTE_NORMAL);
    fs::rename(place.home / "prog.exe", place.home / "old.exe");
    EXPECT_EQ(program.Replaceable().kind, Kind::kChangedMeanwhile);
    fs::copy_file(place.home / "new.exe", place.home / "prog.exe");
    EXPECT_EQ(program.Replaceable().kind, Kind::kChangedMeanwhile);
}

}  // namespace
}  // namespace bw
