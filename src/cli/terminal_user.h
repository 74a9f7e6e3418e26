// The user of a build at a terminal: messages and progress on standard error.
#pragma once

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>

#include "builder/input/build_user.h"
#include "support/diagnostic.h"

namespace bw {

class TerminalUser : public BuildUser {
  public:
    // Where the build's output goes; the questions of a build are answered with these.
    TerminalUser(Language language, OutputChoice output, std::filesystem::path folder);
    ~TerminalUser() override;

    Language UiLanguage() const override { return language_; }
    void Message(std::u16string_view text, std::u16string_view title, MessageKind kind) override;
    // Only asked whether a finished file is to be shown in a window: no.
    bool AskYesNo(std::u16string_view text, std::u16string_view title) override;
    std::optional<OutputChoice> AskOutput(const std::filesystem::path& startFolder) override;
    std::optional<std::filesystem::path> AskFolder(
        const std::filesystem::path& startFolder) override;
    void ShowInFileManager(const std::filesystem::path& path) override;
    // A line that is written over, on a terminal and for work that takes long enough to wonder.
    void Progress(BuildStage stage, size_t done, size_t total, std::u16string_view what) override;
    bool Cancelled() const override;
    void Diagnostic(std::string_view line) override;

    // A line of the program's own.
    void Line(std::u16string_view text);

  private:
    using Clock = std::chrono::steady_clock;
    void ClearProgress();

    Language language_;
    OutputChoice output_;
    std::filesystem::path folder_;
    bool terminal_;
    bool progressShown_ = false;
    Clock::time_point nextProgress_;
};

// Tells what is wrong, if anything is. The exit code that goes with it.
int TellProblem(const std::optional<Diagnostic>& problem, Language language);

// Asks a running build to stop when the user interrupts the program.
void CancelOnInterrupt();

}  // namespace bw
