// The person (or the program) that a build talks to. The window and the command line each
// implement it. All calls come from the thread that builds, but for Progress and Cancelled: where
// games are unpacked by several threads, these may come from any of them, one at a time.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string_view>

#include "builder/input/rom_format.h"
#include "language/language.h"

namespace bw {

enum class MessageKind : uint8_t { kTips, kWarning, kError };

enum class BuildStage : uint8_t {
    kReadGames,
    kWriteTables,
    kAssembleMenu,
    kWriteRom,
};

struct OutputChoice {
    std::filesystem::path path;
    RomFormat format = RomFormat::kNes20;
};

class BuildUser {
  public:
    virtual ~BuildUser() = default;

    // The language of the messages of this build.
    virtual Language UiLanguage() const = 0;
    // One message with its title; returns when the user has seen it.
    virtual void Message(std::u16string_view text, std::u16string_view title, MessageKind kind) = 0;
    // The checked games are more than the board takes. A message, unless there is more to offer.
    virtual void TooMuch(std::u16string_view text, std::u16string_view title) {
        Message(text, title, MessageKind::kError);
    }
    // A question; true for Yes.
    virtual bool AskYesNo(std::u16string_view text, std::u16string_view title) = 0;
    // Where the ROM goes; nothing to leave it.
    virtual std::optional<OutputChoice> AskOutput(const std::filesystem::path& startFolder) = 0;
    // A folder for an export; nothing to leave it.
    virtual std::optional<std::filesystem::path> AskFolder(
        const std::filesystem::path& startFolder) = 0;
    // Shows a finished file, or a folder, in a file manager.
    virtual void ShowInFileManager(const std::filesystem::path& path) = 0;
    // How far a stage is: `done` of `total` steps; `what` is the game at hand or empty.
    virtual void Progress(BuildStage stage, size_t done, size_t total,
                          std::u16string_view what) = 0;
    // True once the user wants to give the build up; asked between games. Nothing is left behind.
    virtual bool Cancelled() const { return false; }
    // Something that the user should know and that doesn't end the build by itself. False to end it
    // all the same.
    virtual bool Warn(std::u16string_view) { return true; }
    // Something that the user should know of a build that is right as it is.
    virtual void Note(std::u16string_view) {}
    // A line for whoever looks for the cause of a failure, such as a generated file that couldn't
    // be written.
    virtual void Diagnostic(std::string_view line) = 0;
};

}  // namespace bw
