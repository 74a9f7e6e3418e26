#include "console/fceux.h"

#include <algorithm>
#include <charconv>
#include <sstream>
#include <utility>

#include <fmt/format.h>

#include "console/piped_process.h"
#include "console/scratch_folder.h"
#include "rom/image_files.h"
#include "support/files.h"
#include "support/process.h"
#include "support/text.h"

extern "C" const unsigned char embedded_fceux_script_begin[];
extern "C" const unsigned char embedded_fceux_script_end[];

namespace bw {
namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;

constexpr std::string_view kAnswerMark = "BWC1";
constexpr std::string_view kSigns = "+-!";  // done, failed, the ROM isn't taken
constexpr size_t kAnswerHead = 13;          // mark, sign, size
constexpr size_t kLargestAnswer = 1 << 24;  // bytes; a picture with an hour of codes is less
constexpr size_t kPixels = size_t{ConsolePicture::kWidth} * ConsolePicture::kHeight;
constexpr size_t kPixelBytes = 4;        // nothing, red, green, blue
constexpr milliseconds kFrameTime{20};   // at worst, on a busy machine
constexpr milliseconds kLastWord{1500};  // for an orderly end
constexpr size_t kDetailBytes = 600;
constexpr std::string_view kUnknownRom = "Unknown ROM file format";  // in its log
constexpr milliseconds kLogLook{100};
constexpr size_t kLargestGame = size_t{7} << 20;  // bytes; none announces more
constexpr const char* kNoImage = "the file can't be read or is no ROM";
constexpr std::string_view kChatter = "Qt Warning";  // of its toolkit, at every start

std::string_view Script() {
    return {reinterpret_cast<const char*>(embedded_fceux_script_begin),
            static_cast<size_t>(embedded_fceux_script_end - embedded_fceux_script_begin)};
}

// What it makes of another file isn't always the same.
bool IsImage(const fs::path& rom) {
    const FileResult<ImageFile> file = OpenImage(rom);
    std::array<uint8_t, 4> magic{};
    if (!file || !file->ReadAt(0, magic)) return false;
    const std::string_view text(reinterpret_cast<const char*>(magic.data()), magic.size());
    return text == "NES\x1A" || text == "UNIF";
}

std::string Digits(std::string_view bytes) {
    std::string digits;
    for (const char byte : bytes)
        digits += fmt::format("{:02X}", static_cast<unsigned char>(byte));
    return digits;
}

// A folder that is an emulator's home.
class Home {
  public:
    const fs::path& Path() const { return folder_.Path(); }
    fs::path Script() const { return Path() / "console.lua"; }
    // Where the emulator has the battery's memory of this ROM.
    fs::path Battery(const fs::path& rom) const {
        return Path() / ".fceux" / "sav" / rom.stem().concat(".sav");
    }

    bool Fill() const {
        return FillFceuxHome(Path(), FceuxMemory::kZeros) &&
               MakeFolders(Battery({}).parent_path()) && WriteScratchFile(Script(), bw::Script());
    }

    // The emulator opens files alone: an image in an archive gets one here for as long as it runs.
    fs::path FileOf(const fs::path& rom) const {
        if (ContainerOf(rom) == rom) return rom;
        const fs::path file = Path() / "games" / rom.filename();
        const FileResult<ImageFile> image = OpenImage(rom);
        std::vector<uint8_t> bytes(kLargestGame);
        bytes.resize(image ? image->ReadAt(0, bytes).ValueOr(0) : 0);
        return MakeFolders(file.parent_path()) && WriteScratchFile(file, bytes) ? file : rom;
    }

    // The last of what the emulator printed.
    std::string LastWords() const {
        const std::vector<uint8_t> log = ReadFile(FceuxLog(Path()), kLargestAnswer).ValueOr({});
        std::istringstream lines(std::string(log.begin(), log.end()));
        std::string words;
        for (std::string line; std::getline(lines, line);) {
            if (!line.empty() && !line.starts_with(kChatter)) words += line + "\n";
        }
        if (words.size() > kDetailBytes) words.erase(0, words.size() - kDetailBytes);
        return words;
    }

