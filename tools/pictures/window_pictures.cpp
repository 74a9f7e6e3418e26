// Takes the pictures of the window for docs/window.md: the real program on a display of its own.
//   window_pictures FOLDER
#include <chrono>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <thread>

#include "looks.h"
#include "session/program.h"
#include "session/user_home.h"

namespace bw::test {
namespace {

struct Shot {
    const char* name;
    uint32_t language;
    int width = 1120;  // as the window opens
    int height = 640;
    std::vector<std::string> environment = {};
    int scale = 1;  // pixels of the screen in one of the program's, each way
    bool maximised = false;
    std::function<void(Desktop&, Program&)> more = {};
};

// A double click on the window's title, which stands right above it.
void Maximise(Desktop& desktop, Program& program) {
    const Seen window = program.Await("the window", MainWindow());
    desktop.DoubleClick({window.x + window.width / 2, window.y - 10});
    program.Await("the maximised window", [](const Seen& seen) { return seen.Maximised(); });
}

void OpenFind(Desktop& desktop, Program& program) {
    desktop.Key("ctrl+f");
    program.Await("the dialog", Control(1032));
}

void Take(Desktop& desktop, const Shot& shot, const std::filesystem::path& folder) {
    const UserHome home;
    const auto store = home.Store();
    store->RegWriteDword(kMainKey, "Language", shot.language);
    const std::pair<const char*, int> places[] = {
        {"PosX", 40}, {"PosY", 40}, {"SizeX", shot.width}, {"SizeY", shot.height}};
    for (const auto& [name, value] : places)
        store->RegWriteDword(kMainKey, name, static_cast<uint32_t>(value));
    std::vector<std::string> environment = shot.environment;
    environment.push_back("QT_SCALE_FACTOR=" + std::to_string(shot.scale));
    Program program(desktop, home.Path(),
                    {(std::filesystem::path(BANKWEAVER_SAMPLES) / "samples.fcl").string()},
                    std::move(environment));
    const Seen game = program.Await("a game", Cell(1, 1));
    desktop.Click({game.Middle().x * shot.scale, game.Middle().y * shot.scale});
    if (shot.maximised) Maximise(desktop, program);
    if (shot.more) shot.more(desktop, program);
    desktop.MoveTo({Desktop::kWidth - 1, 1});
    std::this_thread::sleep_for(std::chrono::milliseconds(700));
    const Seen window = program.Await("the window", MainWindow());
    desktop.Photograph(folder / (std::string("window_") + shot.name + ".png"),
                       {window.x * shot.scale, window.y * shot.scale}, window.width * shot.scale,
                       window.height * shot.scale);
    program.Process().Signal(SIGTERM);
    program.AwaitEnd();
}

void TakeAll(const std::filesystem::path& folder) {
    const TemporaryFolder themes;
    const std::vector<std::string> dark = DarkDesktop(themes / "dark");
    Desktop desktop;
    desktop.RemoveTray();  // it would lie over large windows
    const Shot shots[] = {
        {.name = "english", .language = kEnglish},
        {.name = "chinese", .language = kChinese},
        {.name = "dark", .language = kEnglish, .environment = dark},
        {.name = "dark_chinese", .language = kChinese, .environment = dark},
        {.name = "small", .language = kEnglish, .width = 400, .height = 360},
        {.name = "small_chinese", .language = kChinese, .width = 400, .height = 360},
        {.name = "dense", .language = kEnglish, .width = 600, .height = 360, .scale = 2},
        {.name = "find", .language = kEnglish, .more = OpenFind},
        {.name = "find_dark", .language = kChinese, .environment = dark, .more = OpenFind},
        {.name = "maximised", .language = kEnglish, .maximised = true},
        {.name = "maximised_chinese", .language = kChinese, .maximised = true},
    };
    for (const Shot& shot : shots)
        Take(desktop, shot, folder);
}

}  // namespace
}  // namespace bw::test

int main(int count, char** words) {
    if (count != 2) {
        std::fputs("usage: window_pictures FOLDER\n", stderr);
        return 2;
    }
    try {
        bw::test::TakeAll(std::filesystem::absolute(words[1]));
    } catch (const bw::test::SessionLost& lost) {
        std::fprintf(stderr, "%s\n", lost.what());
        return 1;
    }
    return 0;
}
