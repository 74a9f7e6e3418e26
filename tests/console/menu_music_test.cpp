// The menu's music sets: what the sound registers get is compared, frame by frame, with what the
// sets' texts say.
#include <algorithm>
#include <set>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "builder/resources.h"
#include "menu_cart.h"
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

MusicSet ReadSet(uint32_t music) {
    const auto file =
        std::filesystem::path(BANKWEAVER_MUSIC) / ("set_" + std::to_string(music) + ".txt");
    MusicReading reading = ReadMusicSet(ReadWholeFile(file), file.filename().string());
    EXPECT_THAT(reading.faults, testing::IsEmpty());
    return std::move(reading.set);
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

class MenuMusic : public testing::TestWithParam<SetCase> {
  protected:
    std::string Script(const std::string& body) const {
        return "SOUND_PLAY, SOUND_INIT = " + std::to_string(GetParam().play) + ", " +
               std::to_string(GetParam().init) + "\n" +
               ReadWholeFile(std::filesystem::path(BANKWEAVER_TEST_DATA) / "music.lua") +
               MenuScript(body + "put_music()\n");
    }

    // The songs that the console started, and what the model makes of them.
    void ExpectAsWritten(const ConsoleResult& result) {
        MusicModel model(set_);
        std::istringstream songs(result.At("songs"));
        std::string all;
        for (const auto& [key, value] : result.values) {
            if (key.starts_with("shown ")) all += value + ",";
        }
        std::istringstream shown(all);
        size_t nextAt = 0;
        unsigned nextSong = 0;
        const auto readSong = [&] {
            char colon = 0;
            if (!(songs >> nextAt >> colon >> nextSong)) nextAt = static_cast<size_t>(-1);
        };
        readSong();
        size_t frame = 0;
        for (std::string found; std::getline(shown, found, ','); ++frame) {
            for (; nextAt == frame; readSong()) {
                const auto& numbers = GetParam().songs;
                const auto song = std::find(numbers.begin(), numbers.end(), nextSong + 1);
                if (song == numbers.end()) continue;
                model.Start(static_cast<size_t>(song - numbers.begin()));
                started_.insert(static_cast<size_t>(song - numbers.begin()));
            }
            const std::string expected = model.Frame();
            ASSERT_TRUE(found == expected)
                << "frame " << frame << ": found " << found << ", expected " << expected
                << "; songs started: " << result.At("songs");
        }
        frames_ = frame;
    }

    MusicSet set_ = ReadSet(GetParam().music);
    std::set<size_t> started_;
    size_t frames_ = 0;
    TemporaryFolder folder_;
};

struct MusicCart {
    CartPlan plan;
    bool whole = true;  // play both loops
};

// The carts of a set: every size of menu, and for the set that maps banks itself every board.
std::vector<MusicCart> Carts(uint32_t music) {
    std::vector<MusicCart> carts;
    for (const uint32_t size : {8, 16, 32}) {
        carts.push_back({{.names = CountedNames(45)}});
        carts.back().plan.settings.MenuSize = size;
    }
    if (music == 5) {
        carts.push_back({{.board = BoardType::kCoolgirl, .names = CountedNames(45)}, false});
        carts.push_back({{.board = BoardType::kMindkids, .names = CountedNames(45)}, false});
    }
    for (MusicCart& cart : carts)
        cart.plan.settings.Music = music;
    return carts;
}

// The tune over two loops: the first one alone, the second one with the cursor's and the pages'
// sounds over it, short after one another and far apart; then START, whose sound and pause the game
// ends. Nothing but the sounds' own channels ever differs from the tune.
TEST_P(MenuMusic, PlaysAsWrittenOnEveryMenu) {
    const auto [intro, loop] = TuneFrames(set_);
    ASSERT_GT(loop, 45u * 60);
    std::vector<ConsoleRun> runs;
    std::vector<size_t> lengths;
    for (const MusicCart& cart : Carts(GetParam().music)) {
        const std::string label =
            "music" + std::to_string(GetParam().music) + "_" + std::to_string(runs.size());
        const Cart built = BuildCart(cart.plan, folder_.Path(), label);
        ASSERT_EQ(built.problem, "");
        const size_t alone = cart.whole ? intro + loop : 200;
        lengths.push_back(alone + (cart.whole ? loop + 60 : 1000));
        runs.push_back({.rom = built.rom,
                        .script = Script("local alone, all = " + std::to_string(alone) + ", " +
                                         std::to_string(lengths.back()) + R"lua(
        boot()
        until_sounded(alone)
        local buttons = {"down", "right", "up", "A", "left", "B", "down", "select"}
        local n = 0
        while sounded() < all - 60 do
            n = n + 1
            if n % 16 == 0 then replace_next_song(n * 7 % 256) end
            move(buttons[n % #buttons + 1])
            frames(n * 5 % 64)
        end
        until_sounded(all)
        press("start", 2, 0)
        assert(wait_until(function() return memory.getregister("pc") >= 0xFFC0
            and memory.getregister("pc") < 0xFFC4 end, 200), "the game doesn't run")
    )lua"),
                        .label = label});
    }
    const std::vector<ConsoleResult> results = RunAllOnConsole(runs);
    for (size_t i = 0; i < results.size(); ++i) {
        const ConsoleResult& result = results[i];
        SCOPED_TRACE(runs[i].label);
        ASSERT_TRUE(result.Ok()) << result.problem;
        started_.clear();
        ASSERT_NO_FATAL_FAILURE(ExpectAsWritten(result));
        EXPECT_GE(frames_, lengths[i] + kEnterPause);
        EXPECT_THAT(started_, testing::ElementsAre(0, 1, 2, 3)) << "not every sound was heard";
        EXPECT_EQ(result.Number("needless highs"), 0);
        EXPECT_LT(result.Number("average"), 1500);
        EXPECT_LT(result.Number("worst"), 4000);
        EXPECT_EQ(result.At("banks"), GetParam().music == 5 ? "8000=07 8001=01 8001=02" : "");
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
TEST_P(MenuMusic, LeavesTheMenuItsTimeAndItsRam) {
    const Cart cart = BuildCart(DemandingCart(GetParam().music), folder_.Path(), "demanding");
    ASSERT_EQ(cart.problem, "");
    const ConsoleResult result = RunOnConsole({.rom = cart.rom, .script = Script(R"lua(
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
    ASSERT_NO_FATAL_FAILURE(ExpectAsWritten(result));
    EXPECT_EQ(result.At("nmis"), result.At("frames"));
    EXPECT_EQ(result.At("nested"), "0");
    EXPECT_EQ(result.At("zero"), "0");
    std::istringstream written(result.At("written"));
    EXPECT_NE(result.At("written"), "");
    for (std::string address; written >> address;) {
        EXPECT_TRUE((address >= "0002" && address < "0040") ||
                    (address >= "0600" && address < "0700"))
            << "the music writes to $" << address;
    }
    RecordProperty("LongestNmi", result.At("nmi worst"));
    std::cout << "longest NMI of set " << GetParam().music << ": " << result.At("nmi worst")
              << " cycles\n";
}

INSTANTIATE_TEST_SUITE_P(Sets, MenuMusic, testing::ValuesIn(Sets()), [](const auto& param) {
    return "set_" + std::to_string(param.param.music);
});

}  // namespace
}  // namespace bw::console
