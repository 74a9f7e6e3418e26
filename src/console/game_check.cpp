#include "console/game_check.h"

#include <algorithm>
#include <optional>
#include <set>
#include <string_view>

#include "console/alone_image.h"
#include "console/frame_agreement.h"
#include "console/shared_saves.h"

namespace bw {
namespace {

constexpr uint32_t kPageBytes = 0x400;
constexpr uint32_t kTilesBytes = 0x2000;
constexpr uint16_t kRegisterBytes = 0x1000;
// How long a picture that is doubted has to stay as it is, beyond the time of the check.
constexpr uint32_t kProofFrames = 240;

using Bytes = std::vector<uint8_t>;

std::string_view Text(const Bytes& bytes, size_t at, size_t count) {
    return {reinterpret_cast<const char*>(bytes.data()) + at, count};
}

// Whether each page of tiles in view is one of the ROM's; of a ROM that is in view as a whole, the
// one of its place.
bool HasOwnTiles(const GameLook& look, const GameFacts& facts) {
    if (facts.Is(0) && facts.chr.size() == kTilesBytes) {
        return Text(look.memory, 0, kTilesBytes) == Text(facts.chr, 0, kTilesBytes);
    }
    std::set<std::string_view> pages;
    for (size_t at = 0; at + kPageBytes <= facts.chr.size(); at += kPageBytes)
        pages.insert(Text(facts.chr, at, kPageBytes));
    for (size_t at = 0; at < kTilesBytes; at += kPageBytes) {
        if (!pages.contains(Text(look.memory, at, kPageBytes))) return false;
    }
    return true;
}

// For a game that can't change it: whether two pages of the four are the same memory as they should
// be.
bool HasOwnMirroring(const GameLook& look, const GameFacts& facts) {
    const auto page = [&](size_t number) {
        return Text(look.memory, kTilesBytes + number * kPageBytes, kPageBytes);
    };
    return facts.vertical ? page(0) == page(2) && page(1) == page(3)
                          : page(0) == page(1) && page(2) == page(3);
}

// What the run from the cart raises.
struct Doubts {
    bool vectors = false;
    bool jam = false;
    bool black = false;
    bool still = false;
    bool tiles = false;
    bool mirroring = false;
    bool fourScreen = false;
    WatchedWrites registers{};  // of the board
    WatchedWrites mapper{};     // the board's MMC3, written to by a game without a mapper

    bool OfPictureAlone() const {
        return !vectors && !jam && !tiles && !mirroring && !fourScreen && registers.count == 0 &&
               mapper.count == 0;
    }
    bool OnlyFourScreen() const {
        return fourScreen && !vectors && !jam && !tiles && registers.count == 0 &&
               mapper.count == 0;
    }
    bool Any() const { return !OfPictureAlone() || black || still; }
};

// A run from the cart beside one of an image alone.
struct Comparison {
    const GameView& cart;
    const Doubts& doubts;
    const GameView& alone;
    const std::filesystem::path& image;
};

struct Recordings {
    std::vector<FrameCode> cart;
    std::vector<FrameCode> alone;
};

class GameCheck {
  public:
    GameCheck(const GameCheckTools& tools, uint32_t index)
        : tools_(tools),
          subject_(tools.subject),
          index_(index),
          game_(subject_.tables.games[index]),
          facts_(FactsOf(subject_, index)),
          lookFrames_(LookFrames(tools.options.frames)),
          checked_(UncheckedGame(subject_, index)) {
        if (game_.registersOpen) {
            const uint16_t first = FirstRegister(subject_.tables.board);
            watched_.push_back({first, static_cast<uint16_t>(first + kRegisterBytes - 1)});
            watched_.push_back({0x8000, 0xFFFF});
        }
    }

