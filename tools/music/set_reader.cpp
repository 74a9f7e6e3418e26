#include "music/set_reader.h"

#include <array>
#include <charconv>
#include <optional>
#include <sstream>

#include "music/line_reader.h"

namespace bw {
namespace {

constexpr unsigned kMostBeat = 960;  // frames in a quarter note
constexpr unsigned kMostBar = 64;    // quarter notes in a bar
constexpr int kNoisePeriods = 32;
constexpr int kNoiseMode = 16;  // periods from here on have the short sequence

std::optional<int> ParseInteger(std::string_view text) {
    int value = 0;
    if (text.starts_with('+')) text.remove_prefix(1);
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return value;
}

template <typename Names>
std::optional<size_t> IndexOf(const Names& names, std::string_view name) {
    for (size_t i = 0; i < names.size(); ++i) {
        if (names[i] == name) return i;
    }
    return std::nullopt;
}

struct ValueRange {
    int least, most;
};
constexpr std::array<ValueRange, kEnvelopes> kValueRanges{
    {{0, 15}, {0, 15}, {0, 3}, {-95, 95}, {-127, 127}}};

class SetReader {
  public:
    explicit SetReader(const std::string& name) : faults_(name, MusicReading::kMaxFaults) {}

    MusicReading Run(std::string_view text) {
        while (!text.empty()) {
            const size_t end = text.find('\n');
            ++line_;
            TakeLine(text.substr(0, end));
            text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        }
        CheckInstruments();
        ReadDrums();
        for (size_t i = 0; i < kSongNames.size(); ++i)
            ReadSong(i);
        return {std::move(set_), faults_.Take()};
    }

  private:
    using Words = std::vector<std::string>;
    struct DrumText {
        Words words;
        size_t line;
    };
    struct SongText {
        size_t line = 0;  // 0: the text has no such song
        size_t bar = 4;
        std::array<std::optional<Passage>, kSounds> lines;
    };

    void Fault(const std::string& what) { faults_.Add(line_, what); }

    void TakeLine(std::string_view line) {
        line = line.substr(0, line.find('#'));
        std::istringstream stream{std::string(line)};
        Words words;
        for (std::string word; stream >> word;)
            words.push_back(word);
        if (words.empty() || TakeBlock(words) || TakeInBlock(words)) return;
        if (passage_ == nullptr) return Fault("unknown word " + Quoted(words[0]) + " here");
        AddMusic(line);
    }

    void AddMusic(std::string_view text) {
        passage_->text.append(text).push_back('\n');
        passage_->origin.push_back(line_);
    }

    // Words that begin something new wherever they stand.
    bool TakeBlock(const Words& words) {
        static constexpr std::array<std::string_view, 6> kBlocks{"title", "beat",   "instrument",
                                                                 "drum",  "phrase", "song"};
        const auto block = IndexOf(kBlocks, words[0]);
        if (!block) return false;
        passage_ = nullptr;
        instrument_ = nullptr;
        song_ = nullptr;
        switch (*block) {
            case 0:
                TakeTitle(words);
                break;
            case 1:
                TakeNumber(words, kMostBeat, beat_);
                break;
            case 2:
                BeginInstrument(words);
                break;
            case 3:
                drums_.push_back({words, line_});
                break;
            case 4:
                BeginPhrase(words);
                break;
            default:
                BeginSong(words);
                break;
        }
        return true;
    }

    bool TakeInBlock(const Words& words) {
        if (instrument_ != nullptr) {
            TakeEnvelope(words);
            return true;
        }
        if (song_ == nullptr) return false;
        if (words[0] == "bar" && passage_ == nullptr) {
            TakeNumber(words, kMostBar, song_->bar);
            return true;
        }
        const size_t colon = words[0].find(':');
        if (colon == std::string::npos) return false;
        const auto sound = IndexOf(kSoundNames, std::string_view(words[0]).substr(0, colon));
        if (!sound) return false;
        if (song_->lines[*sound]) Fault("a second line for " + words[0].substr(0, colon));
        passage_ = &song_->lines[*sound].emplace();
        std::string text = words[0].substr(colon + 1);
        for (size_t i = 1; i < words.size(); ++i)
            text += " " + words[i];
        AddMusic(text);
        return true;
    }