  private:
    ScratchFolder folder_{"console"};
};

class FceuxConsole final : public Console {
  public:
    explicit FceuxConsole(const ConsoleStart& start) : start_(start) {}

    ~FceuxConsole() override {
        if (!lost_ && !start_.save.empty()) KeepSave();
        process_.End(milliseconds{0});
    }

    ConsoleResult<> Start(const fs::path& program) {
        if (!IsImage(start_.rom)) return Lose(ConsoleProblem::Kind::kRefused, kNoImage);
        if (!home_.Fill()) return Lose(ConsoleProblem::Kind::kNotStarted, "no scratch folder");
        start_.rom = FceuxPath(home_.FileOf(start_.rom));
        if (!start_.save.empty()) {
            std::error_code none;  // yet
            fs::copy_file(start_.save, home_.Battery(start_.rom), none);
        }
        const fs::path folder = FceuxPath(home_.Path());
        const FceuxRun run{program, folder, FceuxPath(home_.Script()), start_.rom, start_.sound};
        if (!process_.Start(CommandOf(run))) {
            return Lose(ConsoleProblem::Kind::kNotStarted, "the program can't be run");
        }
        return BeReady();
    }

    ConsoleResult<ConsoleRun> Run(const ConsoleOrder& order) override {
        std::string line = fmt::format(
            "run {} {} {} {} {:d} {:d} {:d}", order.frames, order.pads[0], order.pads[1],
            order.untilExecuted ? std::to_string(*order.untilExecuted) : "-", order.codes,
            order.picture, order.silent || !start_.sound);
        for (const AddressRange& range : order.watched)
            line += fmt::format(" {}-{}", range.first, range.last);
        const ConsoleResult<std::string> answer = Order(line, kFrameTime * order.frames);
        if (!answer) return answer.Problem();
        ConsoleRun run;
        if (!Parse(*answer, order, run)) return Garbled();
        return run;
    }

    ConsoleResult<std::vector<uint8_t>> ReadCpu(uint16_t address, uint32_t count) override {
        return Bytes(fmt::format("cpu {} {}", address, count), count);
    }
    ConsoleResult<std::vector<uint8_t>> ReadPpu(uint16_t address, uint32_t count) override {
        return Bytes(fmt::format("ppu {} {}", address, count), count);
    }
    ConsoleResult<> WriteCpu(uint16_t address, const std::vector<uint8_t>& bytes) override {
        return Done(
            fmt::format("write {} {}", address,
                        Digits({reinterpret_cast<const char*>(bytes.data()), bytes.size()})));
    }
    ConsoleResult<> KeepState() override { return Done("keep"); }
    ConsoleResult<> RestoreState() override { return Done("restore"); }
    ConsoleResult<> Power() override { return Done("power"); }
    ConsoleResult<> Reset() override { return Done("reset"); }
    ConsoleResult<> Load(const fs::path& rom) override {
        if (!IsImage(rom)) return Lose(ConsoleProblem::Kind::kRefused, kNoImage);
        ConsoleResult<> loaded = Done("load " + Digits(PathWord(FceuxPath(home_.FileOf(rom)))));
        // It ends its script over a file that it doesn't know.
        if (!loaded && loaded.Problem().kind == ConsoleProblem::Kind::kEnded)
            return Lose(ConsoleProblem::Kind::kRefused, loaded.Problem().detail);
        return loaded;
    }

    void Rest() override { process_.Rest(); }
    int64_t ProcessId() const override { return process_.Id(); }

  private:
    // Without a ROM that it knows the emulator waits for a person, and says so in its log alone.
    ConsoleResult<> BeReady() {
        const auto deadline = std::chrono::steady_clock::now() + start_.patience;
        PipeEnd end = PipeEnd::kSilent;
        do {
            end = process_.AwaitBytes(kLogLook, start_.stop);
            if (end == PipeEnd::kSilent && home_.LastWords().find(kUnknownRom) != std::string::npos)
                return Lose(ConsoleProblem::Kind::kRefused, std::string(kUnknownRom));
        } while (end == PipeEnd::kSilent && std::chrono::steady_clock::now() < deadline);
        if (end == PipeEnd::kClosed)
            return Lose(ConsoleProblem::Kind::kNotStarted, home_.LastWords());
        if (end != PipeEnd::kDone) return Lose(end);
        const ConsoleResult<std::string> ready = Answer(milliseconds{0});
        if (!ready) return ready.Problem();
        return {};
    }

