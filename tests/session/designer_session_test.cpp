// One person draws the menu's screen: from the list of games to the boards' ROMs, by mouse and keys
// alone. The same steps through the document half come to the same file, and the console shows it.
//
// Environment:
//   BANKWEAVER_SESSION_PICTURES  a folder's whole path, for a picture of the screen at each stage
#include <cstdlib>

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

// Turns a switch of the working copy.
template <bool WorkingCopy::*kField>
Views Turn(WorkingCopy& copy) {
    copy.*kField = !(copy.*kField);
    return {};
}

struct DesignerSession {
    DesignerSession() : games(CopyGames(home.Path())), screen(hand, home.Path(), games) {
        Begin(document, games);
    }

    void Photograph(const std::string& name) {
        if (const char* folder = std::getenv("BANKWEAVER_SESSION_PICTURES"))
            hand.Photograph(std::filesystem::path(folder) / (name + ".png"));
    }
    void MainMenu(const std::vector<TextId>& path) {
        std::vector<std::string> words;
        for (const TextId id : path)
            words.push_back(ToUtf8(LoadText(id, Language::kEnglish)));
        screen.Menu(words);
    }
    console::ConsoleRun Build(const std::string& board, const std::string& keys) {
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
    session.hand.Key("alt+f");
    session.screen.Menu({ToUtf8(LoadText(TextId::kImportPictureEntry, Language::kEnglish))});
    session.screen.EnterFileName(file);
    artist.WriteInto(kImportColumn, "20");
    artist.WriteInto(kImportRow, "20");
    const auto fitted = [](const Seen& seen) { return Control(kPutIn)(seen) && seen.Enabled(); };
    session.screen.Await("the fitted picture", fitted);
    session.Photograph("03_import");
    session.screen.Click("the button that puts it in", fitted);
    session.screen.AwaitGone("the dialog", Control(kImportColumn));
    Picture picture;
    ASSERT_EQ(DecodeAnyPng(png, kLargestPictureSide, picture), std::nullopt);
    const auto result = ImportPicture(artist.Copy(), picture, {.at = {20, 20}}, false);
    artist.Follow([&](WorkingCopy& copy) { return ApplyImport(copy, *result); });
}

void PaintAndLay(Artist& artist) {
    // A tile of one's own: a wave, in the third colour of the first sub-palette.
    artist.Click(artist.In(kBkgTileList, {1, 13}));
    artist.Click(artist.In(kBkgPalette, {2, 0}));
    std::vector<Point> wave;
    for (const Pos pixel : {Pos{0, 5}, {1, 4}, {2, 3}, {3, 3}, {4, 4}, {5, 5}, {6, 6}, {7, 6}})
        wave.push_back(artist.In(kBkgTileEditor, pixel));
    artist.Drag(wave);
    for (const int column : {4, 6, 8})
        artist.Drag({artist.In(kBkgTileList, {1, 13}), artist.In(kSpriteTileList, {8, 8}),
                     artist.OnScreen({column, 18})});
    // The same by clicks, beside a tile of the default set.
    artist.Press(kDesignQuickAction, Turn<&WorkingCopy::QuickAction>);
    artist.Click(artist.OnScreen({10, 18}));
    for (int i = 0; i < 6; ++i)
        artist.Click(artist.In(kBkgTileList, i % 2 == 0 ? Pos{14, 1} : Pos{1, 13}));
    artist.Press(kDesignQuickAction, Turn<&WorkingCopy::QuickAction>);
}

void Arrange(Artist& artist) {
    artist.Press(kDesignDragText, Turn<&WorkingCopy::DragText>);
    const auto text = [&](Pos Of) { return artist.OnScreen(Of, {22, 8}); };
    const Pos caption = artist.Copy().document.CaptionPos;
    artist.Drag({text(caption), text({8, 4}), text({12, 3})});
    const Pos list = artist.Copy().document.ItemPos;
    artist.Drag({text(list), text({15, 9}), text({13, 6})});
    // From the corner, where many televisions show nothing, to the first name's left.
    artist.Drag({artist.OnScreen({0, 0}), artist.OnScreen({4, 3}), artist.OnScreen({11, 6})});
    artist.Press(kDesignDragText, Turn<&WorkingCopy::DragText>);
}

void Colour(Artist& artist) {
    artist.Click(artist.In(kBkgPalette, {5, 0}));
    artist.Click(artist.In(kSystemPalette, {9, 2}));
    artist.Click(artist.In(kSpritePalette, {1, 0}));
    artist.Click(artist.In(kSystemPalette, {6, 2}));
    // The caption's row in the list's colour.
    artist.Click(artist.In(kBkgPalette, {5, 0}));
    artist.Drag({artist.OnScreen({12, 3}), artist.OnScreen({13, 3}), artist.OnScreen({15, 3}),
                 artist.OnScreen({16, 3}), artist.OnScreen({18, 3})},
                "ctrl");
}

TEST(DesignerSession, FromTheListToTheBoards) {
    DesignerSession session;
    session.screen.Await("the games", Rows(40));
    session.Photograph("01_games");
    session.hand.Key("ctrl+d");
    Artist artist(session.hand, session.screen, session.document);
    session.Photograph("02_opened");

    ImportLandscape(session, artist);
    session.Photograph("04_imported");

    PaintAndLay(artist);
    session.Photograph("05_painted");
    Arrange(artist);
    session.Photograph("06_dragged");
    Colour(artist);
    session.Photograph("07_coloured");

    // Without its letters the screen has problems, which the map of characters solves.
    EXPECT_THAT(artist.Problems(), IsEmpty());
    artist.Drag({artist.In(kBkgTileList, {0, 2}), artist.In(kBkgTileList, {9, 4}),
                 artist.In(kBkgTileList, {15, 5})},
                "shift");
    artist.Key("Delete", DeleteSelection);
    EXPECT_THAT(artist.Problems(), Contains(HasSubstr("\"A\"")));
    session.Photograph("08_letters_gone");
    artist.Click(artist.In(kBkgTileList, {0, 2}));
    artist.Menu("alt+e", TextId::kMapUsedCharacters, MapUsedCharacters);
    EXPECT_THAT(artist.Problems(), IsEmpty());
    session.Photograph("09_mapped");

    artist.Write(kDesignText, "PICK ONE!", [](WorkingCopy& copy) {
        copy.CustomTextEdit = u"PICK ONE!";
        return Views();
    });
    artist.Press(
        kDesignAddText, [](WorkingCopy& copy) { return AddText(copy, u"PICK ONE!"); }, true);
    artist.Press(kDesignDragText, Turn<&WorkingCopy::DragText>);
    artist.Drag({artist.OnScreen({1, 0}), artist.OnScreen({6, 10}), artist.OnScreen({9, 24})});
    EXPECT_THAT(artist.Problems(), Contains(HasSubstr("\"!\"")));
    session.Photograph("10_text");
    artist.Click(artist.In(kBkgTileList, {0, 7}));
    artist.Menu("alt+e", TextId::kMapAllCharacters, MapAllCharacters);
    EXPECT_THAT(artist.Problems(), IsEmpty());
    session.Photograph("11_no_problems");

    artist.UndoAll();
    session.Photograph("12_undone");
    artist.RedoAll();
    session.Photograph("13_redone");

    const std::string file = session.home / "drawn.fcm";
    session.hand.Click(
        session.screen.Await("the button that saves", Control(kDesignDesignSave)).Middle());
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
    std::vector<console::ConsoleRun> runs;
    runs.push_back(session.Build("coolboy", "ctrl+b"));
    runs.push_back(session.Build("coolgirl", "ctrl+g"));
    session.MainMenu({TextId::kMulticartMenuEntry, TextId::kCoolboyType, TextId::kMindkids});
    runs.push_back(session.Build("mindkids", "ctrl+b"));
    session.Photograph("14_built");
    const Surface drawn = console::DrawnScreen(artist.Copy());
    for (const console::ConsoleResult& shown : console::RunAllOnConsole(runs))
        console::ExpectPicture(shown, [&](Point at) { return std::optional(drawn.At(at)); });
}

}  // namespace
}  // namespace bw::test