    ConsoleResult<CheckedGame> Run() {
        if (const auto others = SharesItsSave(subject_, index_); !others.empty())
            Add(tools_.words.Saves(others));
        const ConsoleResult<GameStart> start = tools_.menu.Start(index_, facts_, watched_);
        if (!start) return start.Problem();
        if (start->end == GameStart::End::kNotDriven) {
            checked_.notRun = tools_.words.NotDriven();
            return std::move(checked_);
        }
        Doubts doubts;
        if (start->end == GameStart::End::kStarted) {
            const ConsoleResult<bool> right = HasRightVectors();
            if (!right) return right.Problem();
            doubts.vectors = !*right;
        }
        ConsoleResult<GameView> view = WatchGame(tools_.console, lookFrames_, watched_);
        if (!view) return view.Problem();
        if (start->jammedAt) view->jammedAt = start->jammedAt;
        checked_.picture = view->LastPicture();
        if (start->end == GameStart::End::kNoMenu) {
            Add(tools_.words.NoMenu());
        } else if (start->end == GameStart::End::kNoHandOver) {
            Add(tools_.words.NoHandOver(MenuDriver::kStartFrames));
        } else if (!facts_.byImage && facts_.HasNoProgram()) {
            Add(tools_.words.NoProgram(facts_.ResetVector()));
        } else if (facts_.misplaced ||
                   (facts_.overlaps && (view->jammedAt || view->IsBlackThroughout()))) {
            // By the cart's own bytes it would run like this alone, too.
            Add(tools_.words.OtherBytes(Mapper()));
        } else {
            Judge(*view, start->writes, doubts);
            if (doubts.Any()) {
                if (const auto settled = Settle(*view, doubts); !settled) return settled.Problem();
            }
        }
        return std::move(checked_);
    }

  private:
    void Add(CheckFinding finding) { checked_.findings.push_back(std::move(finding)); }
    uint16_t Mapper() const { return facts_.mappers.front(); }

    ConsoleResult<bool> HasRightVectors() {
        if (!facts_.HasFixedBank()) return true;
        const auto wanted = facts_.Vectors();
        const ConsoleResult<Bytes> vectors =
            tools_.console.ReadCpu(0xFFFA, static_cast<uint32_t>(wanted.size()));
        if (!vectors) return vectors.Problem();
        return std::ranges::equal(*vectors, wanted);
    }

    void Judge(const GameView& view, const std::vector<WatchedWrites>& first,
               Doubts& doubts) const {
        doubts.jam = view.jammedAt.has_value();
        doubts.black = view.IsBlack();
        doubts.still = view.IsStill();
        const bool hasMmc3 = subject_.tables.board != BoardType::kCoolgirl;
        doubts.fourScreen = hasMmc3 && facts_.fourScreen;
        for (const GameLook& look : view.looks) {
            if (facts_.HasFixedTiles() && !HasOwnTiles(look, facts_)) doubts.tiles = true;
            if (facts_.Is(0) && !facts_.fourScreen && !HasOwnMirroring(look, facts_))
                doubts.mirroring = true;
        }
        const auto writes = [&](size_t range) {
            WatchedWrites all = range < first.size() ? first[range] : WatchedWrites{};
            if (range >= view.writes.size()) return all;
            const uint32_t count = all.count + view.writes[range].count;
            if (all.count == 0) all = view.writes[range];
            all.count = count;
            return all;
        };
        doubts.registers = writes(0);
        if (hasMmc3) doubts.mapper = writes(1);
    }

    // Runs the game alone by every image that it may be, until one proves it well. An emulator that
    // doesn't take the user's image gets one made of the cart's bytes.
    ConsoleResult<> Settle(const GameView& view, const Doubts& doubts) {
        std::vector<std::optional<uint16_t>> mappers(facts_.mappers.begin(), facts_.mappers.end());
        if (facts_.byImage) mappers.insert(mappers.begin(), std::nullopt);
        std::optional<std::vector<CheckFinding>> proved;
        for (const std::optional<uint16_t> mapper : mappers) {
            const std::filesystem::path image = mapper ? tools_.scratch : subject_.images[index_];
            if (mapper && !MakeImage(*mapper)) continue;
            const ConsoleResult<GameView> alone = tools_.alone.Watch(Alone(image), lookFrames_);
            if (!alone && alone.Problem().kind == ConsoleProblem::Kind::kRefused) continue;
            if (!alone) return alone.Problem();
            const auto findings = Compare({view, doubts, *alone, image});
            if (!findings) return findings.Problem();
            if (findings->empty()) return {};
            if (!proved) proved = *findings;
            if (!mapper) break;
        }
        for (CheckFinding& finding : proved.value_or(std::vector<CheckFinding>()))
            Add(std::move(finding));
        return {};
    }

