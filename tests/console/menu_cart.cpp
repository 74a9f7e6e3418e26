#include "menu_cart.h"

#include <atomic>
#include <stdexcept>

#include "builder/menu_assembler.h"
#include "builder/resources.h"
#include "designer/files/design_file.h"
#include "support/text.h"

namespace bw::console {
namespace {

constexpr size_t kPrgUnit = 16384;
constexpr size_t kChrUnit = 8192;

// Bytes that differ in every part of every image.
std::string Noise(size_t size, uint32_t seed) {
    std::string bytes(size, '\0');
    uint32_t state = seed * 2654435761u + 1;
    for (char& byte : bytes) {
        state = state * 1664525u + 1013904223u;
        byte = static_cast<char>(state >> 24);
    }
    return bytes;
}

class SilentUser : public BuildUser {
  public:
    explicit SilentUser(OutputChoice output) : output_(std::move(output)) {}
    Language UiLanguage() const override { return Language::kEnglish; }
    void Message(std::u16string_view text, std::u16string_view, MessageKind) override {
        problem += ToUtf8(text) + "\n";
    }
    bool AskYesNo(std::u16string_view, std::u16string_view) override { return false; }
    std::optional<OutputChoice> AskOutput(const std::filesystem::path&) override { return output_; }
    std::optional<std::filesystem::path> AskFolder(const std::filesystem::path&) override {
        return std::nullopt;
    }
    void ShowInFileManager(const std::filesystem::path&) override {}
    void Progress(BuildStage, size_t, size_t, std::u16string_view) override {}
    void Diagnostic(std::string_view line) override { problem += std::string(line) + "\n"; }

    std::string problem;

