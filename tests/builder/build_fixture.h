// Whole builds and exports for the tests: games made on the spot, and a user that answers and
// remembers.
#pragma once

#include <atomic>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "builder/build_driver.h"
#include "common/game_image.h"
#include "common/temporary_folder.h"
#include "support/text.h"

namespace bw::test {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

class RecordingUser : public BuildUser {
  public:
    Language UiLanguage() const override { return language; }
    void Message(std::u16string_view text, std::u16string_view title, MessageKind) override {
        messages.push_back(ToUtf8(title) + ": " + ToUtf8(text));
    }
    bool AskYesNo(std::u16string_view text, std::u16string_view) override {
        questions.push_back(ToUtf8(text));
        return answerYes;
    }
    std::optional<OutputChoice> AskOutput(const std::filesystem::path&) override { return output; }
    std::optional<std::filesystem::path> AskFolder(const std::filesystem::path&) override {
        return folder;
    }
    void ShowInFileManager(const std::filesystem::path& path) override { shown = path; }
    void Progress(BuildStage stage, size_t, size_t, std::u16string_view) override {
        stages.insert(stage);
    }
    void Diagnostic(std::string_view) override {}
    void Note(std::u16string_view text) override { notes.push_back(ToUtf8(text)); }
    bool Cancelled() const override { return cancelled; }

    Language language = Language::kEnglish;
    std::optional<OutputChoice> output;
    std::optional<std::filesystem::path> folder;
    bool answerYes = false;
    bool cancelled = false;
    std::vector<std::string> messages;
    std::vector<std::string> notes;
    std::vector<std::string> questions;
    std::set<BuildStage> stages;
    std::filesystem::path shown;
};

// A folder with games, a place for outputs (out/), and what a build asks for.
class BuildFixture : public testing::Test {
  protected:
    BuildFixture() {
        std::filesystem::create_directory(folder_ / "out");
        user_.output = OutputChoice{folder_ / "out" / "cart", RomFormat::kBinary};
    }

    std::filesystem::path Add(const std::string& name, ImageShape shape, uint32_t seed = 1) {
        std::filesystem::path file = folder_ / (name + ".nes");
        WriteText(file, ImageBytes(shape, seed));
        GameEntry entry(file);
        entry.checked = true;
        games_.push_back(entry);
        return file;
    }
    void AddMany(size_t count) {
        const auto file = Add("many", {1, 0, 0});
        games_.resize(count, games_.front());
    }
    BuildContext Context() {
        return {games_, settings_, *store_, design_, user_, folder_ / "work", {}};
    }
    BuildOutcome Build(BoardType board = BoardType::kCoolboy) {
        BuildOutcome outcome = BuildRom(Context(), board, taskBusy_);
        EXPECT_FALSE(taskBusy_);
        EXPECT_FALSE(std::filesystem::exists(folder_ / "work")) << "the work folder is left";
        return outcome;
    }
    void ExpectRefused(const std::string& text, BoardType board = BoardType::kCoolboy) {
        user_.messages.clear();
        EXPECT_FALSE(Build(board).done);
        EXPECT_THAT(user_.messages, ElementsAre(HasSubstr(text)));
        EXPECT_TRUE(std::filesystem::is_empty(folder_ / "out")) << "an output was written";
    }

    TemporaryFolder folder_;
    GameList games_;
    BuildSettings settings_;
    DesignStore design_;
    std::unique_ptr<SettingsStore> store_ = MakeMemoryStore();
    RecordingUser user_;
    std::atomic<bool> taskBusy_ = false;
};

}  // namespace bw::test
