#include "music_model.h"

#include <algorithm>
#include <cstdio>
#include <sstream>

#include "music/periods.h"

namespace bw::console {
namespace {

std::string Hex(int digits, int value) {
    char text[12];
    std::snprintf(text, sizeof text, "%0*X", digits, static_cast<unsigned>(value));
    return text;
}

}  // namespace

std::optional<std::string> LineModel::Frame(bool wait) {
    if (IsDue() && !wait && !NextEvent()) return std::nullopt;
    if (gateLeft_ == 0) Release();
    std::string shown = Shown();
    ++age_;
    if (sinceRelease_) ++*sinceRelease_;
    if (gateLeft_ > 0) --gateLeft_;
    if (framesLeft_ > 0) --framesLeft_;
    return shown;
}

bool LineModel::NextEvent() {
    if (next_ == line_->events.size()) {
        if (!loops_) return false;
        next_ = line_->loop;
    }
    const MusicEvent& event = line_->events[next_++];
    framesLeft_ = event.frames;
    if (event.rest) {
        gateLeft_ = 0;
        return true;
    }
    note_ = &event;
    age_ = 0;
    sinceRelease_.reset();
    const auto eighths = event.frames * static_cast<size_t>(event.gate);
    gateLeft_ = std::max<size_t>(1, (eighths + 4) / 8);
    // A note that fills its event is let go by what follows.
    if (gateLeft_ == event.frames) gateLeft_ = static_cast<size_t>(-1);
    return true;
}

void LineModel::Release() {
    if (note_ != nullptr && !sinceRelease_) sinceRelease_ = 0;
}

int LineModel::Value(EnvelopeKind kind, size_t frame, int otherwise) const {
    const Envelope& envelope = set_->instruments[note_->instrument].Of(kind);
    if (frame < envelope.values.size()) return envelope.values[frame];
    if (kind == EnvelopeKind::kRelease || envelope.values.empty()) return otherwise;
    const size_t loop = envelope.loop.value_or(envelope.values.size() - 1);
    return envelope.values[loop + (frame - loop) % (envelope.values.size() - loop)];
}

std::string LineModel::Shown() const {
    if (note_ == nullptr) return "-";
    const int envelope = sinceRelease_ ? Value(EnvelopeKind::kRelease, *sinceRelease_, 0)
                                       : Value(EnvelopeKind::kVolume, age_, 0);
    const int volume = (envelope * note_->volume * 2 + 15) / 30;
    return volume == 0 ? "-" : Tone(volume);
}

std::string LineModel::Tone(int volume) const {
    const int note = note_->note + Value(EnvelopeKind::kArpeggio, age_, 0);
    if (sound_ == Sound::kNoise) {
        return Hex(1, volume) + Hex(2, note < 16 ? note : note - 16 + 0x80);
    }
    std::string period = Hex(3, PeriodOf(note) + Value(EnvelopeKind::kPitch, age_, 0));
    if (sound_ == Sound::kTriangle) return period;
    return Hex(2, Value(EnvelopeKind::kDuty, age_, 2) << 6 | 0x30 | volume) + period;
}

void MusicModel::Start(size_t song) {
    if (song == 0) tune_ = {};
    effect_ = {};
    for (size_t i = 0; i < kSounds; ++i) {
        const std::optional<MusicLine>& line = set_.songs[song].lines[i];
        if (line)
            (song == 0 ? tune_ : effect_)[i].emplace(set_, *line, static_cast<Sound>(i), song == 0);
    }
}

std::string MusicModel::Frame() {
    constexpr int kEffectReads = 2;  // channels of an effect that begin an event in one frame
    std::array<std::string, kSounds> shown;
    int reads = 0;
    for (size_t i = kSounds; i-- > 0;) {
        shown[i] = tune_[i] ? *tune_[i]->Frame(false) : "-";
        if (!effect_[i]) continue;
        const bool wait = effect_[i]->IsDue() && ++reads > kEffectReads;
        if (const auto over = effect_[i]->Frame(wait)) {
            shown[i] = *over;
        } else {
            effect_[i].reset();
        }
    }
    return shown[0] + " " + shown[1] + " " + shown[2] + " " + shown[3];
}

MusicComparison CompareMusic(const ConsoleResult& result, const MusicSet& set,
                             const std::array<unsigned, 4>& numbers) {
    std::string all;
    for (const auto& [key, value] : result.values) {
        if (key.starts_with("shown ")) all += value + ",";
    }
    std::istringstream shown(all);
    std::istringstream songs(result.At("songs"));  // FRAME:NUMBER, numbers from 0
    constexpr size_t kNever = static_cast<size_t>(-1);
    size_t at = 0;
    unsigned number = 0;
    const auto readSong = [&] {
        char colon = 0;
        if (!(songs >> at >> colon >> number)) at = kNever;
    };
    readSong();
    MusicModel model(set);
    MusicComparison comparison;
    size_t silence = 0;
    for (std::string found; std::getline(shown, found, ','); ++comparison.frames) {
        for (; at == comparison.frames; readSong()) {
            const auto song = std::find(numbers.begin(), numbers.end(), number + 1);
            if (song == numbers.end()) continue;
            const auto index = static_cast<size_t>(song - numbers.begin());
            model.Start(index);
            comparison.started.insert(index);
        }
        silence = found == "- - - -" ? silence + 1 : 0;
        comparison.silence = std::max(comparison.silence, silence);
        const std::string expected = model.Frame();
        if (found == expected) continue;
        comparison.difference = "in frame " + std::to_string(comparison.frames);
        comparison.difference += " \"" + found;
        comparison.difference += "\", expected \"" + expected;
        comparison.difference += "\"; songs " + result.At("songs");
        break;
    }
    return comparison;
}

}  // namespace bw::console
