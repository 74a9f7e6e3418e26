// The sound channels' periods (NESdev wiki, "APU period table"; NTSC).
#pragma once

#include <cmath>

namespace bw {

// Entries of the driver's period table. Entry 0 is a pulse's A of 55 Hz and a triangle's of 27.5.
inline constexpr int kPeriods = 96;
// The notes of entry 0, counted in semitones with 60 for middle C.
inline constexpr int kLowestPulseNote = 33;
inline constexpr int kLowestTriangleNote = 21;
// A pulse with a smaller period is mute; more than 11 bits don't fit the registers.
inline constexpr int kMinPeriod = 8;
inline constexpr int kMaxPeriod = 2047;
inline constexpr int kMinTrianglePeriod = 2;

// The period register's value for an entry.
inline int PeriodOf(int index) {
    constexpr double kCpuClock = 1789773.0;  // Hz
    const double frequency = 55.0 * std::pow(2.0, index / 12.0);
    return static_cast<int>(std::lround(kCpuClock / (16.0 * frequency))) - 1;
}

}  // namespace bw
