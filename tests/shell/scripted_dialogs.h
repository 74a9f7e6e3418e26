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
#include "support/text.h"

namespace bw {

// The window's thread alone uses it, as it does the real dialogs.
class ScriptedDialogs : public UserDialogs {
  public:
    using Path = std::filesystem::path;
    using Choice = std::optional<Path>;

    // What was told, as "caption: text", and asked for, and the folders that the questions started
    // at, all in order.
    std::vector<std::string> told;
    std::vector<std::string> asked;
    std::vector<Path> starts;
    std::vector<Path> shown;  // in the file manager

    // The answers to messages in order; without one, OK or No.
    std::deque<int> answers;
    std::vector<Path> images;
    Choice listToLoad, listToSave, menuFile, folder, design;
    // The answers to questions about files of several types in order, then none; what was asked.
    std::deque<std::optional<FileChoice>> files;
    std::vector<FileQuestion> fileQuestions;
    // The answer to every choice; the answers that the last one had.
    std::optional<size_t> choice;
    std::vector<std::string> choices;
    std::string proposed;  // the name for the last ROM
    std::optional<OutputChoice> output;
    // Runs while any of the questions is open.
    std::function<void()> meanwhile;

    int Message(std::u16string_view text, std::u16string_view caption,
                MessageButtons buttons) override {
        told.push_back(ToUtf8(caption) + ": " + ToUtf8(text));
        if (meanwhile) meanwhile();
        if (answers.empty()) return buttons == MessageButtons::kYesNo ? kEndNo : kEndOk;
        const int answer = answers.front();
        answers.pop_front();
        return answer;
    }
    std::vector<Path> AskImages(const Path& start) override {
        return Asked("images", start, images);
    }
    Choice AskListToLoad(const Path& start) override { return Asked("load", start, listToLoad); }
    Choice AskListToSave(const Path& start) override { return Asked("save", start, listToSave); }
    Choice AskMenuFile(const Path& start) override { return Asked("menu", start, menuFile); }
    std::optional<size_t> Choose(std::u16string_view text, std::u16string_view caption,
                                 std::span<const std::u16string> given) override {
        told.push_back(ToUtf8(caption) + ": " + ToUtf8(text));
        choices.clear();
        for (const std::u16string& one : given)
            choices.push_back(ToUtf8(one));
        if (meanwhile) meanwhile();
        return choice;
    }
    std::optional<FileChoice> AskFileToOpen(const FileQuestion& question) override {
        return AskedFile("open file", question);
    }
    std::optional<FileChoice> AskFileToSave(const FileQuestion& question) override {
        return AskedFile("save file", question);
    }
    Choice AskDesignToOpen(const Path& start) override { return Asked("open", start, design); }
    Choice AskDesignToSave(const Path& start) override { return Asked("keep", start, design); }
    std::optional<OutputChoice> AskOutput(const Path& start, std::u16string_view name) override {
        proposed = ToUtf8(name);
        return Asked("output", start, output);
    }
    Choice AskFolder(const Path& start) override { return Asked("folder", start, folder); }
    void ShowInFileManager(const Path& path) override { shown.push_back(path); }

  private:
    std::optional<FileChoice> AskedFile(const char* what, const FileQuestion& question) {
        fileQuestions.push_back(question);
        if (files.empty()) files.emplace_back();
        const std::optional<FileChoice> answer = files.front();
        files.pop_front();
        return Asked(what, question.start, answer);
    }
    template <typename Answer>
    Answer Asked(const char* what, const Path& start, const Answer& answer) {
        asked.emplace_back(what);
        starts.push_back(start);
        if (meanwhile) meanwhile();
        return answer;
    }
};

inline constexpr const char* kBusy =
    "Warn: The task is busy, please wait for the task to complete before trying again";

}  // namespace bw
