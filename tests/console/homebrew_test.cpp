// Real games from the cart. Each runs twice: by itself, on a console prepared as the menu leaves it
// (work RAM cleared, the menu's picture in video memory), and from the cart after START. What it
// shows must be the same, frame by frame.
//
// Needs a folder of images in BANKWEAVER_TEST_ROMS; none are part of the project.
#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <optional>
#include <set>
#include <sstream>

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

// One line of a recording: name tables and palette, sprites, tiles, each as a number.
using Frame = std::string;

// Why a game doesn't match, found by looking at it. An entry that begins to match fails the test.
struct Shortfall {
    std::string game;
    std::optional<BoardType> board;  // on this board only
    std::string reason;
};

const std::vector<Shortfall>& KnownShortfalls() {
    static const std::vector<Shortfall> known{};
    return known;
}

std::vector<Frame> ReadFrames(const std::string& text) {
    std::vector<Frame> frames;
    std::istringstream in(text);
    for (Frame frame; std::getline(in, frame);)
        frames.push_back(frame);
    return frames;
}

std::string HomebrewScript(const std::string& body) {
    return MenuScript(ReadWholeFile(std::filesystem::path(BANKWEAVER_TEST_DATA) / "homebrew.lua") +
                      body);
}

// How the recordings agree at their best shift.
struct Agreement {
    int shift = 0;
    size_t from = kFrames;  // every frame of the cart from this one on is as by itself
};

Agreement BestAgreement(const std::vector<Frame>& alone, const std::vector<Frame>& cart) {
    Agreement best;
    for (int shift = -kLargestShift; shift <= kLargestShift; ++shift) {
        size_t from = cart.size();
        while (from > 0) {
            const long other = static_cast<long>(from) - 1 + shift;
            if (other < 0 || other >= static_cast<long>(alone.size()) ||
                alone[static_cast<size_t>(other)] != cart[from - 1])
                break;
            --from;
        }
        if (from < best.from) best = {shift, from};
    }
    return best;
}

struct Board {
    std::string name;
    BoardType type;
};

std::string NameOf(const GameEntry& entry) {
    return ToUtf8(entry.name);
}

// Empty if the game shows from the cart what it shows by itself.
std::string Difference(const ConsoleResult& cart, const ConsoleResult& alone) {
    if (!cart.Ok()) return cart.problem;
    if (!alone.Ok()) return alone.problem;
    const auto cartFrames = ReadFrames(cart.files.at("frames.txt"));
    const auto aloneFrames = ReadFrames(alone.files.at("frames.txt"));
    if (cartFrames.size() != kFrames) return "the cart's recording is short";
    const Agreement agreement = BestAgreement(aloneFrames, cartFrames);
    if (agreement.from > kSettled) {
        std::string text = "the frames differ up to frame ";
        return text.append(std::to_string(agreement.from)).append(" after START");
    }
    // A program that shows nothing would agree with anything that shows nothing.
    if (std::set<Frame>(aloneFrames.begin(), aloneFrames.end()).size() < 2)
        return "the game shows nothing by itself";
    return {};
}

class Homebrew : public testing::TestWithParam<Board> {};

TEST_P(Homebrew, ShowsWhatItShowsByItself) {
    const char* folderName = std::getenv("BANKWEAVER_TEST_ROMS");
    if (folderName == nullptr) GTEST_SKIP() << "not run: BANKWEAVER_TEST_ROMS names no folder";
    GameList games;
    std::string others;
    for (GameEntry& entry : ReadGameFolder(folderName)) {
        entry.checked = true;
        const bool takes = GetParam().type == BoardType::kCoolgirl ? entry.coolgirlSupported
                                                                   : entry.coolboySupported;
        if (takes)
            games.push_back(std::move(entry));
        else
            others.append(" ").append(NameOf(entry));
    }
    std::cout << "Not taken by the board:" << others << "\n";
    ASSERT_FALSE(games.empty()) << "no game for this board in " << folderName;

    CartPlan plan{.board = GetParam().type};
    plan.settings.PageSize = kPageSize;
    plan.settings.Music = 0;
    const TemporaryFolder folder;
    const Cart cart = BuildCart(plan, games, folder.Path(), GetParam().name);
    ASSERT_EQ(cart.problem, "");

    std::vector<ConsoleRun> runs;
    for (size_t i = 0; i < games.size(); ++i)
        runs.push_back({.rom = cart.rom,
                        .script = HomebrewScript("start_item(" + std::to_string(i) + ", " +
                                                 std::to_string(kPageSize) + ") record(" +
                                                 std::to_string(kFrames) + ") shot('cart')"),
                        .label = GetParam().name + "-" + NameOf(games[i]),
                        .wantedFiles = {"frames.txt"}});
    const std::vector<ConsoleResult> fromCart = RunAllOnConsole(runs);
    for (size_t i = 0; i < games.size(); ++i) {
        runs[i].rom = TextPath(games[i].path);
        runs[i].ram = PowerOnRam::kZero;
        const bool vertical = games[i].header.Vertical();
        runs[i].script =
            HomebrewScript("prepare(" + std::to_string(games[i].header.Mapper()) + ", '" +
                           fromCart[i].At("tables") + "', '" + fromCart[i].At("tiles") + "', " +
                           (vertical ? "0x2400" : "0x2800") + ") record(" +
                           std::to_string(kFrames + kLargestShift) + ") shot('alone')");
    }
    const std::vector<ConsoleResult> alone = RunAllOnConsole(runs);

    for (size_t i = 0; i < games.size(); ++i) {
        EXPECT_NE(Difference(fromCart[i], alone[(i + 1) % games.size()]), "")
            << NameOf(games[i]) << " can't be told from the next game";
        const std::string difference = Difference(fromCart[i], alone[i]);
        const auto known = std::find_if(KnownShortfalls().begin(), KnownShortfalls().end(),
                                        [&](const Shortfall& entry) {
                                            return entry.game == NameOf(games[i]) &&
                                                   (!entry.board || entry.board == GetParam().type);
                                        });
        if (known == KnownShortfalls().end()) {
            EXPECT_EQ(difference, "") << NameOf(games[i]);
        } else {
            EXPECT_NE(difference, "")
                << NameOf(games[i]) << " starts now; it is listed as: " << known->reason;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Boards, Homebrew,
                         testing::Values(Board{"coolboy", BoardType::kCoolboy},
                                         Board{"coolgirl", BoardType::kCoolgirl}),
                         [](const auto& param) { return param.param.name; });

}  // namespace
}  // namespace bw::console