    void TakeTitle(const Words& words) {
        set_.title.clear();
        for (size_t i = 1; i < words.size(); ++i)
            set_.title += (i == 1 ? "" : " ") + words[i];
    }

    void TakeNumber(const Words& words, unsigned most, size_t& number) {
        const std::optional<int> value =
            words.size() == 2 ? ParseInteger(words[1]) : std::optional<int>();
        if (value && *value >= 1 && *value <= static_cast<int>(most)) {
            number = static_cast<size_t>(*value);
        } else {
            Fault("expected \"" + words[0] + " NUMBER\", from 1 to " + std::to_string(most));
        }
    }

    void BeginInstrument(const Words& words) {
        if (words.size() != 2) return Fault("expected \"instrument NAME\"");
        if (set_.instruments.size() == kMaxInstruments) {
            return Fault("more than " + std::to_string(kMaxInstruments) + " instruments");
        }
        if (!names_.instruments.emplace(words[1], set_.instruments.size()).second) {
            return Fault("a second instrument " + Quoted(words[1]));
        }
        instrument_ = &set_.instruments.emplace_back();
        instrument_->name = words[1];
        instrument_->line = line_;
    }

    void TakeEnvelope(const Words& words) {
        const auto kind = IndexOf(kEnvelopeNames, words[0]);
        if (!kind) {
            return Fault("expected volume, release, duty, arpeggio or pitch, found " +
                         Quoted(words[0]));
        }
        Envelope& envelope = instrument_->envelopes[*kind];
        if (!envelope.values.empty()) return Fault("a second " + words[0] + " line");
        for (size_t i = 1; i < words.size(); ++i) {
            if (words[i] == "|" && !envelope.loop) {
                envelope.loop = envelope.values.size();
            } else {
                TakeValue(words[i], *kind, envelope);
            }
        }
        if (envelope.values.empty() ||
            (envelope.loop && *envelope.loop == envelope.values.size())) {
            Fault("expected values " + std::string(envelope.loop ? "behind the |" : "behind ") +
                  (envelope.loop ? "" : words[0]));
        }
        if (static_cast<EnvelopeKind>(*kind) == EnvelopeKind::kRelease && envelope.loop) {
            Fault("a release has no |, it must come to an end");
        }
    }

    void TakeValue(const std::string& word, size_t kind, Envelope& envelope) {
        const ValueRange range = kValueRanges[kind];
        const std::optional<int> value = ParseInteger(word);
        if (!value || *value < range.least || *value > range.most) {
            return Fault("expected a number from " + std::to_string(range.least) + " to " +
                         std::to_string(range.most) + ", found " + Quoted(word));
        }
        envelope.values.push_back(*value);
    }

    void BeginPhrase(const Words& words) {
        if (words.size() != 2) return Fault("expected \"phrase NAME\"");
        const auto [phrase, isNew] = names_.phrases.emplace(words[1], Passage());
        if (!isNew) Fault("a second phrase " + Quoted(words[1]));
        passage_ = &phrase->second;
    }

    void BeginSong(const Words& words) {
        const auto song = words.size() == 2 ? IndexOf(kSongNames, words[1]) : std::nullopt;
        if (!song) return Fault("expected \"song NAME\" with bgm, item, page or enter");
        if (songs_[*song].line != 0) return Fault("a second song " + words[1]);
        song_ = &songs_[*song];
        song_->line = line_;
    }

    void CheckInstruments() {
        for (const MusicInstrument& instrument : set_.instruments) {
            if (instrument.Of(EnvelopeKind::kVolume).values.empty()) {
                faults_.Add(instrument.line,
                            "instrument " + Quoted(instrument.name) + " has no volume");
            }
            const size_t bytes = InstrumentBytes(instrument);
            if (bytes > kMaxInstrumentBytes) {
                faults_.Add(instrument.line, "instrument " + Quoted(instrument.name) + " takes " +
                                                 std::to_string(bytes) + " bytes, at most " +
                                                 std::to_string(kMaxInstrumentBytes) +
                                                 ": shorten its envelopes");
            }
        }
    }

