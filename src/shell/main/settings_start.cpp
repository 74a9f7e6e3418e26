#include "shell/main/settings_start.h"

#include "settings/setting_names.h"
#include "shell/framework/commands.h"
#include "shell/main/menu_settings.h"

namespace bw {
namespace {

class StartPass {
  public:
    StartPass(const SettingsStore& store, const std::function<void(int)>& send,
              const std::function<void(int)>& post)
        : store_(store), send_(send), post_(post) {}

    bool IsOn(int id) const {
        const MenuToggle& toggle = MenuToggleOf(id);
        uint32_t value = toggle.initial;
        store_.RegReadDword(kMainKey, toggle.name, value);
        return value != 0;
    }
    void Send(int id) const {
        if (IsOn(id)) send_(id);
    }
    void Post(int id) const {
        if (IsOn(id)) post_(id | kCommandAtStart);
    }
    void SendRadio(std::string_view name) const {
        send_(StoredCommand(MenuRadioGroupOf(name), store_));
    }

  private:
    const SettingsStore& store_;
    const std::function<void(int)>& send_;
    const std::function<void(int)>& post_;
};

}  // namespace

Language StartLanguage(const SettingsStore& store) {
    uint32_t value = 0;
    store.RegReadDword(kMainKey, setting::kLanguage, value);
    if (value == kCommandChinese) return Language::kChinese;
    if (value == kCommandEnglish) return Language::kEnglish;
    return SystemLanguage();
}

// The order is fixed: what is posted runs in it, and a later command may undo a part of an earlier.
void ApplyStoredSettings(const SettingsStore& store, CommandMenu& menu,
                         const std::function<void(int)>& send,
                         const std::function<void(int)>& post) {
    const StartPass pass(store, send, post);
    pass.Post(kCommandTopmost);
    pass.Send(kCommandShowNumberFill);
    pass.Send(kCommandNameInsertRow);
    // The length of the numbers is greyed here if either of the other two is off. Later only the
    // command of the numbers greys it; it stays that way.
    pass.Send(kCommandShowNumberOrder);
    if (!pass.IsOn(kCommandShowNumberOrder)) menu.EnableMenuItem(kCommandShowNumberFill, false);
    pass.Send(kCommandShowNumberDot);
    if (!pass.IsOn(kCommandShowNumberDot)) menu.EnableMenuItem(kCommandShowNumberFill, false);
    pass.Send(kCommandPageNumber);
    pass.SendRadio(setting::kPageSize);
    pass.SendRadio(setting::kShowStyle);
    post(StartLanguage(store) == Language::kChinese ? kCommandChinese : kCommandEnglish);
    pass.Post(kCommandCustomEnable);
    pass.SendRadio(setting::kCoolboyType);
    pass.SendRadio(setting::kMenuSize);
    pass.SendRadio(setting::kPageTurningSpeed);
    pass.SendRadio(setting::kMusic);
    pass.Send(kCommandExternMenuEnable);
    // Greyed, it has nothing to switch on, and what is stored may be meant for another copy.
    if (menu.Entry(kCommandUpdateChecks).isEnabled()) pass.Post(kCommandUpdateChecks);
    pass.Post(kCommandCheckAfterBuild);
}

}  // namespace bw
