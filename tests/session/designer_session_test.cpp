// One person draws the menu's screen: from the list of games to the boards' ROMs, by mouse and keys
// alone. The same steps through the document half come to the same file, and the console shows it.
//
// Environment:
//   BANKWEAVER_SESSION_PICTURES  a folder's whole path, for a picture of the screen at each stage
#include <cstdlib>

#include <fmt/format.h>
#include <gmock/gmock.h>

#include "artist.h"
#include "builder/input/build_settings.h"
#include "builder/resources.h"
#include "common/game_image.h"
#include "console_picture.h"
#include "designer/files/design_parts.h"
#include "designer/history/designer_settings.h"
#include "designer/import/picture_import.h"
#include "designer/tools/map_tools.h"
#include "designer/tools/selection_tools.h"
#include "designer/tools/text_tools.h"
#include "designer/window/design_ids.h"
#include "list/game_list.h"
#include "support/text.h"
#include "user_home.h"

namespace bw::test {
namespace {

using enum bw::Control;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr int kScreenWidth = 1700;  // the designer's frame at its own size, with the panel
constexpr int kScreenHeight = 1100;
constexpr int kNoButton = 7;
// Of the dialog that a picture comes through.
constexpr int kImportColumn = 41409;
constexpr int kImportRow = 41411;
constexpr int kPutIn = 1;

// Forty games of other names, which are copies of the samples.
std::vector<std::string> CopyGames(const std::filesystem::path& folder) {
    // Those that run on all boards.
    const std::string samples[] = {"star_catcher", "nrom256_check", "mmc3_check"};
    std::vector<std::string> games;
    for (const char* first :
         {"Brick", "Comet", "Drift", "Ember", "Frost", "Gully", "Hover", "Inlet"}) {
        for (const char* second : {"Duel", "Maze", "Quest", "Race", "Tale"}) {
            const auto game = folder / (std::string(first) + " " + second + ".nes");
            std::filesystem::copy_file(Sample(samples[games.size() % 3] + ".nes"), game);
            games.push_back(game.string());
        }
    }
    return games;
}

// What the designer's window begins with.
void Begin(EditSession& session, const std::vector<std::string>& games) {
    GameList list;
    for (const std::string& game : games) {
        list.emplace_back(std::filesystem::path(game));
        list.back().checked = true;
    }
    const auto settings = MakeMemoryStore();
    const auto names = DisplayNames(list, BuildSettings().Numbers(), NameRules::kDesignerAndExport);
    session.RunWithoutStep([&](WorkingCopy& copy) {
        LoadDesignData(copy.Store(), *settings, DefaultTileSet());
        copy.Store().CaptionText = MulticartTitle(names.size());
        SetItems(copy, names, static_cast<int32_t>(BuildSettings().PageSize), false);
        return Views();
    });
    OpenDesigner(session, *settings, {});
}

struct DesignerSession {
    DesignerSession() : games(CopyGames(home.Path())), screen(hand, home.Path(), games) {
        Begin(document, games);
    }

    // One more picture, of what the name tells.
    void Photograph(const std::string& name) {
        if (const char* folder = std::getenv("BANKWEAVER_SESSION_PICTURES"))
            hand.Photograph(std::filesystem::path(folder) /
                            fmt::format("{:02}_{}.png", ++pictures, name));
    }
    void MainMenu(const std::vector<TextId>& path) {
        std::vector<std::string> words;
        for (const TextId id : path)
            words.push_back(ToUtf8(LoadText(id, Language::kEnglish)));
        screen.Menu(words);
    }
    console::ScriptRun Build(const std::string& board, const std::string& keys) {
        const auto rom = home / (board + ".nes");
        hand.Key(keys);
        screen.EnterFileName(rom);
        screen.Click("the question at the build's end", Control(kNoButton));
        screen.AwaitGone("the question", Control(kNoButton));
        return console::PictureRun(rom, "designed_" + board);
    }

