#include "builder/preview_cart.h"

#include <atomic>
#include <utility>

#include "builder/build_driver.h"
#include "support/text.h"

namespace bw {
namespace {

// Asked nothing but the place of the ROM; keeps what it is told.
class PreviewUser : public BuildUser {
  public:
    PreviewUser(Language language, const std::filesystem::path& rom)
        : language_(language), rom_(rom) {}

    Language UiLanguage() const override { return language_; }
    void Message(std::u16string_view text, std::u16string_view, MessageKind) override { Add(text); }
    void Diagnostic(std::string_view line) override { Add(ToWide(line)); }
    std::optional<OutputChoice> AskOutput(const std::filesystem::path&) override {
        return OutputChoice{rom_, RomFormat::kNes20};
    }

    bool AskYesNo(std::u16string_view, std::u16string_view) override { return false; }
    std::optional<std::filesystem::path> AskFolder(const std::filesystem::path&) override {
        return std::nullopt;
    }
    void ShowInFileManager(const std::filesystem::path&) override {}
    void Progress(BuildStage, size_t, size_t, std::u16string_view) override {}

    const std::u16string& Told() const { return told_; }

  private:
    void Add(std::u16string_view line) {
        if (!told_.empty()) told_ += u"\n";
        told_ += line;
    }

    Language language_;
    const std::filesystem::path& rom_;
    std::u16string told_;
};

}  // namespace

Result<void, std::u16string> BuildPreviewCart(PreviewPlan plan,
                                              const std::filesystem::path& workFolder,
                                              const std::filesystem::path& rom) {
    plan.settings.ExternMenuEnable = false;
    // A build reads some values of the design from the settings.
    const std::unique_ptr<SettingsStore> store = MakeMemoryStore();
    StoreDesign(plan.design, *store);
    PreviewUser user(plan.language, rom);
    const BuildContext context{.games = *plan.games,
                               .settings = plan.settings,
                               .store = *store,
                               .design = plan.design.store,
                               .user = user,
                               .workFolder = workFolder,
                               .keepWork = {},
                               .menuOnly = true};
    std::atomic<bool> taskBusy = false;
    if (BuildRom(context, plan.settings.CoolboyBoard(), taskBusy).done) return {};
    return user.Told();
}

}  // namespace bw
