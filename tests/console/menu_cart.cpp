#include "menu_cart.h"

#include <atomic>

#include <fmt/format.h>

#include "builder/menu_assembler.h"
#include "builder/resources.h"
#include "designer/files/design_file.h"
#include "support/text.h"

namespace bw::console {
namespace {

using test::Noise;
constexpr size_t kPrgUnit = 16384;
constexpr size_t kChrUnit = 8192;

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

GameList WriteGames(const CartPlan& plan, const std::filesystem::path& folder) {
    std::filesystem::create_directories(folder);
    GameList entries;
    for (const GameImage& image : plan.images)
        entries.push_back(image.Write(folder));
    GameList games;
    for (size_t i = 0; i < plan.names.size(); ++i) {
        games.push_back(entries[std::min(i, entries.size() - 1)]);
        if (plan.lastImage && i + 1 == plan.names.size()) games[i] = plan.lastImage->Write(folder);
        games[i].name = plan.names[i];
    }
    return games;
}

// Gives the assembled menu's file.
std::filesystem::path MakeMenuByHand(const CartPlan& plan, const BuildContext& context,
                                     const SilentUser& user, const std::filesystem::path& place) {
    const std::filesystem::path menu = place / "menu";
    std::filesystem::path build = menu / "build";
    WriteResources(place);
    std::filesystem::create_directories(build);
    const auto type =
        plan.board == BoardType::kCoolgirl ? ExportType::kCoolgirl : ExportType::kCoolboy;
    if (!ExportInfo(context, type, plan.settings.MenuSize, build, false)) {
        throw ConsoleFailure("the export failed: " + user.problem);
    }
    if (plan.board == BoardType::kMindkids) {  // an export knows no MINDKIDS
        EditFile(build / "game_config.asm", "BOARD_TYPE = 0", "BOARD_TYPE = 1");
    }
    plan.byHand(menu);
    const AssemblyOutcome assembly =
        RunAssembler(AssemblerPath(place), menu / "menu.asm", menu, Language::kEnglish);
    if (!assembly.done) throw ConsoleFailure(ToUtf8(assembly.output));
    return menu / "menu.nes";
}

}  // namespace

std::string GameImage::Prg() const {
    static constexpr std::string_view kProgram(
        "\xA5\x11\xF0\xFC"                   // wait for $11
        "\xA5\x10\x0A\x0A\x0A\xA8"           // 8 KB number * 8
        "\xA2\x00"                           // MMC3 R0 to R5
        "\x8E\x00\x80\x8C\x01\x80"           //
        "\xC8\xE0\x02\xB0\x01\xC8"           // R0 and R1 are 2 KB
        "\xE8\xE0\x06\xD0\xEF\x4C\xC0\xFF",  // again
        32);
    std::string bytes = Noise(prg * kPrgUnit, number * 2 + 1);
    bytes.replace(bytes.size() - 0x40, kProgram.size(), kProgram);
    return bytes.replace(bytes.size() - 6, 6, "\xC0\xFF\xC0\xFF\xC0\xFF");
}

std::string GameImage::Chr() const {
    return Noise(chr * kChrUnit, number * 2 + 2);
}

GameEntry GameImage::Write(const std::filesystem::path& folder) const {
    std::string header = "NES\x1A";
    for (const uint32_t byte : {prg, chr, (mapper & 15) << 4 | flags, mapper & 0xF0})
        header += static_cast<char>(byte);
    header.resize(16);
    WriteText(folder / (name + ".nes"), header + Prg() + Chr());
    GameEntry entry(folder / (name + ".nes"));
    entry.checked = true;
    return entry;
}

Cart BuildCart(CartPlan plan, const std::filesystem::path& folder, const std::string& label) {
    const char* const extension = plan.format == RomFormat::kUnif ? ".unf" : ".nes";
    SilentUser user({folder / (label + extension), plan.format});
    if (plan.games.empty()) plan.games = WriteGames(plan, folder / (label + "_games"));
    const BuildContext context{.games = plan.games,
                               .settings = plan.settings,
                               .store = *plan.store,
                               .design = plan.design,
                               .user = user,
                               .workFolder = folder / (label + "_work"),
                               .keepWork = std::nullopt};
    if (plan.byHand) {
        plan.settings.ExternMenuPath =
            MakeMenuByHand(plan, context, user, folder / (label + "_hand"));
        plan.settings.ExternMenuEnable = true;
    }
    std::atomic<bool> taskBusy = false;
    const BuildOutcome outcome = BuildRom(context, plan.board, taskBusy);
    if (!outcome.done) throw ConsoleFailure(label + ": the build failed: " + user.problem);
    return {outcome.output, outcome};
}

ScriptResult Play(const CartPlan& plan, const std::string& script, const std::string& label) {
    const TemporaryFolder folder;
    return RunOnConsole({.rom = BuildCart(plan, folder.Path(), label).rom,
                         .script = MenuScript(script),
                         .label = label});
}

DesignDocument UseDesign(CartPlan& plan, const std::filesystem::path& file) {
    DesignDocument design;
    LoadDesignData(design.store, *plan.store, DefaultTileSet());
    design.store.CaptionText = MulticartTitle(plan.names.size());
    if (const auto problem = LoadDesign(file, design, Language::kEnglish)) {
        throw ConsoleFailure(ToUtf8(FullText(*problem)));
    }
    if (!StoreDesign(design, *plan.store)) throw ConsoleFailure("the design can't be stored");
    plan.design = design.store;
    plan.settings.CustomEnable = true;
    return design;
}

void EditFile(const std::filesystem::path& file, std::string_view from, std::string_view to) {
    std::string text = ReadText(file);
    const size_t at = text.find(from);
    if (at == std::string::npos)
        throw ConsoleFailure(file.string() + " has no " + std::string(from));
    WriteText(file, text.replace(at, from.size(), to));
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
    return ReadText(std::filesystem::path(BANKWEAVER_TEST_DATA) / "menu.lua") + body;
}

std::string FromHex(std::string_view digits) {
    std::string bytes;
    for (size_t i = 0; i + 1 < digits.size(); i += 2)
        bytes += static_cast<char>(std::stoi(std::string(digits.substr(i, 2)), nullptr, 16));
    return bytes;
}

std::string ToHex(std::span<const uint8_t> bytes) {
    return fmt::format("{:02X}", fmt::join(bytes, ""));
}

}  // namespace bw::console
