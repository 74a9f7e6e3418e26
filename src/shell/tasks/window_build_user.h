// The window as the user of a build: what the build asks on its own thread, the person answers on
// the window's.
#pragma once

#include <string>
#include <utility>

#include "builder/input/build_user.h"
#include "shell/dialogs/user_dialogs.h"
#include "shell/framework/background_tasks.h"

namespace bw {

// For the task's thread. When the task is to stop, or the window has closed for good, nothing is
// shown any more, all questions are answered with no, and the build counts as cancelled.
class WindowBuildUser : public BuildUser {
  public:
    // `name` is proposed for the ROM's file.
    WindowBuildUser(TaskControl& control, UserDialogs& dialogs, Language language,
                    std::u16string name = {})
        : control_(control), dialogs_(dialogs), language_(language), name_(std::move(name)) {}

    Language UiLanguage() const override { return language_; }
    void Message(std::u16string_view text, std::u16string_view title, MessageKind kind) override;
    // Offers to show which games could be left out; WantsFit() tells whether that is wanted.
    void TooMuch(std::u16string_view text, std::u16string_view title) override;
    bool WantsFit() const { return wantsFit_; }
    // The warnings so far stand before the question.
    bool AskYesNo(std::u16string_view text, std::u16string_view title) override;
    bool Warn(std::u16string_view text) override;
    // Stands with the warnings.
    void Note(std::u16string_view text) override { Warn(text); }
    std::optional<OutputChoice> AskOutput(const std::filesystem::path& startFolder) override;
    std::optional<std::filesystem::path> AskFolder(
        const std::filesystem::path& startFolder) override;
    void ShowInFileManager(const std::filesystem::path& path) override;
    void Progress(BuildStage stage, size_t done, size_t total, std::u16string_view what) override;
    bool Cancelled() const override { return closed_ || control_.Stop(); }
    void Diagnostic(std::string_view line) override;

  private:
    int Show(std::u16string_view text, std::u16string_view title, MessageButtons buttons);
    // The answer of `ask`, which runs on the window's thread; `otherwise` if nobody can be asked.
    template <typename Question>
    auto OnWindow(Question ask, decltype(ask()) otherwise) -> decltype(ask());

    TaskControl& control_;
    UserDialogs& dialogs_;
    Language language_;
    std::u16string name_;
    bool closed_ = false;
    bool wantsFit_ = false;
    std::u16string warnings_;  // a line each
    size_t warningCount_ = 0;
};

}  // namespace bw
