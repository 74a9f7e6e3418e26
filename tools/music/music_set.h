// A music set as its text says it: instruments, and four songs of up to four channels with every
// loop and phrase written out.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace bw {

enum class Sound { kPulse1, kPulse2, kTriangle, kNoise };
inline constexpr size_t kSounds = 4;
inline constexpr std::array<std::string_view, kSounds> kSoundNames{"pulse1", "pulse2", "triangle",
                                                                   "noise"};

// One value a frame. From `loop` on the values repeat; without it the last one stays.
struct Envelope {
    std::vector<int> values;
    std::optional<size_t> loop;
};

enum class EnvelopeKind { kVolume, kRelease, kDuty, kArpeggio, kPitch };
inline constexpr size_t kEnvelopes = 5;
inline constexpr std::array<std::string_view, kEnvelopes> kEnvelopeNames{
    "volume", "release", "duty", "arpeggio", "pitch"};

struct MusicInstrument {
    std::string name;
    std::array<Envelope, kEnvelopes> envelopes;  // by EnvelopeKind; no values: it has none
    size_t line = 0;                             // where the text defines it

    const Envelope& Of(EnvelopeKind kind) const { return envelopes[static_cast<size_t>(kind)]; }
};

// A note, or a rest, with what is tied to it.
struct MusicEvent {
    bool rest = false;
    int note = 0;           // index in the period table; on noise 0 to 31 (see driver.asm)
    size_t instrument = 0;  // in MusicSet::instruments
    int volume = 15;        // 0 to 15
    size_t frames = 0;
    int gate = 8;  // eighths of `frames` until the note is released
};

struct MusicLine {
    std::vector<MusicEvent> events;
    size_t loop = 0;  // the event at which a tune goes on after its last one
};

struct MusicSong {
    std::string name;
    std::array<std::optional<MusicLine>, kSounds> lines;  // by Sound
};

// The songs in the order in which the driver counts them.
inline constexpr std::array<std::string_view, 4> kSongNames{"bgm", "item", "page", "enter"};

struct MusicSet {
    std::string title;
    std::vector<MusicInstrument> instruments;
    std::array<MusicSong, kSongNames.size()> songs;  // the first one is the tune, which loops
};

inline constexpr size_t kMaxInstruments = 64;
// An instrument is read at an 8-bit offset.
inline constexpr size_t kMaxInstrumentBytes = 256;

// The bytes that an instrument takes in the driver's form: five offsets, and per envelope its
// values and two bytes that say where to go on.
size_t InstrumentBytes(const MusicInstrument& instrument);

}  // namespace bw
