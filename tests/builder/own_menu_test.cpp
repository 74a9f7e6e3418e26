// Menus of the user's own: the exported files, which must assemble to the menu that a build makes,
// and external menus in a build.
#include <map>

#include "build_fixture.h"
#include "builder/menu_assembler.h"
#include "builder/resources.h"

namespace bw {
namespace {

using test::ImageBytes;
using test::ReadText;
using test::WriteText;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;
using testing::StartsWith;

class OwnMenus : public test::BuildFixture {
  protected:
    OwnMenus() { std::filesystem::create_directory(folder_ / "own"); }

    std::filesystem::path Own(const char* file) const { return folder_ / "own" / file; }

    void UseExternMenu(const std::filesystem::path& path, const std::string& content) {
        settings_.ExternMenuEnable = true;
        settings_.ExternMenuPath = path;
        WriteText(path, content);
    }
    // The menu's bytes in the ROM of a build that must succeed.
    std::string BuiltMenu(BoardType board, std::optional<std::filesystem::path> keepWork = {}) {
        BuildContext context = Context();
        context.keepWork = std::move(keepWork);
        user_.messages.clear();
        const BuildOutcome outcome = BuildRom(context, board, taskBusy_);
        EXPECT_TRUE(outcome.done) << testing::PrintToString(user_.messages);
        for (const MulticartItem& item : outcome.layout.items) {
            if (item.isMenu != 0) {
                menuOffset_ = item.prgOffset;
                return ReadText(outcome.output).substr(item.prgOffset, item.prgSpan);
            }
        }
        return "no menu";
    }

    // A design with something of everything, and names with numbers.
    void MakeDesign() {
        settings_.CustomEnable = true;
        settings_.ShowNumberOrder = settings_.ShowNumberDot = settings_.ShowNumberFill = true;
        settings_.NameInsertRow = settings_.PageNumber = true;
        settings_.Music = 5;
        std::vector<uint8_t> map(256);
        for (size_t i = 0; i < map.size(); ++i)
            map[i] = static_cast<uint8_t>(i ^ 0x11);
        const std::vector<uint8_t> on{1};
        store_->RegWriteBinary(kDesignKey, "ChrData", std::vector<uint8_t>(8192, 0x5A));
        store_->RegWriteBinary(kDesignKey, "CharMapData", map);
        store_->RegWriteBinary(kDesignKey, "BigCursor", on);
        store_->RegWriteBinary(kDesignKey, "BigSprite", on);
        store_->RegWriteString(kDesignKey, "CaptionText", u"A CAPTION THAT IS CUT AT THE EDGE");
        for (int i = 0; i < 20; ++i) {
            TileItem tile;
            tile.X = i;
            tile.Y = i + 1;
            tile.Tile = static_cast<uint8_t>(i);
            design_.BkgTileList.push_back(tile);
            design_.SpriteTileList.push_back(tile);
        }
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
        if (entry.is_regular_file()) {
            content[entry.path().lexically_relative(folder).generic_string()] =
                ReadText(entry.path());
        }
    }
    return content;
}

std::vector<std::string> NamesOf(const FolderContent& content) {
    std::vector<std::string> names;
    for (const auto& [name, unused] : content)
        names.push_back(name);
    return names;
}

struct ExportCase {
    BoardType board;
    uint32_t size;  // 16 KB units
    bool design;
};

class ExportedMenu : public OwnMenus, public testing::WithParamInterface<ExportCase> {};

TEST_P(ExportedMenu, AssemblesToTheMenuOfABuild) {
    const auto [board, size, design] = GetParam();
    const bool coolgirl = board == BoardType::kCoolgirl;
    AddMany(1000);  // two banks of records of either kind, four of names
    for (size_t i = 0; i < games_.size(); ++i)
        games_[i].name = ToWide("A Name of Many Letters " + std::to_string(i));
    if (design) {
        MakeDesign();
    }
    settings_.MenuSize = size;
    settings_.ExportRomType = coolgirl ? 1 : 0;
    settings_.ExportPrgSize = size / 16;
    if (coolgirl && size != 8) {  // COOLGIRL's own menu knows one size
        ASSERT_FALSE(WriteResources(folder_ / "own"));
        settings_.ExternMenuEnable = true;
        settings_.ExternMenuPath = folder_ / "own" / "menu" / "menu.asm";
    }
    const std::string built = BuiltMenu(board, folder_ / "kept");

    const std::filesystem::path menu = folder_ / "hand" / "menu";
    ASSERT_FALSE(WriteResources(folder_ / "hand"));
    std::filesystem::create_directory(menu / "build");
    user_.folder = menu / "build";
    ASSERT_TRUE(RunExport(Context())) << testing::PrintToString(user_.messages);
    const AssemblyOutcome assembly =
        RunAssembler(AssemblerPath(folder_ / "hand"), menu / "menu.asm", menu, Language::kEnglish);
    ASSERT_TRUE(assembly.done) << ToUtf8(assembly.output);
    EXPECT_TRUE(ReadText(menu / "menu.nes").substr(16) == built);

    FolderContent exported = ContentOf(menu / "build");
    const FolderContent inBuild = ContentOf(folder_ / "kept" / "build");
    EXPECT_EQ(NamesOf(exported), NamesOf(inBuild));
    for (const auto& [name, content] : inBuild)
        EXPECT_TRUE(exported[name] == content) << name;
    EXPECT_THAT(NamesOf(inBuild), testing::IsSupersetOf({"game_data_1.asm", "game_final_data_1.asm",
                                                         "game_list_3.asm"}));
}

INSTANTIATE_TEST_SUITE_P(
    TypesAndSizes, ExportedMenu, testing::ValuesIn([] {
        std::vector<ExportCase> cases;
        for (const BoardType board : {BoardType::kCoolboy, BoardType::kCoolgirl})
            for (const uint32_t size : {8u, 16u, 32u})
                for (const bool design : {false, true})
                    cases.push_back({board, size, design});
        return cases;
    }()),
    [](const auto& param) {
        return std::string(BoardName(param.param.board)) + std::to_string(param.param.size) +
               (param.param.design ? "design" : "");
    });

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
    const std::vector<std::string> stale{"game_list_1.asm",       "game_list_F.asm",
                                         "game_data_1.asm",       "game_data_7.asm",
                                         "game_final_data_7.asm", "game_config.asm"};
    for (const std::string& name : stale)
        WriteText(Own("build") / name, "old");
    // Not the build's to remove: the highest banks' files and whatever else lies there.
    for (const char* name : {"game_data_8.asm", "game_final_data_B.asm", "mine.inc"})
        WriteText(Own("build") / name, "kept");
    WriteText(Own("mine.nes"), "old");
    UseExternMenu(std::filesystem::relative(Own("mine.ASM")), OwnSource(16));

