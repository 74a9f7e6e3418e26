#include "list/collection/dat_collector.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "list/list_columns.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr size_t kCrcDigits = 8;

bool IsUtf8(std::string_view bytes) {
    return ToUtf8(ToWide(bytes)) == bytes;
}

std::u16string NameOf(std::string_view bytes) {
    std::u16string name;
    if (IsUtf8(bytes)) {
        name = ToWide(bytes);
    } else {
        for (const char byte : bytes)
            name += static_cast<uint8_t>(byte);
    }
    std::ranges::replace_if(
        name, [](char16_t unit) { return unit < 0x20 || (unit >= 0x7F && unit < 0xA0); }, u' ');
    if (name.size() <= kCellTextLimit) return name;
    name.resize(kCellTextLimit);
    if ((name.back() & 0xFC00) == 0xD800) name.pop_back();  // half of a pair
    return name;
}

// In any case, with fewer digits than eight, with "0x" in front.
std::optional<uint32_t> CrcOf(std::string_view digits) {
    if (digits.starts_with("0x") || digits.starts_with("0X")) digits.remove_prefix(2);
    if (digits.size() > kCrcDigits) return std::nullopt;
    uint32_t crc = 0;
    const auto [rest, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), crc, 16);
    if (error != std::errc() || rest != digits.data() + digits.size()) return std::nullopt;
    return crc;
}

}  // namespace

void DatCollector::AddRom(std::string_view digits) {
    ++names_.roms;
    const std::optional<uint32_t> crc = CrcOf(digits);
    if (!crc || game_.empty() || !wanted_.contains(*crc)) return;
    names_.byCrc.try_emplace(*crc, NameOf(game_));
}

void DatCollector::SetName(std::string_view name) {
    name_ = NameOf(name);
}

void DatCollector::SetDescription(std::string_view description) {
    names_.description = NameOf(description);
}

DatNames DatCollector::Take() {
    if (names_.description.empty()) names_.description = std::move(name_);
    return std::move(names_);
}

}  // namespace bw
