// The menu's music sets: what the sound registers get is compared with the logs in golden/, which
// were found to be what the sets' texts say. With BANKWEAVER_WRITE_GOLDEN set the logs are written.
#include <algorithm>
#include <cstdlib>

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "assembler/memory_source.h"
#include "builder/resources.h"
#include "language/language.h"
#include "menu_cart.h"
#include "music/music_data.h"
#include "music/set_reader.h"
#include "support/text.h"

namespace bw::console {
namespace {

// What the menu's source says of a set.
struct SetCase {
    uint32_t music;
    std::vector<std::pair<char, size_t>> files;  // letter and size
    uint16_t init;
    uint16_t play;
    std::array<unsigned, 4> songs;  // bgm, item, page, enter; from 1
};

const std::vector<SetCase>& Sets() {
    static const std::vector<SetCase> sets{
        {2, {{'0', 8192}, {'1', 8192}, {'2', 1152}}, 0xC400, 0x8000, {15, 38, 37, 36}},
        {3, {{'3', 8192}, {'4', 8192}, {'5', 8192}}, 0xC400, 0x8001, {1, 16, 14, 19}},
        {4, {{'6', 8192}, {'7', 8192}, {'8', 1112}}, 0xC450, 0x80D5, {1, 21, 26, 39}},
        {5, {{'9', 8192}, {'A', 8192}, {'B', 8192}, {'C', 8192}}, 0xDFF0, 0x813C, {7, 17, 19, 36}}};
    return sets;
}

std::span<const uint8_t> MusicFile(char letter) {
    const std::string path = std::string("menu/menu_data/music_data_") + letter + ".bank";
    for (const Resource& row : ResourceTable()) {
        if (row.path == path) return row.data;
    }
    return {};
}

std::string TestFile(const std::string& name) {
    return ReadText(std::filesystem::path(BANKWEAVER_TEST_DATA) / name);
}

std::string MusicSource(const std::string& name) {
    return ReadText(std::filesystem::path(BANKWEAVER_MUSIC) / name);
}

MusicSet ReadSet(std::string_view text) {
    MusicReading reading = ReadMusicSet(text, "set");
    EXPECT_THAT(reading.faults, testing::IsEmpty());
    return std::move(reading.set);
}

ScriptRun RunOf(const SetCase& set, const std::filesystem::path& rom, const std::string& body,
                const std::string& label) {
    return {.rom = rom,
            .script = fmt::format("SOUND_PLAY, SOUND_INIT = {}, {}\n", set.play, set.init) +
                      TestFile("music.lua") + MenuScript(body + "put_load() write_log()\n"),
            .label = label,
            .wantedFiles = {"log.txt"}};
}

void ExpectLog(const ScriptResult& result, const std::string& name) {
    const std::string& log = result.files.at("log.txt");
    const std::string file = "golden/" + name + ".txt";
    if (std::getenv("BANKWEAVER_WRITE_GOLDEN")) WriteText(BANKWEAVER_TEST_DATA "/" + file, log);
    EXPECT_EQ(log, TestFile(file));
    EXPECT_LT(result.Number("worst"), 4000);
}

// The menu knows these places; nothing in the sets' banks tells it.
TEST(MusicFiles, LieWhereTheMenuLooksForThem) {
    constexpr TextId kTitles[] = {TextId::kMusicSet2, TextId::kMusicSet3, TextId::kMusicSet4,
                                  TextId::kMusicSet5};
    for (const SetCase& set : Sets()) {
        SCOPED_TRACE(set.music);
        EXPECT_EQ(ToUtf8(LoadText(kTitles[set.music - 2], Language::kEnglish)),
                  ReadSet(MusicSource(fmt::format("set_{}.txt", set.music))).title);
        for (const auto& [letter, size] : set.files)
            EXPECT_EQ(MusicFile(letter).size(), size) << letter;
        const std::span<const uint8_t> last = MusicFile(set.files.back().first);
        ASSERT_GT(last.size(), set.init - 0xC000u);
        EXPECT_EQ(last[set.init - 0xC000u], 0xAA) << "the entry begins with TAX";
        for (unsigned song = 0; song < 256; ++song) {
            const auto found = std::find(set.songs.begin(), set.songs.end(), song + 1);
            EXPECT_EQ(last[song], found == set.songs.end() ? 0xFF : found - set.songs.begin());
        }
    }
}

// The tune over two loops: the first one alone, the second one with the cursor's and the pages'
// sounds over it, short after one another and far apart; then START, whose sound and pause the game
// ends.
std::string LongScript(uint32_t music) {
    const MusicSet set = ReadSet(MusicSource(fmt::format("set_{}.txt", music)));
    size_t intro = 0;
    size_t loop = 0;
    const auto& lines = set.songs[0].lines;
    const MusicLine& line = **std::ranges::find_if(lines, [](const auto& it) { return !!it; });
    for (size_t i = 0; i < line.events.size(); ++i)
        (i < line.loop ? intro : loop) += line.events[i].frames;
    EXPECT_GT(loop, 45u * 60);
    return fmt::format("local alone, all = {}, {}", intro + loop, intro + 2 * loop + 60) + R"lua(
        boot()
        until_sounded(alone)
        local buttons = {"down", "right", "up", "A", "left", "B", "down", "select"}
        local n = 0
        while sounded() < all - 60 do
            n = n + 1
            if n % 16 == 0 then replace_next_song(n * 7 % 256) end  -- no song of the set
            move(buttons[n % #buttons + 1])
            frames(n * 5 % 64)
        end
        until_sounded(all)
        start_game()
    )lua";
}

// Every set and every size of menu; every size and every board for the set that maps banks itself.
TEST(MenuMusic, PlaysAsWrittenOnEveryMenu) {
    using enum BoardType;
    const std::tuple<uint32_t, uint32_t, BoardType> carts[] = {
        {2, 8, kCoolboy},  {3, 16, kMindkids}, {4, 32, kCoolboy}, {5, 8, kCoolboy},
        {5, 8, kCoolgirl}, {5, 16, kMindkids}, {5, 32, kCoolboy}};
    const TemporaryFolder folder;
    std::vector<ScriptRun> runs;
    for (const auto& [music, size, board] : carts) {
        CartPlan plan{.board = board, .names = CountedNames(45)};
        plan.settings.MenuSize = size;
        plan.settings.Music = music;
        const std::string label = fmt::format("music{}_{}", music, runs.size());
        runs.push_back(RunOf(Sets()[music - 2], BuildCart(plan, folder.Path(), label).rom,
                             LongScript(music), label));
    }
    const std::vector<ScriptResult> results = RunAllOnConsole(runs);
    for (size_t i = 0; i < results.size(); ++i) {
        const ScriptResult& result = results[i];
        const uint32_t music = std::get<0>(carts[i]);
        SCOPED_TRACE(runs[i].label);
        ExpectLog(result, fmt::format("set_{}", music));
        EXPECT_EQ(result.Number("needless highs"), 0);
        EXPECT_LT(result.Number("average"), 1500);
        EXPECT_EQ(result.At("banks"), music == 5 ? "8000=07 8001=01 8001=02" : "");
        EXPECT_THAT(result.At("setup"), testing::StartsWith("4001=08 4005=08 4015=0F 4017=C0 400"));
    }
}

// A page of a design with as many sprites as fit, and names that need the most work.
CartPlan DemandingCart(uint32_t music) {
    CartPlan plan{.names = std::vector<std::u16string>(100, u"A B C D E F G H I J K L MN")};
    plan.settings.Music = music;
    plan.settings.CustomEnable = true;
    plan.settings.PageNumber = true;
    plan.settings.PageSize = 20;
    plan.settings.PageTurningSpeed = 4;
    TileItem sprite;
    sprite.Y = 100;
    sprite.Tile = 'A';
    plan.design.SpriteTileList.assign(60, sprite);
    plan.design.ArrowTileList.assign(4, sprite);
    static constexpr uint8_t kBigCursor[] = {1};
    plan.store->RegWriteBinary(kDesignKey, "BigCursor", kBigCursor);
    return plan;
}

// The most work that the menu can have: no NMI lasts into the next one, so no frame is lost. And
// the music keeps to its own RAM meanwhile.
TEST(MenuMusic, LeavesTheMenuItsTimeAndItsRam) {
    const TemporaryFolder folder;
    for (const SetCase& set : Sets()) {
        const std::string label = fmt::format("demanding{}", set.music);
        SCOPED_TRACE(label);
        const Cart cart = BuildCart(DemandingCart(set.music), folder.Path(), label);
        const ScriptResult result = RunOnConsole(RunOf(set, cart.rom, R"lua(
            boot()
            watch_load()
            local first = emu.framecount()
            for _, button in ipairs{"right", "down", "A", "up", "left", "B", "right", "right"} do
                move(button)
            end
            put("frames", emu.framecount() - first)
        )lua",
                                                       label));
        EXPECT_EQ(result.At("nmis"), result.At("frames"));
        EXPECT_EQ(result.At("nested"), "0");
        EXPECT_LT(result.Number("nmi worst"), 27000) << "of 29,780 cycles";
        EXPECT_NE(result.At("own RAM"), "0");
        EXPECT_EQ(result.At("strays"), "") << "the music writes there";
    }
}

std::string FileBytes(std::span<const uint8_t> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

// The cart's set 5 with other music in it.
void ReplaceMusic(const std::filesystem::path& rom, const MusicSet& music) {
    assembler::MemorySource source;
    source.files["set_5.asm"] = MusicSource("set_5.asm");
    source.files["driver.asm"] = MusicSource("driver.asm");
    source.files["set_5_data.asm"] = WriteMusicData(music).source;
    const auto assembled = assembler::Assemble("set_5.asm", source);
    ASSERT_TRUE(assembled.Ok()) << assembler::FormatDiagnostics(assembled);
    const std::string banks = FileBytes(assembled.rom);
    std::string bytes = ReadText(rom);
    for (size_t i = 0; i < 4; ++i) {
        const std::string old = FileBytes(MusicFile(Sets().back().files[i].first));
        const size_t place = bytes.find(old);
        ASSERT_NE(place, std::string::npos);
        bytes.replace(place, old.size(), banks, 16 + i * old.size(), old.size());
    }
    WriteText(rom, bytes);
}

TEST(MenuMusic, PlaysWhatNoTuneAsksFor) {
    const TemporaryFolder folder;
    CartPlan plan{.names = CountedNames(20)};
    plan.settings.Music = 5;
    const Cart cart = BuildCart(plan, folder.Path(), "corners");
    ASSERT_NO_FATAL_FAILURE(ReplaceMusic(cart.rom, ReadSet(TestFile("corners_set.txt"))));
    ExpectLog(RunOnConsole(RunOf(Sets().back(), cart.rom, R"lua(
        boot()
        until_sounded(96 + 768 + 50)
        local songs = {16, 18, 35, 6, 17}  -- 17 is none of the set's, 6 is the tune itself
        for n = 1, 60 do
            replace_next_song(songs[n % #songs + 1])
            move("down")
            frames(n * 11 % 80)
        end
        replace_next_song(16)
        move("down")
        frames(1000)
    )lua",
                                 "corners")),
              "corners");
}

}  // namespace
}  // namespace bw::console
