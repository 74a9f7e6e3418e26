#include "cli/terminal_user.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <utility>

#include "builder/build_words.h"
#include "cli/inputs.h"
#include "cli/terminal.h"
#include "support/text.h"

namespace bw {
namespace {

using namespace std::chrono_literals;
constexpr auto kQuietTime = 300ms;  // shorter builds show no progress
constexpr auto kProgressPause = 100ms;

// The one thing that a signal may touch.
std::atomic<bool>& EndRequested() {
    static std::atomic<bool> requested = false;
    return requested;
}

}  // namespace

TerminalUser::TerminalUser(const Arguments& arguments, Language language)
    : arguments_(arguments),
      language_(language),
      terminal_(StandardErrorIsTerminal() && !arguments.quiet),
      nextProgress_(Clock::now() + kQuietTime) {}

TerminalUser::~TerminalUser() {
    ClearProgress();
}

void TerminalUser::Error(std::u16string_view text) {
    Message(text, LoadText(TextId::kErrorTitle, language_), MessageKind::kError);
}

bool TerminalUser::Warn(std::u16string_view text) {
    refused_ = refused_ || arguments_.strict;
    if (arguments_.strict) {
        Error(text);
    } else {
        Message(text, LoadText(TextId::kWarnTitle, language_), MessageKind::kWarning);
    }
    return !arguments_.strict;
}

void TerminalUser::Note(std::u16string_view text) {
    if (!arguments_.quiet) Line(text);
}

void TerminalUser::Detail(std::u16string_view text) {
    if (arguments_.verbose) Line(text);
}

void TerminalUser::NoteWritten(const std::filesystem::path& file) {
    Note(FormatText(LoadText(TextId::kFileWritten, language_), VisibleText(PathText(file))));
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
    return OutputChoice{FromCurrentFolder(arguments_.output), arguments_.format};
}

std::optional<std::filesystem::path> TerminalUser::AskFolder(const std::filesystem::path&) {
    return FromCurrentFolder(arguments_.folder);
}

void TerminalUser::ShowInFileManager(const std::filesystem::path&) {}

void TerminalUser::Progress(BuildStage stage, size_t done, size_t total, std::u16string_view what) {
    if (std::exchange(stage_, stage) != stage) Detail(StageText(stage, language_));
    constexpr size_t kNameLength = 40;  // keeps the line inside 80 columns
    Progress(FormatText(u"%s %d/%d %s", StageText(stage, language_), done, total,
                        VisibleText(what.substr(0, kNameLength))));
}

void TerminalUser::Progress(std::u16string_view line) {
    if (!terminal_ || Clock::now() < nextProgress_) return;
    nextProgress_ = Clock::now() + kProgressPause;
    progressShown_ = true;
    std::fprintf(stderr, "\r\x1B[K%s", ToUtf8(line).c_str());
    std::fflush(stderr);
}

bool TerminalUser::Cancelled() const {
    return EndRequested();
}

void TerminalUser::Diagnostic(std::string_view line) {
    Line(ToWide(line));
}

// A message may have lines, which end in CR LF or LF.
void TerminalUser::Line(std::u16string_view text) {
    ClearProgress();
    while (!text.empty() && (text.back() == u'\n' || text.back() == u'\r'))
        text.remove_suffix(1);
    std::string lines;
    while (true) {
        const size_t end = std::min(text.find(u'\n'), text.size());
        std::u16string_view line = text.substr(0, end);
        if (line.ends_with(u'\r')) line.remove_suffix(1);
        while (line.ends_with(u' '))
            line.remove_suffix(1);
        lines += ToUtf8(VisibleText(line)) + "\n";
        if (end == text.size()) break;
        text.remove_prefix(end + 1);
    }
    std::fputs(lines.c_str(), stderr);
}

void TerminalUser::ClearProgress() {
    if (std::exchange(progressShown_, false)) std::fputs("\r\x1B[K", stderr);
}

int TellProblem(TerminalUser& user, const std::optional<Diagnostic>& problem) {
    if (problem) user.Error(FullText(*problem));
    return problem ? 1 : 0;
}

void CancelOnEndRequest() {
    EndRequested();  // constructed before a signal can come
    OnEndRequest([](int) { EndRequested() = true; });
}

}  // namespace bw
