// One person's whole evening with the window, from the empty list to the next start.
#include <optional>

#include <gmock/gmock.h>

#include "common/game_image.h"
#include "language/language.h"
#include "program.h"
#include "support/text.h"
#include "user_home.h"

namespace bw::test {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

constexpr Place kDragSource{1200, 20};
constexpr int kNameColumn = 1;
// Controls and commands by their ids.
constexpr int kReplaceAllButton = 40031;
constexpr int kFindBox = 1032;
constexpr int kReplaceBox = 1033;
constexpr int kRegexButton = 1035;
constexpr int kBuildCoolgirl = 40093;
constexpr int kMinimise = 1028;
constexpr int kNoButton = 7;

// What has to come back as it was.
struct Evening {
    std::vector<std::string> names, checks;
    std::vector<int> widths, place;
    bool operator==(const Evening&) const = default;
};

struct Session {
    Session() {
        // The first close of all asks what closing means.
        home.Store()->RegDeleteValue(kMainKey, "Remember");
        screen.emplace(hand, home.Path());
    }

    std::string Text(TextId id) const { return ToUtf8(LoadText(id, language)); }

    void AddByDialog(const std::vector<std::string>& samples) {
        std::string words;
        for (const std::string& name : samples)
            words += '"' + Sample(name) + "\" ";
        screen->Menu({Text(TextId::kFileEntry), Text(TextId::kOpenEntry)});
        screen->EnterFileName(words);
    }
    void Drop(const std::vector<std::string>& samples, size_t rows) {
        std::vector<std::string> words{BANKWEAVER_DRAG_SOURCE, std::to_string(kDragSource.x),
                                       std::to_string(kDragSource.y)};
        for (const std::string& name : samples)
            words.push_back(Sample(name));
        const ChildProcess source = hand.Run(words, {"QT_QPA_PLATFORM=xcb"});
        hand.AwaitWindow("files to drag");
        // Anywhere on the window will do, even where texts can be dropped too.
        hand.Drag({kDragSource.x + 30, kDragSource.y + 30},
                  screen->Await("the filter", ById("filterText")).Middle());
        screen->Await("the dropped games", Rows(rows));
    }
    // The square is as wide as a row is high.
    void ClickCheck(int row) {
        const Seen cell = screen->Await("a row", Cell(row, 0));
        hand.Click({cell.x + cell.height / 2, cell.Middle().y});
        screen->Await("the check's change", [&, id = cell.id](const Seen& seen) {
            return seen.type == "cell" && seen.id == id && seen.Checked() != cell.Checked();
        });
    }
    void EditName(int row, const std::string& name) {
        hand.DoubleClick(screen->Await("a name", Cell(row, kNameColumn)).Middle());
        screen->Await("the editor", ById("cellEditor"));
        hand.Type(name);
        hand.Key("Return");
        AwaitName(row, name);
    }
    void AwaitName(int row, const std::string& name) {
        screen->Await("the name " + name, [&](const Seen& seen) {
            return Cell(row, kNameColumn)(seen) && seen.name == name;
        });
    }
    void SaveList(const std::string& file) {
        hand.Key("ctrl+s");
        screen->EnterFileName(file);
        screen->Await("the saved list", [&](const Seen&) { return std::filesystem::exists(file); });
    }

    // The file dialog comes up where the last build went, with a name in it: the mouse is enough.
    std::string BuildByMouse() {
        screen->Click("the button that builds", Control(kBuildCoolgirl));
        const Seen name = screen->Await("a proposed file name", [](const Seen& seen) {
            return seen.id == "fileNameEdit" && !seen.value.empty();
        });
        screen->Click("the button that saves", Button("&Save"));
        screen->Click("the question at the build's end", Control(kNoButton));
        return home / (name.value + ".nes");
    }
    void Arrange(int x, int y, int width, int height) {
        hand.Arrange(screen->Await("the window", MainWindow()).value, {x, y}, width, height);
        screen->Await("the new size", [&](const Seen& seen) {
            return MainWindow()(seen) && seen.width == width && seen.height == height;
        });
    }

    Evening Now() {
        Evening now;
        for (const Seen& seen : screen->Look()) {
            if (seen.type == "header") now.widths.push_back(seen.width);
            if (MainWindow()(seen)) now.place = {seen.x, seen.y, seen.width, seen.height};
            if (seen.type != "cell") continue;
            if (seen.id.ends_with(",1")) now.names.push_back(seen.name);
            if (seen.id.ends_with(",0")) now.checks.push_back(seen.Checked() ? "x" : "-");
        }
        return now;
    }
    void Restart() {
        screen.reset();
        screen.emplace(hand, home.Path());
    }

