#include "list/list_columns.h"

#include <string_view>

namespace bw {
namespace {

using enum ColumnAlignment;

// All but the remark show in a window of 1120 pixels.
constexpr std::array<ListColumnTraits, kListColumns> kTraits{{
    {TextId::kNumber, 84, kRight, kRight},
    {TextId::kFileName, 176, kLeft, kLeft},
    {TextId::kPrgRom, 84, kRight, kRight},
    {TextId::kChrRom, 84, kRight, kRight},
    {TextId::kMapperNumber, 48, kRight, kRight},
    {TextId::kMirroring, 50, kCentre, kCentre},
    {TextId::kBatteryBacked, 50, kCentre, kCentre},
    {TextId::kTrained, 42, kCentre, kCentre},
    {TextId::kCoolboy, 34, kCentre, kCentre},
    {TextId::kCoolgirl, 34, kCentre, kCentre},
    {TextId::kRemark, 256, kLeft, kLeft},
    {TextId::kFilePath, 150, kLeft, kLeft},
    {TextId::kOnTheConsole, 160, kLeft, kLeft},
}};

// Right-aligned in at least `width` places, with `fill` before it. Rows are painted often, and
// this takes a tenth of the time of filling a placeholder.
void AppendNumber(std::u16string& text, size_t value, size_t width, char16_t fill) {
    std::array<char16_t, 20> digits{};  // as many as 64 bits have
    size_t first = digits.size();
    do {
        digits[--first] = static_cast<char16_t>(u'0' + value % 10);
        value /= 10;
    } while (value != 0);
    const size_t count = digits.size() - first;
    if (count < width) text.append(width - count, fill);
    text.append(digits.data() + first, count);
}

std::u16string Number(size_t value) {
    std::u16string text;
    AppendNumber(text, value, 1, u' ');
    return text;
}

// "%2d (%0.3dKB)"
std::u16string Size(size_t count, size_t kilobytes) {
    std::u16string text;
    AppendNumber(text, count, 2, u' ');
    text += u" (";
    AppendNumber(text, kilobytes, 3, u'0');
    return text.append(u"KB)");
}

std::u16string Shown(std::u16string_view text) {
    return std::u16string(text.substr(0, kCellTextLimit));
}

}  // namespace

const ListColumnTraits& TraitsOf(ListColumn column) {
    return kTraits[static_cast<size_t>(column)];
}

std::u16string CellText(const GameEntry& entry, size_t row, ListColumn column, Language language) {
    const InesHeader& header = entry.header;
    const auto either = [&](bool first, TextId firstId, TextId secondId) {
        return LoadText(first ? firstId : secondId, language);
    };
    switch (column) {
        case ListColumn::kNumber:
            return Number(row + 1);
        case ListColumn::kName:
            return Shown(entry.name);
        case ListColumn::kPrg:
            return Size(header.PrgCount(), size_t{header.PrgCount()} * (kPrgUnit / 1024));
        case ListColumn::kChr:
            return Size(header.ChrCount(), size_t{header.ChrCount()} * (kChrUnit / 1024));
        case ListColumn::kMapper:
            return Number(header.Mapper());
        case ListColumn::kMirroring:
            return either(header.Vertical(), TextId::kVertical, TextId::kHorizontal);
        case ListColumn::kBattery:
            return either(header.Battery(), TextId::kYes, TextId::kNo);
        case ListColumn::kTrainer:
            return either(header.Trainer(), TextId::kYes, TextId::kNo);
        case ListColumn::kCoolboy:
            return either(entry.coolboySupported, TextId::kSupportedYes, TextId::kSupportedNo);
        case ListColumn::kCoolgirl:
            return either(entry.coolgirlSupported, TextId::kSupportedYes, TextId::kSupportedNo);
        case ListColumn::kRemark:
            return Shown(entry.remark);
        case ListColumn::kPath:
            return Shown(entry.path);
        case ListColumn::kConsole:
            break;
    }
    return {};
}

}  // namespace bw
