// What a music set must sound like, worked out from its text alone, frame by frame.
#pragma once

#include <array>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "fceux_runner.h"
#include "music/music_set.h"

namespace bw::console {

// A line's place: the event in work, and how long it and its note have lasted.
class LineModel {
  public:
    LineModel(const MusicSet& set, const MusicLine& line, Sound sound, bool loops)
        : set_(&set), line_(&line), sound_(sound), loops_(loops) {}

    // Whether the next frame begins another event, or finds the end.
    bool IsDue() const { return framesLeft_ == 0; }
    // The next frame: what the sound channel gets, "-" if it is silent. Nothing once it has ended.
    // With `wait` an event that is due comes a frame later.
    std::optional<std::string> Frame(bool wait);

  private:
    bool NextEvent();
    void Release();
    std::string Shown() const;
    int Value(EnvelopeKind kind, size_t frame, int otherwise) const;
    std::string Tone(int volume) const;

    const MusicSet* set_;
    const MusicLine* line_;
    Sound sound_;
    bool loops_;
    size_t next_ = 0;
    size_t framesLeft_ = 0;
    size_t gateLeft_ = 0;               // 0: the gate is over
    const MusicEvent* note_ = nullptr;  // the last one that began
    size_t age_ = 0;                    // frames since it began
    std::optional<size_t> sinceRelease_;
};

// A set that plays: a tune, and an effect over it.
class MusicModel {
  public:
    explicit MusicModel(const MusicSet& set) : set_(set) {}

    void Start(size_t song);
    // The four sound channels, separated by blanks.
    std::string Frame();

  private:
    using Lines = std::array<std::optional<LineModel>, kSounds>;

    const MusicSet& set_;
    Lines tune_;
    Lines effect_;
};

struct MusicComparison {
    std::string difference;    // where a console's frame first differs; empty if none does
    size_t frames = 0;         // that were compared
    size_t silence = 0;        // most of them one after another in which nothing sounded
    std::set<size_t> started;  // which of the set's songs
};

// What music.lua recorded beside what the model makes of the songs that were started. `numbers` has
// the song numbers of kSongNames, from 1; others must change nothing.
MusicComparison CompareMusic(const ConsoleResult& result, const MusicSet& set,
                             const std::array<unsigned, 4>& numbers);

}  // namespace bw::console
