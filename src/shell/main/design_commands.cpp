#include "shell/main/design_commands.h"

#include <array>

#include "designer/files/design_file.h"
#include "designer/history/designer_settings.h"
#include "designer/history/edit_session.h"
#include "settings/setting_names.h"
#include "support/text.h"

namespace bw {
namespace {

// A path; the designer's own dialogs start from it too.
constexpr std::string_view kLastDesignFile = "LastDesignFile";

// The design as a designer's window would have it, brought from the settings and put back there:
// what is done here can be taken back in it.
class DesignSession {
  public:
    explicit DesignSession(ListHost& host) : store_(host.Store()), session_(CopyOf(host)) {
        OpenDesigner(session_, store_);
    }

    const DesignDocument& Document() const { return session_.Copy().document; }
    bool Replace(const DesignDocument& document) {
        session_.Run([&](WorkingCopy& copy) {
            copy.document = document;
            copy.captionBox = document.store.CaptionText;
            CountItems(copy);
            return SynchroniseCursors(copy);
        });
        return CloseDesigner(session_, store_);
    }

  private:
    static WorkingCopy CopyOf(ListHost& host) {
        WorkingCopy copy;
        copy.document.store = host.Design();
        copy.Store().CaptionText = MulticartTitle(CountChecked(host.Editor().Games()));
        return copy;
    }

    SettingsStore& store_;
    EditSession session_;
};

}  // namespace

std::filesystem::path DesignCommands::StartFolder() const {
    std::u16string last;
    host_.Store().RegReadString(kDesignKey, kLastDesignFile, last);
    return TextPath(last).parent_path();
}

void DesignCommands::StorePath(const std::filesystem::path& file) {
    host_.Store().RegWriteString(kDesignKey, kLastDesignFile, PathText(file));
}

bool DesignCommands::IsEnabled() const {
    uint32_t enabled = 0;
    host_.Store().RegReadDword(kMainKey, setting::kCustomEnable, enabled);
    return enabled != 0;
}

bool DesignCommands::Open(bool shows) {
    // A build takes the design from the settings.
    if (RefusesWhileBusy(host_)) return false;
    const auto file = host_.Dialogs().AskDesignToOpen(StartFolder());
    if (!file) return false;
    StorePath(*file);
    const Language language = host_.CurrentLanguage();
    DesignSession session(host_);
    DesignDocument document = session.Document();
    if (const DesignProblem problem = OpenDesign(*file, document, language)) {
        host_.Dialogs().Message(FullText(*problem), LoadText(TextId::kErrorTitle, language),
                                MessageButtons::kConfirm);
        return false;
    }
    session.Replace(document);
    design_ = session.Document().store;
    const TextId told = shows ? TextId::kDesignOpened : TextId::kDesignOpenedOff;
    host_.Tell(FormatText(LoadText(told, language), PathText(file->filename())));
    return true;
}

void DesignCommands::Save() {
    const auto file = host_.Dialogs().AskDesignToSave(StartFolder());
    if (!file) return;
    StorePath(*file);
    const Language language = host_.CurrentLanguage();
    const DesignProblem problem = SaveDesign(*file, DesignSession(host_).Document(), language);
    host_.Tell(problem ? FullText(*problem)
                       : FormatText(LoadText(TextId::kDesignSaved, language), PathText(*file)));
}

bool DesignCommands::MayEnable() {
    if (IsDesigned(host_.Design())) return true;
    const Language language = host_.CurrentLanguage();
    // The designer (kCommandMenuDesign) is to be the first of them as soon as it has a window.
    const std::array answers{LoadText(TextId::kChooseDesign, language),
                             LoadText(TextId::kEnableAnyway, language),
                             LoadText(TextId::kLeaveDisabled, language)};
    const auto answer = host_.Dialogs().Choose(LoadText(TextId::kNothingDesigned, language),
                                               LoadText(TextId::kCustomMenu, language), answers);
    return answer == 0 ? Open(true) : answer == 1;
}

}  // namespace bw
