// The text form of music sets: what its signs mean, and which faults are named.
#include <algorithm>
#include <fstream>

#include <gmock/gmock.h>

#include "music/bank_files.h"
#include "music/music_data.h"
#include "music/set_reader.h"

namespace bw {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr std::string_view kHead =
    "title T\nbeat 24\n"
    "instrument a\n volume 15\n arpeggio 0 12\n"
    "instrument b # a comment\n volume 9 | 8 7\n pitch -20 20\n"
    "drum k a 3\ndrum h b 20\n"
    "phrase p\n c8 > d8 |\n";
constexpr std::string_view kSounds =
    "song item\n pulse1: @a c\nsong page\n pulse1: @a c\nsong enter\n pulse1: @a c\n";

std::string Text(std::string_view bgm) {
    return std::string(kHead) + "song bgm\n bar 1\n" + std::string(bgm) + "\n" +
           std::string(kSounds);
}

// The rows "TEXT => WHAT COMES OF IT" of a file beside this one.
std::vector<std::pair<std::string, std::string>> Rows(const std::string& file) {
    std::vector<std::pair<std::string, std::string>> rows;
    std::ifstream stream(std::string(BANKWEAVER_TEST_DATA) + "/" + file);
    for (std::string row; std::getline(stream, row);) {
        const size_t arrow = row.find(" => ");
        if (arrow == std::string::npos) continue;
        rows.emplace_back(row.substr(0, arrow), row.substr(arrow + 4));
        std::string& text = rows.back().first;
        for (size_t at = 0; (at = text.find("\\n")) != std::string::npos;)
            text.replace(at, 2, "\n");
    }
    EXPECT_GT(rows.size(), 10u) << file;
    return rows;
}

// A line's events: note or r, frames, and where they differ from the default /gate, vVOLUME and
// @INSTRUMENT; L where the loop begins.
std::string Events(const std::string& text) {
    const MusicReading reading = ReadMusicSet(Text(text), "f");
    EXPECT_THAT(reading.faults, ElementsAre());
    const std::string name = text.substr(1, text.find(':') - 1);
    const auto sound = std::ranges::find(kSoundNames, name) - std::begin(kSoundNames);
    const auto& line = reading.set.songs[0].lines[static_cast<size_t>(sound)];
    std::string events;
    for (size_t i = 0; i < line->events.size(); ++i) {
        const MusicEvent& event = line->events[i];
        if (i > 0) events += " ";
        if (i == line->loop && i > 0) events += "L ";
        events += event.rest ? "r" : std::to_string(event.note);
        const auto add = [&](const char* sign, size_t number) {
            events += sign;
            events += std::to_string(number);
        };
        add(":", event.frames);
        if (event.gate != 8) add("/", static_cast<size_t>(event.gate));
        if (event.volume != 15) add("v", static_cast<size_t>(event.volume));
        if (!event.rest && event.instrument != 0) add("@", event.instrument);
    }
    return events;
}

TEST(MusicText, SignsMeanWhatThePageSays) {
    for (const auto& [line, events] : Rows("music_signs.txt"))
        EXPECT_EQ(Events(line), events) << line;
}

TEST(MusicText, NamesLineAndFault) {
    for (const auto& [line, fault] : Rows("music_faults.txt"))
        EXPECT_THAT(ReadMusicSet(Text(line), "f").faults, Contains(HasSubstr(fault))) << line;
    const std::pair<std::string, std::string> texts[] = {
        {"", "f:0: the song bgm is missing"},
        {"beat 0\n", "f:1: expected \"beat NUMBER\", from 1 to 960"},
        {"instrument a\n loud 3\n", "f:2: expected volume, release"},
        {"instrument a\n duty 1\n", "f:1: instrument \"a\" has no volume"},
        {"instrument a\n volume 3 16\n", "f:2: expected a number from 0 to 15, found \"16\""},
        {"instrument a\n volume 3 |\n", "f:2: expected values behind the |"},
        {"instrument a\n volume 3\n release 3 | 2\n", "f:3: a release has no |"},
        {"instrument a\n pitch -128\n", "from -127 to 127, found \"-128\""},
        {"instrument a\ninstrument a\n", "f:2: a second instrument \"a\""},
        {std::string(kHead) + "drum k a 3\n", "f:13: a second drum \"k\""},
        {std::string(kHead) + "drum g a 3\n", "f:13: a drum can't be called \"g\""},
        {std::string(kHead) + "drum z a 32\n", "the period from 0 to 31"},
        {std::string(kHead) + "drum z a 4\n", "the arpeggio of \"a\" leads from period 4 to 16"},
        {std::string(kHead) + "phrase p\n", "f:13: a second phrase \"p\""},
        {std::string(kHead) + "phrase q\n {p}\nsong bgm\n pulse1: @a {q}\n",
         "f:14: a phrase can't call another one: \"p\""},
        {std::string(kHead) + "song boss\n", "f:13: expected \"song NAME\" with bgm"},
        {std::string(kHead) + "song item\n pulse1: @a c L c\n", "f:14: L in an effect"},
        {std::string(kHead) + "song item\n", "f:13: the song item has no channel's line"},
        {"hello\n", "f:1: unknown word \"hello\" here"},
    };
    for (const auto& [text, fault] : texts)
        EXPECT_THAT(ReadMusicSet(text, "f").faults, Contains(HasSubstr(fault))) << text;
    std::string instrument = "instrument a\n volume";
    for (int i = 0; i < 247; ++i)
        instrument += " 1";
    EXPECT_THAT(ReadMusicSet(instrument, "f").faults,
                Contains(HasSubstr("f:1: instrument \"a\" takes 257 bytes, at most 256")));
}

TEST(MusicText, ThePagesExampleIsWhole) {
    std::ifstream page(BANKWEAVER_MUSIC_PAGE);
    std::string text;
    bool inside = false;
    for (std::string line; std::getline(page, line);) {
        if (line.starts_with("## ")) inside = line == "## A first tune";
        if (inside && line.starts_with("    ")) text += line + "\n";
    }
    EXPECT_NE(text, "");
    EXPECT_THAT(ReadMusicSet(text, "page").faults, ElementsAre());
}

// What is known on both ways into a loop isn't told again; a phrase's notes are one byte each.
TEST(MusicData, TellsTheDriverOnlyWhatChanges) {
    const MusicReading reading =
        ReadMusicSet(Text(" pulse1: @a v9 q4 c d1^1^1 L c @b c r @a"), "f");
    ASSERT_THAT(reading.faults, ElementsAre());
    EXPECT_THAT(WriteMusicData(reading.set).source,
                HasSubstr("Song_bgm_pulse1:\n"
                          "    .DB $62,$0C,$79,$C0,$98,$1B,$62,$00,$63,$90,$1D,$60\n"
                          "Song_bgm_pulse1_Loop:\n"
                          "    .DB $62,$0C,$C0,$98,$1B,$C1,$1B,$60,$64\n"
                          "    .DW Song_bgm_pulse1_Loop\n"));
}

TEST(BankFiles, HoldNoMoreAndNoLessThanIsUsed) {
    std::vector<uint8_t> image(16 + 2 * kMusicBankBytes, 0xFF);
    image[16 + kMusicBankBytes + 100] = 7;
    EXPECT_EQ(CutBank(image, 1, 101).bytes.size(), 101u);
    EXPECT_EQ(CutBank(image, 1, 101).bytes.back(), 7);
    EXPECT_THAT(CutBank(image, 1, 100).fault, HasSubstr("bank 1 is used at byte 100"));
    EXPECT_THAT(CutBank(image, 2, 1).fault, HasSubstr("no 1 bytes in bank 2"));
    EXPECT_THAT(CutBank({image.data(), 3}, 0, 1).fault, HasSubstr("no 1 bytes in bank 0"));
    EXPECT_THAT(CutBank(image, 0, kMusicBankBytes + 1).fault, HasSubstr("no 8193 bytes"));
}

}  // namespace
}  // namespace bw
