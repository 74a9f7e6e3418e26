#include "list/console_name.h"

#include <algorithm>

#include "support/text.h"

namespace bw {
namespace {

constexpr uint32_t kScreenWidth = 32;    // columns
constexpr char16_t kLastKeptCode = 128;  // 128 itself stays

}  // namespace

std::string ConsoleName(std::u16string_view name) {
    std::string result;
    result.reserve(name.size());
    for (const char16_t unit : name) {
        result += static_cast<char>(unit > kLastKeptCode ? u'?' : AsciiUpper(unit));
    }
    return result;
}

uint32_t ConsoleRoom(uint32_t nameColumn) {
    return kScreenWidth - std::min(nameColumn, kScreenWidth - 1);
}

ConsoleLine ConsoleLineOf(const GameEntry& entry, size_t ordinal, size_t checkedCount,
                          const ConsoleMenu& menu) {
    const std::u16string name =
        DisplayName(entry, ordinal, checkedCount, menu.numbers, NameRules::kRomBuild);
    const size_t room = ConsoleRoom(menu.nameColumn);
    const std::u16string_view kept = std::u16string_view(name).substr(0, room);
    return {
        .text = ConsoleName(kept),
        .cut = name.size() > room,
        .unknown = std::ranges::any_of(kept, [](char16_t unit) { return unit > kLastKeptCode; })};
}

}  // namespace bw