    UserHome home;
    Desktop hand;
    std::optional<Program> screen;
    Language language = Language::kEnglish;
};

std::string BuiltByCommandLine(Desktop& desktop, const std::string& list, const std::string& rom) {
    ChildProcess cli =
        desktop.Run({BANKWEAVER_CLI, "build", "--board", "coolgirl", "-o", rom, list},
                    {"BANKWEAVER_HOME=" + rom + ".home"});
    if (!cli.WaitFor(std::chrono::minutes(2)) || cli.Status() != 0)
        throw SessionLost(desktop.WordsOf("bankweaver-cli"));
    return ReadText(rom);
}

TEST(Session, FromAnEmptyListToTheNextStart) {
    Session session;
    Desktop& hand = session.hand;
    Program& screen = *session.screen;

    session.AddByDialog({"star_catcher.nes", "mmc1_check.nes", "nrom256_check.nes"});
    screen.Await("the games", Rows(3));
    session.Drop({"cnrom_check.nes", "uxrom_check.nes"}, 5);

    // The first three have come checked.
    for (const int row : {1, 2, 3, 4})
        session.ClickCheck(row);
    EXPECT_THAT(session.Now().checks, ElementsAre("x", "-", "-", "x", "x"));

    // A row that is pulled away leaves the checks as they are.
    const Seen below = screen.Await("a row", Cell(3, kNameColumn));
    hand.Drag(screen.Await("a row", Cell(1, kNameColumn)).Middle(),
              {below.Middle().x, below.y + below.height - 2});
    session.AwaitName(3, "mmc1_check");
    EXPECT_THAT(session.Now().checks, ElementsAre("x", "-", "x", "-", "x"));

    // Two clicks, not a double one.
    const Seen title = screen.Await("the name column's title", Header(kNameColumn));
    hand.Click({title.x + title.width / 3, title.Middle().y});
    session.AwaitName(0, "cnrom_check");
    hand.Click({title.x + title.width / 2, title.Middle().y});
    session.AwaitName(0, "uxrom_check");
    EXPECT_THAT(session.Now().names, ElementsAre("uxrom_check", "star_catcher", "nrom256_check",
                                                 "mmc1_check", "cnrom_check"));
    EXPECT_THAT(session.Now().checks, ElementsAre("x", "x", "-", "-", "x"));

    session.EditName(1, "12.Star Catcher");

    hand.Key("ctrl+f");
    screen.Click("the box for what to find", Control(kFindBox));
    screen.Retype("_check|^\\d+\\.");
    screen.Click("the box for the replacement", Control(kReplaceBox));
    screen.Retype(" ");
    screen.Click("the choice of expressions", Control(kRegexButton));
    screen.Click("the button that replaces", Control(kReplaceAllButton));
    session.AwaitName(4, "cnrom ");
    hand.Key("Escape");
    screen.AwaitGone("the dialog", Control(kReplaceAllButton));
    EXPECT_THAT(session.Now().names,
                ElementsAre("uxrom ", " Star Catcher", "nrom256 ", "mmc1 ", "cnrom "));

    const std::string list = session.home / "evening.fcl";
    session.SaveList(list);
    const std::string rom = session.BuildByMouse();
    EXPECT_TRUE(ReadText(rom) == BuiltByCommandLine(hand, list, session.home / "by_command.nes"))
        << "the ROM differs from the command line's";

    const Seen divider = screen.Await("the name column", Header(kNameColumn));
    hand.Drag({divider.x + divider.width - 1, divider.Middle().y},
              {divider.x + divider.width + 60, divider.Middle().y});
    session.Arrange(90, 70, 940, 560);

    screen.Menu({session.Text(TextId::kSettingsEntry), session.Text(TextId::kLanguageEntry),
                 session.Text(TextId::kChinese)});
    session.language = Language::kChinese;
    screen.Await("a Chinese button", Button(session.Text(TextId::kMoveUp)));

    hand.Key("alt+F4");
    screen.Click("the button that minimises", Control(kMinimise));
    screen.AwaitGone("the window", MainWindow());
    hand.DoubleClick(screen.Await("the tray icon", TrayIcon()).Middle());
    screen.Await("the window", MainWindow());
    const Evening evening = session.Now();
    EXPECT_THAT(evening.names, SizeIs(5));
    EXPECT_EQ(evening.widths.at(kNameColumn), divider.width + 61);

    screen.Menu({session.Text(TextId::kFileEntry), session.Text(TextId::kExitEntry)});
    EXPECT_EQ(screen.AwaitEnd(), 0) << screen.Words();
    session.Restart();
    session.screen->Await("the games", Rows(5));
    session.screen->Await("Chinese again", Button(session.Text(TextId::kMoveUp)));
    EXPECT_EQ(session.Now(), evening);
}

}  // namespace
}  // namespace bw::test
