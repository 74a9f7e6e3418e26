#include "music/line_reader.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

#include "music/periods.h"

namespace bw {
namespace {

constexpr size_t kDeepestLoop = 2;
constexpr unsigned kMostRounds = 255;
// Loops can ask for more than any console holds; these bound what a text of a few bytes may cost.
constexpr size_t kMostEvents = 8192;  // a bank can't hold more
constexpr size_t kMostSteps = 200000;
constexpr size_t kMostFrames = 1u << 20;
constexpr unsigned kMostNumber = 100000;
constexpr int kEighths = 8;

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}
bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

class LineReader {
  public:
    LineReader(Sound sound, const LineContext& context, FaultList& faults)
        : sound_(sound), context_(context), faults_(faults), length_(context.beat) {}

    MusicLine Run(const Passage& passage) {
        Play(passage, false);
        const size_t line = passage.origin.empty() ? 0 : passage.origin.front();
        size_t loopFrames = 0;
        for (size_t i = line_.loop; i < line_.events.size(); ++i)
            loopFrames += line_.events[i].frames;
        if (loopFrames == 0 && !faults_.Full()) {
            faults_.Add(line, "the " + Name() + " line, or what its loop repeats, takes no time");
        }
        return std::move(line_);
    }

  private:
    struct Loop {
        size_t begin = 0;  // behind the [
        size_t end = 0;    // behind the ] and its number
        unsigned rounds = 0;
        unsigned round = 1;
    };
    // Where the reader stands in the main passage or in a phrase.
    struct Place {
        const Passage* passage = nullptr;
        size_t at = 0;
        std::vector<Loop> loops;
        size_t barFrames = 0;  // since the passage's start or the last bar line
    };

    std::string Name() const { return std::string(kSoundNames[static_cast<size_t>(sound_)]); }
    bool Melodic() const { return sound_ != Sound::kNoise; }
    std::string_view Text() const { return place_.passage->text; }
    bool More() const { return place_.at < Text().size(); }
    char Here() const { return More() ? Text()[place_.at] : '\n'; }

    void Fault(const std::string& what) {
        size_t line = 0;
        for (size_t i = 0; i < place_.at && i < Text().size(); ++i)
            line += Text()[i] == '\n' ? 1 : 0;
        const std::vector<size_t>& origin = place_.passage->origin;
        if (!origin.empty()) faults_.Add(origin[std::min(line, origin.size() - 1)], what);
    }
    // Stops the reading for good.
    void GiveUp(const std::string& what) {
        Fault(what);
        stopped_ = true;
    }

    void Play(const Passage& passage, bool isPhrase) {
        const Place outer = std::move(place_);
        place_ = {&passage, 0, {}, 0};
        while (More() && !stopped_ && !faults_.Full()) {
            if (++steps_ > kMostSteps)
                GiveUp("the line is too long when its loops are written out");
            const char c = Here();
            ++place_.at;
            if (!IsBlank(c)) Take(c, isPhrase);
        }
        place_ = outer;
    }

    void Take(char c, bool isPhrase) {
        if (TakeTime(c) || TakeState(c)) return;
        switch (c) {
            case '[':
                return OpenLoop();
            case ':':
                return LeaveLoop();
            case ']':
                return CloseLoop();
            case '|':
                return CheckBar();
            case '{':
                return CallPhrase(isPhrase);
            case 'L':
                return MarkLoop(isPhrase);
            default:
                Fault("unknown sign " + Quoted(std::string(1, c)) + " in a " + Name() + " line");
        }
    }

    // Notes, drums, rests and ties.
    bool TakeTime(char c) {
        if (c == 'r') {
            AddEvent({.rest = true});
        } else if (c == '^') {
            Tie();
        } else if (Melodic() && c >= 'a' && c <= 'g') {
            TakeNote(c);
        } else if (const auto drum = context_.names.drums.find(c);
                   !Melodic() && drum != context_.names.drums.end()) {
            AddEvent({.note = drum->second.period, .instrument = drum->second.instrument});
        } else {
            return false;
        }
        return true;
    }

    bool TakeState(char c) {
        switch (c) {
            case 'l':
                length_ = TakeLength(true);
                return true;
            case 'v':
                volume_ = static_cast<int>(Number("v", 0, 15, 15));
                return true;
            case 'q':
                gate_ = static_cast<int>(Number("q", 1, kEighths, kEighths));
                return true;
            default:
                return Melodic() && TakePitchState(c);
        }
    }

    bool TakePitchState(char c) {
        switch (c) {
            case 'o':
                octave_ = static_cast<int>(Number("o", 0, 9, 4));
                return true;
            case '>':
            case '<':
                octave_ += c == '>' ? 1 : -1;
                if (octave_ < -1 || octave_ > 10) GiveUp("the octave leaves what can be heard");
                return true;
            case 'k':
                TakeTranspose();
                return true;
            case '@':
                TakeInstrument();
                return true;
            default:
                return false;
        }
    }

