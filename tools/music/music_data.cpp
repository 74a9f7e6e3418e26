#include "music/music_data.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "music/periods.h"

namespace bw {
namespace {

// The driver's numbers for the same things; it says what they do.
constexpr size_t kRest = 0x60;
constexpr size_t kHold = 0x61;
constexpr size_t kGate = 0x62;
constexpr size_t kLength = 0x63;
constexpr size_t kJump = 0x64;
constexpr size_t kEnd = 0x65;
constexpr size_t kVolume = 0x70;
constexpr size_t kShortLength = 0x80;
constexpr size_t kInstrument = 0xC0;
constexpr unsigned kGoTo = 0x80;
constexpr unsigned kEffect = 4;
constexpr int kSilent = 0x30;
constexpr size_t kMostShortFrames = 63;
constexpr size_t kMostFrames = 255;
constexpr size_t kEighths = 8;
constexpr size_t kBytesPerLine = 16;

std::string Hex(unsigned byte) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    return {'$', kDigits[byte >> 4 & 15], kDigits[byte & 15]};
}

// Lines of .DB.
std::string Bytes(const std::vector<uint8_t>& bytes) {
    std::string text;
    for (size_t i = 0; i < bytes.size(); ++i) {
        const bool begins = i % kBytesPerLine == 0;
        text += (begins ? (i == 0 ? "    .DB " : "\n    .DB ") : ",") + Hex(bytes[i]);
    }
    return text + (bytes.empty() ? "" : "\n");
}

// A channel's events as the driver reads them.
class StreamWriter {
  public:
    StreamWriter(std::string label, const MusicLine& line, bool loops)
        : label_(std::move(label)), line_(line), loops_(loops) {}

    // The first round finds out what the driver knows when it comes back to the loop.
    std::string Write() {
        if (loops_) WriteRound();
        size_ = 0;
        return WriteRound();
    }
    size_t Size() const { return size_; }

  private:
    // What the driver has been told; nothing where that differs between two ways to a place.
    enum Field { kFieldLength, kFieldGate, kFieldVolume, kFieldInstrument, kFields };
    using Known = std::array<std::optional<size_t>, kFields>;

    std::string WriteRound() {
        known_ = {};
        std::string text = label_ + ":\n";
        for (size_t i = 0; i < line_.events.size(); ++i) {
            if (loops_ && i == line_.loop) {
                text += TakeBytes() + label_ + "_Loop:\n";
                Meet(atEnd_);
            }
            AddEvent(line_.events[i]);
        }
        atEnd_ = known_;
        Put(loops_ ? kJump : kEnd);
        text += TakeBytes();
        if (!loops_) return text;
        size_ += 2;
        return text + "    .DW " + label_ + "_Loop\n";
    }

    void Meet(const Known& other) {
        for (size_t field = 0; field < kFields; ++field) {
            if (known_[field] != other[field]) known_[field].reset();
        }
    }

    // Whether the driver must be told.
    bool IsNews(Field field, size_t value) {
        if (known_[field] == value) return false;
        known_[field] = value;
        return true;
    }

    std::string TakeBytes() {
        size_ += bytes_.size();
        std::string text = Bytes(bytes_);
        bytes_.clear();
        return text;
    }

    void Put(size_t byte) { bytes_.push_back(static_cast<uint8_t>(byte)); }

    void AddEvent(const MusicEvent& event) {
        if (event.rest) return AddWait(kRest, event.frames);
        const size_t scaled = event.frames * static_cast<size_t>(event.gate);
        const size_t sounds = std::max<size_t>(1, (scaled + kEighths / 2) / kEighths);
        const bool fits = event.frames <= kMostFrames;
        // The driver counts a gate back from the event's end, which a long note's first part isn't.
        SetGate(fits ? event.frames - sounds : 0);
        const auto volume = static_cast<size_t>(event.volume);
        if (IsNews(kFieldVolume, volume)) Put(kVolume + volume);
        if (IsNews(kFieldInstrument, event.instrument)) Put(kInstrument + event.instrument);
        const size_t first = fits ? event.frames : std::min(sounds, kMostFrames);
        SetLength(first);
        Put(static_cast<size_t>(event.note));
        if (fits) return;
        AddWait(kHold, sounds - first);
        AddWait(kRest, event.frames - sounds);
    }

    void AddWait(size_t kind, size_t frames) {
        while (frames > 0) {
            const size_t part = std::min(frames, kMostFrames);
            SetLength(part);
            Put(kind);
            frames -= part;
        }
    }

    void SetLength(size_t frames) {
        if (!IsNews(kFieldLength, frames)) return;
        if (frames <= kMostShortFrames) return Put(kShortLength + frames);
        Put(kLength);
        Put(frames);
    }

    void SetGate(size_t frames) {
        if (!IsNews(kFieldGate, frames)) return;
        Put(kGate);
        Put(frames);
    }

