#include "menu_model.h"

#include <algorithm>
#include <numeric>

namespace bw::console {
namespace {

constexpr size_t kColumns = 32;
constexpr size_t kBankSize = 8192;
constexpr size_t kFrameBytes = 0xC0 - 1;  // of the menu's command buffer
constexpr size_t kRecordHead = 4;
constexpr size_t kLongestName = (0xC0 - 8 - 1) / 2;

// A name is cut to the screen unless it opens a bank.
std::vector<std::string> TableNames(const std::vector<std::u16string>& names, size_t column) {
    std::vector<std::string> stored;
    size_t bank = 2;
    for (const std::u16string& name : names) {
        std::string text(name.begin(), name.end());
        const size_t cut = std::min(text.size(), kColumns - column);
        bank += cut + 3;
        if (bank > kBankSize) {
            bank = 2 + text.size() + 3;
        } else {
            text.resize(cut);
        }
        text.resize(std::min(text.size(), kLongestName));
        stored.push_back(text);
    }
    return stored;
}

MenuModel::CharMap Identity() {
    MenuModel::CharMap map;
    std::iota(map.begin(), map.end(), uint8_t{0});
    return map;
}

std::string Digits(size_t number, size_t width) {
    const std::string text = std::to_string(number);
    return std::string(width - std::min(width, text.size()), '0') + text;
}

}  // namespace

MenuLook DefaultLook(const BuildSettings& settings, size_t games) {
    MenuLook look;
    if (settings.ShowStyle == 0) {
        look.item = settings.PageSize <= 10 ? 0x20C6 : 0x20A6;
        look.title = games > 999 ? 0x206B : games > 9 ? 0x206C : 0x206D;
        look.titleText = std::to_string(games) + " IN 1";
        look.page = 0x234E;
    } else {
        look.item = 0x20C6;
        look.title = 0x2064;
        look.titleText = "PUSH SEL OR START BUTTON";
        look.page = 0x236E;
    }
    look.firstSpriteY = look.item == 0x20C6 ? 47 : 39;
    return look;
}

MenuModel::MenuModel(const MenuLook& look, const BuildSettings& settings,
                     const std::vector<std::u16string>& names)
    : MenuModel(look, settings, names, Screen{}, false, Identity()) {}

MenuModel::MenuModel(const MenuLook& look, const BuildSettings& settings,
                     const std::vector<std::u16string>& names, const Screen& background,
                     bool showBackground, const CharMap& map)
    : look_(look),
      settings_(settings),
      names_(TableNames(names, look.item % kColumns)),
      background_(background),
      map_(map) {
    if (showBackground) screen_ = background_;
    Redraw(0);
    Put(look_.title, look_.titleText);
}

void MenuModel::Move(char button) {
    const size_t size = settings_.PageSize;
    const size_t last = names_.size() - 1;
    const size_t lastPage = last / size * size;
    const size_t offset = selected_ - page_;
    const size_t oldPage = page_;
    frames_ = 0;
    switch (button) {
        case 'U':
            selected_ = selected_ == 0 ? last : selected_ - 1;
            page_ = selected_ / size * size;
            break;
        case 'D':
        case 'S':
            selected_ = selected_ == last ? 0 : selected_ + 1;
            page_ = selected_ / size * size;
            break;
        case 'L':
            page_ = page_ == 0 ? lastPage : page_ - size;
            selected_ = std::min(page_ + offset, last);
            break;
        case 'R':
            page_ = page_ == lastPage ? 0 : page_ + size;
            selected_ = std::min(page_ + offset, last);
            break;
        case 'B':
            page_ = page_ == 0 ? lastPage : page_ - std::min(page_, 5 * size);
            selected_ = std::min(page_ + offset, last);
            break;
        case 'A':
            page_ = page_ == lastPage ? 0 : std::min(page_ + 5 * size, lastPage);
            selected_ = std::min(page_ + offset, last);
            break;
        default:
            break;
    }
    if (page_ != oldPage) Redraw(oldPage);
}

uint8_t MenuModel::CursorY() const {
    return static_cast<uint8_t>(look_.firstSpriteY +
                                (selected_ - page_) * (settings_.NameInsertRow ? 16 : 8));
}

// Row by row: the old name goes, the new one comes. A frame takes as many rows as the speed says
// and as the command buffer holds.
void MenuModel::Redraw(size_t oldPage) {
    const auto length = [&](size_t item) { return item < names_.size() ? names_[item].size() : 0; };
    size_t used = 0;
    size_t rows = 0;
    frames_ = 1;
    for (size_t row = 0; row < settings_.PageSize; ++row) {
        if (rows == settings_.PageTurningSpeed) {
            ++frames_;
            rows = used = 0;
        }
        for (const size_t item : {oldPage + row, page_ + row}) {
            if (length(item) == 0) continue;
            if (used + kRecordHead + length(item) > kFrameBytes) {
                ++frames_;
                rows = used = 0;
                if (item == page_ + row && length(oldPage + row) > 0) {
                    used += kRecordHead + length(oldPage + row);  // wiped once more
                }
            }
            used += kRecordHead + length(item);
        }
        ++rows;
        Wipe(RowAddress(row), length(oldPage + row));
        if (length(page_ + row) > 0) Put(RowAddress(row), names_[page_ + row]);
    }
    if (settings_.PageNumber) PutPageNumber();
}

size_t MenuModel::RowAddress(size_t row) const {
    return look_.item + row * (settings_.NameInsertRow ? 64 : 32);
}

void MenuModel::Put(size_t address, const std::string& text) {
    for (const char character : text) {
        const size_t at = address++ - 0x2000;
        if (at >= kScreenSize) return;
        screen_[at] =
            character == ' ' ? background_[at] : map_[static_cast<unsigned char>(character)];
    }
}

void MenuModel::Wipe(size_t address, size_t count) {
    for (size_t at = address - 0x2000; count > 0 && at < kScreenSize; --count, ++at) {
        screen_[at] = background_[at];
    }
}

void MenuModel::PutPageNumber() {
    const size_t size = std::max<size_t>(settings_.PageSize, 1);
    const size_t pages = (names_.size() + size - 1) / size;
    const size_t width = std::to_string(pages).size();
    Put(look_.page - (look_.centrePage ? width - 1 : 0),
        Digits(page_ / size + 1, width) + "/" + std::to_string(pages));
}

std::string ScreenText(std::string_view tiles) {
    std::string text;
    for (size_t i = 0; i < tiles.size(); ++i) {
        const auto tile = static_cast<unsigned char>(tiles[i]);
        text += tile == 0 ? ' ' : tile >= 0x20 && tile < 0x60 ? static_cast<char>(tile) : '.';
        if (i % kColumns == kColumns - 1) text += "|\n";
    }
    return text;
}

}  // namespace bw::console