    // A number that must stand here, from `least` to `most`; else a fault, and `otherwise`.
    unsigned Number(const std::string& of, unsigned least, unsigned most, unsigned otherwise) {
        const std::optional<unsigned> number = OptionalNumber();
        if (number && *number >= least && *number <= most) return *number;
        Fault("expected a number from " + std::to_string(least) + " to " + std::to_string(most) +
              " behind " + of + ", found " +
              (number ? std::to_string(*number) : Quoted(std::string(1, Here()))));
        return otherwise;
    }

    std::optional<unsigned> OptionalNumber() {
        if (!IsDigit(Here())) return std::nullopt;
        unsigned value = 0;
        for (; IsDigit(Here()); ++place_.at)
            value = std::min(value * 10 + static_cast<unsigned>(Here() - '0'), kMostNumber);
        return value;
    }

    std::string Word() {
        const size_t begin = place_.at;
        const auto isPart = [](char c) {
            return IsDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
                   c == '-';
        };
        while (isPart(Here()))
            ++place_.at;
        return std::string(Text().substr(begin, place_.at - begin));
    }

    // The frames of a length such as 4 or 8. (a dot adds half of what stands before it).
    size_t TakeLength(bool must) {
        const std::optional<unsigned> part = OptionalNumber();
        if (!part && must) Fault("expected a length behind l, such as 8");
        size_t frames = length_;
        std::string name = "the default length";
        if (part) {
            const size_t whole = context_.beat * 4;
            name = "the length " + std::to_string(*part);
            if (*part == 0 || whole % *part != 0) {
                Fault(name + " is no whole number of frames: a whole note has " +
                      std::to_string(whole));
                frames = context_.beat;
            } else {
                frames = whole / *part;
            }
        }
        size_t more = frames;
        for (; Here() == '.'; ++place_.at) {
            name += '.';
            if (more % 2 != 0) {
                Fault(name + " is no whole number of frames: the dot halves " +
                      std::to_string(more));
            }
            more /= 2;
            frames += more;
        }
        return frames;
    }

    void TakeNote(char letter) {
        static constexpr int kSemitones[] = {9, 11, 0, 2, 4, 5, 7};  // a to g, above c
        int note = 12 * (octave_ + 1) + kSemitones[letter - 'a'] + transpose_;
        std::string name(1, letter);
        for (; Here() == '+' || Here() == '-'; ++place_.at) {
            note += Here() == '+' ? 1 : -1;
            name += Here();
            if (name.size() > 3) return GiveUp("more than two sharps or flats at " + Quoted(name));
        }
        if (!instrument_) {
            instrument_ = 0;
            Fault("the note " + Quoted(name) + " comes before any instrument (@name)");
        }
        note -= sound_ == Sound::kTriangle ? kLowestTriangleNote : kLowestPulseNote;
        CheckRange(name, note);
        AddEvent({.note = note, .instrument = *instrument_});
    }

    // What arpeggio and pitch make of the note must be in the table, and a period of the channel.
    void CheckRange(const std::string& name, int note) {
        if (*instrument_ >= context_.set.instruments.size()) return;
        const MusicInstrument& instrument = context_.set.instruments[*instrument_];
        const auto range = [&](EnvelopeKind kind) {
            const std::vector<int>& values = instrument.Of(kind).values;
            if (values.empty()) return std::pair{0, 0};
            const auto [least, most] = std::minmax_element(values.begin(), values.end());
            return std::pair{*least, *most};
        };
        const auto [down, up] = range(EnvelopeKind::kArpeggio);
        const auto [shorter, longer] = range(EnvelopeKind::kPitch);
        const std::string what = "the note " + Quoted(name) + " of octave " +
                                 std::to_string(octave_) + ", with its instrument's arpeggio and " +
                                 "pitch and the transposition, is too ";
        const int least = sound_ == Sound::kTriangle ? kMinTrianglePeriod : kMinPeriod;
        if (note + down < 0 || PeriodOf(note + down) + longer > kMaxPeriod) {
            Fault(what + "low for " + Name());
        } else if (note + up >= kPeriods || PeriodOf(note + up) + shorter < least) {
            Fault(what + "high for " + Name());
        }
    }

    void AddEvent(MusicEvent event) {
        event.frames = TakeLength(false);
        // A triangle is on or off.
        event.volume = sound_ == Sound::kTriangle && volume_ > 0 ? 15 : volume_;
        event.gate = gate_;
        line_.events.push_back(event);
        if (line_.events.size() > kMostEvents) GiveUp("the line has too many notes");
        Count(event.frames);
    }