    const std::string label_;
    const MusicLine& line_;
    const bool loops_;
    Known known_;
    Known atEnd_;
    std::vector<uint8_t> bytes_;
    size_t size_ = 0;
};

uint8_t EnvelopeByte(EnvelopeKind kind, int value) {
    return static_cast<uint8_t>(kind == EnvelopeKind::kDuty ? value << 6 | kSilent : value);
}

std::vector<uint8_t> InstrumentBlock(const MusicInstrument& instrument) {
    std::vector<uint8_t> block(kEnvelopes, 0);
    for (size_t i = 0; i < kEnvelopes; ++i) {
        Envelope envelope = instrument.envelopes[i];
        const auto kind = static_cast<EnvelopeKind>(i);
        if (kind == EnvelopeKind::kRelease &&
            (envelope.values.empty() || envelope.values.back() != 0)) {
            envelope.values.push_back(0);
        }
        if (envelope.values.empty()) continue;
        const size_t begin = block.size();
        block[i] = static_cast<uint8_t>(begin);
        for (const int value : envelope.values)
            block.push_back(EnvelopeByte(kind, value));
        const size_t last = envelope.values.size() - 1;
        const size_t loop = envelope.loop.value_or(last);
        block.push_back(kGoTo);
        block.push_back(static_cast<uint8_t>(loop == last ? 0 : begin + loop));
    }
    return block;
}

// Two tables of the addresses of `labels`.
std::string AddressTables(const std::string& name, const std::vector<std::string>& labels) {
    std::string low = name + "Low:\n";
    std::string high = name + "High:\n";
    for (const std::string& label : labels) {
        low += "    .DB LOW(" + label + ")\n";
        high += "    .DB HIGH(" + label + ")\n";
    }
    return low + high;
}

std::string ToneTables() {
    std::vector<uint8_t> low, high, volumes;
    for (int i = 0; i < kPeriods; ++i) {
        low.push_back(static_cast<uint8_t>(PeriodOf(i) & 0xFF));
        high.push_back(static_cast<uint8_t>(PeriodOf(i) >> 8));
    }
    for (int channel = 0; channel < 16; ++channel) {
        for (int instrument = 0; instrument < 16; ++instrument)
            volumes.push_back(static_cast<uint8_t>(kSilent | (channel * instrument * 2 + 15) / 30));
    }
    return "PeriodTableLow:\n" + Bytes(low) + "PeriodTableHigh:\n" + Bytes(high) +
           "VolumeTable:\n" + Bytes(volumes);
}

class DataWriter {
  public:
    explicit DataWriter(const MusicSet& set) : set_(set) {}

    MusicData Run() {
        std::vector<std::string> songs, instruments;
        for (size_t i = 0; i < set_.instruments.size(); ++i) {
            instruments.push_back("Instrument_" + std::to_string(i));
            AddInstrument(set_.instruments[i], instruments.back());
        }
        for (const MusicSong& song : set_.songs) {
            songs.push_back("Song_" + song.name);
            AddSong(song, songs.back());
        }
        data_.otherBytes += 2 * (songs.size() + instruments.size());
        data_.source = "; Made from the music set's text; don't edit.\n\n" +
                       ("SONG_COUNT = " + std::to_string(songs.size())) + "\n\n    .BANK 0\n" +
                       AddressTables("Song", songs) +
                       AddressTables("InstrumentTable", instruments) + first_ +
                       "\n    .BANK 1\n    .ORG $A000\n" + pulses_ +
                       "PulseStreamsEnd:\n    .BANK LOW_STREAM_BANK\n    .IF LOW_STREAM_BANK != 1\n"
                       "    .ORG $A000\n    .ENDIF\n" +
                       low_ + "LowStreamsEnd:\n\n    .BANK 3\n" + ToneTables();
        return std::move(data_);
    }

  private:
    void AddInstrument(const MusicInstrument& instrument, const std::string& label) {
        const std::vector<uint8_t> block = InstrumentBlock(instrument);
        first_ += label + ":\n" + Bytes(block);
        data_.otherBytes += block.size();
    }

    void AddSong(const MusicSong& song, const std::string& label) {
        const bool isTune = &song == set_.songs.data();
        first_ += label + ":\n";
        for (size_t i = 0; i < kSounds; ++i) {
            if (!song.lines[i]) continue;
            const std::string stream = label + "_" + std::string(kSoundNames[i]);
            const bool isLow = isTune && i >= static_cast<size_t>(Sound::kTriangle);
            first_ += "    .DB " + Hex(static_cast<unsigned>(i) + (isTune ? 0 : kEffect));
            first_ += ",LOW(" + stream + ")";
            first_ += ",HIGH(" + stream + ")";
            first_ += isLow ? ",LOW_STREAM_BANK\n" : ",1\n";
            StreamWriter writer(stream, *song.lines[i], isTune);
            const std::string text = writer.Write();
            (isLow ? low_ : isTune ? pulses_ : effects_) += text;
            (isLow    ? data_.lowBytes
             : isTune ? data_.pulseBytes
                      : data_.otherBytes) += writer.Size();
            data_.otherBytes += 4;
        }
        first_ += "    .DB $FF\n" + effects_;
        effects_.clear();
        ++data_.otherBytes;
    }

    const MusicSet& set_;
    MusicData data_;
    std::string first_;    // instruments, song heads, effects
    std::string effects_;  // of the song in work
    std::string pulses_;
    std::string low_;
};

}  // namespace

MusicData WriteMusicData(const MusicSet& set) {
    return DataWriter(set).Run();
}

}  // namespace bw
