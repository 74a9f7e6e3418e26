// Settings that are entries of the menu: chosen, stored, and applied again at the next start.
#include "common/environment_variable.h"
#include "shell/main/menu_settings.h"
#include "shell/main_window.h"

namespace bw {
namespace {

class StoredSettings : public MainWindow {};

TEST_F(StoredSettings, TogglesFlipByMenuByMessageAndAtTheStart) {
    deployment.host = "https://host.invalid";  // the switch of its checks is grey without
    Store("CheckUpdates", 0);                  // the one that is on where nothing is stored
    Start();
    dialogs.choice = 2;  // a screen that nobody has designed is switched on all the same
    for (const MenuToggle& toggle : MenuToggles()) {
        SCOPED_TRACE(toggle.name);
        EXPECT_FALSE(Entry(toggle.id).isChecked());
        EXPECT_EQ(Stored(toggle.name), toggle.initial ? 0 : 0xDEADu) << "a start stores nothing of what is off";
        Send(toggle.id);
        EXPECT_TRUE(Entry(toggle.id).isChecked());
        EXPECT_EQ(Stored(toggle.name), 8u);
        Entry(toggle.id).setEnabled(true);
        Entry(toggle.id).trigger();
        EXPECT_FALSE(Entry(toggle.id).isChecked());
        EXPECT_EQ(Stored(toggle.name), 0u);
        Store(toggle.name, 1);  // anything but 0 is on, and becomes 8
    }
    dialogs.told.clear();
    Start();
    for (const MenuToggle& toggle : MenuToggles()) {
        EXPECT_TRUE(Entry(toggle.id).isChecked()) << toggle.name;
        EXPECT_EQ(Stored(toggle.name), 8u) << toggle.name;
    }
    EXPECT_TRUE(dialogs.told.empty());
}

TEST_F(StoredSettings, RadiosMarkOneOfTheirGroupAndStoreIt) {
    Start();
    for (const MenuRadioGroup& group : MenuRadioGroups()) {
        for (const MenuRadio& chosen : group.entries) {
            SCOPED_TRACE(std::string(group.name) + " " + std::to_string(chosen.value));
            Entry(chosen.id).setEnabled(true);
            Entry(chosen.id).trigger();
            EXPECT_EQ(Stored(group.name, group.key), chosen.value);
            for (const MenuRadio& entry : group.entries)
                EXPECT_EQ(Entry(entry.id).isChecked(), entry.id == chosen.id);
        }
    }
    Start();
    EXPECT_TRUE(Entry(kCommandMindkids).isChecked()) << "the one group of another key";
}

// What is stored, what the start stores in its place, and the entry that it marks.
const std::tuple<std::string, std::optional<uint32_t>, uint32_t, int> kStartValues[] = {
    {"PageSize", std::nullopt, 10, kCommandPageSize10},
    {"PageSize", 20, 20, kCommandPageSize20},
    {"PageSize", 7, 10, kCommandPageSize10},
    {"ShowStyle", 2, 0, kCommandStyleDefault},
    {"MenuSize", 32, 32, kCommandMenuSize32},
    {"MenuSize", 64, 8, kCommandMenuSize8},
    {"PageTurningSpeed", 0, 1, kCommandSpeed1},
    {"Music", std::nullopt, 0, kCommandMusicOff},
    {"Music", 9, 1, kCommandMusicDefault},
    {"Language", 40022, 40022, kCommandChinese},
    {"Language", 40001, 40023, kCommandEnglish},  // no other command runs
};

TEST_F(StoredSettings, ValuesOutOfRangeAreReplacedByWhatTheyCountAs) {
    const EnvironmentVariable locale("LC_ALL", "C");
    for (const auto& [name, stored, value, marked] : kStartValues) {
        SCOPED_TRACE(name + " " + std::to_string(stored.value_or(0)));
        window.reset();
        store = MakeMemoryStore();
        if (stored) Store(name, *stored);
        Start();
        EXPECT_TRUE(Entry(marked).isChecked());
        EXPECT_EQ(Stored(name), value);
        EXPECT_TRUE(window->isVisible());
    }
}

TEST_F(StoredSettings, TheLengthOfNumbersIsGreyedByBothAtTheStartAndByOneLater) {
    for (const bool order : {false, true}) {
        for (const bool dot : {false, true}) {
            Store("ShowNumberOrder", order ? 8 : 0);
            Store("ShowNumberDot", dot ? 8 : 0);
            Start();
            const QAction& fill = Entry(kCommandShowNumberFill);
            EXPECT_EQ(fill.isEnabled(), order && dot) << order << dot;
            Send(kCommandShowNumberDot);
            EXPECT_EQ(fill.isEnabled(), order && dot) << order << dot;
            Send(kCommandShowNumberOrder);
            EXPECT_EQ(fill.isEnabled(), !order) << order << dot;
        }
    }
}

}  // namespace
}  // namespace bw
