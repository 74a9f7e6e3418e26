// The settings that are entries of the main menu: what a command stores, and which command a stored
// value stands for.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "settings/settings_store.h"
#include "shell/framework/command_menu.h"

namespace bw {

// On or off; stored as 8 (the state of a marked entry) or 0.
struct MenuToggle {
    int id;
    std::string_view name;
    uint32_t initial = 0;  // where nothing is stored
};
std::span<const MenuToggle> MenuToggles();

struct MenuRadio {
    int id;
    uint32_t value;
};
// One of several values.
struct MenuRadioGroup {
    std::string_view key;
    std::string_view name;
    uint32_t initial;                    // where nothing is stored
    std::span<const MenuRadio> entries;  // in any order
    size_t valid;                        // the first so many entries can be read back
    int otherwise;                       // the command for any other stored value
};
std::span<const MenuRadioGroup> MenuRadioGroups();

// Those of an entry and of a value's name; throw std::out_of_range where there is none.
const MenuToggle& MenuToggleOf(int id);
const MenuRadioGroup& MenuRadioGroupOf(std::string_view name);

// The command of the group that the stored value stands for.
int StoredCommand(const MenuRadioGroup& group, const SettingsStore& store);

class MenuSettings {
  public:
    // Both must live longer.
    MenuSettings(CommandMenu& menu, SettingsStore& store) : menu_(menu), store_(store) {}

    // Flips the mark and stores it; the new mark.
    bool Toggle(const MenuToggle& toggle);
    // Moves the mark of the group to this entry of it and stores its value.
    void Choose(const MenuRadioGroup& group, const MenuRadio& chosen);

  private:
    CommandMenu& menu_;
    SettingsStore& store_;
};

}  // namespace bw