    UserHome home;
    std::vector<std::string> games;
    Desktop hand{kScreenWidth, kScreenHeight};
    Program screen;
    EditSession document;
    int pictures = 0;
};

// A hill below a sky, in colours that the console hasn't got.
std::vector<uint8_t> Landscape() {
    constexpr int kWidth = 96;  // pixels
    constexpr int kHeight = 32;
    const uint32_t colours[] = {0x80B8F4, 0x3C7A2E, 0x6FB450, 0xFFE9A0};
    std::vector<uint8_t> indices;
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            const int ground = 20 + (x - 40) * (x - 40) / 160;
            const bool sun = (x - 78) * (x - 78) + (y - 10) * (y - 10) < 50;
            indices.push_back(y > ground + 6 ? 1 : y > ground ? 2 : sun ? 3 : 0);
        }
    }
    return EncodePng(kWidth, kHeight, colours, indices);
}

void ImportLandscape(DesignerSession& session, Artist& artist) {
    const std::vector<uint8_t> png = Landscape();
    const std::string file = session.home / "landscape.png";
    WriteText(file, {reinterpret_cast<const char*>(png.data()), png.size()});
    artist.Menu("alt+f", TextId::kImportPictureEntry);
    session.screen.EnterFileName(file);
    const auto fitted = [](const Seen& seen) { return Control(kPutIn)(seen) && seen.Enabled(); };
    for (const int box : {kImportColumn, kImportRow}) {
        session.screen.Await("the fitted picture", fitted);
        artist.Write(box, "20");
    }
    session.screen.Await("the picture at its place", fitted);
    session.Photograph("import");
    session.screen.Click("the button that puts it in", fitted);
    session.screen.AwaitGone("the dialog", Control(kImportColumn));
    Picture picture;
    ASSERT_EQ(DecodeAnyPng(png, kLargestPictureSide, picture), std::nullopt);
    const auto result = ImportPicture(artist.Copy(), picture, {.at = {20, 20}}, false);
    artist.Follow([&](WorkingCopy& copy) { return ApplyImport(copy, *result); });
}

void PaintAndLay(Artist& artist) {
    // A tile of one's own: a wave, in the third colour of the first sub-palette.
    const Point wave = artist.In(kBkgTileList, {1, 13});
    artist.Click(wave);
    artist.Click(artist.In(kBkgPalette, {2, 0}));
    std::vector<Point> line;
    for (const Pos pixel : {Pos{0, 5}, {1, 4}, {2, 3}, {3, 3}, {4, 4}, {5, 5}, {6, 6}, {7, 6}})
        line.push_back(artist.In(kBkgTileEditor, pixel));
    artist.Drag(line);
    for (const int column : {4, 6, 8})
        artist.Drag(
            {wave, artist.In(kSpriteTileList, {8, 8}), artist.In(kNameTable, {column, 18})});
    // The same by clicks, beside a tile of the default set.
    artist.Turn(kDesignQuickAction, &WorkingCopy::QuickAction);
    artist.Click(artist.In(kNameTable, {10, 18}));
    for (int i = 0; i < 6; ++i)
        artist.Click(i % 2 == 0 ? artist.In(kBkgTileList, {14, 1}) : wave);
    artist.Turn(kDesignQuickAction, &WorkingCopy::QuickAction);
}

void ArrangeAndColour(Artist& artist) {
    const auto cell = [&](Pos at) { return artist.In(kNameTable, at); };
    artist.Turn(kDesignDragText, &WorkingCopy::DragText);
    artist.Drag({cell(artist.Copy().document.CaptionPos), cell({8, 4}), cell({12, 3})});
    artist.Drag({cell(artist.Copy().document.ItemPos), cell({15, 9}), cell({13, 6})});
    // The cursor: from the corner, where many televisions show nothing, to the first name's left.
    artist.Drag({cell({0, 0}), cell({4, 3}), cell({11, 6})});
    artist.Turn(kDesignDragText, &WorkingCopy::DragText);

    artist.Click(artist.In(kSpritePalette, {1, 0}));
    artist.Click(artist.In(kSystemPalette, {6, 2}));
    artist.Click(artist.In(kBkgPalette, {9, 0}));
    artist.Click(artist.In(kSystemPalette, {7, 3}));
    // The caption in that colour.
    artist.Drag({cell({12, 3}), cell({13, 3}), cell({15, 3}), cell({17, 3})}, "ctrl");
}

