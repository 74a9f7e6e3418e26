// musicpack SET.txt [OUTPUT.asm]: turns a music set's text into data for the driver; without OUTPUT
// it only checks the text and tells the sizes.
// musicpack --banks IMAGE BANK:SIZE:FILE...: cuts banks of an assembled set into files.
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <optional>
#include <sstream>
#include <vector>

#include "music/bank_files.h"
#include "music/music_data.h"
#include "music/set_reader.h"

namespace {

constexpr double kFramesPerSecond = 60.0988;  // NTSC

std::optional<std::string> ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    if (file && (text << file.rdbuf())) return text.str();
    std::cerr << path << ": can't read the file\n";
    return std::nullopt;
}

bool WriteFile(const std::string& path, std::string_view bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    out.close();
    if (out) return true;
    std::cerr << path << ": can't write the file\n";
    std::remove(path.c_str());
    return false;
}

void TellSizes(const bw::MusicSet& set, const bw::MusicData& data) {
    const auto seconds = [](size_t frames) {
        return static_cast<double>(frames) / kFramesPerSecond;
    };
    std::cout << set.title << ": " << data.pulseBytes << " bytes for the pulses, " << data.lowBytes
              << " for triangle and noise, " << data.otherBytes << " for instruments and effects\n";
    for (const bw::MusicSong& song : set.songs) {
        for (size_t i = 0; i < bw::kSounds; ++i) {
            if (!song.lines[i]) continue;
            size_t before = 0, from = 0;
            for (size_t e = 0; e < song.lines[i]->events.size(); ++e)
                (e < song.lines[i]->loop ? before : from) += song.lines[i]->events[e].frames;
            std::cout << song.name << " " << bw::kSoundNames[i] << ": " << seconds(before) << " + "
                      << seconds(from) << " s (" << before << " + " << from << " frames)\n";
        }
    }
}

int Pack(const std::string& input, const std::string& output) {
    const std::optional<std::string> text = ReadFile(input);
    if (!text) return 1;
    const bw::MusicReading reading = bw::ReadMusicSet(*text, input);
    for (const std::string& fault : reading.faults)
        std::cerr << fault << "\n";
    if (!reading.faults.empty()) return 1;
    const bw::MusicData data = bw::WriteMusicData(reading.set);
    if (output.empty()) {
        TellSizes(reading.set, data);
        return 0;
    }
    return WriteFile(output, data.source) ? 0 : 1;
}

bool Cut(const std::string& image, const std::string& bytes, const std::string& what) {
    char* end = nullptr;
    const unsigned long bank = std::strtoul(what.c_str(), &end, 10);
    const unsigned long size = *end == ':' ? std::strtoul(end + 1, &end, 10) : 0;
    if (*end != ':' || end[1] == '\0') {
        std::cerr << what << ": expected BANK:SIZE:FILE\n";
        return false;
    }
    const bw::BankCut cut =
        bw::CutBank({reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size()}, bank, size);
    if (!cut.fault.empty()) {
        std::cerr << image << ": " << cut.fault << "\n";
        return false;
    }
    return WriteFile(end + 1, {reinterpret_cast<const char*>(cut.bytes.data()), cut.bytes.size()});
}

int CutAll(const std::string& image, const std::vector<std::string>& cuts) {
    const std::optional<std::string> bytes = ReadFile(image);
    if (!bytes) return 1;
    for (const std::string& cut : cuts) {
        if (!Cut(image, *bytes, cut)) return 1;
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> words(argv + 1, argv + argc);
    if (words.size() >= 3 && words[0] == "--banks") {
        return CutAll(words[1], {words.begin() + 2, words.end()});
    }
    if (words.empty() || words.size() > 2 || words[0].starts_with("-")) {
        std::cerr << "usage: musicpack SET.txt [OUTPUT.asm]\n"
                     "       musicpack --banks IMAGE BANK:SIZE:FILE...\n";
        return 2;
    }
    return Pack(words[0], words.size() == 2 ? words[1] : "");
}
