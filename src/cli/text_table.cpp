#include "cli/text_table.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "support/text.h"

namespace bw {
namespace {

// Terminal columns: characters of East Asian scripts take two.
size_t Width(std::u16string_view text) {
    size_t width = 0;
    for (const char16_t unit : text) {
        const bool wide = (unit >= 0x1100 && unit <= 0x115F) ||
                          (unit >= 0x2E80 && unit <= 0xD7A3) ||
                          (unit >= 0xF900 && unit <= 0xFAFF) || (unit >= 0xFF00 && unit <= 0xFF60);
        width += wide ? 2 : 1;
    }
    return width;
}

}  // namespace

void TextTable::Row(std::vector<std::u16string> cells) {
    for (std::u16string& cell : cells)
        cell = VisibleText(cell);
    rows_.push_back(std::move(cells));
}

std::string TextTable::Text() const {
    std::vector<size_t> widths;
    for (const auto& row : rows_) {
        widths.resize(std::max(widths.size(), row.size()));
        for (size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], Width(row[i]));
    }
    std::string text;
    for (const auto& row : rows_) {
        std::string line;
        for (size_t i = 0; i < row.size(); ++i) {
            line += ToUtf8(row[i]);
            line.append(i + 1 == row.size() ? 0 : widths[i] - Width(row[i]) + 2, ' ');
        }
        line.erase(line.find_last_not_of(' ') + 1);
        text += line + "\n";
    }
    return text;
}

}  // namespace bw
