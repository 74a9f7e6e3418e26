// Menus of the user's own: the exported files, which must assemble to the menu that a build makes,
// and external menus in a build.
#include <chrono>
#include <map>
#include <numeric>

#include "build_fixture.h"
#include "builder/menu_assembler.h"
#include "builder/resources.h"
#include "builder/tables/cart_manifest.h"

namespace bw {
namespace {

using namespace test;

class OwnMenus : public BuildFixture {
  protected:
    OwnMenus() { std::filesystem::create_directory(folder_ / "own"); }

    std::filesystem::path Own(const char* file) const { return folder_ / "own" / file; }

    void UseExternMenu(const std::filesystem::path& path, const std::string& content) {
        settings_.ExternMenuEnable = true;
        settings_.ExternMenuPath = path;
        WriteText(path, content);
    }
    // The menu's bytes in the ROM of a build that must succeed.
    std::string BuiltMenu(BoardType board) {
        BuildContext context = Context();
        context.keepWork = folder_ / "kept";
        user_.messages.clear();
        const BuildOutcome outcome = BuildRom(context, board, taskBusy_);
        EXPECT_TRUE(outcome.done) << testing::PrintToString(user_.messages);
        if (!outcome.done) return "no menu";
        const auto menu = std::ranges::find(outcome.layout.items, 1, &MulticartItem::isMenu);
        menuOffset_ = menu->prgOffset;
        return ReadText(outcome.output).substr(menu->prgOffset, menu->prgSpan);
    }

    // A design with something of everything, and names with numbers.
    void MakeDesign() {
        settings_.CustomEnable = true;
        settings_.ShowNumberOrder = settings_.ShowNumberDot = settings_.ShowNumberFill = true;
        settings_.NameInsertRow = settings_.PageNumber = true;
        settings_.Music = 5;
        std::vector<uint8_t> map(256);
        std::iota(map.rbegin(), map.rend(), uint8_t{0});
        store_->RegWriteBinary(kDesignKey, "ChrData", std::vector<uint8_t>(8192, 0x5A));
        store_->RegWriteBinary(kDesignKey, "CharMapData", map);
        for (const char* name : {"BigCursor", "BigSprite"})
            store_->RegWriteBinary(kDesignKey, name, std::vector<uint8_t>{1});
        store_->RegWriteString(kDesignKey, "CaptionText", u"A CAPTION THAT IS CUT AT THE EDGE");
        design_.BkgTileList = design_.SpriteTileList = {20, TileItem{.X = 2, .Y = 3, .Tile = 4}};
        design_.ItemPpuAddr = 0x2044;
        design_.CaptionPpuAddr = 0x2025;
        design_.PageNumberPpuAddr = 0x2361;
    }

