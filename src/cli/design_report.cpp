#include "cli/design_report.h"

#include "cli/json.h"
#include "cli/text_table.h"
#include "support/text.h"

namespace bw {

std::string DesignTable(const DesignDocument& design, Language language) {
    const DesignStore& store = design.store;
    const auto words = [&](TextId id) { return LoadText(id, language); };
    const auto cell = [&](const Pos& place) {
        return FormatText(words(TextId::kColumnAndRow), place.X, place.Y);
    };
    const auto count = [](size_t number) { return FormatText(u"%d", number); };
    TextTable table;
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

}  // namespace bw
