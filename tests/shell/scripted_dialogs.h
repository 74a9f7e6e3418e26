// Answers what the window asks from a script, and keeps what it was asked and told.
#pragma once

#include <deque>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "shell/dialogs/user_dialogs.h"
#include "shell/framework/messages.h"

namespace bw {

// The window's thread alone uses it, as it does the real dialogs.
class ScriptedDialogs : public UserDialogs {
  public:
    struct Told {
        std::u16string text, caption;
    };

    // What was told and asked for, and the folders that the questions started at, all in order.
    std::vector<Told> told;
    std::vector<std::string> asked;
    std::vector<std::filesystem::path> starts;
    std::vector<std::filesystem::path> shown;  // in the file manager

    // The answers to messages in order; without one, OK or No.
    std::deque<int> answers;
    std::vector<std::filesystem::path> images;
    std::optional<std::filesystem::path> listToLoad, listToSave, menuFile, folder;
    std::optional<OutputChoice> output;
    // Runs while any of the questions is open.
    std::function<void()> meanwhile;

    int Message(std::u16string_view text, std::u16string_view caption,
                MessageButtons buttons) override {
        told.push_back({std::u16string(text), std::u16string(caption)});
        if (meanwhile) meanwhile();
        if (answers.empty()) return buttons == MessageButtons::kYesNo ? kEndNo : kEndOk;
        const int answer = answers.front();
        answers.pop_front();
        return answer;
    }
    using Path = std::filesystem::path;
    std::vector<Path> AskImages(const Path& start) override {
        return Asked("images", start, images);
    }
    std::optional<Path> AskListToLoad(const Path& start) override {
        return Asked("list to load", start, listToLoad);
    }
    std::optional<Path> AskListToSave(const Path& start) override {
        return Asked("list to save", start, listToSave);
    }
    std::optional<Path> AskMenuFile(const Path& start) override {
        return Asked("menu", start, menuFile);
    }
    std::optional<OutputChoice> AskOutput(const Path& start) override {
        return Asked("output", start, output);
    }
    std::optional<Path> AskFolder(const Path& start) override {
        return Asked("folder", start, folder);
    }
    void ShowInFileManager(const Path& path) override { shown.push_back(path); }

  private:
    template <typename Answer>
    Answer Asked(const char* what, const std::filesystem::path& start, const Answer& answer) {
        asked.emplace_back(what);
        starts.push_back(start);
        if (meanwhile) meanwhile();
        return answer;
    }
};

}  // namespace bw
