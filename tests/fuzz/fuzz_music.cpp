// Any bytes as a music set: faults, or data in which the driver can't lose its way.

#include "fuzz.h"
#include "music/music_data.h"
#include "music/periods.h"
#include "music/set_reader.h"

namespace {

void CheckLine(const bw::MusicSet& set, const bw::MusicLine& line, bool isNoise) {
    size_t loopFrames = 0;
    for (size_t i = 0; i < line.events.size(); ++i) {
        const bw::MusicEvent& event = line.events[i];
        Expect(event.frames > 0 && event.volume >= 0 && event.volume <= 15);
        Expect(event.gate >= 1 && event.gate <= 8);
        if (i >= line.loop) loopFrames += event.frames;
        if (event.rest) continue;
        Expect(event.instrument < set.instruments.size());
        Expect(event.note >= 0 && event.note < (isNoise ? 32 : bw::kPeriods));
    }
    Expect(loopFrames > 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view text = TextOf({data, size});
    const bw::MusicReading reading = bw::ReadMusicSet(text, "set");
    Expect(reading.faults.size() <= bw::MusicReading::kMaxFaults);
    if (!reading.faults.empty()) return 0;
    Expect(reading.set.instruments.size() <= bw::kMaxInstruments);
    for (const bw::MusicSong& song : reading.set.songs) {
        for (size_t i = 0; i < bw::kSounds; ++i) {
            if (song.lines[i]) CheckLine(reading.set, *song.lines[i], i == 3);
        }
    }
    Expect(!bw::WriteMusicData(reading.set).source.empty());
    return 0;
}
