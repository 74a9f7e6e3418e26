#include "shell/dialogs/play_keys.h"

#include <algorithm>
#include <string>

#include <QtCore/qnamespace.h>

namespace bw {
namespace {

// In the order of PlayKeys::kButtons. Those of the second pad lie far from the first's.
constexpr std::array<int, PlayKeys::kPads * PlayKeys::kButtons.size()> kDefaults{
    Qt::Key_Up,    Qt::Key_Down,   Qt::Key_Left, Qt::Key_Right, Qt::Key_Z, Qt::Key_X,
    Qt::Key_Shift, Qt::Key_Return, Qt::Key_W,    Qt::Key_S,     Qt::Key_A, Qt::Key_D,
    Qt::Key_F,     Qt::Key_G,      Qt::Key_R,    Qt::Key_T};

constexpr uint8_t Opposite(PadButton button) {
    switch (button) {
        case kPadUp:
            return kPadDown;
        case kPadDown:
            return kPadUp;
        case kPadLeft:
            return kPadRight;
        case kPadRight:
            return kPadLeft;
        default:
            return 0;
    }
}

std::string NameOf(size_t index) {
    return "Key" + std::to_string(index);
}

}  // namespace

PlayKeys::PlayKeys() : keys_(kDefaults) {}

void PlayKeys::Load(const SettingsStore& store) {
    for (size_t i = 0; i < keys_.size(); ++i) {
        uint32_t key = 0;
        if (store.RegReadDword(kPlayKey, NameOf(i), key)) keys_[i] = static_cast<int>(key);
    }
}

void PlayKeys::Store(SettingsStore& store) const {
    for (size_t i = 0; i < keys_.size(); ++i)
        StoreNumber(store, kPlayKey, NameOf(i), static_cast<uint32_t>(keys_[i]));
}

size_t PlayKeys::IndexOf(PadPlace place) {
    const auto found = std::ranges::find(kButtons, place.button);
    return place.pad * kButtons.size() + static_cast<size_t>(found - kButtons.begin());
}

int PlayKeys::KeyOf(PadPlace place) const {
    return keys_[IndexOf(place)];
}

std::optional<PadPlace> PlayKeys::PlaceOf(int key) const {
    const auto found = std::ranges::find(keys_, PlainKey(key));
    if (key == 0 || found == keys_.end()) return std::nullopt;
    const auto index = static_cast<size_t>(found - keys_.begin());
    return PadPlace{static_cast<uint32_t>(index / kButtons.size()),
                    kButtons[index % kButtons.size()]};
}

void PlayKeys::SetKey(PadPlace place, int key) {
    std::ranges::replace(keys_, PlainKey(key), 0);
    keys_[IndexOf(place)] = PlainKey(key);
}

int PlayKeys::PlainKey(int key) {
    if (key == Qt::Key_Backtab) return Qt::Key_Tab;
    if (key == Qt::Key_Enter) return Qt::Key_Return;
    return key;
}

bool HeldKeys::Press(uint32_t place, PadPlace button) {
    const PadStates before = Pads();
    std::erase_if(held_, [=](const Held& held) { return held.place == place; });
    held_.push_back({place, button});
    return Pads() != before;
}

bool HeldKeys::Release(uint32_t place) {
    const PadStates before = Pads();
    std::erase_if(held_, [=](const Held& held) { return held.place == place; });
    return Pads() != before;
}

bool HeldKeys::ReleaseAll() {
    const bool any = !held_.empty();
    held_.clear();
    return any;
}

PadStates HeldKeys::Pads() const {
    PadStates pads{};
    for (const Held& held : held_) {
        uint8_t& pad = pads[held.button.pad];
        pad = static_cast<uint8_t>((pad & ~Opposite(held.button.button)) | held.button.button);
    }
    return pads;
}

}  // namespace bw
