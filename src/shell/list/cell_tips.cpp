#include "shell/list/cell_tips.h"

#include "builder/layout/board_space.h"
#include "builder/layout/shared_saves.h"
#include "shell/dialogs/check_report.h"
#include "shell/framework/texts.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr size_t kNamedSame = 8;  // of the games with the same data, those that a tip names

QString SpanLine(const QString& boards, const GameEntry& entry, BoardType board,
                 Language language) {
    const std::optional<uint64_t> bytes = GameSpan(entry, board);
    if (!bytes) return QtText(TextId::kBoardsCantRunGame, language).arg(boards);
    return QtText(TextId::kBoardsTakeKilobytes, language).arg(boards).arg(*bytes / 1024);
}

QString SpanTip(const GameEntry& entry, Language language) {
    if (!entry.checked) return {};
    return SpanLine(QStringLiteral("COOLBOY, MINDKIDS"), entry, BoardType::kCoolboy, language) +
           QLatin1Char('\n') +
           SpanLine(QStringLiteral("COOLGIRL"), entry, BoardType::kCoolgirl, language);
}

QString ConsoleTip(const GameListModel& model, int viewRow) {
    const Language language = model.UiLanguage();
    const ConsoleLine line = model.LineOnConsole(viewRow);
    QString tip = QtText(TextId::kConsoleShows, language).arg(QString::fromLatin1(line.text));
    if (line.cut) tip += QLatin1Char('\n') + QtText(TextId::kConsoleCuts, language);
    if (line.unknown) tip += QLatin1Char('\n') + QtText(TextId::kConsoleHasNoLetter, language);
    return tip;
}

QString FileTip(const GameEntry& entry, Language language) {
    if (entry.missing) return QtText(TextId::kFileGone, language).arg(ToQt(entry.path));
    if (entry.headerRead) return {};
    return QtText(TextId::kFileMissing, language).arg(ToQt(entry.path));
}

// Which other checked games write to the same work RAM.
QString SavesTip(const GameListModel& model, const GameEntry& entry, Language language) {
    if (!entry.checked || !entry.header.Battery()) return {};
    // COOLGIRL runs whatever the others do.
    const GameList& games = model.Games();
    return ToQt(SharedSavesText(games, RowsSharingSaves(games, BoardType::kCoolgirl), language));
}

QString MarkTip(const CheckMark& mark, Language language) {
    return QtText(TextId::kFoundByCheck, language).arg(ToQt(ToWide(BoardName(mark.board)))) +
           QLatin1Char('\n') + FindingLines(mark.findings, language);
}

QString NameTip(const GameListModel& model, int viewRow) {
    const Language language = model.UiLanguage();
    QStringList tips;
    if (const QString file = FileTip(*model.EntryAt(viewRow), language); !file.isEmpty())
        tips << file;
    if (const CheckMark* mark = model.MarkAt(viewRow)) tips << MarkTip(*mark, language);
    if (const QString same = SameText(model, viewRow); !same.isEmpty()) tips << same;
    return tips.join(QLatin1Char('\n'));
}

}  // namespace

QString SameText(const GameListModel& model, int viewRow) {
    const std::span<const uint32_t> rows = model.SameAs(viewRow);
    if (rows.empty()) return {};
    const size_t own = model.ListRow(viewRow);
    QStringList names;
    for (const uint32_t row : rows) {
        if (row == own) continue;
        if (names.size() == kNamedSame) {
            names << ToQt(FormatText(LoadText(TextId::kAndMore, model.UiLanguage()),
                                     rows.size() - 1 - kNamedSame));
            break;
        }
        names << QStringLiteral("%1: %2").arg(row + 1).arg(ToQt(model.Games()[row].name));
    }
    return QtText(TextId::kSameDataAs, model.UiLanguage()).arg(names.join(QLatin1Char('\n')));
}

QString CellTip(const GameListModel& model, int viewRow, ListColumn column) {
    const GameEntry& entry = *model.EntryAt(viewRow);
    const Language language = model.UiLanguage();
    switch (column) {
        case ListColumn::kNumber: {
            const std::optional<size_t> number = model.NumberInMenu(viewRow);
            return number ? QtText(TextId::kNumberInMenu, language).arg(*number) : QString();
        }
        case ListColumn::kCoolboy:
        case ListColumn::kCoolgirl:
            return ToQt(WhyUnfit(entry, language));
        case ListColumn::kPrg:
        case ListColumn::kChr:
            return SpanTip(entry, language);
        case ListColumn::kBattery:
            return SavesTip(model, entry, language);
        case ListColumn::kConsole:
            return ConsoleTip(model, viewRow);
        case ListColumn::kName:
            return NameTip(model, viewRow);
        case ListColumn::kPath:
            return FileTip(entry, language);
        default:
            return {};
    }
}

}  // namespace bw
