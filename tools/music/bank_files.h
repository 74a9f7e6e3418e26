// Cuts the banks of an assembled set into files.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace bw {

inline constexpr size_t kMusicBankBytes = 8192;

struct BankCut {
    std::span<const uint8_t> bytes;  // part of the image
    std::string fault;               // why there are none
};

// The first `size` bytes of bank `number` of an iNES image. What lies behind them in the bank must
// be unused, $FF.
BankCut CutBank(std::span<const uint8_t> image, size_t number, size_t size);

}  // namespace bw
