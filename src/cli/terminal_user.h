// The user of a command at a terminal: messages and progress on standard error.
#pragma once

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>

#include "builder/input/build_user.h"
#include "cli/arguments.h"
#include "support/diagnostic.h"

namespace bw {

class TerminalUser : public BuildUser {
  public:
    // How much is said, and where the output of a build or an export goes, stands in `arguments`.
    TerminalUser(const Arguments& arguments, Language language);
    ~TerminalUser() override;

    // Lines of the program's own; control characters in them show as '?'.
    void Error(std::u16string_view text);
    // A warning; with --strict an error. False if it ends the command.
    bool Warn(std::u16string_view text) override;
    // That something is done; not if the user wants it quiet.
    void Note(std::u16string_view text) override;
    // What is being done; only if the user wants to know it.
    void Detail(std::u16string_view text);
    // Whether a warning has ended the command.
    bool Refused() const { return refused_; }
    // "Wrote FILE".
    void NoteWritten(const std::filesystem::path& file);

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
    // The same with words of the command's own.
    void Progress(std::u16string_view line);
    bool Cancelled() const override;
    void Diagnostic(std::string_view line) override;

  private:
    using Clock = std::chrono::steady_clock;
    void Line(std::u16string_view text);
    void ClearProgress();

    const Arguments& arguments_;
    Language language_;
    bool terminal_;
    bool refused_ = false;
    bool progressShown_ = false;
    std::optional<BuildStage> stage_;
    Clock::time_point nextProgress_;
};

// Tells what is wrong, if anything is. The exit code that goes with it.
int TellProblem(TerminalUser& user, const std::optional<Diagnostic>& problem);

// Asks a running build to stop when the user, a closed terminal or the system ends the program.
void CancelOnEndRequest();

}  // namespace bw
