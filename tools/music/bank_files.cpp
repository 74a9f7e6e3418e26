#include "music/bank_files.h"

#include <algorithm>

namespace bw {

BankCut CutBank(std::span<const uint8_t> image, size_t number, size_t size) {
    constexpr size_t kHeader = 16;
    constexpr uint8_t kUnused = 0xFF;
    const size_t banks = image.size() < kHeader ? 0 : (image.size() - kHeader) / kMusicBankBytes;
    if (number >= banks || size > kMusicBankBytes) {
        return {{},
                "the image has no " + std::to_string(size) + " bytes in bank " +
                    std::to_string(number)};
    }
    const auto bank = image.subspan(kHeader + number * kMusicBankBytes, kMusicBankBytes);
    const auto rest = bank.subspan(size);
    const auto used =
        std::find_if(rest.begin(), rest.end(), [](uint8_t byte) { return byte != kUnused; });
    if (used != rest.end()) {
        return {{},
                "bank " + std::to_string(number) + " is used at byte " +
                    std::to_string(size + static_cast<size_t>(used - rest.begin())) +
                    ", behind the " + std::to_string(size) + " that the file holds"};
    }
    return {bank.first(size), ""};
}

}  // namespace bw
