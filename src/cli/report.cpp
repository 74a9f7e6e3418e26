#include "cli/report.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <vector>

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include "builder/output/rom_header.h"
#include "builder/tables/generated_text.h"
#include "support/numbers.h"
#include "support/text.h"

namespace bw {
namespace {

// A thin layer over the writer: keys and values in one call.
class Json {
  public:
    Json() : writer_(buffer_) { writer_.SetIndent(' ', 2); }

    void BeginObject() { writer_.StartObject(); }
    void EndObject() { writer_.EndObject(); }
    void BeginArray(const char* key) {
        writer_.Key(key);
        writer_.StartArray();
    }
    void EndArray() { writer_.EndArray(); }
    void Number(const char* key, uint64_t value) {
        writer_.Key(key);
        writer_.Uint64(value);
    }
    void Signed(const char* key, int64_t value) {
        writer_.Key(key);
        writer_.Int64(value);
    }
    void Key(const char* key) { writer_.Key(key); }
    void Bool(const char* key, bool value) {
        writer_.Key(key);
        writer_.Bool(value);
    }
    void String(const char* key, std::u16string_view value) { Utf8(key, ToUtf8(value)); }
    void Utf8(const char* key, const std::string& value) {
        writer_.Key(key);
        writer_.String(value.data(), static_cast<rapidjson::SizeType>(value.size()));
    }
    void Crc(const char* key, uint32_t value) {
        std::string text;
        AppendHex(text, value, 8);
        Utf8(key, text);
    }
    void Bytes(const char* key, std::span<const uint8_t> bytes) {
        writer_.SetFormatOptions(rapidjson::kFormatSingleLineArray);
        BeginArray(key);
        for (const uint8_t byte : bytes)
            writer_.Uint(byte);
        EndArray();
        writer_.SetFormatOptions(rapidjson::kFormatDefault);
    }
    std::string Take() { return std::string(buffer_.GetString(), buffer_.GetSize()) + "\n"; }

  private:
    rapidjson::StringBuffer buffer_;
    rapidjson::PrettyWriter<rapidjson::StringBuffer> writer_;
};

// Columns of text as wide as their widest cell; the last one is not padded.
class Table {
  public:
    void Row(std::vector<std::u16string> cells) { rows_.push_back(std::move(cells)); }
    std::string Text() const {
        std::vector<size_t> widths;
        for (const auto& row : rows_) {
            widths.resize(std::max(widths.size(), row.size()));
            for (size_t i = 0; i < row.size(); ++i)
                widths[i] = std::max(widths[i], Width(row[i]));
        }
        std::string text;
        for (const auto& row : rows_) {
            std::string line;
            for (size_t i = 0; i < row.size(); ++i) {
                AppendComment(line, ToUtf8(row[i]));
                line.append(i + 1 == row.size() ? 0 : widths[i] - Width(row[i]) + 2, ' ');
            }
            line.erase(line.find_last_not_of(' ') + 1);
            text += line + "\n";
        }
        return text;
    }

  private:
    // Terminal columns: characters of East Asian scripts take two.
    static size_t Width(std::u16string_view text) {
        size_t width = 0;
        for (const char16_t unit : text) {
            const bool wide =
                (unit >= 0x1100 && unit <= 0x115F) || (unit >= 0x2E80 && unit <= 0xD7A3) ||
                (unit >= 0xF900 && unit <= 0xFAFF) || (unit >= 0xFF00 && unit <= 0xFF60);
            width += wide ? 2 : 1;
        }
        return width;
    }
    std::vector<std::vector<std::u16string>> rows_;
};

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
    const auto text = [language](TextId id) { return LoadText(id, language); };
    Table table;
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
    return table.Text();
}

std::string InfoJson(const GameList& games) {
    Json json;
    json.BeginObject();
    json.BeginArray("games");
    for (const GameEntry& game : games) {
        json.BeginObject();
        WriteHeaderFields(json, game);
        json.EndObject();
    }
    json.EndArray();
    json.EndObject();
    return json.Take();
}

std::string ListTable(const GameList& games) {
    Table table;
    size_t ordinal = 0;
    for (const GameEntry& game : games) {
        table.Row({game.checked ? FormatText(u"%d", ++ordinal) : u"-", game.name, game.remark,
                   game.path});
    }
    return table.Text();
}

std::string ListJson(const GameList& games) {
    Json json;
    json.BeginObject();
    json.BeginArray("games");
    for (const GameEntry& game : games) {
        json.BeginObject();
        json.Bool("checked", game.checked);
        json.String("remark", game.remark);
        WriteHeaderFields(json, game);
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
    json.Number("prgTotal", outcome.layout.prgTotal);
    json.Number("chrTotal", outcome.layout.chrTotal);
    for (const MulticartItem& item : outcome.layout.items) {
        if (item.isMenu != 0) {
            json.Number("menuOffset", item.prgOffset);
            json.Number("menuSize", item.prgSpan);
        }
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

std::string DesignTable(const DesignDocument& design, Language language) {
    const DesignStore& store = design.store;
    const auto words = [&](TextId id) { return LoadText(id, language); };
    const auto cell = [&](const Pos& place) {
        return FormatText(words(TextId::kColumnAndRow), place.X, place.Y);
    };
    const auto count = [](size_t number) { return FormatText(u"%d", number); };
    Table table;
    table.Row({words(TextId::kCaption), cell(design.CaptionPos), store.CaptionText});
    table.Row({words(TextId::kList), cell(design.ItemPos)});
    table.Row({words(TextId::kPageNumber), cell(design.PageNumberPos)});
    for (const TextItem& text : store.CustomText) {
        table.Row({words(TextId::kText), cell({text.X, text.Y}), text.Text});
    }
    table.Row({words(TextId::kPlacedTiles), count(store.BkgTileList.size())});
    table.Row({words(TextId::kPlacedSprites), count(store.SpriteTileList.size()),
               store.BigSprite != 0 ? u"8x16" : u"8x8"});
    table.Row(
        {words(TextId::kCursor), words(design.BigCursor != 0 ? TextId::kLarge : TextId::kSmall)});
    return table.Text();
}

std::string DesignJson(const DesignDocument& design) {
    const DesignStore& store = design.store;
    Json json;
    const auto place = [&](const char* key, const Pos& cell) {
        json.Key(key);
        json.BeginObject();
        json.Signed("column", cell.X);
        json.Signed("row", cell.Y);
        json.EndObject();
    };
    json.BeginObject();
    json.String("caption", store.CaptionText);
    place("captionPosition", design.CaptionPos);
    place("itemsPosition", design.ItemPos);
    place("pageNumberPosition", design.PageNumberPos);
    json.BeginArray("texts");
    for (const TextItem& text : store.CustomText) {
        json.BeginObject();
        json.String("text", text.Text);
        json.Signed("column", text.X);
        json.Signed("row", text.Y);
        json.EndObject();
    }
    json.EndArray();
    json.Number("tiles", store.BkgTileList.size());
    json.Number("sprites", store.SpriteTileList.size());
    json.Bool("largeCursor", design.BigCursor != 0);
    json.Bool("tallSprites", store.BigSprite != 0);
    json.Bytes("backgroundPalette", store.BkgPalette);
    json.Bytes("spritePalette", store.SpritePalette);
    json.EndObject();
    return json.Take();
}

FileResult<> PrintOut(const std::string& text) {
    if (std::fwrite(text.data(), 1, text.size(), stdout) == text.size() &&
        std::fflush(stdout) == 0) {
        return {};
    }
    return ProblemOf("stdout", {errno, std::generic_category()});
}

}  // namespace bw
