// The preview of the menu over a console that is made up: which carts it gets, when, and what it is
// told to do. The real one shows them in tests/console.
#include "designer/window/menu_preview.h"

#include <QTest>
#include <array>
#include <condition_variable>

#include <gmock/gmock.h>

#include "builder/resources.h"
#include "common/game_image.h"
#include "console/menu_places.h"
#include "support/text.h"

namespace bw {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

// What the test and the session's thread share.
struct Desk {
    std::mutex lock;
    std::condition_variable opened;
    bool open = true;  // else the next cart waits
    std::vector<std::string> carts{};
    std::array<uint8_t, 0x800> memory{};
    uint32_t frames = 0;

    template <typename Ask>
    auto Locked(Ask ask) {
        const std::lock_guard guard(lock);
        return ask();
    }
};

// A menu that is at rest as soon as it is switched on. Its picture is one colour: the cart's
// ordinal.
class FakeConsole : public Console {
  public:
    explicit FakeConsole(Desk& desk) : desk_(desk) {}

    ConsoleResult<> Load(const std::filesystem::path& rom) override {
        std::unique_lock guard(desk_.lock);
        desk_.opened.wait(guard, [this] { return desk_.open; });
        desk_.carts.push_back(test::ReadText(rom));
        desk_.memory.fill(0);
        desk_.memory[kMenuPpuMask] = kMenuLit;
        return {};
    }
    ConsoleResult<ConsoleRun> Run(const ConsoleOrder& order) override {
        const std::lock_guard guard(desk_.lock);
        desk_.frames += order.frames;
        desk_.memory[kMenuUpdating] = 0;
        ConsoleRun run{.frames = order.frames};
        const auto colour = static_cast<uint32_t>(desk_.carts.size());
        if (order.picture) run.picture.pixels.assign(size_t{256} * 240, colour);
        return run;
    }
    ConsoleResult<std::vector<uint8_t>> ReadCpu(uint16_t address, uint32_t count) override {
        const std::lock_guard guard(desk_.lock);
        return std::vector<uint8_t>(&desk_.memory[address], &desk_.memory[address + count]);
    }
    ConsoleResult<> WriteCpu(uint16_t address, const std::vector<uint8_t>& bytes) override {
        const std::lock_guard guard(desk_.lock);
        std::ranges::copy(bytes, &desk_.memory[address]);
        return {};
    }
    ConsoleResult<std::vector<uint8_t>> ReadPpu(uint16_t, uint32_t) override {
        return std::vector<uint8_t>();
    }
    ConsoleResult<> KeepState() override { return {}; }
    ConsoleResult<> RestoreState() override { return {}; }
    ConsoleResult<> Power() override { return {}; }
    ConsoleResult<> Reset() override { return {}; }
    void Rest() override {}
    int64_t ProcessId() const override { return 0; }

  private:
    Desk& desk_;
};

struct FakeEmulator : Emulator {
    explicit FakeEmulator(Desk& given) : desk(given) {}
    std::string Name() const override { return "made up"; }
    ConsoleResult<std::unique_ptr<Console>> Start(const ConsoleStart& start) const override {
        auto console = std::make_unique<FakeConsole>(desk);
        console->Load(start.rom);
        return std::unique_ptr<Console>(std::move(console));
    }
    Desk& desk;
};

struct MenuPreviewTest : testing::Test {
    MenuPreviewTest() {
        LoadDesignData(design.store, *store, DefaultTileSet());
        GameList entries(30);
        for (size_t i = 0; i < entries.size(); ++i) {
            entries[i].name = ToWide("NAME " + std::to_string(i));
            entries[i].checked = true;
        }
        games = std::make_shared<const GameList>(entries);
    }

    void Show(std::u16string caption) {
        design.store.CaptionText = std::move(caption);
        preview.Show({games, design});
    }
    uint32_t Colour() const {
        return preview.Picture().pixels.empty() ? 0 : preview.Picture().pixels.front();
    }
    bool Settles() {
        return QTest::qWaitFor([&] { return !preview.Now().old; });
    }
    size_t Carts() {
        return desk.Locked([&] { return desk.carts.size(); });
    }

    Desk desk;
    bool found = true;
    std::unique_ptr<SettingsStore> store = MakeMemoryStore();
    std::shared_ptr<const GameList> games;
    DesignDocument design;
    MenuPreview preview{
        *store, [this] { return found ? std::make_unique<FakeEmulator>(desk) : nullptr; }, [] {}};
};

TEST_F(MenuPreviewTest, ShowsTheNewestDesignAtTheSameGame) {
    Show(u"UNSEEN");
    EXPECT_EQ(Carts(), 0u);
    found = false;
    preview.SetSeen(true);
    EXPECT_TRUE(preview.Now().noEmulator);
    preview.SetSeen(false);
    found = true;
    preview.SetSeen(true);
    ASSERT_TRUE(Settles());
    EXPECT_TRUE(preview.Now().switchedOff);
    // The user goes to the 28th game; four steps follow while the console is busy with the first.
    desk.Locked([&] {
        desk.memory[kMenuSelected] = 27;
        desk.open = false;
    });
    for (const char16_t* caption : {u"ONE", u"TWO", u"THREE", u"FOUR"})
        Show(caption);
    EXPECT_TRUE(preview.Now().old);
    QTest::qWait(200);
    EXPECT_EQ(Colour(), 1u) << "the older picture stays";
    desk.Locked([&] { desk.open = true; });
    desk.opened.notify_one();
    ASSERT_TRUE(Settles());
    EXPECT_EQ(Colour(), 3u);
    EXPECT_THAT(desk.Locked([&] { return desk.carts; }),
                ElementsAre(HasSubstr("UNSEEN"), HasSubstr("ONE"), HasSubstr("FOUR")));
    EXPECT_EQ(desk.memory[kMenuSelected], 27);
    EXPECT_EQ(desk.memory[kMenuPage], 20);
    // A list that has become shorter.
    games = std::make_shared<const GameList>(games->begin(), games->begin() + 14);
    Show(u"SHORT");
    ASSERT_TRUE(Settles());
    EXPECT_EQ(desk.memory[kMenuSelected], 13);
    EXPECT_EQ(desk.memory[kMenuPage], 10);
}

TEST_F(MenuPreviewTest, KeepsThePictureOfWhatCanBeBuilt) {
    preview.SetSeen(true);
    Show(u"FINE");
    ASSERT_TRUE(Settles());
    design.ItemPos = {5, 30};
    Show(u"REFUSED");
    ASSERT_TRUE(QTest::qWaitFor([&] { return !preview.Now().refusal.empty(); }));
    EXPECT_THAT(ToUtf8(preview.Now().refusal), HasSubstr("list of games lies outside the screen"));
    EXPECT_TRUE(preview.Now().old);
    EXPECT_EQ(Carts(), 1u);
    design.ItemPos = {5, 8};
    games = std::make_shared<const GameList>();
    Show(u"NO GAMES");
    ASSERT_TRUE(Settles());
    EXPECT_TRUE(preview.Now().refusal.empty() && preview.Now().madeUp);
    EXPECT_THAT(desk.Locked([&] { return desk.carts.back(); }), HasSubstr("GAME 12"));
    preview.SetSeen(false);
    QTest::qWait(50);
    const uint32_t frames = desk.Locked([&] { return desk.frames; });
    QTest::qWait(100);
    EXPECT_EQ(desk.Locked([&] { return desk.frames; }), frames) << "while nobody sees it";
}

}  // namespace
}  // namespace bw
