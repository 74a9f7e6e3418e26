#include "builder/build_words.h"

#include "support/text.h"

namespace bw {

std::u16string StageText(BuildStage stage, Language language) {
    switch (stage) {
        case BuildStage::kReadGames:
            return OwnText(language, u"读取游戏", u"Reading games");
        case BuildStage::kWriteTables:
            return OwnText(language, u"生成菜单数据", u"Writing tables");
        case BuildStage::kAssembleMenu:
            return OwnText(language, u"汇编菜单", u"Assembling the menu");
        default:
            return OwnText(language, u"写入 ROM", u"Writing the ROM");
    }
}

std::u16string BuildSummary(const BuildOutcome& outcome, Language language) {
    return FormatText(OwnText(language, u"已写入 %s：%s，%d 个游戏，%0.3lfMB",
                              u"Wrote %s: %s, %d game(s), %0.3lfMB"),
                      PathText(outcome.output), BoardName(outcome.board), outcome.names.size(),
                      outcome.layout.romSize / 1048576.0);
}

std::u16string BuildStoppedText(Language language) {
    return OwnText(language, u"已停止，没有写入任何文件。", u"Stopped; nothing was written.");
}

}  // namespace bw
