// Real games from the cart. Each runs twice: by itself, on a console whose memory is cleared, and
// from the cart after START. What it shows must be the same, frame by frame.
//
// Needs a folder of images in BANKWEAVER_TEST_ROMS; none are part of the project.
#include <cstdlib>
#include <set>
#include <sstream>

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "menu_cart.h"
#include "support/text.h"

namespace bw::console {
namespace {

constexpr size_t kPageSize = 10;
// Recorded after START, and by itself: 10 s.
constexpr size_t kFrames = 600;
// The menu needs some frames to hand over, up to 32 units of CHR among them; a program by itself
// waits for the picture unit to warm up. The two recordings may be this far apart.
constexpr int kLargestShift = 100;
// From this frame on every frame must match.
constexpr size_t kSettled = 120;

// A recording: for each frame name tables and palette, sprites and tiles, each as a number.
std::vector<std::string> Frames(const ScriptResult& result) {
    std::vector<std::string> frames;
    std::istringstream in(result.files.at("frames.txt"));
    for (std::string frame; std::getline(in, frame);)
        frames.push_back(frame);
    return frames;
}

// From which frame of the cart on every one is as by itself, at the recordings' best shift.
size_t AgreeFrom(const std::vector<std::string>& alone, const std::vector<std::string>& cart) {
    size_t best = cart.size();
    for (int shift = -kLargestShift; shift <= kLargestShift; ++shift) {
        size_t from = cart.size();
        for (; from > 0; --from) {
            const long other = static_cast<long>(from) - 1 + shift;
            if (other < 0 || other >= static_cast<long>(alone.size()) ||
                alone[static_cast<size_t>(other)] != cart[from - 1])
                break;
        }
        best = std::min(best, from);
    }
    return best;
}

// Empty if the game shows from the cart what it shows by itself.
std::string Difference(const ScriptResult& cart, const ScriptResult& alone) {
    const auto cartFrames = Frames(cart);
    const auto aloneFrames = Frames(alone);
    if (cartFrames.size() != kFrames) return "the cart's recording is short";
    const size_t from = AgreeFrom(aloneFrames, cartFrames);
    if (from > kSettled) return fmt::format("the frames differ up to frame {} after START", from);
    // A program that shows nothing would agree with anything that shows nothing.
    if (std::set(aloneFrames.begin(), aloneFrames.end()).size() < 2)
        return "the game shows nothing by itself";
    return {};
}

// The folder's games that the board takes.
GameList GamesFor(BoardType board, const char* folder) {
    GameList games = ReadGameFolder(folder);
    std::erase_if(games, [&](GameEntry& entry) {
        entry.checked = true;
        return !(board == BoardType::kCoolgirl ? entry.coolgirlSupported : entry.coolboySupported);
    });
    return games;
}

class Homebrew : public testing::TestWithParam<BoardType> {};

TEST_P(Homebrew, ShowsWhatItShowsByItself) {
    const char* folderName = std::getenv("BANKWEAVER_TEST_ROMS");
    if (folderName == nullptr) GTEST_SKIP() << "not run: BANKWEAVER_TEST_ROMS names no folder";
    CartPlan plan{.board = GetParam(), .games = GamesFor(GetParam(), folderName)};
    const GameList& games = plan.games;
    ASSERT_FALSE(games.empty()) << "no game for this board in " << folderName;
    plan.settings.PageSize = kPageSize;
    plan.settings.Music = 0;
    const TemporaryFolder folder;
    const Cart cart = BuildCart(plan, folder.Path(), "homebrew");

    const std::string helpers =
        MenuScript(ReadText(std::filesystem::path(BANKWEAVER_TEST_DATA) / "homebrew.lua"));
    std::vector<ScriptRun> runs;
    for (size_t i = 0; i < games.size(); ++i) {
        runs.push_back(
            {.rom = cart.rom,
             .script = helpers + fmt::format("start_item({}, {}) record({}) shot('cart')", i,
                                             kPageSize, kFrames),
             .label = fmt::format("{}{}", BoardName(GetParam()), i),
             .wantedFiles = {"frames.txt"}});
    }
    const std::vector<ScriptResult> fromCart = RunAllOnConsole(runs);
    for (size_t i = 0; i < games.size(); ++i) {
        runs[i].rom = TextPath(games[i].path);
        runs[i].zeroRam = true;
        runs[i].script =
            helpers + fmt::format("darken() record({}) shot('alone')", kFrames + kLargestShift);
    }
    const std::vector<ScriptResult> alone = RunAllOnConsole(runs);
    for (size_t i = 0; i < games.size(); ++i) {
        SCOPED_TRACE(ToUtf8(games[i].name));
        // The board's lock doesn't hold for NROM: such a game can't run from it.
        if (GetParam() == BoardType::kMindkids && games[i].header.Mapper() == 0 &&
            alone[i].Number("register writes") != 0) {
            continue;
        }
        EXPECT_NE(Difference(fromCart[i], alone[(i + 1) % games.size()]), "")
            << "can't be told from the next game";
        EXPECT_EQ(Difference(fromCart[i], alone[i]), "");
    }
}

INSTANTIATE_TEST_SUITE_P(Boards, Homebrew,
                         testing::Values(BoardType::kCoolboy, BoardType::kMindkids,
                                         BoardType::kCoolgirl),
                         [](const auto& param) { return BoardName(param.param); });

}  // namespace
}  // namespace bw::console
