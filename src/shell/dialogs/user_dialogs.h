// What the window asks and tells the person, behind one interface, so that tests can answer.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "builder/input/build_user.h"

namespace bw {

// The kinds of a message dialog.
enum class MessageButtons : int { kConfirm = 0, kYesNo = 4 };

// One entry of a file dialog's list of types.
struct FileType {
    std::u16string name;
    std::string extension;  // without its point; several, with blanks between, for reading only

    bool operator==(const FileType&) const = default;
};

struct FileQuestion {
    std::u16string title;
    std::filesystem::path start;  // a folder
    std::vector<FileType> types;  // at least one
    size_t type = 0;              // the one that is chosen at first
    std::u16string name = {};     // proposed, without extension; for a file that is to be written
};

struct FileChoice {
    std::filesystem::path path;
    size_t type = 0;
};

// All calls on the window's thread. They return when the user has answered. A start folder that
// doesn't exist, or into which nothing can be written that is to go there, is replaced: by the
// program's own, the user's documents or home.
class UserDialogs {
  public:
    virtual ~UserDialogs() = default;

    // End codes as in shell/framework/messages.h.
    virtual int Message(std::u16string_view text, std::u16string_view caption,
                        MessageButtons buttons) = 0;
    // The number of the chosen one of these answers, from 0, of which the first is the usual one;
    // nothing if the user gave up.
    virtual std::optional<size_t> Choose(std::u16string_view text, std::u16string_view caption,
                                         std::span<const std::u16string> answers) = 0;
    // A file that is there; nothing if the user gave up, in all of these.
    virtual std::optional<FileChoice> AskFileToOpen(const FileQuestion& question) = 0;
    // A file to write. Its name ends in the extension of the chosen type; the user has agreed to
    // replace a file of that name.
    virtual std::optional<FileChoice> AskFileToSave(const FileQuestion& question) = 0;
    // Any number of game images and archives; none if the user gave up.
    virtual std::vector<std::filesystem::path> AskImages(const std::filesystem::path& start) = 0;
    virtual std::optional<std::filesystem::path> AskListToLoad(
        const std::filesystem::path& start) = 0;
    virtual std::optional<std::filesystem::path> AskListToSave(
        const std::filesystem::path& start) = 0;
    virtual std::optional<std::filesystem::path> AskDesignToOpen(
        const std::filesystem::path& start) = 0;
    virtual std::optional<std::filesystem::path> AskDesignToSave(
        const std::filesystem::path& start) = 0;
    // A menu program, source or ROM.
    virtual std::optional<std::filesystem::path> AskMenuFile(
        const std::filesystem::path& start) = 0;
    // Where a ROM goes; remembers the chosen type from build to build. `name`, without extension,
    // is proposed.
    virtual std::optional<OutputChoice> AskOutput(const std::filesystem::path& start,
                                                  std::u16string_view name) = 0;
    virtual std::optional<std::filesystem::path> AskFolder(const std::filesystem::path& start) = 0;
    // Opens a file manager: on a folder, or on a file's folder with the file selected where the
    // desktop can do that. What the desktop can't do is told.
    virtual void ShowInFileManager(const std::filesystem::path& path) = 0;
};

}  // namespace bw
