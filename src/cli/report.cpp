#include "cli/report.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <unordered_map>

#include "builder/layout/board_space.h"
#include "builder/layout/build_checks.h"
#include "builder/output/rom_header.h"
#include "cli/json.h"
#include "cli/text_table.h"
#include "list/collection/same_games.h"
#include "support/text.h"

namespace bw {
namespace {

std::u16string SizeText(uint32_t count, uint32_t kilobytes) {
    return FormatText(u"%2d (%0.3dKB)", count, count * kilobytes);
}

void WriteHeaderFields(Json& json, const GameEntry& game) {
    const InesHeader& header = game.header;
    json.String("name", game.name);
    json.String("path", game.path);
    json.Bool("valid", game.HasValidHeader());
    json.Bool("nes20", header.IsNes20());
    json.Number("mapper", header.Mapper());
    json.Number("prg16k", header.PrgCount());
    json.Number("chr8k", header.ChrCount());
    json.Utf8("mirroring", header.Vertical() ? "vertical" : "horizontal");
    json.Bool("battery", header.Battery());
    json.Bool("trainer", header.Trainer());
    json.Bool("fourScreen", header.FourScreen());
    json.Bool("coolboy", game.coolboySupported);
    json.Bool("coolgirl", game.coolgirlSupported);
}

// Why boards can't run games, below the table: the game, then each of the boards.
std::string Reasons(const GameList& games, Language language) {
    TextTable table;
    for (const GameEntry& game : games) {
        const std::u16string reason = WhyUnfit(game, language);
        std::u16string_view rest = reason;
        for (std::u16string name = game.name; !rest.empty(); name.clear()) {
            const size_t end = std::min(rest.find(u'\n'), rest.size());
            table.Row({name, std::u16string(rest.substr(0, end))});
            rest.remove_prefix(std::min(end + 1, rest.size()));
        }
    }
    return table.IsEmpty() ? std::string() : "\n" + table.Text();
}

void WriteGame(Json& json, const MulticartItem& item, const BuildOutcome& outcome, size_t number) {
    json.BeginObject();
    json.Number("index", item.index);
    json.String("name", outcome.names[number]);
    json.String("path", PathText(item.path));
    json.Number("mapper", item.mapper);
    json.Number("prgOffset", item.prgOffset);
    json.Number("prgSize", item.prgBytes);
    json.Number("prgSpan", item.prgSpan);
    json.Crc("prgCrc", item.prgCrc);
    json.Number("chrOffset", item.chrOffset);
    json.Number("chrSize", item.chrBytes);
    json.Number("chrSpan", item.chrSpan);
    json.Crc("chrCrc", item.chrCrc);
    const FinalDataRecord& record = outcome.finalData[number];
    const size_t registers = outcome.board == BoardType::kCoolgirl ? 8 : 4;
    json.Bytes("prgRegisters", std::span(record.registers.prg).first(registers));
    if (outcome.board != BoardType::kCoolgirl) {
        json.Bytes("chrRegisters", std::span(record.registers.chr).first(registers));
    }
    json.EndObject();
}

}  // namespace

std::string InfoTable(const GameList& games, Language language) {
    if (games.empty()) return {};
    const auto text = [language](TextId id) { return LoadText(id, language); };
    TextTable table;
    table.Row({text(TextId::kFileName), text(TextId::kPrgRom), text(TextId::kChrRom),
               text(TextId::kMapperNumber), text(TextId::kMirroring), text(TextId::kBatteryBacked),
               text(TextId::kTrained), text(TextId::kCoolboy), text(TextId::kCoolgirl),
               text(TextId::kFilePath)});
    for (const GameEntry& game : games) {
        if (!game.HasValidHeader()) {
            table.Row({game.name, u"-", u"-", u"-", u"-", u"-", u"-", text(TextId::kSupportedNo),
                       text(TextId::kSupportedNo), game.path});
            continue;
        }
        const InesHeader& header = game.header;
        const auto yes = [&](bool value) { return text(value ? TextId::kYes : TextId::kNo); };
        table.Row({game.name, SizeText(header.PrgCount(), 16), SizeText(header.ChrCount(), 8),
                   FormatText(u"%d", header.Mapper()),
                   text(header.Vertical() ? TextId::kVertical : TextId::kHorizontal),
                   yes(header.Battery()), yes(header.Trainer()),
                   text(game.coolboySupported ? TextId::kSupportedYes : TextId::kSupportedNo),
                   text(game.coolgirlSupported ? TextId::kSupportedYes : TextId::kSupportedNo),
                   game.path});
    }
    return table.Text() + Reasons(games, language);
}

std::string InfoJson(const GameList& games, Language language) {
    Json json;
    json.BeginObject();
    json.BeginArray("games");
    for (const GameEntry& game : games) {
        json.BeginObject();
        WriteHeaderFields(json, game);
        json.String("reason", WhyUnfit(game, language));
        json.EndObject();
    }
    json.EndArray();
    json.EndObject();
    return json.Take();
}

std::string ListTable(const GameList& games) {
    TextTable table;
    size_t ordinal = 0;
    for (const GameEntry& game : games) {
        table.Row({game.checked ? FormatText(u"%d", ++ordinal) : u"-", game.name, game.remark,
                   game.path});
    }
    return table.Text();
}

std::string ListJson(const GameList& games) {
    std::unordered_map<uint32_t, uint32_t> firsts;  // of the versions of a game
    for (const std::vector<uint32_t>& group : SameGames(games)) {
        for (const uint32_t row : group)
            firsts.emplace(row, group.front());
    }
    uint32_t row = 0;
    Json json;
    json.BeginObject();
    json.BeginArray("games");
    for (const GameEntry& game : games) {
        json.BeginObject();
        json.Bool("checked", game.checked);
        json.String("remark", game.remark);
        WriteHeaderFields(json, game);
        json.Bool("missing", game.missing);
        if (game.size != 0) json.Number("size", game.size);
        if (game.crcs) {
            json.Crc("prgCrc", game.crcs->prg);
            json.Crc("chrCrc", game.crcs->chr);
        }
        if (const auto group = firsts.find(row++); group != firsts.end()) {
            json.Number("same", group->second);
        }
        json.EndObject();
    }
    json.EndArray();
    json.EndObject();
    return json.Take();
}

std::string BuildReportJson(const BuildOutcome& outcome) {
    Json json;
    json.BeginObject();
    json.Utf8("board", BoardName(outcome.board));
    json.Utf8("format", std::string(FormatExtension(outcome.format)));
    json.String("output", PathText(outcome.output));
    json.Number("romSize", outcome.layout.romSize);
    json.Number("romLimit", LimitOf(outcome.board).romBytes);
    json.Number("prgTotal", outcome.layout.prgTotal);
    json.Number("chrTotal", outcome.layout.chrTotal);
    for (const MulticartItem& item : outcome.layout.items) {
        if (item.isMenu != 0) {
            json.Number("menuOffset", item.prgOffset);
            json.Number("menuSize", item.prgSpan);
        }
    }
    if (outcome.changes) {
        json.Number("sectorSize", SectorChanges::kBytes);
        json.Number("sectors", outcome.changes->sectors);
        json.Numbers("changedSectors", outcome.changes->changed);
    }
    json.BeginArray("games");
    size_t number = 0;
    for (const MulticartItem& item : outcome.layout.items) {
        if (item.isMenu == 0) WriteGame(json, item, outcome, number++);
    }
    json.EndArray();
    json.EndObject();
    return json.Take();
}

std::string BuildTable(const BuildOutcome& outcome, Language language) {
    const auto text = [language](TextId id) { return LoadText(id, language); };
    const auto place = [](uint32_t offset, uint32_t span) {
        return span == 0 ? u"-" : FormatText(u"%07X +%dKB", offset, span / 1024);
    };
    TextTable table;
    table.Row({text(TextId::kNumber), text(TextId::kFileName), text(TextId::kMapperNumber),
               text(TextId::kPrgRom), text(TextId::kChrRom)});
    size_t number = 0;
    for (const MulticartItem& item : outcome.layout.items) {
        const bool isMenu = item.isMenu != 0;
        table.Row({isMenu ? u"-" : FormatText(u"%d", item.index + 1),
                   isMenu ? text(TextId::kMenuProgram) : outcome.names[number],
                   isMenu ? u"-" : FormatText(u"%d", item.mapper),
                   place(item.prgOffset, item.prgSpan), place(item.chrOffset, item.chrSpan)});
        if (!isMenu) ++number;
    }
    return table.Text();
}

std::u16string SpaceText(const BuildOutcome& outcome, Language language) {
    const BoardLimit limit = LimitOf(outcome.board);
    return FormatText(LoadText(TextId::kSpaceOfRom, language), BoardName(outcome.board),
                      outcome.names.size(), limit.games, outcome.layout.romSize / 1048576.0,
                      (limit.romBytes - outcome.layout.romSize) / 1048576.0);
}

FileResult<> PrintOut(const std::string& text) {
    if (std::fwrite(text.data(), 1, text.size(), stdout) == text.size() &&
        std::fflush(stdout) == 0) {
        return {};
    }
    return ProblemOf("stdout", {errno, std::generic_category()});
}

}  // namespace bw