    void Tie() {
        const size_t frames = TakeLength(false);
        if (line_.events.empty() || line_.events.size() == loopAt_) {
            return Fault("^ has no note or rest before it to lengthen");
        }
        line_.events.back().frames += frames;
        Count(frames);
    }

    void Count(size_t frames) {
        place_.barFrames += frames;
        frames_ += frames;
        if (frames_ > kMostFrames) GiveUp("the line is too long when its loops are written out");
    }

    void TakeTranspose() {
        const char sign = Here();
        if (sign != '+' && sign != '-') return Fault("expected + or - and semitones behind k");
        ++place_.at;
        const int semitones = static_cast<int>(Number(std::string{'k', sign}, 0, 48, 0));
        transpose_ = sign == '+' ? semitones : -semitones;
    }

    void TakeInstrument() {
        const std::string name = Word();
        const auto found = context_.names.instruments.find(name);
        if (found == context_.names.instruments.end()) {
            Fault("unknown instrument " + Quoted("@" + name));
            instrument_ = instrument_.value_or(0);
        } else {
            instrument_ = found->second;
        }
    }

    void CallPhrase(bool isPhrase) {
        const size_t end = Text().find_first_of("}\n", place_.at);
        if (end == std::string_view::npos || Text()[end] != '}') {
            return Fault("expected } behind a phrase's name");
        }
        const std::string name(Text().substr(place_.at, end - place_.at));
        const auto found = context_.names.phrases.find(name);
        if (isPhrase) {
            GiveUp("a phrase can't call another one: " + Quoted(name));
        } else if (found == context_.names.phrases.end()) {
            Fault("unknown phrase " + Quoted(name));
        } else {
            const size_t before = frames_;
            Play(found->second, true);
            place_.barFrames += frames_ - before;
        }
        place_.at = end + 1;
    }

    void MarkLoop(bool isPhrase) {
        if (context_.isEffect) return Fault("L in an effect, which ends with its last event");
        if (isPhrase || !place_.loops.empty()) return Fault("L within a loop or phrase");
        if (loopAt_ != kNowhere) return Fault("a second L");
        loopAt_ = line_.loop = line_.events.size();
    }

    void CheckBar() {
        const size_t bar = context_.bar * context_.beat;
        if (bar != 0 && place_.barFrames % bar != 0) {
            Fault("the bars before this | are not whole: found " +
                  std::to_string(place_.barFrames) + " frames, " +
                  std::to_string(place_.barFrames % bar) + " more than " +
                  std::to_string(place_.barFrames / bar) + " bars of " + std::to_string(bar));
        }
        place_.barFrames = 0;
    }

    // Where a loop's ] stands, from behind its [ on.
    size_t FindLoopEnd() const {
        size_t depth = 1;
        for (size_t i = place_.at; i < Text().size(); ++i) {
            if (Text()[i] == '[') ++depth;
            if (Text()[i] == ']' && --depth == 0) return i;
        }
        return std::string_view::npos;
    }

    void OpenLoop() {
        const size_t close = FindLoopEnd();
        if (close == std::string_view::npos) return GiveUp("this [ has no ]");
        if (place_.loops.size() == kDeepestLoop) {
            return GiveUp("loops lie more than " + std::to_string(kDeepestLoop) + " deep");
        }
        Loop loop{.begin = place_.at};
        place_.at = close + 1;
        loop.rounds = Number("]", 1, kMostRounds, 1);
        loop.end = place_.at;
        place_.at = loop.begin;
        place_.loops.push_back(loop);
    }

    void LeaveLoop() {
        if (place_.loops.empty()) return Fault(": outside of a loop");
        const Loop& loop = place_.loops.back();
        if (loop.round < loop.rounds) return;
        place_.at = loop.end;
        place_.loops.pop_back();
    }

    void CloseLoop() {
        if (place_.loops.empty()) return GiveUp("this ] has no [");
        Loop& loop = place_.loops.back();
        if (loop.round++ < loop.rounds) {
            place_.at = loop.begin;
        } else {
            place_.at = loop.end;
            place_.loops.pop_back();
        }
    }

    static constexpr size_t kNowhere = static_cast<size_t>(-1);

    const Sound sound_;
    const LineContext& context_;
    FaultList& faults_;
    MusicLine line_;
    Place place_;
    size_t loopAt_ = kNowhere;
    size_t steps_ = 0;
    size_t frames_ = 0;
    bool stopped_ = false;
    // What the text has set.
    size_t length_;
    int octave_ = 4;
    int volume_ = 15;
    int gate_ = kEighths;
    int transpose_ = 0;
    std::optional<size_t> instrument_;
};

}  // namespace

MusicLine ReadMusicLine(const Passage& passage, Sound sound, const LineContext& context,
                        FaultList& faults) {
    return LineReader(sound, context, faults).Run(passage);
}

}  // namespace bw
