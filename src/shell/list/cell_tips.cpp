#include "shell/list/cell_tips.h"

#include "builder/layout/board_space.h"
#include "shell/framework/texts.h"

namespace bw {
namespace {

QString SpanLine(const QString& boards, const GameEntry& entry, BoardType board,
                 Language language) {
    const std::optional<uint64_t> bytes = GameSpan(entry, board);
    if (!bytes) return QtText(TextId::kBoardsCantRunGame, language).arg(boards);
    return QtText(TextId::kBoardsTakeKilobytes, language).arg(boards).arg(*bytes / 1024);
}

}  // namespace

QString CellTip(const GameEntry& entry, ListColumn column, Language language) {
    switch (column) {
        case ListColumn::kCoolboy:
        case ListColumn::kCoolgirl:
            return ToQt(WhyUnfit(entry, language));
        case ListColumn::kPrg:
        case ListColumn::kChr:
            if (!entry.checked) return {};
            return SpanLine(QStringLiteral("COOLBOY, MINDKIDS"), entry, BoardType::kCoolboy,
                            language) +
                   QLatin1Char('\n') +
                   SpanLine(QStringLiteral("COOLGIRL"), entry, BoardType::kCoolgirl, language);
        default:
            return {};
    }
}

}  // namespace bw