    uint32_t menuOffset_ = 0;
};

using FolderContent = std::map<std::string, std::string>;

FolderContent ContentOf(const std::filesystem::path& folder) {
    FolderContent content;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        const std::string name = entry.path().lexically_relative(folder).generic_string();
        if (entry.is_regular_file()) content[name] = ReadText(entry.path());
    }
    return content;
}

// A built menu as it was before the build noted its games down.
std::string WithoutNotes(std::string menu, BoardType board, size_t games) {
    const auto room = ManifestRoomOf(static_cast<uint32_t>(menu.size() / kPrgUnit), board, games);
    const std::vector<uint8_t> bytes(menu.begin(), menu.end());
    const auto notes = UnpackManifest(std::span(bytes).subspan(room->offset, room->size));
    EXPECT_TRUE(notes);
    const size_t size = PackManifest(notes.value_or(CartManifest{})).size();
    return menu.replace(room->offset, size, size, '\xFF');
}

using ExportCase = std::tuple<BoardType, uint32_t, bool>;  // size in 16 KB units; with a design

class ExportedMenu : public OwnMenus, public testing::WithParamInterface<ExportCase> {};

TEST_P(ExportedMenu, AssemblesToTheMenuOfABuild) {
    const auto [board, size, design] = GetParam();
    const bool coolgirl = board == BoardType::kCoolgirl;
    AddMany(1000);  // two banks of records of either kind, four of names
    for (size_t i = 0; i < games_.size(); ++i)
        games_[i].name = ToWide("A Name of Many Letters " + std::to_string(i));
    if (design) MakeDesign();
    settings_.MenuSize = size;
    settings_.ExportRomType = coolgirl ? 1 : 0;
    settings_.ExportPrgSize = size / 16;
    if (coolgirl && size == 8) {  // COOLGIRL's own menu knows this size only
        settings_.MenuSize = 32;
    } else if (coolgirl) {
        ASSERT_TRUE(WriteResources(folder_ / "own"));
        settings_.ExternMenuEnable = true;
        settings_.ExternMenuPath = folder_ / "own" / "menu" / "menu.asm";
    }
    const std::string built = BuiltMenu(board);
    EXPECT_EQ(menuOffset_, coolgirl ? 0 : 0x80000 - size * 16384);

    const std::filesystem::path menu = folder_ / "hand" / "menu";
    ASSERT_TRUE(WriteResources(folder_ / "hand"));
    std::filesystem::create_directory(menu / "build");
    user_.folder = menu / "build";
    ASSERT_TRUE(RunExport(Context())) << testing::PrintToString(user_.messages);
    const AssemblyOutcome assembly =
        RunAssembler(AssemblerPath(folder_ / "hand"), menu / "menu.asm", menu, Language::kEnglish);
    ASSERT_TRUE(assembly.done) << ToUtf8(assembly.output);
    EXPECT_TRUE(ReadText(menu / "menu.nes").substr(16) ==
                (settings_.ExternMenuEnable ? built : WithoutNotes(built, board, games_.size())));
    EXPECT_EQ(ReadText(folder_ / "kept" / "menu.asm"), ReadText(menu / "menu.asm"));

    FolderContent exported = ContentOf(menu / "build");
    const FolderContent inBuild = ContentOf(folder_ / "kept" / "build");
    EXPECT_EQ(exported.size(), inBuild.size());
    for (const auto& [name, content] : inBuild)
        EXPECT_TRUE(exported[name] == content) << name;
    for (const char* name : {"game_data_1.asm", "game_final_data_1.asm", "game_list_3.asm"})
        EXPECT_TRUE(inBuild.contains(name));
}

INSTANTIATE_TEST_SUITE_P(BoardsSizesAndDesigns, ExportedMenu,
                         testing::Combine(testing::Values(BoardType::kCoolboy,
                                                          BoardType::kCoolgirl),
                                          testing::Values(8u, 16u, 32u), testing::Bool()));

// A menu of one's own: a byte for each constant that the test looks at, and filling. Its size is
// its own affair.
std::string OwnSource(int prg, int chr = 0) {
    return " INCLUDE \"build/game_config.asm\"\n .INESPRG " + std::to_string(prg) + "\n .INESCHR " +
           std::to_string(chr) +
           "\n .INESMAP 4\n .INESMIR 1\n .BANK 0\n .ORG $8000\n"
           " .DB GAMES_TOTAL,BOARD_TYPE,MENU_PRG_SIZE\n INCLUDE \"build/game_list_0.asm\"\n";
}

TEST_F(OwnMenus, ASourceIsAssembledAgainstTablesOfItsOwn) {
    Add("game", {1, 1, 0});
    settings_.ShowNumberOrder = true;
    std::filesystem::create_directory(Own("build"));
    const std::vector<std::string> stale{"game_list_1.asm", "game_list_F.asm", "game_data_1.asm",
                                         "game_data_7.asm", "game_final_data_7.asm"};
    for (const std::string& name : stale)
        WriteText(Own("build") / name, "old");
    // Not the build's to remove: the highest banks' files and whatever else lies there.
    for (const char* name : {"game_data_8.asm", "game_final_data_B.asm", "mine.inc"})
        WriteText(Own("build") / name, "kept");
    WriteText(Own("mine.nes"), "old");
    const std::filesystem::path start = std::filesystem::current_path();
    std::filesystem::current_path(folder_.Path());
    UseExternMenu("own/mine.ASM", OwnSource(16));

    // The first assembly tells the menu's size, the second has it in its tables.
    for (const BoardType board :
         {BoardType::kCoolboy, BoardType::kMindkids, BoardType::kCoolgirl}) {
        const bool coolgirl = board == BoardType::kCoolgirl;
        const std::string menu = BuiltMenu(board);
        // The tables of an export know COOLBOY and COOLGIRL only, and number names without a point.
        const std::string head{'\x01', coolgirl ? '\x02' : '\x00', '\x10', '\x00', '\x00'};
        EXPECT_EQ(menu.substr(0, 5), head);
        EXPECT_EQ(menu.substr(7, 6),
                  "\x05"
                  "1GAME");
        EXPECT_EQ(menu.size(), size_t{256} * 1024);
        EXPECT_EQ(menuOffset_, coolgirl ? 0u : 0x40000u);
    }
    std::filesystem::current_path(start);
    FolderContent content = ContentOf(folder_ / "own");
    for (const std::string& name : stale)
        EXPECT_FALSE(content.contains("build/" + name)) << name;
    EXPECT_EQ(content["build/game_data_8.asm"] + content["build/game_final_data_B.asm"],
              "keptkept");
    EXPECT_EQ(content["build/mine.inc"], "kept");
    EXPECT_EQ(content["build/game_list.txt"], "1game\r\n");
    EXPECT_THAT(content["build/game_config.asm"], HasSubstr("MENU_PRG_SIZE = 16\r\n"));
    EXPECT_THAT(content["mine.nes"], StartsWith("NES\x1A\x10"));
}

TEST_F(OwnMenus, TheFirstExportLeavesTheCurrentFolderAlone) {
    Add("game", {1, 1, 0});
    WriteText(Own("game_list_1.asm"), "kept");
    const std::filesystem::path start = std::filesystem::current_path();
    std::filesystem::current_path(folder_ / "own");
    settings_.ExportRomType = 1;
    settings_.ExportPrgSize = 2;
    EXPECT_FALSE(RunExport(Context())) << "no folder chosen";
    user_.folder = folder_ / "out";
    EXPECT_TRUE(RunExport(Context()));
    std::filesystem::current_path(start);
    EXPECT_THAT(user_.messages, IsEmpty());
    EXPECT_THAT(ContentOf(folder_ / "own"), ElementsAre(testing::Key("game_list_1.asm")));
    EXPECT_THAT(ReadText(folder_ / "out" / "game_config.asm"),
                HasSubstr("BOARD_TYPE = 2\r\nMENU_PRG_SIZE = 32\r\n"));
}

TEST_F(OwnMenus, ARomIsTakenAsItIs) {
    Add("game", {1, 1, 0});
    for (const int units : {8, 16, 32, 64, 128}) {
        const std::string image = ImageBytes({units, 0, 4}, 9);
        UseExternMenu(Own("menu.NES"), image);
        EXPECT_TRUE(BuiltMenu(BoardType::kCoolboy) == image.substr(16)) << units;
        EXPECT_EQ(menuOffset_, units > 32 ? 0 : 0x80000 - static_cast<uint32_t>(units) * 16384);
    }
    EXPECT_THAT(ContentOf(folder_ / "own"), ElementsAre(testing::Key("menu.NES")));
}

std::string Text(const std::filesystem::path& path) {
    return ToUtf8(PathText(path));
}

TEST_F(OwnMenus, AreRefusedWithTheirReason) {
    Add("game", {1, 1, 0});
    const auto menuError = [this](const char* file, int mapper, int prg, int chr) {
        return fmt::format(
            "Error: Menu ROM error! \r\nPath = {} \r\nMapper = {} \r\nPRG = {}KB \r\nCHR = "
            "{}KB\r\n",
            Text(Own(file)), mapper, prg, chr);
    };
    const auto notOne = [this](const char* file) {
        return "Error: Invalid external menu file: " + Text(Own(file));
    };
    const std::tuple<const char*, std::string, std::string> rows[] = {
        {"a.asm", OwnSource(8, 2), menuError("a.nes", 4, 128, 16)},
        {"b.asm", OwnSource(4), menuError("b.nes", 4, 64, 0)},
        {"c.asm", " LDA Nowhere\n", "Undefined symbol in operand field!"},
        {"d.asm", " INCLUDE \"build/nothing.asm\"\n", "Can not open file!"},
        {"e.nes", ImageBytes({12, 0, 4}, 1), menuError("e.nes", 4, 192, 0)},
        {"f.nes", ImageBytes({16, 1, 1}, 1), menuError("f.nes", 1, 256, 8)},
        {"g.nes", "no image", menuError("g.nes", 0, 128, 0)},
        {"h.txt", "no menu", notOne("h.txt")}};
    for (const auto& [file, content, message] : rows) {
        SCOPED_TRACE(file);
        UseExternMenu(Own(file), content);
        ExpectRefused(message);
    }
    EXPECT_FALSE(exists(Own("c.nes")) || exists(Own("d.nes")));
    settings_.ExternMenuPath = Own("none.nes");
    ExpectRefused(notOne("none.nes"));
    settings_.ExternMenuPath = Own("none.asm");
    ExpectRefused(notOne("none.asm"));
    settings_.ExternMenuPath.clear();
    ExpectRefused("Invalid external menu file: ");
    user_.language = Language::kChinese;
    ExpectRefused(": ");
    EXPECT_THAT(user_.messages[0], Not(HasSubstr("Invalid")));
    user_.language = Language::kEnglish;
    UseExternMenu(Own("mine.asm"), OwnSource(8));
    user_.output = OutputChoice{Own("mine"), RomFormat::kNes20};
    ExpectRefused("Choose another name");  // the assembled menu is no place for the output
    // A place for its tables that can't be made ends the build; a table that can't be written is
    // told, and the assembler follows.
    std::filesystem::remove_all(Own("build"));
    WriteText(Own("build"), "a file stands in the way");
    ExpectRefused("build: This is a file, not a folder");
    std::filesystem::remove(Own("build"));
    std::filesystem::create_directories(Own("build/game_config.asm"));
    user_.messages.clear();
    EXPECT_FALSE(Build().done);
    EXPECT_THAT(user_.messages, ElementsAre(AllOf(StartsWith("Error: The operation failed"),
                                                  HasSubstr("config.asm: This is a folder")),
                                            HasSubstr("Can not open file!")));
}

std::string Failure(const std::filesystem::path& assembler, const std::filesystem::path& source) {
    const AssemblyOutcome outcome = RunAssembler(assembler, source, "/", Language::kEnglish);
    EXPECT_FALSE(outcome.done);
    return ToUtf8(outcome.output);
}

TEST(MenuAssembler, IsNamedIfItCantDoItsWorkAndStoppedIfItHangs) {
    EXPECT_THAT(Failure("/no/such/assembler", "menu.asm"),
                HasSubstr("/no/such/assembler can't be started"));
    const char* const child = BANKWEAVER_PROCESS_CHILD;
    EXPECT_THAT(Failure(child, "exit:1"), HasSubstr("without a word (exit code 1)"));
    const auto start = std::chrono::steady_clock::now();
    EXPECT_THAT(Failure(child, "wait:1000000"), HasSubstr("no answer for 3 seconds"));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
}

}  // namespace
}  // namespace bw