    ConsoleProblem Lose(ConsoleProblem::Kind kind, std::string detail) {
        lost_ = ConsoleProblem{kind, std::move(detail)};
        process_.End(milliseconds{0});
        return *lost_;
    }
    ConsoleProblem Garbled() {
        return Lose(ConsoleProblem::Kind::kGarbled, "the emulator's answer can't be read");
    }
    ConsoleProblem Lose(PipeEnd end) {
        using enum ConsoleProblem::Kind;
        if (end == PipeEnd::kStopped) return Lose(kStopped, {});
        return Lose(end == PipeEnd::kSilent ? kSilent : kEnded, home_.LastWords());
    }

    ConsoleResult<std::string> Order(const std::string& line, milliseconds more) {
        if (lost_) return *lost_;
        const PipeEnd end = process_.Write(line + "\n", start_.patience, start_.stop);
        if (end != PipeEnd::kDone) return Lose(end);
        return Answer(more);
    }

    ConsoleResult<std::string> Answer(milliseconds more) {
        const milliseconds patience = start_.patience + more;
        char head[kAnswerHead];
        if (const PipeEnd end = process_.Read(head, patience, start_.stop); end != PipeEnd::kDone) {
            return Lose(end);
        }
        const std::string_view text(head, kAnswerHead);
        size_t size = 0;
        const auto [last, error] =
            std::from_chars(head + kAnswerMark.size() + 1, head + kAnswerHead, size, 16);
        const char sign = text[kAnswerMark.size()];
        if (!text.starts_with(kAnswerMark) || kSigns.find(sign) == kSigns.npos ||
            error != std::errc() || last != head + kAnswerHead || size > kLargestAnswer) {
            return Garbled();
        }
        std::string bytes(size, '\0');
        if (const PipeEnd end = process_.Read(bytes, patience, start_.stop);
            end != PipeEnd::kDone) {
            return Lose(end);
        }
        if (sign == '-') return Lose(ConsoleProblem::Kind::kEnded, bytes);
        if (sign == '!') return Lose(ConsoleProblem::Kind::kRefused, home_.LastWords());
        return bytes;
    }

    ConsoleResult<> Done(const std::string& line) {
        const ConsoleResult<std::string> answer = Order(line, kFrameTime);
        if (!answer) return answer.Problem();
        if (!answer->empty()) return Garbled();
        return {};
    }

    ConsoleResult<std::vector<uint8_t>> Bytes(const std::string& line, uint32_t count) {
        const ConsoleResult<std::string> answer = Order(line, kFrameTime);
        if (!answer) return answer.Problem();
        if (answer->size() != count) return Garbled();
        return std::vector<uint8_t>(answer->begin(), answer->end());
    }

    static bool ParseCodes(std::string_view text, std::vector<FrameCode>& codes) {
        constexpr size_t kDigits = 8, kParts = 3;
        if (text.size() % (kDigits * kParts) != 0) return false;
        for (; !text.empty(); text.remove_prefix(kDigits * kParts)) {
            uint32_t parts[kParts];
            for (size_t i = 0; i < kParts; ++i) {
                const char* begin = text.data() + i * kDigits;
                if (std::from_chars(begin, begin + kDigits, parts[i], 16).ptr != begin + kDigits)
                    return false;
            }
            codes.push_back({parts[0], parts[1], parts[2]});
        }
        return true;
    }

