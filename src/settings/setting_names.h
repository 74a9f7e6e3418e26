// The names of the stored settings that several parts of the program read or write. A name that
// only one file knows stays there.
#pragma once

#include <string_view>

// Apart from the rest, since much in the program is called as its setting is.
namespace bw::setting {

// Under kMainKey.
inline constexpr std::string_view kLanguage = "Language";
inline constexpr std::string_view kCloseState = "CloseState";
inline constexpr std::string_view kRemember = "Remember";
inline constexpr std::string_view kPageSize = "PageSize";
inline constexpr std::string_view kShowStyle = "ShowStyle";
inline constexpr std::string_view kShowNumberOrder = "ShowNumberOrder";
inline constexpr std::string_view kShowNumberDot = "ShowNumberDot";
inline constexpr std::string_view kShowNumberFill = "ShowNumberFill";
inline constexpr std::string_view kPageNumber = "PageNumber";
inline constexpr std::string_view kNameInsertRow = "NameInsertRow";
inline constexpr std::string_view kPageTurningSpeed = "PageTurningSpeed";
inline constexpr std::string_view kMusic = "Music";
inline constexpr std::string_view kMenuSize = "MenuSize";
inline constexpr std::string_view kCustomEnable = "CustomEnable";
inline constexpr std::string_view kExternMenuEnable = "ExternMenuEnable";
inline constexpr std::string_view kExternMenuPath = "ExternMenuPath";
inline constexpr std::string_view kExportRomType = "ExportRomType";
inline constexpr std::string_view kExportPrgSize = "ExportPrgSize";
inline constexpr std::string_view kLastBuildDir = "LastBuildDir";
inline constexpr std::string_view kLastExportDir = "LastExportDir";
inline constexpr std::string_view kCheckAfterBuild = "CheckAfterBuild";
inline constexpr std::string_view kLastSheetDir = "LastSheetDir";
inline constexpr std::string_view kLastNotifyId = "LastNotifyId";

// Under kBoardKey.
inline constexpr std::string_view kCoolboyType = "CoolboyType";

// Under kDesignKey.
inline constexpr std::string_view kCaptionText = "CaptionText";
inline constexpr std::string_view kCaptionPos = "CaptionPos";
inline constexpr std::string_view kCaptionPpuAddr = "CaptionPpuAddr";
inline constexpr std::string_view kPageNumberPos = "PageNumberPos";
inline constexpr std::string_view kPageNumberPpuAddr = "PageNumberPpuAddr";
inline constexpr std::string_view kItemPos = "ItemPos";
inline constexpr std::string_view kItemPpuAddr = "ItemPpuAddr";
inline constexpr std::string_view kBkgTileList = "BkgTileList";
inline constexpr std::string_view kSpriteTileList = "SpriteTileList";
inline constexpr std::string_view kArrowTile = "ArrowTile";
inline constexpr std::string_view kArrowTileList = "ArrowTileList";
inline constexpr std::string_view kCustomText = "CustomText";
inline constexpr std::string_view kBigCursor = "BigCursor";
inline constexpr std::string_view kBigSprite = "BigSprite";
inline constexpr std::string_view kAttributes = "Attributes";
inline constexpr std::string_view kBkgPalette = "BkgPalette";
inline constexpr std::string_view kSpritePalette = "SpritePalette";
inline constexpr std::string_view kCharMapData = "CharMapData";
inline constexpr std::string_view kChrData = "ChrData";

}  // namespace bw::setting
