// Reads a channel's line of notes.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "music/fault_list.h"
#include "music/music_set.h"

namespace bw {

// A stretch of music over one or more lines of the text.
struct Passage {
    std::string text;            // the lines, a '\n' behind each
    std::vector<size_t> origin;  // the number of each line
};

struct Drum {
    size_t instrument = 0;  // in MusicSet::instruments
    int period = 0;         // 0 to 31
};

// What a line can refer to.
struct MusicNames {
    std::map<std::string, size_t, std::less<>> instruments;
    std::map<char, Drum> drums;
    std::map<std::string, Passage, std::less<>> phrases;
};

struct LineContext {
    const MusicSet& set;  // its instruments
    const MusicNames& names;
    size_t beat = 0;        // frames in a quarter note
    size_t bar = 0;         // quarter notes in a bar
    bool isEffect = false;  // it has no loop
};

// The line that `passage` makes on a channel. Faults go to `faults`.
MusicLine ReadMusicLine(const Passage& passage, Sound sound, const LineContext& context,
                        FaultList& faults);

}  // namespace bw
