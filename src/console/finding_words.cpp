#include "console/finding_words.h"

#include <array>

#include "support/text.h"

namespace bw {
namespace {

using enum FindingKind;
using enum FindingSeverity;

constexpr uint16_t kMindkidsFirst = 0x5000;
constexpr uint16_t kCoolboyFirst = 0x6000;

FindingSeverity ErrorIf(bool differs) {
    return differs ? kError : kNote;
}

// A space goes between English sentences, none between Chinese ones.
void Append(std::u16string& text, const std::u16string& sentence, Language language) {
    if (!text.empty() && !sentence.empty() && language == Language::kEnglish) text += u' ';
    text += sentence;
}

}  // namespace

CheckFinding FindingWords::Make(FindingKind kind, FindingSeverity severity, std::u16string text,
                                const std::u16string& help) const {
    Append(text, FormatText(Text(TextId::kSeenInEmulator), emulator_, BoardName(board_)),
           language_);
    Append(text, help, language_);
    return {kind, severity, std::move(text)};
}

std::u16string FindingWords::TryBoards(std::string_view boards) const {
    return FormatText(Text(TextId::kTryAnotherBoard), boards);
}

std::u16string FindingWords::HelpOf(uint16_t mapper) const {
    std::string boards;
    for (const BoardType other : {BoardType::kCoolgirl, BoardType::kCoolboy}) {
        const bool same = (other == BoardType::kCoolgirl) == (board_ == BoardType::kCoolgirl);
        if (!same && BoardTakesMapper(other, mapper)) {
            boards.append(boards.empty() ? "" : ", ").append(BoardName(other));
        }
    }
    return boards.empty() ? Text(TextId::kLeaveItOut) : TryBoards(boards);
}

CheckFinding FindingWords::NoMenu() const {
    return Make(kNoStart, kError, Text(TextId::kFoundNoMenu), Text(TextId::kBuildItAgain));
}

CheckFinding FindingWords::NoHandOver(uint32_t frames) const {
    return Make(kNoStart, kError, FormatText(Text(TextId::kFoundNoHandOver), frames),
                Text(TextId::kBuildItAgain));
}

CheckFinding FindingWords::NoProgram(uint16_t resetVector) const {
    return Make(kNoStart, kError, FormatText(Text(TextId::kFoundNoProgram), resetVector),
                Text(TextId::kBuildItAgain));
}

CheckFinding FindingWords::OtherBytes(uint16_t mapper) const {
    return Make(kNoStart, kError, Text(TextId::kFoundOtherBytes), HelpOf(mapper));
}

CheckFinding FindingWords::Jam(uint16_t address, uint16_t mapper) const {
    return Make(kJam, kError, FormatText(Text(TextId::kFoundJam), address), HelpOf(mapper));
}

CheckFinding FindingWords::JamByItself(uint16_t address) const {
    return Make(kJam, kError, FormatText(Text(TextId::kFoundJamByItself), address),
                Text(TextId::kBuildItAgain));
}

CheckFinding FindingWords::Black(uint32_t frames, uint16_t mapper) const {
    return Make(kBlack, kError, FormatText(Text(TextId::kFoundBlack), frames), HelpOf(mapper));
}

CheckFinding FindingWords::Frozen(uint32_t frames, uint16_t mapper) const {
    return Make(kFrozen, kError, FormatText(Text(TextId::kFoundFrozen), frames), HelpOf(mapper));
}

CheckFinding FindingWords::OtherStill(uint16_t mapper) const {
    return Make(kFrozen, kError, Text(TextId::kFoundOtherStill), HelpOf(mapper));
}

CheckFinding FindingWords::Tiles(bool seen) const {
    const bool ram = board_ != BoardType::kCoolgirl;
    std::u16string text = Text(TextId::kFoundTiles);
    if (ram) Append(text, FormatText(Text(TextId::kTilesAreRam), BoardName(board_)), language_);
    Append(text, Text(seen ? TextId::kTilesSeen : TextId::kTilesUnseen), language_);
    return Make(kTiles, ErrorIf(seen), std::move(text),
                ram ? TryBoards(BoardName(BoardType::kCoolgirl)) : Text(TextId::kLeaveItOut));
}

CheckFinding FindingWords::FourScreen() const {
    return Make(kTiles, kError, FormatText(Text(TextId::kFoundFourScreen), BoardName(board_)),
                TryBoards(BoardName(BoardType::kCoolgirl)));
}

std::u16string FindingWords::Seen(const WatchedWrites& writes, TextId meaning, bool differs) const {
    std::u16string text = FormatText(Text(TextId::kFoundWrites), writes.value, writes.address,
                                     writes.counter, writes.count);
    Append(text, FormatText(Text(meaning), BoardName(board_)), language_);
    Append(text, Text(differs ? TextId::kShowsOther : TextId::kShowsPartly), language_);
    return text;
}

CheckFinding FindingWords::Registers(const WatchedWrites& writes, bool differs) const {
    // MINDKIDS has its registers elsewhere than COOLBOY, COOLGIRL's lock holds for every game.
    std::string boards = BoardName(BoardType::kCoolgirl);
    const bool mindkids = board_ == BoardType::kMindkids;
    const uint16_t other = mindkids ? kCoolboyFirst : kMindkidsFirst;
    if ((writes.address & 0xF000) != other) {
        boards.append(", ").append(
            BoardName(mindkids ? BoardType::kCoolboy : BoardType::kMindkids));
    }
    return Make(kRegisters, ErrorIf(differs), Seen(writes, TextId::kRegistersListen, differs),
                TryBoards(boards));
}

CheckFinding FindingWords::MapperRegisters(const WatchedWrites& writes, bool differs) const {
    return Make(kRegisters, ErrorIf(differs), Seen(writes, TextId::kMapperListens, differs),
                TryBoards(BoardName(BoardType::kCoolgirl)));
}

CheckFinding FindingWords::Mirroring(bool differs) const {
    std::u16string text = FormatText(Text(TextId::kFoundMirroring), BoardName(board_));
    Append(text, Text(differs ? TextId::kShowsOther : TextId::kShowsPartly), language_);
    return Make(kRegisters, ErrorIf(differs), std::move(text),
                TryBoards(BoardName(BoardType::kCoolgirl)));
}

CheckFinding FindingWords::Saves(std::span<const std::u16string> others) const {
    constexpr size_t kNamed = 3;
    std::u16string names;
    for (const std::u16string& name : others.first(std::min(kNamed, others.size()))) {
        if (!names.empty()) names += u", ";
        names += VisibleText(name);
    }
    if (others.size() > kNamed) {
        Append(names, FormatText(Text(TextId::kAndMore), others.size() - kNamed), language_);
    }
    return {kSaves, kNote, FormatText(Text(TextId::kFoundSaves), BoardName(board_), names)};
}

std::u16string FindingWords::Ended(const ConsoleProblem& problem) const {
    const auto words = [&] {
        switch (problem.kind) {
            case ConsoleProblem::Kind::kNotStarted:
                return TextId::kEmulatorNotStarted;
            case ConsoleProblem::Kind::kRefused:
                return TextId::kEmulatorRefuses;
            case ConsoleProblem::Kind::kSilent:
                return TextId::kEmulatorSilent;
            case ConsoleProblem::Kind::kGarbled:
                return TextId::kEmulatorGarbled;
            default:
                return TextId::kEmulatorEnded;
        }
    };
    std::u16string text = FormatText(Text(words()), emulator_);
    if (problem.detail.empty()) return text;
    std::u16string detail = ToWide(problem.detail);
    while (!detail.empty() && detail.back() == u'\n')
        detail.pop_back();
    for (char16_t& unit : detail) {
        if (unit == u'\n') unit = u' ';
    }
    return text + u" (" + VisibleText(detail) + u")";
}

std::u16string FindingWords::NotRun(const ConsoleProblem& problem) const {
    return FormatText(Text(TextId::kGameNotRun), Ended(problem));
}

std::u16string FindingWords::NotDriven() const {
    return Text(TextId::kMenuNotDriven);
}

std::u16string FindingWords::Broken(const ConsoleProblem& problem) const {
    return FormatText(Text(TextId::kCheckGivenUp), Ended(problem));
}

}  // namespace bw
