// Writes a music set as assembler source for the driver (menu/music/driver.asm).
#pragma once

#include <string>

#include "music/music_set.h"

namespace bw {

struct MusicData {
    std::string source;
    // Bytes that the set takes: the tune's pulses, its triangle and noise, and the rest.
    size_t pulseBytes = 0;
    size_t lowBytes = 0;
    size_t otherBytes = 0;
};

// `set` must have been read without faults.
MusicData WriteMusicData(const MusicSet& set);

}  // namespace bw
