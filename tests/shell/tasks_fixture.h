// A window's list without the window: tasks, a scripted person, and what was told.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "common/environment_variable.h"
#include "common/game_image.h"
#include "common/temporary_folder.h"
#include "shell/qt_testing.h"
#include "shell/scripted_dialogs.h"
#include "shell/tasks/list_host.h"
#include "support/text.h"

namespace bw::test {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class FakeHost : public ListHost {
  public:
    explicit FakeHost(std::filesystem::path base) : base_(std::move(base)) {}

    ListEditor& Editor() override { return editor; }
    SettingsStore& Store() override { return *store; }
    const DesignStore& Design() override { return design; }
    ScriptedDialogs& Dialogs() override { return dialogs; }
    BackgroundTasks& Tasks() override { return *tasks; }
    Language CurrentLanguage() const override { return Language::kEnglish; }
    const std::filesystem::path& Base() const override { return base_; }
    void ShowFound(bool hit) override { found = hit; }
    void SetColumnWidths(const ColumnWidths& given) override { widths = given; }
    void Tell(std::u16string_view line, std::u16string_view more) override {
        told = ToUtf8(line);
        details = ToUtf8(more);
    }
    void ShowSearchOutcome(std::u16string_view text) override { problem = ToUtf8(text); }

    ListEditor editor{[this](const ListResult& result) { applied.push_back(result); }};
    std::unique_ptr<SettingsStore> store = MakeMemoryStore();
    DesignStore design;
    ScriptedDialogs dialogs;
    UiQueue queue;
    std::vector<ListResult> applied;
    std::optional<bool> found;
    ColumnWidths widths{};
    std::string told, details, problem, failure;
    int changes = 0;
    // Null once the window has gone.
    std::unique_ptr<BackgroundTasks> tasks = std::make_unique<BackgroundTasks>(
        queue, [this] { ++changes; }, [this](std::u16string_view what) { failure = ToUtf8(what); });

  private:
    std::filesystem::path base_;
};

// Runs events until this is true.
inline bool Until(const std::function<bool()>& done) {
    return QTest::qWaitFor(done, 60'000);
}

class TasksFixture : public testing::Test {
  protected:
    std::filesystem::path Image(const std::string& name, ImageShape shape = {}, uint32_t seed = 1) {
        std::filesystem::path file = folder_ / name;
        WriteText(file, ImageBytes(shape, seed));
        return file;
    }
    void AddNames(const std::vector<std::u16string>& names) {
        GameList games;
        for (const std::u16string& name : names) {
            games.emplace_back().name = name;
            games.back().checked = true;
        }
        host_.editor.Append(std::move(games), {.limited = false});
    }
    void AddMany(size_t count) { AddNames(std::vector<std::u16string>(count, u"game")); }
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const GameEntry& entry : host_.editor.Games())
            names.push_back(ToUtf8(entry.name));
        return names;
    }
    // The texts of the messages since the last time.
    std::vector<std::string> Messages() { return std::exchange(host_.dialogs.told, {}); }
    void Finish() {
        ASSERT_TRUE(Until([&] { return !host_.tasks->AnyRunning(); }));
        EXPECT_FALSE(host_.tasks->TaskBusy());
    }

    TemporaryFolder folder_;
    EnvironmentVariable home_{"BANKWEAVER_HOME", (folder_ / "home").c_str()};
    FakeHost host_{folder_.Path()};
};

}  // namespace bw::test
