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
    return space.usedBytes > space.limitBytes || space.games > space.gameLimit;
}

std::u16string SpaceText(BoardType board, const BoardSpace& space, Language language) {
    const std::u16string name = ToWide(BoardName(board));
    if (space.usedBytes > space.limitBytes) {
        return FormatText(OwnText(language, u"%s 超出 %.1f MB", u"%s %.1f MB over"), name,
                          Megabytes(space.usedBytes - space.limitBytes));
    }
    if (space.games > space.gameLimit) {
        return FormatText(OwnText(language, u"%s 超出 %d 个游戏", u"%s %d games over"), name,
                          space.games - space.gameLimit);
    }
    return FormatText(OwnText(language, u"%s 剩余 %.1f MB", u"%s %.1f MB free"), name,
                      Megabytes(space.limitBytes - space.usedBytes));
}

std::u16string SpaceDetails(BoardType board, const BoardSpace& space, Language language) {
    std::u16string text = FormatText(
        OwnText(language,
                u"%s，根据已勾选游戏的文件头估算：\n已用 %.2f MB，共 %d MB\n游戏 %d 个，最多 %d 个",
                u"%s, estimated from the headers of the checked games:\n"
                u"%.2f MB of %d MB used\n%d of %d games"),
        ToWide(BoardName(board)), Megabytes(space.usedBytes), space.limitBytes / kMegabyte,
        space.games, space.gameLimit);
    if (space.unfit > 0) {
        text += FormatText(OwnText(language, u"\n另有 %d 个已勾选的游戏不受此卡支持",
                                   u"\n%d checked games more don't run on this board"),
                           space.unfit);
    }
    return text;
}

}  // namespace bw
