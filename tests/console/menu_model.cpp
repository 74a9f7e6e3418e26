#include "menu_model.h"

#include <algorithm>

#include <fmt/format.h>

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

}  // namespace

MenuModel::MenuModel(const BuildSettings& settings, const std::vector<std::u16string>& names)
    : settings_(settings) {
    const size_t count = names.size();
    if (settings.ShowStyle == 0) {
        if (settings.PageSize > 10) item_ = 0x20A6;
        pageNumber_ = 0x234E;
        Put(count > 999 ? 0x206B : count > 9 ? 0x206C : 0x206D, std::to_string(count) + " IN 1");
    } else {
        Put(0x2064, "PUSH SEL OR START BUTTON");
    }
    names_ = TableNames(names, item_ % kColumns);
    Redraw(0);
}

void MenuModel::Move(char button) {
    const size_t size = settings_.PageSize;
    const size_t last = names_.size() - 1;
    const size_t lastPage = last / size * size;
    const size_t offset = selected_ - page_;
    const size_t oldPage = page_;
    const bool big = button == 'A' || button == 'B';
    frames_ = 0;
    if (button == 'U') {
        selected_ = selected_ == 0 ? last : selected_ - 1;
        page_ = selected_ / size * size;
    } else if (button == 'D' || button == 'S') {
        selected_ = selected_ == last ? 0 : selected_ + 1;
        page_ = selected_ / size * size;
    } else {
        const size_t step = big ? 5 * size : size;
        if (button == 'L' || button == 'B') {
            page_ = page_ == 0 ? lastPage : page_ - std::min(page_, step);
        } else {
            page_ = page_ == lastPage ? 0 : std::min(page_ + step, lastPage);
        }
        selected_ = std::min(page_ + offset, last);
    }
    if (page_ != oldPage) Redraw(oldPage);
}

uint8_t MenuModel::CursorY() const {
    return static_cast<uint8_t>((item_ - 0x2000) / kColumns * 8 - 1 +
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
        Put(RowAddress(row), std::string(length(oldPage + row), '\0'));
        if (length(page_ + row) > 0) Put(RowAddress(row), names_[page_ + row]);
    }
    if (!settings_.PageNumber) return;
    const size_t size = settings_.PageSize;
    const std::string pages = std::to_string((names_.size() + size - 1) / size);
    Put(pageNumber_ - (pages.size() - 1),
        fmt::format("{:0{}}/{}", page_ / size + 1, pages.size(), pages));
}

size_t MenuModel::RowAddress(size_t row) const {
    return item_ + row * (settings_.NameInsertRow ? 64 : 32);
}

// A blank shows nothing.
void MenuModel::Put(size_t address, const std::string& text) {
    for (const char character : text) {
        const size_t at = address++ - 0x2000;
        if (at < screen_.size()) screen_[at] = character == ' ' ? '\0' : character;
    }
}

}  // namespace bw::console
