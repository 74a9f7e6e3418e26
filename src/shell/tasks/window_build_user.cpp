#include "shell/tasks/window_build_user.h"

#include <array>
#include <cstdio>
#include <optional>
#include <utility>

#include "builder/build_words.h"
#include "shell/framework/messages.h"

namespace bw {
namespace {

constexpr size_t kMostWarnings = 20;  // lines that a message box shows at once

}  // namespace

template <typename Question>
auto WindowBuildUser::OnWindow(Question ask, decltype(ask()) otherwise) -> decltype(ask()) {
    if (Cancelled()) return otherwise;
    auto answer = control_.Queue().Call(std::move(ask));
    closed_ = !answer;
    return std::move(answer).value_or(std::move(otherwise));
}

int WindowBuildUser::Show(std::u16string_view text, std::u16string_view title,
                          MessageButtons buttons) {
    return OnWindow(
        [&dialogs = dialogs_, text = std::u16string(text), title = std::u16string(title), buttons] {
            return dialogs.Message(text, title, buttons);
        },
        kEndNo);
}

void WindowBuildUser::Message(std::u16string_view text, std::u16string_view title, MessageKind) {
    Show(text, title, MessageButtons::kConfirm);
}

void WindowBuildUser::TooMuch(std::u16string_view text, std::u16string_view title) {
    const std::array answers{LoadText(TextId::kBuildShowsFit, language_),
                             LoadText(TextId::kCancel, language_)};
    const auto answer =
        OnWindow([&dialogs = dialogs_, text = std::u16string(text), title = std::u16string(title),
                  answers] { return dialogs.Choose(text, title, answers); },
                 std::nullopt);
    wantsFit_ = answer == 0;
}

bool WindowBuildUser::AskYesNo(std::u16string_view text, std::u16string_view title) {
    std::u16string all = std::exchange(warnings_, {});
    if (!all.empty()) all += u"\r\n";
    all += text;
    return Show(all, title, MessageButtons::kYesNo) == kEndYes;
}

bool WindowBuildUser::Warn(std::u16string_view text) {
    if (++warningCount_ <= kMostWarnings) {
        warnings_.append(text).append(u"\r\n");
    } else if (warningCount_ == kMostWarnings + 1) {
        warnings_ += u"...\r\n";
    }
    return true;
}

std::optional<OutputChoice> WindowBuildUser::AskOutput(const std::filesystem::path& startFolder) {
    return OnWindow([&dialogs = dialogs_, startFolder,
                     name = name_] { return dialogs.AskOutput(startFolder, name); },
                    std::nullopt);
}

std::optional<std::filesystem::path> WindowBuildUser::AskFolder(
    const std::filesystem::path& startFolder) {
    return OnWindow([&dialogs = dialogs_, startFolder] { return dialogs.AskFolder(startFolder); },
                    std::nullopt);
}

void WindowBuildUser::ShowInFileManager(const std::filesystem::path& path) {
    control_.Queue().Post([&dialogs = dialogs_, path] { dialogs.ShowInFileManager(path); });
}

void WindowBuildUser::Progress(BuildStage stage, size_t done, size_t total,
                               std::u16string_view what) {
    std::u16string text = StageText(stage, language_);
    if (!what.empty()) text.append(u": ").append(what);
    control_.Progress({std::move(text), done, total});
}

// The window has no place for it; a desktop keeps what its programs say on standard error.
void WindowBuildUser::Diagnostic(std::string_view line) {
    std::fprintf(stderr, "%.*s\n", static_cast<int>(line.size()), line.data());
}

}  // namespace bw
