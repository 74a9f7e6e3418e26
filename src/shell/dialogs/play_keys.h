// Which key is which button of the two pads, and what is held at the moment.
#pragma once

#include <array>
#include <optional>
#include <vector>

#include "console/emulator.h"
#include "settings/settings_store.h"

namespace bw {

// Where the play window's values lie among the settings.
inline constexpr std::string_view kPlayKey = "Software\\Bankweaver\\Play";

struct PadPlace {
    uint32_t pad = 0;  // 0 or 1
    PadButton button = kPadA;
    friend bool operator==(const PadPlace&, const PadPlace&) = default;
};

class PlayKeys {
  public:
    static constexpr size_t kPads = 2;
    static constexpr std::array kButtons{kPadUp, kPadDown, kPadLeft,   kPadRight,
                                         kPadB,  kPadA,    kPadSelect, kPadStart};

    // The usual ones.
    PlayKeys();
    void Load(const SettingsStore& store);
    void Store(SettingsStore& store) const;

    // Keys are Qt::Key numbers; 0 is none.
    int KeyOf(PadPlace place) const;
    std::optional<PadPlace> PlaceOf(int key) const;
    // Whatever else had the key has none then.
    void SetKey(PadPlace place, int key);

    // Shift+Tab and the like are the key that they are on the keyboard.
    static int PlainKey(int key);

  private:
    static size_t IndexOf(PadPlace place);
    std::array<int, kPads * kButtons.size()> keys_{};
};

// What is held on the keyboard, as pads. A key is told by its place on the keyboard where the
// system names that: another key that goes down or up meanwhile can change what it is called.
class HeldKeys {
  public:
    // True if that changed the pads.
    bool Press(uint32_t place, PadPlace button);
    bool Release(uint32_t place);
    bool ReleaseAll();
    // Of two opposite directions the newer one: no pad gives both.
    PadStates Pads() const;

  private:
    struct Held {
        uint32_t place;
        PadPlace button;
    };
    std::vector<Held> held_;  // in the order of pressing
};

}  // namespace bw
