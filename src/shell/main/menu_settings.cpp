#include "shell/main/menu_settings.h"

#include <algorithm>
#include <stdexcept>

#include "settings/setting_names.h"
#include "shell/framework/commands.h"

namespace bw {
namespace {

constexpr uint32_t kMarked = 8;

constexpr MenuToggle kToggles[] = {
    {kCommandTopmost, "Topmost"},
    {kCommandShowNumberFill, setting::kShowNumberFill},
    {kCommandNameInsertRow, setting::kNameInsertRow},
    {kCommandShowNumberOrder, setting::kShowNumberOrder},
    {kCommandShowNumberDot, setting::kShowNumberDot},
    {kCommandPageNumber, setting::kPageNumber},
    {kCommandCustomEnable, setting::kCustomEnable},
    {kCommandExternMenuEnable, setting::kExternMenuEnable},
    {kCommandUpdateChecks, "CheckUpdates", kMarked},
    {kCommandCheckAfterBuild, setting::kCheckAfterBuild},
};

constexpr MenuRadio kPageSizes[] = {
    {kCommandPageSize5, 5},
    {kCommandPageSize10, 10},
    {kCommandPageSize15, 15},
    {kCommandPageSize20, 20},
};
constexpr MenuRadio kStyles[] = {{kCommandStyleDefault, 0}, {kCommandStyleWhite, 1}};
constexpr MenuRadio kBoards[] = {{kCommandCoolboy, 0}, {kCommandMindkids, 1}};
constexpr MenuRadio kMenuSizes[] = {
    {kCommandMenuSize8, 8},   {kCommandMenuSize16, 16},   {kCommandMenuSize32, 32},
    {kCommandMenuSize64, 64}, {kCommandMenuSize128, 128},
};
constexpr MenuRadio kSpeeds[] = {
    {kCommandSpeed1, 1},
    {kCommandSpeed2, 2},
    {kCommandSpeed3, 3},
    {kCommandSpeed4, 4},
};
constexpr MenuRadio kTunes[] = {
    {kCommandMusicOff, 0}, {kCommandMusicDefault, 1}, {kCommandMusic2, 2},
    {kCommandMusic3, 3},   {kCommandMusic4, 4},       {kCommandMusic5, 5},
};

// What stands for other values than the listed ones is what a build makes of them. The two largest
// menu sizes can be stored, but read back they count as the smallest.
constexpr MenuRadioGroup kGroups[] = {
    {kMainKey, setting::kPageSize, 10, kPageSizes, 4, kCommandPageSize10},
    {kMainKey, setting::kShowStyle, 0, kStyles, 2, kCommandStyleDefault},
    {kBoardKey, setting::kCoolboyType, 0, kBoards, 2, kCommandMindkids},
    {kMainKey, setting::kMenuSize, 8, kMenuSizes, 3, kCommandMenuSize8},
    {kMainKey, setting::kPageTurningSpeed, 1, kSpeeds, 4, kCommandSpeed1},
    {kMainKey, setting::kMusic, 0, kTunes, 6, kCommandMusicDefault},
};

template <typename Row, typename Key, typename Field>
const Row& Found(std::span<const Row> rows, const Key& key, Field field) {
    const auto row = std::ranges::find(rows, key, field);
    if (row == rows.end()) throw std::out_of_range("no such setting");
    return *row;
}

}  // namespace

std::span<const MenuToggle> MenuToggles() {
    return kToggles;
}

std::span<const MenuRadioGroup> MenuRadioGroups() {
    return kGroups;
}

const MenuToggle& MenuToggleOf(int id) {
    return Found(MenuToggles(), id, &MenuToggle::id);
}

const MenuRadioGroup& MenuRadioGroupOf(std::string_view name) {
    return Found(MenuRadioGroups(), name, &MenuRadioGroup::name);
}

int StoredCommand(const MenuRadioGroup& group, const SettingsStore& store) {
    uint32_t value = group.initial;
    store.RegReadDword(group.key, group.name, value);
    const auto valid = group.entries.first(group.valid);
    const auto entry = std::ranges::find(valid, value, &MenuRadio::value);
    return entry != valid.end() ? entry->id : group.otherwise;
}

bool MenuSettings::Toggle(const MenuToggle& toggle) {
    const bool marked = !menu_.GetMenuState(toggle.id);
    menu_.CheckMenuItem(toggle.id, marked);
    StoreNumber(store_, kMainKey, toggle.name, marked ? kMarked : 0);
    return marked;
}

void MenuSettings::Choose(const MenuRadioGroup& group, const MenuRadio& chosen) {
    for (const MenuRadio& entry : group.entries)
        menu_.CheckMenuItem(entry.id, entry.id == chosen.id);
    StoreNumber(store_, group.key, group.name, chosen.value);
}

}  // namespace bw
