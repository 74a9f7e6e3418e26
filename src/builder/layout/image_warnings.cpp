#include "builder/layout/image_warnings.h"

#include <utility>

#include "support/text.h"

namespace bw {
namespace {

std::u16string Subject(const MulticartItem& item) {
    if (item.isMenu != 0) return VisibleText(PathText(item.path));
    return FormatText(u"%d.%s", item.row, VisibleText(item.name));
}

}  // namespace

std::vector<Diagnostic> FindIncompleteImages(std::span<const MulticartItem> items,
                                             Language language) {
    std::vector<Diagnostic> warnings;
    for (const MulticartItem& item : items) {
        if (item.valid == 0) continue;
        const auto warn = [&](TextId id, uint64_t wanted, uint64_t there) {
            warnings.push_back({Severity::kWarning,
                                FormatText(LoadText(id, language), Subject(item), wanted, there),
                                {.row = item.isMenu != 0 ? 0 : item.row, .name = item.name}});
        };
        const uint64_t used =
            uint64_t{item.headerSize} + item.trainerSize + item.prgBytes + item.chrBytes;
        if (item.fileSize < used) warn(TextId::kImageCutShort, used, item.fileSize);
        if (item.sizeHigh != 0) {
            // Bits 3-0 are bits 11-8 of the PRG size in 16 KB, bits 7-4 those of the CHR size in 8
            // KB.
            const uint64_t more = uint64_t{kPrgUnit} * 256 * (item.sizeHigh & 0x0F) +
                                  uint64_t{kChrUnit} * 256 * (item.sizeHigh >> 4);
            warn(TextId::kImageAsksForMore, used + more, used);
        }
    }
    return warnings;
}

}  // namespace bw