  private:
    OutputChoice output_;
};

BuildContext ContextOf(const CartPlan& plan, const GameList& games, DesignStore& design,
                       BuildUser& user, const std::filesystem::path& workFolder) {
    return {.games = games,
            .settings = plan.settings,
            .store = *plan.store,
            .design = design,
            .user = user,
            .workFolder = workFolder,
            .keepWork = std::nullopt};
}

}  // namespace

std::string GameImage::Prg() const {
    static constexpr unsigned char kProgram[] = {
        0xA5, 0x11, 0xF0, 0xFC,              // wait for $11
        0xA5, 0x10, 0x0A, 0x0A, 0x0A, 0xA8,  // 8 KB number * 8
        0xA2, 0x00,                          // MMC3 R0 to R5
        0x8E, 0x00, 0x80, 0x8C, 0x01, 0x80,  //
        0xC8, 0xE0, 0x02, 0xB0, 0x01, 0xC8,  // R0 and R1 are 2 KB
        0xE8, 0xE0, 0x06, 0xD0, 0xEF,        //
        0x4C, 0xC0, 0xFF};                   // again
    static constexpr unsigned char kVectors[] = {0xC0, 0xFF, 0xC0, 0xFF, 0xC0, 0xFF};
    std::string bytes = Noise(prg * kPrgUnit, number * 2 + 1);
    bytes.replace(bytes.size() - 0x40, sizeof kProgram, reinterpret_cast<const char*>(kProgram),
                  sizeof kProgram);
    bytes.replace(bytes.size() - 6, 6, reinterpret_cast<const char*>(kVectors), 6);
    return bytes;
}

std::string GameImage::Chr() const {
    return Noise(chr * kChrUnit, number * 2 + 2);
}

std::string GameImage::File() const {
    std::string bytes = "NES\x1A";
    bytes += static_cast<char>(prg);
    bytes += static_cast<char>(chr);
    bytes += static_cast<char>((mapper & 15) << 4 | flags);
    bytes += static_cast<char>(mapper & 0xF0);
    bytes.resize(16);
    return bytes + Prg() + Chr();
}

GameList WriteGames(const CartPlan& plan, const std::filesystem::path& folder,
                    const std::string& label) {
    GameList games;
    const std::filesystem::path images = folder / (label + "_games");
    std::filesystem::create_directories(images);
    for (const GameImage& image : plan.images) {
        WriteWholeFile(images / (image.name + ".nes"), image.File());
    }
    for (size_t i = 0; i < plan.names.size(); ++i) {
        const GameImage& image = plan.images[std::min(i, plan.images.size() - 1)];
        GameEntry entry(images / (image.name + ".nes"));
        entry.name = plan.names[i];
        entry.checked = true;
        games.push_back(std::move(entry));
    }
    return games;
}

Cart BuildCart(const CartPlan& plan, const std::filesystem::path& folder,
               const std::string& label) {
    return BuildCart(plan, WriteGames(plan, folder, label), folder, label);
}

Cart BuildCart(const CartPlan& plan, const GameList& games, const std::filesystem::path& folder,
               const std::string& label) {
    const char* const extension = plan.format == RomFormat::kUnif ? ".unf" : ".nes";
    SilentUser user({folder / (label + extension), plan.format});
    DesignStore design = plan.design;
    std::atomic<bool> taskBusy = false;
    Cart cart;
    cart.outcome = BuildRom(ContextOf(plan, games, design, user, folder / (label + "_work")),
                            plan.board, taskBusy);
    cart.rom = cart.outcome.output;
    if (!cart.outcome.done) cart.problem = "the build failed: " + user.problem;
    return cart;
}

std::string MakeMenuByHand(CartPlan& plan, const GameList& games,
                           const std::filesystem::path& folder, const std::string& label,
                           const std::function<void(const std::filesystem::path& menu)>& edit) {
    const std::filesystem::path place = folder / (label + "_hand");
    const std::filesystem::path menu = place / "menu";
    std::filesystem::path build = menu / "build";
    SilentUser user({{}, plan.format});
    DesignStore design = plan.design;
    WriteResources(place);
    std::filesystem::create_directories(build);
    const bool coolgirl = plan.board == BoardType::kCoolgirl;
    if (!ExportInfo(ContextOf(plan, games, design, user, place),
                    coolgirl ? ExportType::kCoolgirl : ExportType::kCoolboy, plan.settings.MenuSize,
                    build, false)) {
        return "the export failed: " + user.problem;
    }
    if (plan.board == BoardType::kMindkids) {  // an export knows no MINDKIDS
        EditFile(build / "game_config.asm", "BOARD_TYPE = 0", "BOARD_TYPE = 1");
    }
    edit(menu);
    const AssemblyOutcome assembly =
        RunAssembler(AssemblerPath(place), menu / "menu.asm", menu, Language::kEnglish);
    plan.settings.ExternMenuEnable = true;
    plan.settings.ExternMenuPath = menu / "menu.nes";
    return assembly.done ? "" : ToUtf8(assembly.output);
}

std::string UseDesign(CartPlan& plan, const std::filesystem::path& file, DesignDocument& design) {
    LoadDesignData(design.store, *plan.store, DefaultTileSet());
    design.store.CaptionText = ToWide(std::to_string(plan.names.size()) + " IN 1");
    if (const auto problem = LoadDesign(file, design, Language::kEnglish)) return ToUtf8(*problem);
    if (!StoreDesign(design, *plan.store)) return "the design can't be stored";
    plan.design = design.store;
    plan.settings.CustomEnable = true;
    return "";
}

void EditFile(const std::filesystem::path& file, std::string_view from, std::string_view to) {
    std::string text = ReadWholeFile(file);
    const size_t at = text.find(from);
    if (at == std::string::npos) {
        throw std::runtime_error(file.string() + " has no " + std::string(from));
    }
    WriteWholeFile(file, text.replace(at, from.size(), to));
}

void UsePlainRecords(const std::filesystem::path& menu) {
    EditFile(menu / "build" / "game_config.asm", "\nFINAL_DATA_ENABLE = 1",
             "\nFINAL_DATA_ENABLE = 0");
}

std::vector<std::u16string> CountedNames(size_t count) {
    std::vector<std::u16string> names;
    for (size_t i = 1; i <= count; ++i)
        names.push_back(ToWide("NAME " + std::to_string(i)));
    return names;
}

std::string MenuScript(const std::string& body) {
    return ReadWholeFile(std::filesystem::path(BANKWEAVER_TEST_DATA) / "menu.lua") + body;
}

std::string FromHex(std::string_view digits) {
    std::string bytes;
    for (size_t i = 0; i + 1 < digits.size(); i += 2) {
        bytes += static_cast<char>(std::stoi(std::string(digits.substr(i, 2)), nullptr, 16));
    }
    return bytes;
}

}  // namespace bw::console
