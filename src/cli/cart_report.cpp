#include "cli/cart_report.h"

#include "builder/output/rom_header.h"
#include "cli/json.h"
#include "cli/text_table.h"
#include "support/text.h"

namespace bw {
namespace {

// Sectors that follow each other.
struct SectorRange {
    uint32_t first;
    uint32_t last;
};

std::vector<SectorRange> RangesOf(const std::vector<uint32_t>& sectors) {
    std::vector<SectorRange> ranges;
    for (const uint32_t sector : sectors) {
        if (ranges.empty() || sector != ranges.back().last + 1) ranges.push_back({sector, sector});
        ranges.back().last = sector;
    }
    return ranges;
}

// Its first and last byte in the flash.
std::u16string AddressesOf(const SectorRange& range, uint64_t sectorBytes) {
    return FormatText(u"%07X-%07X", range.first * sectorBytes, (range.last + 1) * sectorBytes - 1);
}

void WriteEntry(Json& json, const CartEntry& game, size_t number) {
    json.BeginObject();
    json.Number("number", number);
    json.String("name", game.name);
    json.Number("mapper", game.header.Mapper());
    json.Bool("mapperKnown", !game.mapperGuessed);
    json.Number("prgOffset", game.prgOffset);
    json.Number("prgSize", game.prgBytes);
    json.Bool("prgSizeKnown", !game.sizeGuessed);
    json.Number("chrOffset", game.chrOffset);
    json.Number("chrSize", game.chrBytes);
    json.Utf8("mirroring", game.header.Vertical() ? "vertical" : "horizontal");
    json.Bool("battery", game.header.Battery());
    json.Bool("fourScreen", game.header.FourScreen());
    json.Bytes("header", game.header.bytes);
    if (game.crcs) {
        json.Crc("prgCrc", game.crcs->prg);
        json.Crc("chrCrc", game.crcs->chr);
    }
    json.EndObject();
}

}  // namespace

std::string CartTable(const CartContents& cart, Language language) {
    const auto text = [language](TextId id) { return LoadText(id, language); };
    const auto place = [](uint32_t offset, uint32_t bytes) {
        return bytes == 0 ? u"-" : FormatText(u"%07X +%dKB", offset, bytes / 1024);
    };
    TextTable table;
    table.Row({text(TextId::kNumber), text(TextId::kFileName), text(TextId::kMapperNumber),
               text(TextId::kPrgRom), text(TextId::kChrRom), text(TextId::kMirroring),
               text(TextId::kBatteryBacked), text(TextId::kNotKnownColumn)});
    size_t number = 0;
    for (const CartEntry& game : cart.games) {
        const InesHeader& header = game.header;
        const TextId mirroring = header.FourScreen() ? TextId::kFourScreenCell
                                 : header.Vertical() ? TextId::kVertical
                                                     : TextId::kHorizontal;
        table.Row({FormatText(u"%d", ++number), game.name, FormatText(u"%d", header.Mapper()),
                   place(game.prgOffset, game.prgBytes), place(game.chrOffset, game.chrBytes),
                   text(mirroring), text(header.Battery() ? TextId::kYes : TextId::kNo),
                   NotKnownText(game, language)});
    }
    return table.Text();
}

std::string CartJson(const CartContents& cart, const std::filesystem::path& file) {
    const CartTables& tables = cart.tables;
    Json json;
    json.BeginObject();
    json.String("cart", PathText(file));
    json.Utf8("board", BoardName(tables.board));
    json.Utf8("format", std::string(FormatExtension(tables.format)));
    json.Number("romSize", tables.romBytes);
    json.Number("menuOffset", tables.menuOffset);
    json.Number("menuSize", uint64_t{tables.menuUnits} * kPrgUnit);
    json.Bool("notes", cart.hasManifest);
    json.BeginArray("games");
    size_t number = 0;
    for (const CartEntry& game : cart.games)
        WriteEntry(json, game, ++number);
    json.EndArray();
    json.EndObject();
    return json.Take();
}

std::string ComparisonTable(const CartComparison& comparison, const CartContents& cart,
                            Language language) {
    if (comparison.Same()) return {};
    const auto text = [language](TextId id) { return LoadText(id, language); };
    const auto count = [](uint64_t bytes) { return FormatText(u"%d", bytes); };
    TextTable games;
    games.Row({text(TextId::kNumber), text(TextId::kFileName), text(TextId::kBytesThatDiffer)});
    if (comparison.menuBytes != 0)
        games.Row({u"-", text(TextId::kMenuProgram), count(comparison.menuBytes)});
    for (const GameDifference& game : comparison.games) {
        games.Row(
            {FormatText(u"%d", game.game + 1), cart.games[game.game].name, count(game.bytes)});
    }
    if (comparison.menuBytes == 0 && comparison.games.empty())
        games.Row({u"-", text(TextId::kLiesInNoGame), count(comparison.differing)});
    TextTable sectors;
    sectors.Row({text(TextId::kSectorsThatDiffer), {}});
    for (const SectorRange& range : RangesOf(comparison.sectors)) {
        sectors.Row({range.first == range.last ? FormatText(u"%d", range.first)
                                               : FormatText(u"%d-%d", range.first, range.last),
                     AddressesOf(range, comparison.sectorBytes)});
    }
    return games.Text() + "\n" + sectors.Text();
}

std::string ComparisonJson(const CartComparison& comparison, const CartContents& cart) {
    Json json;
    json.BeginObject();
    json.Bool("same", comparison.Same());
    json.Number("differing", comparison.differing);
    json.Number("missing", comparison.missingBytes);
    json.Number("behind", comparison.behindBytes);
    json.Bool("behindErased", comparison.behindErased);
    json.Number("menu", comparison.menuBytes);
    json.BeginArray("games");
    for (const GameDifference& game : comparison.games) {
        json.BeginObject();
        json.Number("number", game.game + 1);
        json.String("name", cart.games[game.game].name);
        json.Number("differing", game.bytes);
        json.EndObject();
    }
    json.EndArray();
    json.Number("sectorSize", comparison.sectorBytes);
    json.Number("sectorCount", comparison.sectorsInAll);
    json.Number("sectorsDiffering", comparison.sectors.size());
    json.BeginArray("sectors");
    for (const SectorRange& range : RangesOf(comparison.sectors)) {
        json.BeginObject();
        json.Number("first", range.first);
        json.Number("last", range.last);
        json.Number("begin", uint64_t{range.first} * comparison.sectorBytes);
        json.Number("end", (uint64_t{range.last} + 1) * comparison.sectorBytes);
        json.EndObject();
    }
    json.EndArray();
    json.BeginArray("places");
    for (const CartDifference& place : comparison.places) {
        json.BeginObject();
        json.Number("begin", place.begin);
        json.Number("end", place.end);
        json.EndObject();
    }
    json.EndArray();
    json.EndObject();
    return json.Take();
}

}  // namespace bw