    // The first assembly tells the menu's size, the second has it in its tables.
    for (const BoardType board :
         {BoardType::kCoolboy, BoardType::kMindkids, BoardType::kCoolgirl}) {
        const bool coolgirl = board == BoardType::kCoolgirl;
        const std::string menu = BuiltMenu(board);
        // The tables of an export know COOLBOY and COOLGIRL only, and number names without a point.
        const std::string head{'\x01', coolgirl ? '\x02' : '\x00', '\x10', '\x00', '\x00', '\x05'};
        EXPECT_EQ(menu.substr(0, 5), head.substr(0, 5));
        EXPECT_EQ(menu.substr(7, 6),
                  "\x05"
                  "1GAME");
        EXPECT_EQ(menu.size(), size_t{256} * 1024);
        EXPECT_EQ(menuOffset_, coolgirl ? 0u : 0x40000u);
    }
    FolderContent content = ContentOf(folder_ / "own");
    EXPECT_THAT(
        NamesOf(content),
        ElementsAre(
            "build/char_mapping.bin", "build/custom_chr_data.bin", "build/game_attributes_data.bin",
            "build/game_big_arrow_data.bin", "build/game_bkg_palette_data.bin",
            "build/game_caption_addr.asm", "build/game_caption_data.asm", "build/game_config.asm",
            "build/game_data_0.asm", "build/game_data_8.asm", "build/game_data_bank.asm",
            "build/game_final_data_0.asm", "build/game_final_data_B.asm",
            "build/game_final_data_bank.asm", "build/game_item_addr.asm", "build/game_list.txt",
            "build/game_list_0.asm", "build/game_list_bank.asm", "build/game_name_table.bin",
            "build/game_page_number_addr.asm", "build/game_prg_chr_offset.txt",
            "build/game_sprite_list.asm", "build/game_sprite_palette_data.bin",
            "build/game_title.asm", "build/mine.inc", "mine.ASM", "mine.nes"));
    EXPECT_EQ(content["build/mine.inc"], "kept");
    EXPECT_EQ(content["build/game_list.txt"], "1game\r\n");
    EXPECT_THAT(content["build/game_config.asm"], HasSubstr("MENU_PRG_SIZE = 16\r\n"));
    EXPECT_THAT(content["mine.nes"], StartsWith("NES\x1A\x10"));
}

TEST_F(OwnMenus, TheFirstExportLeavesTheCurrentFolderAlone) {
    struct InFolder {
        explicit InFolder(const std::filesystem::path& folder) { current_path(folder); }
        ~InFolder() { current_path(before); }
        const std::filesystem::path before = std::filesystem::current_path();
    };
    Add("game", {1, 1, 0});
    WriteText(Own("game_list_1.asm"), "kept");
    const InFolder here(folder_ / "own");
    user_.folder = folder_ / "out";
    ASSERT_TRUE(settings_.LastExportDir.empty());
    EXPECT_TRUE(RunExport(Context()));
    EXPECT_THAT(NamesOf(ContentOf(folder_ / "own")), ElementsAre("game_list_1.asm"));
    EXPECT_TRUE(std::filesystem::exists(folder_ / "out" / "game_config.asm"));
}

TEST_F(OwnMenus, ARomIsTakenAsItIs) {
    Add("game", {1, 1, 0});
    for (const int units : {8, 16, 32, 64, 128}) {
        const std::string image = ImageBytes({units, 0, 4}, 9);
        UseExternMenu(Own("menu.NES"), image);
        EXPECT_TRUE(BuiltMenu(BoardType::kCoolboy) == image.substr(16)) << units;
        EXPECT_EQ(menuOffset_, units > 32 ? 0 : 0x80000 - static_cast<uint32_t>(units) * 16384);
    }
    EXPECT_THAT(NamesOf(ContentOf(folder_ / "own")), ElementsAre("menu.NES"));
}

TEST_F(OwnMenus, AreRefusedWithTheirReason) {
    Add("game", {1, 1, 0});
    const auto menuError = [this](const char* file, const std::string& facts) {
        return "Error: Menu ROM error! \r\nPath = " + Own(file).string() + " \r\n" + facts;
    };
    struct Case {
        const char* file;
        std::string content;
        std::string message;
    };
    const std::vector<Case> cases{
        {"a.asm", OwnSource(8, 2),
         menuError("a.nes", "Mapper = 4 \r\nPRG = 128KB \r\nCHR = 16KB\r\n")},
        {"b.asm", OwnSource(4), menuError("b.nes", "Mapper = 4 \r\nPRG = 64KB \r\nCHR = 0KB\r\n")},
        {"c.asm", " LDA Nowhere\n", "Undefined symbol in operand field!"},
        {"d.asm", " INCLUDE \"build/nothing.asm\"\n", "Can not open file!"},
        {"e.nes", ImageBytes({12, 0, 4}, 1),
         menuError("e.nes", "Mapper = 4 \r\nPRG = 192KB \r\nCHR = 0KB\r\n")},
        {"f.nes", ImageBytes({16, 1, 1}, 1),
         menuError("f.nes", "Mapper = 1 \r\nPRG = 256KB \r\nCHR = 8KB\r\n")},
        {"g.nes", "no image", menuError("g.nes", "Mapper = 0 \r\nPRG = 128KB \r\nCHR = 0KB\r\n")},
        {"h.txt", "no menu", "Error: Invalid external menu file: " + Own("h.txt").string()},
        {"i", "no menu", "Error: Invalid external menu file: " + Own("i").string()}};
    for (const Case& test : cases) {
        SCOPED_TRACE(test.file);
        UseExternMenu(Own(test.file), test.content);
        ExpectRefused(test.message);
    }
    for (const char* gone : {"c.nes", "d.nes"})
        EXPECT_FALSE(std::filesystem::exists(Own(gone)));

    settings_.ExternMenuPath = Own("none.nes");
    ExpectRefused("Invalid external menu file: " + Own("none.nes").string());
    settings_.ExternMenuPath = Own("none.asm");
    ExpectRefused("Can not open file!");
    settings_.ExternMenuPath.clear();
    ExpectRefused("Invalid external menu file: ");
    user_.language = Language::kChinese;
    user_.messages.clear();
    EXPECT_FALSE(Build().done);
    ASSERT_THAT(user_.messages, SizeIs(1));
    EXPECT_THAT(user_.messages[0], testing::Not(HasSubstr("Invalid")));
}

TEST_F(OwnMenus, AnExportThatFailsIsToldAndTheAssemblerFollows) {
    Add("game", {1, 1, 0});
    UseExternMenu(Own("mine.asm"), OwnSource(8));
    WriteText(Own("build"), "a file stands in the way");
    EXPECT_FALSE(Build().done);
    EXPECT_THAT(user_.messages,
                ElementsAre(testing::AllOf(StartsWith("Error: The operation failed"),
                                           HasSubstr("game_config.asm")),
                            HasSubstr("Can not open file!")));
}

TEST_F(OwnMenus, TheAssembledMenuIsNoPlaceForTheOutput) {
    Add("game", {1, 1, 0});
    UseExternMenu(Own("mine.asm"), OwnSource(8));
    user_.output = OutputChoice{Own("mine"), RomFormat::kNes20};
    ExpectRefused("Choose another name");
}

}  // namespace
}  // namespace bw