    bool MakeImage(uint16_t mapper) const {
        CartGame game = game_;
        game.mapper = mapper;
        const auto made = WriteAloneImage(subject_.cart, subject_.tables, game, tools_.scratch);
        return static_cast<bool>(made);
    }

    AloneGame Alone(const std::filesystem::path& image) const { return {image, game_.battery}; }

    ConsoleResult<std::vector<CheckFinding>> Compare(const Comparison& by) {
        std::vector<CheckFinding> findings;
        if (by.alone.jammedAt && by.cart.jammedAt) {
            // By the cart's bytes alone that may be the cart's own fault.
            if (!facts_.byImage && by.cart.IsBlackThroughout() && by.alone.IsBlackThroughout())
                findings.push_back(tools_.words.JamByItself(*by.cart.jammedAt));
            return findings;
        }
        const bool plausible = (!by.doubts.black || by.alone.IsBlack()) &&
                               (!by.doubts.still || by.alone.IsStill()) &&
                               by.cart.LastPicture().pixels == by.alone.LastPicture().pixels;
        if (by.doubts.OfPictureAlone() && plausible) return findings;
        if (by.doubts.OnlyFourScreen()) {
            const ConsoleResult<bool> same = HasSamePictures(by);
            if (!same) return same.Problem();
            if (*same) return findings;
        }
        return CompareFrames(by);
    }

    // The name tables of a game with four of them differ on the board even where nothing of it
    // shows: the pictures tell, at any of the small distances that the two runs usually have.
    ConsoleResult<bool> HasSamePictures(const Comparison& by) {
        constexpr uint32_t kUsualShift = 8;
        for (uint32_t shift = 0; shift <= kUsualShift; ++shift) {
            std::vector<uint32_t> frames;
            for (const GameLook& look : by.cart.looks)
                frames.push_back(look.frame + shift);
            const ConsoleResult<GameView> alone = tools_.alone.Watch(Alone(by.image), frames);
            if (!alone) return alone.Problem();
            if (std::ranges::equal(
                    alone->looks, by.cart.looks, {},
                    [](const GameLook& look) { return look.picture.pixels; },
                    [](const GameLook& look) { return look.picture.pixels; })) {
                return true;
            }
        }
        return false;
    }

    ConsoleResult<std::vector<CheckFinding>> CompareFrames(const Comparison& by) {
        const ConsoleResult<Recordings> recorded = Record(by);
        if (!recorded) return recorded.Problem();
        const Likeness likeness = bw::Compare(recorded->cart, recorded->alone);
        const bool pictureDoubted = PictureDoubted(by);
        if (likeness == Likeness::kSame && !by.cart.jammedAt) {
            if (!pictureDoubted) return std::vector<CheckFinding>();
            // The codes don't tell whether the picture is on.
            const ConsoleResult<bool> other = ShowsOther(by, *recorded);
            if (!other) return other.Problem();
            if (!*other) return std::vector<CheckFinding>();
        }
        std::optional<CheckFinding> effect;
        if (by.cart.jammedAt) {
            effect = tools_.words.Jam(*by.cart.jammedAt, Mapper());
        } else if (pictureDoubted) {
            ConsoleResult<std::optional<CheckFinding>> fault = PictureFault(by);
            if (!fault) return fault.Problem();
            effect = std::move(*fault);
        }
        const bool differs = likeness == Likeness::kDifferent || effect;
        std::vector<CheckFinding> findings = Causes(by.doubts, differs);
        // Written registers bring other tiles into view.
        if (by.doubts.tiles && findings.empty()) {
            const ConsoleResult<bool> seen = ShowsOther(by, *recorded);
            if (!seen) return seen.Problem();
            findings.push_back(tools_.words.Tiles(*seen));
        }
        if (!effect && findings.empty() && by.doubts.still && by.alone.IsStill() && differs &&
            !ShareTiles(recorded->cart, recorded->alone)) {
            effect = tools_.words.OtherStill(Mapper());
        }
        if (effect) findings.push_back(std::move(*effect));
        return findings;
    }

