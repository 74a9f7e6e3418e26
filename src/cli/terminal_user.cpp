#include "cli/terminal_user.h"

#include <atomic>
#include <csignal>
#include <cstdio>
#include <utility>

#include "builder/build_words.h"
#include "cli/terminal.h"
#include "support/text.h"

namespace bw {
namespace {

using namespace std::chrono_literals;
constexpr auto kQuietTime = 300ms;  // shorter builds show no progress
constexpr auto kProgressPause = 100ms;

// The one thing that a signal may touch.
std::atomic<bool>& Interrupted() {
    static std::atomic<bool> interrupted = false;
    return interrupted;
}

}  // namespace

TerminalUser::TerminalUser(Language language, OutputChoice output, std::filesystem::path folder)
    : language_(language),
      output_(std::move(output)),
      folder_(std::move(folder)),
      terminal_(StandardErrorIsTerminal()),
      nextProgress_(Clock::now() + kQuietTime) {}

TerminalUser::~TerminalUser() {
    ClearProgress();
}

void TerminalUser::Message(std::u16string_view text, std::u16string_view title, MessageKind) {
    std::u16string message(title);
    message += u": ";
    message += text;
    Line(message);
}

bool TerminalUser::AskYesNo(std::u16string_view, std::u16string_view) {
    return false;
}

std::optional<OutputChoice> TerminalUser::AskOutput(const std::filesystem::path&) {
    return output_;
}

std::optional<std::filesystem::path> TerminalUser::AskFolder(const std::filesystem::path&) {
    return folder_;
}

void TerminalUser::ShowInFileManager(const std::filesystem::path&) {}

void TerminalUser::Progress(BuildStage stage, size_t done, size_t total, std::u16string_view what) {
    if (!terminal_ || Clock::now() < nextProgress_) return;
    nextProgress_ = Clock::now() + kProgressPause;
    progressShown_ = true;
    constexpr size_t kNameLength = 40;  // keeps the line inside 80 columns
    const std::string line = ToUtf8(FormatText(u"%s %d/%d %s", StageText(stage, language_), done,
                                               total, what.substr(0, kNameLength)));
    std::fprintf(stderr, "\r\x1B[K%s", line.c_str());
    std::fflush(stderr);
}

bool TerminalUser::Cancelled() const {
    return Interrupted();
}

void TerminalUser::Diagnostic(std::string_view line) {
    Line(ToWide(line));
}

void TerminalUser::Line(std::u16string_view text) {
    ClearProgress();
    std::string line;
    for (const char c : ToUtf8(text)) {
        if (c != '\r') line += c;
    }
    while (!line.empty() && line.back() == '\n')
        line.pop_back();
    std::fprintf(stderr, "%s\n", line.c_str());
}

void TerminalUser::ClearProgress() {
    if (std::exchange(progressShown_, false)) std::fputs("\r\x1B[K", stderr);
}

int TellProblem(const std::optional<Diagnostic>& problem, Language language) {
    if (!problem) return 0;
    TerminalUser(language, {}, {})
        .Message(FullText(*problem), LoadText(TextId::kErrorTitle, language), MessageKind::kError);
    return 1;
}

void CancelOnInterrupt() {
    Interrupted();  // constructed before a signal can come
    const auto handler = [](int) { Interrupted() = true; };
    std::signal(SIGINT, handler);
    std::signal(SIGTERM, handler);
}

}  // namespace bw