// What Problems names, until it names nothing.
void MapCharacters(DesignerSession& session, Artist& artist) {
    EXPECT_THAT(artist.Problems(), IsEmpty());
    artist.Drag({artist.In(kBkgTileList, {0, 3}), artist.In(kBkgTileList, {9, 4}),
                 artist.In(kBkgTileList, {15, 5})},
                "shift");
    session.hand.Key("Delete");
    artist.Follow(DeleteSelection);
    EXPECT_THAT(artist.Problems(), Contains(HasSubstr("\"A\"")));
    session.Photograph("letters_gone");
    artist.Click(artist.In(kBkgTileList, {0, 3}));
    artist.Menu("alt+e", TextId::kMapUsedCharacters);
    artist.Follow(MapUsedCharacters);
    EXPECT_THAT(artist.Problems(), IsEmpty());
    session.Photograph("mapped");

    // A text has letters that the names haven't.
    artist.Write(kDesignText, "PICK ONE!");
    session.document.RunWithoutStep([](WorkingCopy& copy) { copy.CustomTextEdit = u"PICK ONE!"; });
    artist.Press(kDesignAddText);
    artist.Follow([](WorkingCopy& copy) { return AddText(copy, u"PICK ONE!"); });
    artist.Turn(kDesignDragText, &WorkingCopy::DragText);
    artist.Drag({artist.In(kNameTable, {1, 0}), artist.In(kNameTable, {6, 10}),
                 artist.In(kNameTable, {9, 24})});
    EXPECT_THAT(artist.Problems(), Contains(HasSubstr("\"!\"")));
    session.Photograph("text");
    artist.Click(artist.In(kBkgTileList, {0, 7}));
    artist.Menu("alt+e", TextId::kMapAllCharacters);
    artist.Follow(MapAllCharacters);
    EXPECT_THAT(artist.Problems(), IsEmpty());
    session.Photograph("no_problems");
}

TEST(DesignerSession, FromTheListToTheBoards) {
    DesignerSession session;
    session.screen.Await("the games", Rows(40));
    session.screen.Await("the window in front", [](const Seen& seen) { return seen.Active(); });
    session.Photograph("games");
    session.hand.Key("ctrl+d");
    Artist artist(session.hand, session.screen, session.document);
    session.Photograph("opened");
    ImportLandscape(session, artist);
    session.Photograph("imported");
    PaintAndLay(artist);
    session.Photograph("painted");
    ArrangeAndColour(artist);
    session.Photograph("coloured");
    MapCharacters(session, artist);
    artist.UndoAll();
    session.Photograph("undone");
    artist.RedoAll();
    session.Photograph("redone");

    const std::string file = session.home / "drawn.fcm";
    artist.Press(kDesignDesignSave);
    session.screen.EnterFileName(file);
    session.screen.Await("the saved design", [&](const Seen& seen) {
        return seen.type == "QLabel" && seen.value == "Saved " + file + ".";
    });
    const auto stored =
        StorePart(DesignPart::kDesign, Shift::kUp, artist.Copy(), Language::kEnglish);
    const auto& bytes = std::get<std::vector<uint8_t>>(stored);
    EXPECT_TRUE(ReadText(file) == std::string(bytes.begin(), bytes.end()))
        << "the document half comes to another file";
    session.hand.Key("Escape");
    session.screen.AwaitGone("the designer", ById("design_frame"));

    session.MainMenu(
        {TextId::kMulticartMenuEntry, TextId::kCustomMenuEntry, TextId::kEnableCustomMenuEntry});
    std::vector<console::ScriptRun> runs;
    runs.push_back(session.Build("coolboy", "ctrl+b"));
    runs.push_back(session.Build("coolgirl", "ctrl+g"));
    session.MainMenu({TextId::kMulticartMenuEntry, TextId::kCoolboyType, TextId::kMindkids});
    runs.push_back(session.Build("mindkids", "ctrl+b"));
    session.Photograph("built");
    const Surface drawn = console::DrawnScreen(artist.Copy());
    for (const console::ScriptResult& shown : console::RunAllOnConsole(runs))
        console::ExpectPicture(shown, [&](Point at) { return std::optional(drawn.At(at)); });
}

}  // namespace
}  // namespace bw::test
