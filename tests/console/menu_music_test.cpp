// The menu's music sets: what the sound registers get is compared, frame by frame, with what the
// sets' texts say.
#include <algorithm>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "assembler/memory_source.h"
#include "builder/resources.h"
#include "menu_cart.h"
#include "music/music_data.h"
#include "music/set_reader.h"
#include "music_model.h"
#include "support/text.h"

namespace bw::console {
namespace {

constexpr size_t kEnterPause = 48;  // frames between START and the game

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

std::string MusicSource(const std::string& name) {
    return ReadWholeFile(std::filesystem::path(BANKWEAVER_MUSIC) / name);
}

MusicSet ReadSet(std::string_view text) {
    MusicReading reading = ReadMusicSet(text, "set");
    EXPECT_THAT(reading.faults, testing::IsEmpty());
    return std::move(reading.set);
}

std::string TuneText(uint32_t music) {
    return MusicSource("set_" + std::to_string(music) + ".txt");
}

std::string Script(const SetCase& set, const std::string& body) {
    return "SOUND_PLAY, SOUND_INIT = " + std::to_string(set.play) + ", " +
           std::to_string(set.init) + "\n" +
           ReadWholeFile(std::filesystem::path(BANKWEAVER_TEST_DATA) / "music.lua") +
           MenuScript(body + "put_music()\n");
}

// Frames before the tune's loop and in it.
std::pair<size_t, size_t> TuneFrames(const MusicSet& set) {
    std::pair<size_t, size_t> frames;
    for (const auto& line : set.songs[0].lines) {
        if (!line) continue;
        for (size_t i = 0; i < line->events.size(); ++i)
            (i < line->loop ? frames.first : frames.second) += line->events[i].frames;
        break;
    }
    return frames;
}

// The menu knows these places; nothing in the sets' banks tells it.
TEST(MusicFiles, LieWhereTheMenuLooksForThem) {
    for (const SetCase& set : Sets()) {
        SCOPED_TRACE(set.music);
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
    EXPECT_EQ(MusicFile('A').back(), 1) << "the bank's number, which the set reads back";
    EXPECT_EQ(MusicFile('B').back(), 2);
}

// One cart of the long test.
struct MusicRun {
    SetCase set;
    CartPlan plan;
    bool whole = true;  // play both loops
    size_t frames = 0;  // until START
};

// Every size of menu for every set, and for the one that maps banks itself every board.
std::vector<MusicRun> AllRuns() {
    std::vector<MusicRun> runs;
    for (const SetCase& set : Sets()) {
        for (const uint32_t size : {8, 16, 32}) {
            runs.push_back({set, {.names = CountedNames(45)}});
            runs.back().plan.settings.MenuSize = size;
        }
    }
    for (const BoardType board : {BoardType::kCoolgirl, BoardType::kMindkids})
        runs.push_back({Sets().back(), {.board = board, .names = CountedNames(45)}, false});
    for (MusicRun& run : runs) {
        run.plan.settings.Music = run.set.music;
    }
    return runs;
}

// The tune over two loops: the first one alone, the second one with the cursor's and the pages'
// sounds over it, short after one another and far apart; then START, whose sound and pause the game
// ends.
std::string LongScript(MusicRun& run) {
    const auto [intro, loop] = TuneFrames(ReadSet(TuneText(run.set.music)));
    EXPECT_GT(loop, 45u * 60);
    const size_t alone = run.whole ? intro + loop : 200;
    run.frames = alone + (run.whole ? loop + 60 : 1000);
    return Script(run.set, "local alone, all = " + std::to_string(alone) + ", " +
                               std::to_string(run.frames) + R"lua(
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
        press("start", 2, 0)
        assert(wait_until(function() return memory.getregister("pc") >= 0xFFC0
            and memory.getregister("pc") < 0xFFC4 end, 200), "the game doesn't run")
    )lua");
}

// Nothing but the sounds' own channels ever differs from the tune, to the last frame before the
// game.
TEST(MenuMusic, PlaysAsWrittenOnEveryMenu) {
    const TemporaryFolder folder;
    std::vector<MusicRun> plans = AllRuns();
    std::vector<ConsoleRun> runs;
    for (MusicRun& plan : plans) {
        const std::string label =
            "music" + std::to_string(plan.set.music) + "_" + std::to_string(runs.size());
        const Cart cart = BuildCart(plan.plan, folder.Path(), label);
        ASSERT_EQ(cart.problem, "");
        runs.push_back({.rom = cart.rom, .script = LongScript(plan), .label = label});
    }
    const std::vector<ConsoleResult> results = RunAllOnConsole(runs);
    for (size_t i = 0; i < results.size(); ++i) {
        const ConsoleResult& result = results[i];
        const SetCase& set = plans[i].set;
        SCOPED_TRACE(runs[i].label);
        ASSERT_TRUE(result.Ok()) << result.problem;
        const MusicComparison found = CompareMusic(result, ReadSet(TuneText(set.music)), set.songs);
        EXPECT_EQ(found.difference, "");
        EXPECT_GE(found.frames, plans[i].frames + kEnterPause);
        EXPECT_THAT(found.started, testing::ElementsAre(0, 1, 2, 3)) << "not all was heard";
        EXPECT_LT(found.silence, 60u) << "frames";
        EXPECT_EQ(result.Number("needless highs"), 0);
        EXPECT_LT(result.Number("average"), 1500);
        EXPECT_LT(result.Number("worst"), 4000);
        EXPECT_EQ(result.At("banks"), set.music == 5 ? "8000=07 8001=01 8001=02" : "");
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
        SCOPED_TRACE(set.music);
        const Cart cart = BuildCart(DemandingCart(set.music), folder.Path(),
                                    "demanding" + std::to_string(set.music));
        ASSERT_EQ(cart.problem, "");
        const ConsoleResult result = RunOnConsole({.rom = cart.rom, .script = Script(set, R"lua(
            boot()
            watch_nmis()
            watch_ram()
            local first = emu.framecount()
            for _, button in ipairs{"right", "down", "A", "up", "left", "B", "right", "right"} do
                move(button)
            end
            put("frames", emu.framecount() - first)
            put("zero", peek(0))
        )lua")});
        ASSERT_TRUE(result.Ok()) << result.problem;
        EXPECT_EQ(CompareMusic(result, ReadSet(TuneText(set.music)), set.songs).difference, "");
        EXPECT_EQ(result.At("nmis"), result.At("frames"));
        EXPECT_EQ(result.At("nested"), "0");
        EXPECT_LT(result.Number("nmi worst"), 27000) << "of 29,780 cycles";
        RecordProperty("LongestNmiOfSet" + std::to_string(set.music), result.At("nmi worst"));
        EXPECT_EQ(result.At("zero"), "0");
        std::istringstream written(result.At("written"));
        EXPECT_NE(result.At("written"), "");
        for (std::string address; written >> address;) {
            EXPECT_TRUE((address >= "0002" && address < "0040") ||
                        (address >= "0600" && address < "0700"))
                << "the music writes to $" << address;
        }
    }
}

// What the tunes may not happen to use: events longer than a byte counts, gates in them, envelopes
// that loop in every way, pitch over a byte's border, both kinds of noise, muted channels, sounds
// whose channels all begin their notes at once.
constexpr std::string_view kCorners = R"(
title Corners
beat 24
instrument plain
    volume 15
instrument swell
    volume   0 3 0 9 | 15 0 12
    release  9 0 4
    duty     3 0 | 1 2
    arpeggio -12 0 7 | 12 0
    pitch    -60 127 0 | 5 -5
instrument cut
    volume   8 | 8 7
    arpeggio 1
instrument hit
    volume   15 9 4 | 1
    release  3
    arpeggio 0 1 2 | 0
drum k hit 13
drum x hit 16
drum n plain 31
drum m plain 0
phrase turn
    @swell v9 c16 k+7 @cut v15 d16 k-12 | @plain
song bgm
    bar 1
    pulse1:
        r1 | L @plain o1 q1 a1^1^1 | q8 o5 @swell c1^1^1 | q7 v5 e4 @cut e8. v1 e16 v0 e4
        v15 q4 [g32 : r32]4 g32 | q2 v9 l32 [[c e]2 : g]4 c4.^32
    pulse2:   r1 L l16 o4 [@swell v9 c @cut v15 d @plain e @swell q3 f q8]32
    triangle: @plain r1 L o3 l4 q5 [c d r ^ e]6 v0 c v1 c
    noise:    r1 L l8 [k x n m r16 k16 k12 x12 n12]9 k
song item
    pulse1:   @plain o5 l32 [c d e f]4 q4 b1^1^1
    pulse2:   @swell o5 l32 [c d e f]4 r1^1^1
    triangle: @plain o5 l32 [c d e f]4 r1
    noise:    l32 [k x k x]4
song page
    triangle: @swell o3 q2 c2 r8
song enter
    noise:    n4 r4 q1 x4
)";

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
    std::string bytes = ReadWholeFile(rom);
    for (size_t i = 0; i < 4; ++i) {
        const std::string old = FileBytes(MusicFile(Sets().back().files[i].first));
        const size_t place = bytes.find(old);
        ASSERT_NE(place, std::string::npos);
        bytes.replace(place, old.size(), banks, 16 + i * old.size(), old.size());
    }
    WriteWholeFile(rom, bytes);
}

TEST(MenuMusic, PlaysWhatNoTuneAsksFor) {
    const TemporaryFolder folder;
    const SetCase& set = Sets().back();
    CartPlan plan{.names = CountedNames(20)};
    plan.settings.Music = set.music;
    const Cart cart = BuildCart(plan, folder.Path(), "corners");
    ASSERT_EQ(cart.problem, "");
    const MusicSet corners = ReadSet(kCorners);
    ASSERT_NO_FATAL_FAILURE(ReplaceMusic(cart.rom, corners));
    const ConsoleResult result = RunOnConsole({.rom = cart.rom, .script = Script(set, R"lua(
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
    )lua")});
    ASSERT_TRUE(result.Ok()) << result.problem;
    const MusicComparison found = CompareMusic(result, corners, set.songs);
    EXPECT_EQ(found.difference, "");
    EXPECT_THAT(found.started, testing::ElementsAre(0, 1, 2, 3));
    EXPECT_LT(result.Number("worst"), 4000);
}

}  // namespace
}  // namespace bw::console
