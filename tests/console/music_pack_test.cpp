// The text form of music sets: what its signs mean, and which faults are named.
#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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

// A line's events: note or r, frames, and where they differ from the default /gate, vVOLUME and
// @INSTRUMENT; L where the loop begins.
std::string Events(std::string_view text, Sound sound) {
    const MusicReading reading = ReadMusicSet(Text(text), "f");
    EXPECT_THAT(reading.faults, ElementsAre());
    const auto& line = reading.set.songs[0].lines[static_cast<size_t>(sound)];
    if (!line) return "none";
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
    struct {
        Sound sound;
        std::string_view music;
        std::string_view events;
    } const cases[] = {
        {Sound::kPulse1, "@a c d e f g a b", "27:24 29:24 31:24 32:24 34:24 36:24 38:24"},
        {Sound::kPulse2, "@a c+d-e8f4.g2..r16r", "28:24 28:24 31:12 32:36 34:84 r:6 r:24"},
        {Sound::kPulse1, "@a o2 c > c > c < c l8 c8. c", "3:24 15:24 27:24 15:24 15:18 15:12"},
        {Sound::kPulse1, "@a l12 c c24 c6 l1 c^2^4. # e", "27:8 27:4 27:16 27:180"},
        {Sound::kPulse1, "@a c L r4^4 d^\n   e", "27:24 L r:48 29:48 31:24"},
        {Sound::kPulse1, "@a v7 q6 c q8 @b v0 c k+2 c k-12 c k+0 c",
         "27:24/6v7 27:24v0@1 29:24v0@1 15:24v0@1 27:24v0@1"},
        {Sound::kPulse1, "@a l8 [c >]3 d", "27:12 39:12 51:12 65:12"},
        {Sound::kPulse1, "@a [[c d]2 : e]2 f",
         "27:24 29:24 27:24 29:24 31:24 27:24 29:24 27:24 29:24 32:24"},
        {Sound::kPulse1, "@a l2 c8 {p} c8^4 | [{p}]2",
         "27:12 27:12 41:12 39:36 39:12 53:12 51:12 65:12"},
        {Sound::kTriangle, "@a c v3 o1 d v0 e", "39:24 5:24 7:24v0"},
        {Sound::kNoise, "k8 h16 r v3 [k : h]2", "3:12 20:6@1 r:24 3:24v3 20:24v3@1 3:24v3"},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.music);
        const std::string name(kSoundNames[static_cast<size_t>(test.sound)]);
        EXPECT_EQ(Events(" " + name + ": " + std::string(test.music), test.sound), test.events);
    }
}

TEST(MusicText, NamesLineAndFault) {
    const std::pair<std::string_view, std::string_view> lines[] = {
        {" pulse1: c", "f:15: the note \"c\" comes before any instrument"},
        {" pulse1: @x c", "f:15: unknown instrument \"@x\""},
        {" pulse1: @a\n  c x", "f:16: unknown sign \"x\" in a pulse1 line"},
        {" pulse1: @a c7", "f:15: the length 7 is no whole number of frames: a whole note has 96"},
        {" pulse1: @a c0", "the length 0 is no"},
        {" pulse1: @a c32.", "the length 32. is no whole number of frames: the dot halves 3"},
        {" pulse1: @a l c", "expected a length behind l"},
        {" pulse1: @a v16 c", "expected a number from 0 to 15 behind v, found 16"},
        {" pulse1: @a q0 c", "from 1 to 8 behind q"},
        {" pulse1: @a k2 c", "expected + or - and semitones behind k"},
        {" pulse1: @a o1 g c", "\"g\" of octave 1, with its instrument's arpeggio and pitch and"},
        {" pulse1: @b o1 a", "is too low for pulse1"},
        {" pulse1: @b o8 c", "is too high for pulse1"},
        {" triangle: @a o8 a", "is too high for triangle"},
        {" pulse1: @a o9 >> c", "the octave leaves"},
        {" pulse1: @a [c", "this [ has no ]"},
        {" pulse1: @a c ]2", "this ] has no ["},
        {" pulse1: @a [c]", "from 1 to 255 behind ]"},
        {" pulse1: @a [[[c]2]2]2", "loops lie more than 2 deep"},
        {" pulse1: @a : c", ": outside of a loop"},
        {" pulse1: @a c L ^", "^ has no note or rest before it"},
        {" pulse1: @a c L c L c", "a second L"},
        {" pulse1: @a [L c]2", "L within a loop or phrase"},
        {" pulse1: @a c L", "takes no time"},
        {" pulse1: @a {q} c", "unknown phrase \"q\""},
        {" pulse1: @a {p c", "expected } behind"},
        {" pulse1: @a c | c8 | c",
         "f:15: the bars before this | are not whole: found 12 frames, 12 more than 0 bars of 24"},
        {" pulse1: @a c\n pulse2: @a c c", "f:16: pulse2 has 0 frames before its L and 48 from it"},
        {" pulse1: @a c\n pulse1: @a c", "f:16: a second line for pulse1"},
        {" noise: @a k", "unknown sign \"@\" in a noise line"},
        {" noise: s", "unknown sign \"s\" in a noise line"},
        {" pulse1: @a [[[c]255]255", "this [ has no ]"},
        {" pulse1: @a [[c1^1^1^1]255]255", "too long when its loops are written out"},
        {" pulse1: @a c [[ ]255 [ ]255 [ ]255 [ ]255 [ ]255 [ ]255 [ ]255 [ ]255 [ ]255 ]255",
         "too long when its loops are written out"},
    };
    for (const auto& [line, fault] : lines) {
        SCOPED_TRACE(line);
        EXPECT_THAT(ReadMusicSet(Text(line), "f").faults, Contains(HasSubstr(fault)));
    }
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
    for (const auto& [text, fault] : texts) {
        SCOPED_TRACE(text);
        EXPECT_THAT(ReadMusicSet(text, "f").faults, Contains(HasSubstr(fault)));
    }
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