    static bool ParsePicture(std::string_view bytes, ConsolePicture& picture) {
        if (bytes.size() != kPixels * kPixelBytes) return false;
        picture.pixels.reserve(kPixels);
        const auto* at = reinterpret_cast<const uint8_t*>(bytes.data());
        for (size_t i = 0; i < kPixels; ++i, at += kPixelBytes) {
            picture.pixels.push_back(0xFF000000u | uint32_t{at[1]} << 16 | uint32_t{at[2]} << 8 |
                                     at[3]);
        }
        return true;
    }

    // The numbers of a line, which is taken off the text.
    template <size_t kCount>
    static std::optional<std::array<long, kCount>> TakeNumbers(std::string_view& text) {
        const size_t end = text.find('\n');
        if (end == text.npos) return std::nullopt;
        std::istringstream line{std::string(text.substr(0, end))};
        text.remove_prefix(end + 1);
        std::array<long, kCount> numbers{};
        for (long& number : numbers)
            line >> number;
        if (line.fail()) return std::nullopt;
        return numbers;
    }

    static bool Parse(std::string_view text, const ConsoleOrder& order, ConsoleRun& run) {
        const auto head = TakeNumbers<3>(text);
        if (!head) return false;
        run.frames = static_cast<uint32_t>((*head)[0]);
        run.reached = (*head)[1] != 0;
        if ((*head)[2] >= 0) run.jammedAt = static_cast<uint16_t>((*head)[2]);
        for (size_t i = 0; i < order.watched.size(); ++i) {
            const auto seen = TakeNumbers<4>(text);
            if (!seen) return false;
            run.writes.push_back(
                {static_cast<uint32_t>((*seen)[0]), static_cast<uint16_t>((*seen)[1]),
                 static_cast<uint8_t>((*seen)[2]), static_cast<uint16_t>((*seen)[3])});
        }
        const size_t end = text.find('\n');
        if (end == text.npos || !ParseCodes(text.substr(0, end), run.codes)) return false;
        text.remove_prefix(end + 1);
        return order.picture ? ParsePicture(text, run.picture) : text.empty();
    }

    // The emulator writes the battery's memory when it closes the game.
    void KeepSave() {
        if (process_.Write("close\n", start_.patience, {}) != PipeEnd::kDone) return;
        process_.End(kLastWord);
        const auto battery = ReadFile(home_.Battery(start_.rom), kLargestAnswer);
        if (battery) WriteFile(start_.save, *battery);
    }

    ConsoleStart start_;
    Home home_;
    PipedProcess process_;
    std::optional<ConsoleProblem> lost_;
};

}  // namespace

fs::path FceuxLog(const fs::path& home) {
    return home / "emulator.log";
}

FileResult<> FillFceuxHome(const fs::path& home, FceuxMemory memory) {
    const fs::path folder = home / ".fceux";
    if (FileResult<> made = MakeFolders(folder); !made) return made;
    // The plain drawing of video driver 1 needs no OpenGL. Its words, such as what it has loaded,
    // would stand in the picture for some seconds.
    return WriteScratchFile(
        folder / "fceux.cfg",
        fmt::format("SDL.VideoDriver = 1\nSDL.ShowGuiMessages = 0\nSDL.RamInitMethod = {}\n",
                    static_cast<int>(memory)));
}

Fceux::Fceux(fs::path program) : program_(std::move(program)) {}

std::string Fceux::Name() const {
    Process process;
    std::string version;
    if (TellsVersion(program_) && process.Start(program_, {"--version"}, {}))
        version = process.ReadOutput(milliseconds{2000}, 64);
    const size_t end = version.find_first_not_of("0123456789.");
    version.resize(std::min(end, version.size()));
    return version.empty() ? "FCEUX" : "FCEUX " + version;
}

ConsoleResult<std::unique_ptr<Console>> Fceux::Start(const ConsoleStart& start) const {
    auto console = std::make_unique<FceuxConsole>(start);
    if (const ConsoleResult<> started = console->Start(program_); !started)
        return started.Problem();
    return std::unique_ptr<Console>(std::move(console));
}

std::unique_ptr<Emulator> FindEmulator() {
    const std::optional<fs::path> program = FindFceux();
    return program ? std::make_unique<Fceux>(*program) : nullptr;
}

}  // namespace bw
