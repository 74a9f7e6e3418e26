// Takes the pictures of the designer for docs/designer.md and README.md: the real program on a
// display of its own.
//   designer_pictures FOLDER
#include <chrono>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <thread>

#include "list/remembered_list.h"
#include "looks.h"
#include "session/program.h"
#include "session/user_home.h"
#include "support/text.h"

namespace bw::test {
namespace {

using namespace std::chrono_literals;

constexpr int kWidth = 1440;
constexpr int kHeight = 1020;
constexpr int kSmallWidth = 910;
constexpr int kSmallHeight = 740;
constexpr int kCell = 16;  // of the screen's view
constexpr int kDragText = 1060;

const char* const kNames[] = {"Star Catcher",  "Harbour Lights", "Moon Ferry",     "Tin Robot",
                              "Paper Kites",   "Night Gardener", "Cave of Echoes", "Snow Courier",
                              "Clockwork Owl", "Deep Current",   "Lantern Race",   "Meadow Golf",
                              "Rooftop Cats",  "Salt and Wind"};

void RememberGames(const UserHome& home) {
    GameList games;
    for (const char* name : kNames) {
        GameEntry game;
        game.path = ToWide(Sample("star_catcher.nes"));
        game.name = ToWide(name);
        game.checked = true;
        games.push_back(std::move(game));
    }
    const std::string list = StoreRememberedList(games, ColumnWidths{}, home.Path());
    home.Store()->RegWriteBinary(kHistoryKey, "Data",
                                 std::vector<uint8_t>(list.begin(), list.end()));
}

Wanted DesignerWindow() {
    return [](const Seen& seen) { return seen.type == "bw::CDesignDialog"; };
}

class Session {
  public:
    Session(Desktop& desktop, const UserHome& home, std::filesystem::path folder,
            std::vector<std::string> environment = {})
        : desktop_(desktop),
          program_(desktop, home.Path(), {}, std::move(environment)),
          folder_(std::move(folder)) {
        program_.Await("a game", Cell(1, 1));
        desktop_.Key("ctrl+d");
        program_.Await("the designer", DesignerWindow());
    }
    ~Session() {
        program_.Process().Signal(SIGTERM);
        program_.AwaitEnd();
    }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    Program& Window() { return program_; }
    void OpenSample(const std::string& name) {
        desktop_.Key("alt+f");
        desktop_.Key("s");
        program_.Click("the sample", [&](const Seen& seen) { return seen.name == name; });
        program_.Click("Open", Button("Open"));
        program_.AwaitGone("the samples", Button("Open"));
    }
    void DragOnScreen(Place from, Place to) { desktop_.Drag(OnScreen(from), OnScreen(to)); }
    // Column and row of the screen.
    Place OnScreen(Place cell) {
        const Seen view = program_.Await("the screen", ById("view_6"));
        return {view.x + cell.x * kCell + kCell / 2, view.y + cell.y * kCell + kCell / 2};
    }
    // The designer's window without its frame.
    void Photograph(const char* name) {
        const Seen window = program_.Await("the designer", DesignerWindow());
        desktop_.Photograph(folder_ / (std::string("designer_") + name + ".png"),
                            {window.x, window.y}, window.width, window.height);
    }

  private:
    Desktop& desktop_;
    Program program_;
    std::filesystem::path folder_;
};

void TakeAll(const std::filesystem::path& folder) {
    const TemporaryFolder themes;
    const UserHome home;
    RememberGames(home);
    Desktop desktop(kWidth, kHeight);
    desktop.RemoveTray();  // it would lie over large windows
    const auto in = [&](uint32_t language) {
        home.Store()->RegWriteDword(kMainKey, "Language", language);
    };
    in(kEnglish);
    {
        Session session(desktop, home, folder);
        session.OpenSample("Night sea");
        desktop.MoveTo(session.OnScreen({9, 13}));
        std::this_thread::sleep_for(700ms);
        session.Photograph("english");
    }
    in(kChinese);
    {
        Session session(desktop, home, folder, DarkDesktop(themes / "dark"));
        desktop.MoveTo(session.OnScreen({9, 13}));
        std::this_thread::sleep_for(700ms);
        session.Photograph("dark_chinese");
    }
    in(kEnglish);
    {
        // The list where some of its names have no room, in a window that is small for a large
        // picture of it.
        Session session(desktop, home, folder);
        desktop.Arrange("Custom menu", {20, 40}, kSmallWidth, kSmallHeight);
        session.Window().Await("the small window", [](const Seen& seen) {
            return DesignerWindow()(seen) && seen.width == kSmallWidth;
        });
        session.Window().Click("Drag text", Control(kDragText));
        session.DragOnScreen({9, 13}, {21, 13});
        session.Window().Click("the problem", [](const Seen& seen) {
            return seen.type == "cell" && seen.name.find("too long") != std::string::npos;
        });
        session.Photograph("problems");
    }
}

}  // namespace
}  // namespace bw::test

int main(int count, char** words) {
    if (count != 2) {
        std::fputs("usage: designer_pictures FOLDER\n", stderr);
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
