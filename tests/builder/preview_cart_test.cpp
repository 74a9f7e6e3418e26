// The menu of a preview beside that of the real build with the same list, settings and design.
#include "builder/preview_cart.h"

#include "build_fixture.h"
#include "builder/resources.h"

namespace bw {
namespace {

using namespace test;

struct PreviewCart : BuildFixture {
    PreviewCart() {
        LoadDesignData(design_, *store_, DefaultTileSet());
        document_.store = design_;
        document_.store.BkgTileList.push_back({.X = 3, .Y = 4, .Tile = 65});
        document_.store.CaptionText = u"A CAPTION";
        document_.ItemPos = {5, 8};
        document_.BigCursor = 1;
        RebuildShortLargeCursor(document_);
        settings_.CustomEnable = settings_.ShowNumberOrder = settings_.PageNumber = true;
        settings_.Music = 3;
    }

    // What keeps the preview from being built.
    std::string Preview() {
        const auto built =
            BuildPreviewCart({std::make_shared<GameList>(games_), settings_, document_},
                             folder_ / "preview_work", rom_);
        EXPECT_FALSE(std::filesystem::exists(folder_ / "preview_work"));
        return built ? "" : ToUtf8(built.Problem());
    }

    DesignDocument document_;
    const std::filesystem::path rom_ = folder_ / "preview.nes";
};

TEST_F(PreviewCart, HasTheMenuOfTheRealBuild) {
    for (int i = 0; i < 30; ++i)
        Add("Game " + std::to_string(i), {8, 16, 4}, 1);
    games_[7].checked = false;
    EXPECT_EQ(Preview(), "");
    for (const GameEntry& entry : games_)
        EXPECT_TRUE(std::filesystem::remove(TextPath(entry.path)));
    EXPECT_EQ(Preview(), "") << "without a look at the images";
    std::string preview = ReadText(rom_).substr(16);
    ASSERT_EQ(preview.size(), size_t{512} * 1024) << "COOLBOY's hole and the menu";

    for (const GameEntry& entry : games_)
        WriteText(TextPath(entry.path), ImageBytes({8, 16, 4}, 1));
    DesignDocument handedOn = document_;
    StoreDesign(handedOn, *store_);
    design_ = handedOn.store;
    const BuildOutcome outcome = Build();
    ASSERT_TRUE(outcome.done) << testing::PrintToString(user_.messages);
    std::string real = ReadText(outcome.output).substr(0, preview.size());
    constexpr size_t kMenu = 0x60000;     // 128 KB of it
    constexpr size_t kRecords = 0x66000;  // the games' records, where the two differ: a bank
    for (std::string* rom : {&preview, &real})
        rom->replace(kRecords, 0x2000, 0x2000, '\0').erase(0, kMenu);
    EXPECT_TRUE(preview == real);
    EXPECT_THAT(preview, AllOf(HasSubstr("29.GAME 29"), HasSubstr("A CAPTION")));
    AddMany(1026);
    EXPECT_THAT(Preview(), HasSubstr("2.Limited number of ROM games : 1024(Current: 1025)"));
}

}  // namespace
}  // namespace bw
