#include "app/program_icon.h"

#include <QPixmap>
#include <span>

extern "C" {
extern const unsigned char embedded_icon_16_begin[], embedded_icon_16_end[];
extern const unsigned char embedded_icon_24_begin[], embedded_icon_24_end[];
extern const unsigned char embedded_icon_32_begin[], embedded_icon_32_end[];
extern const unsigned char embedded_icon_48_begin[], embedded_icon_48_end[];
extern const unsigned char embedded_icon_64_begin[], embedded_icon_64_end[];
extern const unsigned char embedded_icon_128_begin[], embedded_icon_128_end[];
}

namespace bw {

QIcon ProgramIcon() {
    const std::span<const unsigned char> pictures[] = {
        {embedded_icon_16_begin, embedded_icon_16_end},
        {embedded_icon_24_begin, embedded_icon_24_end},
        {embedded_icon_32_begin, embedded_icon_32_end},
        {embedded_icon_48_begin, embedded_icon_48_end},
        {embedded_icon_64_begin, embedded_icon_64_end},
        {embedded_icon_128_begin, embedded_icon_128_end}};
    QIcon icon;
    for (const auto& picture : pictures) {
        QPixmap pixmap;
        pixmap.loadFromData(picture.data(), static_cast<unsigned>(picture.size()), "PNG");
        icon.addPixmap(pixmap);
    }
    return icon;
}

}  // namespace bw
