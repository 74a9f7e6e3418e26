#include "builder/tables/menu_config.h"

#include "builder/tables/generated_text.h"
#include "support/files.h"
#include "support/numbers.h"

namespace bw {
namespace {

class Lines {
  public:
    // The first group of constants is written "NAME = 1", the second "NAME   =  1".
    void Narrow(std::string_view name, uint32_t value) { Decimal(name, " = ", value); }
    void Wide(std::string_view name, uint32_t value) { Decimal(name, "   =  ", value); }
    void WideHex(std::string_view name, uint8_t value) {
        text_.append(name).append("   =  $");
        AppendHex(text_, value, 2);
        text_ += kLineEnd;
    }
    std::string Take() { return std::move(text_); }

  private:
    void Decimal(std::string_view name, std::string_view sign, uint32_t value) {
        text_.append(name).append(sign);
        AppendDecimal(text_, value);
        text_ += kLineEnd;
    }
    std::string text_;
};

}  // namespace

std::string MenuConfigText(const MenuConfig& config, const BuildSettings& settings,
                           const DesignStore& design) {
    const TileItem& arrow = design.ArrowTile;
    Lines lines;
    lines.Narrow("BIG_CURSOR", config.BigCursor);
    lines.Narrow("BIG_SPRITE", design.BigSprite);
    lines.Narrow("CAPTION_LENGTH", static_cast<uint32_t>(design.CaptionText.size()));
    lines.Narrow("NAME_INSERT_ROW", settings.NameInsertRow ? 1 : 0);
    lines.Narrow("FINAL_DATA_ENABLE", 1);
    lines.Narrow("NAME_BANK_COUNT", config.nameBanks);
    lines.Narrow("DATA_BANK_COUNT", config.dataBanks);
    lines.Narrow("FINAL_DATA_BANK_COUNT", config.finalDataBanks);
    lines.Narrow("BOARD_TYPE", static_cast<uint32_t>(config.board));
    lines.Narrow("MENU_PRG_SIZE", config.menuPrgUnits);
    lines.Narrow("MENU_CHR_SIZE", 0);
    lines.Narrow("MENU_MUSIC", settings.Music);
    lines.Narrow("PAGE_TURNING_SPEED", settings.PageTurningSpeed);
    lines.Narrow("CUSTOM_MENU_ENABLE", settings.CustomEnable ? 1 : 0);
    lines.Wide("GAMES_TOTAL", config.games);
    lines.Wide("MENU_SHOW_STYLE", settings.ShowStyle);
    lines.Wide("SHOW_PAGE_NUMBER", settings.PageNumber ? 1 : 0);
    lines.Wide("PAGE_SIZE", settings.PageSize);
    lines.Wide("SPRITE_TILE_SIZE", static_cast<uint32_t>(design.SpriteTileList.size()));
    lines.WideHex("CURSOR_ARROW_TILE", arrow.Tile);
    lines.WideHex("CURSOR_ARROW_X", static_cast<uint8_t>(arrow.X));
    // The console shows a sprite one line below its Y byte.
    lines.WideHex("CURSOR_ARROW_Y", static_cast<uint8_t>(arrow.Y - 1));
    lines.WideHex("CURSOR_ARROW_MODE", SpriteAttribute(arrow));
    return lines.Take();
}

FileResult<> WriteMenuConfig(const MenuConfig& config, const BuildSettings& settings,
                             const DesignStore& design, const std::filesystem::path& folder) {
    return WriteScratchFile(folder / "game_config.asm", MenuConfigText(config, settings, design));
}

}  // namespace bw