    void ReadDrums() {
        for (const auto& [words, line] : drums_) {
            line_ = line;
            const bool named = words.size() == 4 && words[1].size() == 1;
            const std::optional<int> period = named ? ParseInteger(words[3]) : std::nullopt;
            if (!period || *period < 0 || *period >= kNoisePeriods) {
                Fault("expected \"drum LETTER INSTRUMENT PERIOD\", the period from 0 to 31");
            } else {
                ReadDrum(words[1][0], words[2], *period);
            }
        }
    }

    void ReadDrum(char letter, const std::string& instrument, int period) {
        const bool isLetter = (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z');
        if (!isLetter || std::string_view("abcdefgrloqvL").find(letter) != std::string_view::npos) {
            return Fault("a drum can't be called " + Quoted(std::string(1, letter)));
        }
        const auto found = names_.instruments.find(instrument);
        if (found == names_.instruments.end()) {
            return Fault("unknown instrument " + Quoted(instrument));
        }
        for (const int step : set_.instruments[found->second].Of(EnvelopeKind::kArpeggio).values) {
            const int moved = period % kNoiseMode + step;
            if (moved < 0 || moved >= kNoiseMode) {
                return Fault("the arpeggio of " + Quoted(instrument) + " leads from period " +
                             std::to_string(period) + " to " + std::to_string(period + step) +
                             ", which is another half of the 32");
            }
        }
        if (!names_.drums.emplace(letter, Drum{found->second, period}).second) {
            Fault("a second drum " + Quoted(std::string(1, letter)));
        }
    }

    void ReadSong(size_t index) {
        const SongText& text = songs_[index];
        MusicSong& song = set_.songs[index];
        song.name = kSongNames[index];
        if (text.line == 0) return faults_.Add(line_, "the song " + song.name + " is missing");
        const LineContext context{set_, names_, beat_, text.bar, index != 0};
        bool any = false;
        for (size_t i = 0; i < kSounds; ++i) {
            if (!text.lines[i]) continue;
            song.lines[i] = ReadMusicLine(*text.lines[i], static_cast<Sound>(i), context, faults_);
            any = true;
        }
        if (!any) faults_.Add(text.line, "the song " + song.name + " has no channel's line");
        if (index == 0) CheckLengths(text, song);
    }

    // The channels of the tune must go round together.
    void CheckLengths(const SongText& text, const MusicSong& song) {
        std::optional<std::array<size_t, 2>> first;
        size_t firstSound = 0;
        for (size_t i = 0; i < kSounds; ++i) {
            if (!song.lines[i]) continue;
            std::array<size_t, 2> frames{};
            for (size_t e = 0; e < song.lines[i]->events.size(); ++e)
                frames[e < song.lines[i]->loop ? 0 : 1] += song.lines[i]->events[e].frames;
            if (!first) {
                first = frames;
                firstSound = i;
            } else if (frames != *first) {
                faults_.Add(text.lines[i]->origin.front(),
                            std::string(kSoundNames[i]) + " has " + std::to_string(frames[0]) +
                                " frames before its L and " + std::to_string(frames[1]) +
                                " from it on, " + std::string(kSoundNames[firstSound]) + " " +
                                std::to_string((*first)[0]) + " and " +
                                std::to_string((*first)[1]) + ": they must be equal");
            }
        }
    }

    FaultList faults_;
    MusicSet set_;
    MusicNames names_;
    size_t beat_ = 24;
    std::vector<DrumText> drums_;
    std::array<SongText, kSongNames.size()> songs_;
    // The block that the line in work is part of.
    size_t line_ = 0;
    MusicInstrument* instrument_ = nullptr;
    SongText* song_ = nullptr;
    Passage* passage_ = nullptr;
};

}  // namespace

size_t InstrumentBytes(const MusicInstrument& instrument) {
    size_t bytes = kEnvelopes;
    for (const Envelope& envelope : instrument.envelopes) {
        if (!envelope.values.empty()) bytes += envelope.values.size() + 2;
    }
    // Without a release, or with one that doesn't end in silence, a 0 is added.
    const Envelope& release = instrument.Of(EnvelopeKind::kRelease);
    if (release.values.empty()) return bytes + 3;
    return release.values.back() != 0 ? bytes + 1 : bytes;
}

MusicReading ReadMusicSet(std::string_view text, const std::string& name) {
    return SetReader(name).Run(text);
}

}  // namespace bw