    std::vector<CheckFinding> Causes(const Doubts& doubts, bool differs) const {
        std::vector<CheckFinding> causes;
        if (doubts.vectors) causes.push_back(tools_.words.OtherBytes(Mapper()));
        // A program that has moved its own memory away writes anywhere.
        if (doubts.registers.count != 0)
            causes.push_back(tools_.words.Registers(doubts.registers, differs));
        else if (doubts.mapper.count != 0)
            causes.push_back(tools_.words.MapperRegisters(doubts.mapper, differs));
        else if (doubts.mirroring)
            causes.push_back(tools_.words.Mirroring(differs));
        if (doubts.fourScreen && differs) causes.push_back(tools_.words.FourScreen());
        return causes;
    }

    // The console of the cart stands at the recording's end then.
    ConsoleResult<Recordings> Record(const Comparison& by) {
        const uint32_t frames = by.cart.frames;
        ConsoleResult<std::vector<FrameCode>> alone =
            tools_.alone.Record(Alone(by.image), frames + kLargestShift);
        if (!alone) return alone.Problem();
        const ConsoleResult<GameStart> start = tools_.menu.Start(index_, facts_, {});
        if (!start) return start.Problem();
        ConsoleResult<ConsoleRun> run = tools_.console.Run({.frames = frames, .codes = true});
        if (!run) return run.Problem();
        return Recordings{std::move(run->codes), std::move(*alone)};
    }

    // By itself the game shows more than one colour, or moves.
    static bool PictureDoubted(const Comparison& by) {
        return by.doubts.black ? !by.alone.IsBlack() : by.doubts.still && !by.alone.IsStill();
    }

    // What is wrong with a picture that has come to rest, if it rests on.
    ConsoleResult<std::optional<CheckFinding>> PictureFault(const Comparison& by) {
        std::optional<CheckFinding> fault;
        const ConsoleResult<GameView> after = WatchGame(tools_.console, LookFrames(kProofFrames));
        if (!after) return after.Problem();
        if (by.doubts.black) {
            if (after->IsBlackThroughout()) fault = tools_.words.Black(by.cart.frames, Mapper());
        } else if (after->IsStillThroughout() &&
                   after->LastPicture().pixels == by.cart.LastPicture().pixels) {
            fault = tools_.words.Frozen(by.cart.frames, Mapper());
        }
        return fault;
    }

    // Whether the pictures differ at frames whose codes, but for the tiles', are the same.
    ConsoleResult<bool> ShowsOther(const Comparison& by, const Recordings& recorded) {
        const std::optional<int> shift =
            AgreeingShift(recorded.cart, recorded.alone, ComparedParts::kNotTiles);
        if (!shift) return true;
        std::vector<uint32_t> frames;
        std::vector<const GameLook*> looks;
        for (const GameLook& look : by.cart.looks) {
            const int64_t frame = int64_t{look.frame} + *shift;
            if (2 * look.frame < by.cart.frames || frame < 1) continue;
            frames.push_back(static_cast<uint32_t>(frame));
            looks.push_back(&look);
        }
        if (frames.empty()) return true;
        const ConsoleResult<GameView> alone = tools_.alone.Watch(Alone(by.image), frames);
        if (!alone) return alone.Problem();
        for (size_t i = 0; i < alone->looks.size(); ++i) {
            if (alone->looks[i].picture.pixels != looks[i]->picture.pixels) return true;
        }
        return false;
    }

    const GameCheckTools& tools_;
    const CheckSubject& subject_;
    uint32_t index_;
    const CartGame& game_;
    GameFacts facts_;
    std::vector<uint32_t> lookFrames_;
    std::vector<AddressRange> watched_;
    CheckedGame checked_;
};

}  // namespace

CheckedGame UncheckedGame(const CheckSubject& subject, uint32_t index) {
    CheckedGame game;
    game.index = index;
    game.name = GameName(subject, index);
    if (index < subject.images.size()) game.path = subject.images[index];
    return game;
}

ConsoleResult<CheckedGame> CheckGame(const GameCheckTools& tools, uint32_t index) {
    return GameCheck(tools, index).Run();
}

}  // namespace bw
