// Reads the text form of a music set. docs/music.md describes it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "music/music_set.h"

namespace bw {

struct MusicReading {
    MusicSet set;                     // whole only without faults
    std::vector<std::string> faults;  // "name:line: what", in no order; at most kMaxFaults
    static constexpr size_t kMaxFaults = 50;
};

// `name` is the file's name for messages. Any bytes will do as text.
MusicReading ReadMusicSet(std::string_view text, const std::string& name);

}  // namespace bw
