#include "builder/input/build_settings.h"

#include "settings/setting_names.h"
#include "support/text.h"

namespace bw {
namespace {

class Reader {
  public:
    explicit Reader(const SettingsStore& store) : store_(store) {}

    void Number(std::string_view name, uint32_t& out, std::string_view key = kMainKey) const {
        store_.RegReadDword(key, name, out);
    }
    void Switch(std::string_view name, bool& out) const {
        uint32_t value = out ? 1 : 0;
        Number(name, value);
        out = value != 0;
    }
    void Path(std::string_view name, std::filesystem::path& out) const {
        std::u16string text;
        if (store_.RegReadString(kMainKey, name, text)) out = TextPath(text);
    }

  private:
    const SettingsStore& store_;
};

template <typename... Allowed>
void KeepIfOneOf(uint32_t& value, uint32_t otherwise, Allowed... allowed) {
    if (((value != static_cast<uint32_t>(allowed)) && ...)) value = otherwise;
}

}  // namespace

BuildSettings LoadBuildSettings(const SettingsStore& store) {
    BuildSettings settings;
    const Reader read(store);
    read.Number(setting::kCoolboyType, settings.CoolboyType, kBoardKey);
    read.Number(setting::kMenuSize, settings.MenuSize);
    read.Switch(setting::kExternMenuEnable, settings.ExternMenuEnable);
    read.Path(setting::kExternMenuPath, settings.ExternMenuPath);
    read.Switch(setting::kCustomEnable, settings.CustomEnable);
    read.Switch(setting::kShowNumberOrder, settings.ShowNumberOrder);
    read.Switch(setting::kShowNumberDot, settings.ShowNumberDot);
    read.Switch(setting::kShowNumberFill, settings.ShowNumberFill);
    read.Switch(setting::kPageNumber, settings.PageNumber);
    read.Switch(setting::kNameInsertRow, settings.NameInsertRow);
    read.Number(setting::kPageSize, settings.PageSize);
    read.Number(setting::kShowStyle, settings.ShowStyle);
    read.Number(setting::kPageTurningSpeed, settings.PageTurningSpeed);
    read.Number(setting::kMusic, settings.Music);
    read.Number(setting::kExportRomType, settings.ExportRomType);
    read.Number(setting::kExportPrgSize, settings.ExportPrgSize);
    read.Path(setting::kLastBuildDir, settings.LastBuildDir);
    read.Path(setting::kLastExportDir, settings.LastExportDir);

    KeepIfOneOf(settings.PageSize, 10, 5, 10, 15, 20);
    KeepIfOneOf(settings.PageTurningSpeed, 1, 1, 2, 3, 4);
    KeepIfOneOf(settings.MenuSize, 8, 8, 16, 32);
    KeepIfOneOf(settings.Music, 1, 0, 1, 2, 3, 4, 5);
    KeepIfOneOf(settings.ShowStyle, 0, 0, 1);
    return settings;
}

}  // namespace bw
