#include "shell/main/space_text.h"

#include "support/text.h"

namespace bw {
namespace {

constexpr uint64_t kMegabyte = uint64_t{1024} * 1024;

double Megabytes(uint64_t bytes) {
    return static_cast<double>(bytes) / static_cast<double>(kMegabyte);
}

}  // namespace

bool IsOver(const BoardSpace& space) {
    return space.usedBytes > space.limitBytes || space.games > space.gameLimit || space.unfit > 0;
}

namespace {

std::u16string RoomText(BoardType board, const BoardSpace& space, Language language) {
    const std::u16string name = ToWide(BoardName(board));
    if (space.usedBytes > space.limitBytes) {
        return FormatText(LoadText(TextId::kMegabytesOver, language), name,
                          Megabytes(space.usedBytes - space.limitBytes));
    }
    if (space.games > space.gameLimit) {
        return FormatText(LoadText(TextId::kGamesOver, language), name,
                          space.games - space.gameLimit);
    }
    return FormatText(LoadText(TextId::kMegabytesFree, language), name,
                      Megabytes(space.limitBytes - space.usedBytes));
}

}  // namespace

std::u16string SpaceText(BoardType board, const BoardSpace& space, Language language) {
    const std::u16string room = RoomText(board, space, language);
    if (space.unfit == 0) return room;
    return FormatText(LoadText(TextId::kSpaceAndUnfit, language), room, space.unfit);
}

std::u16string SpaceDetails(BoardType board, const BoardSpace& space, Language language) {
    std::u16string text = FormatText(LoadText(TextId::kSpaceDetails, language),
                                     ToWide(BoardName(board)), Megabytes(space.usedBytes),
                                     space.limitBytes / kMegabyte, space.games, space.gameLimit);
    if (space.unfit > 0) {
        text += FormatText(LoadText(TextId::kMoreGamesUnfit, language), space.unfit);
    }
    return text;
}

}  // namespace bw
