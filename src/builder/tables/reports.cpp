#include "builder/tables/reports.h"

#include <algorithm>

#include "builder/tables/generated_text.h"
#include "support/files.h"
#include "support/numbers.h"
#include "support/text.h"

namespace bw {
namespace {

void AppendOffsets(std::string& text, std::vector<const MulticartItem*> games,
                   uint32_t MulticartItem::*offset, uint32_t MulticartItem::*span) {
    std::stable_sort(games.begin(), games.end(),
                     [offset](const MulticartItem* a, const MulticartItem* b) {
                         return a->*offset < b->*offset;
                     });
    for (const MulticartItem* game : games) {
        AppendDecimal(text, game->index, 4);
        text += ' ';
        AppendHex(text, game->*offset, 8);
        text += ' ';
        AppendHex(text, game->*span, 6);
        text += ' ';
        AppendComment(text, ToSingleByte(game->name));
        text += kLineEnd;
    }
}

}  // namespace

FileResult<> WriteOffsetReport(const std::vector<const MulticartItem*>& games,
                               const std::filesystem::path& folder) {
    std::string text = "rom prg offset:\r\n";
    AppendOffsets(text, games, &MulticartItem::prgOffset, &MulticartItem::prgSpan);
    text += "\r\nrom chr offset:\r\n";
    AppendOffsets(text, games, &MulticartItem::chrOffset, &MulticartItem::chrSpan);
    return WriteScratchFile(folder / "game_prg_chr_offset.txt", text);
}

FileResult<> WriteNameReport(std::span<const std::u16string> names,
                             const std::filesystem::path& folder) {
    std::string text;
    for (const std::u16string& name : names) {
        AppendComment(text, ToUtf8(name));
        text += kLineEnd;
    }
    return WriteScratchFile(folder / "game_list.txt", text);
}

}  // namespace bw
