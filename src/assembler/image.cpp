#include "assembler/image.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace bw::assembler {

uint8_t* Image::BytesOf(int16_t slot) {
    if (slot >= kBankCountLimit) {
        return unknown_[static_cast<size_t>(slot - kBankCountLimit)].data();
    }
    return file_.data() + kHeaderSize + static_cast<size_t>(slot) * kBankSize;
}

void Image::Reserve(uint32_t banks) {
    const size_t size = kHeaderSize + size_t{banks} * kBankSize;
    if (size > file_.size()) file_.resize(size, kFill);
    current_ = BytesOf(slot_);
}

// Notes where the current slot is left before another one is selected. The bank that is current at
// the start counts as used only if something stands in it.
void Image::Leave() {
    if (slot_ >= kBankCountLimit) return;
    Location& location = locations_[static_cast<size_t>(slot_)];
    location = {offset_, page_, location.used || offset_ != 0};
}

void Image::Select(int16_t slot) {
    Leave();
    Reserve(static_cast<uint32_t>(slot) + 1);
    Location& location = locations_[static_cast<size_t>(slot)];
    location.used = true;
    slot_ = slot;
    offset_ = location.offset;
    page_ = location.page;
    current_ = BytesOf(slot);
    located_ = true;
}

int16_t Image::SelectUnknown() {
    Leave();
    if (unknown_.size() < kUnknownBankLimit) unknown_.emplace_back().fill(kFill);
    slot_ = static_cast<int16_t>(kBankCountLimit + unknown_.size() - 1);
    offset_ = page_ = 0;
    current_ = BytesOf(slot_);
    located_ = false;
    return slot_;
}

void Image::SelectNext() {
    constexpr uint32_t kAddressMask = 0xFFFF;
    const uint32_t page = (page_ + kBankSize) & kAddressMask;
    Select(static_cast<int16_t>(slot_ + 1));
    offset_ = 0;
    page_ = page;
}

void Image::SetAddress(uint32_t address) {
    offset_ = address & (kBankSize - 1);
    page_ = address & ~(kBankSize - 1);
    located_ = true;
}

void Image::Put(std::span<const uint8_t> bytes) {
    if (offset_ < kBankSize && !bytes.empty()) {
        std::memcpy(current_ + offset_, bytes.data(),
                    std::min<size_t>(bytes.size(), kBankSize - offset_));
    }
    Skip(bytes.size());
}

// How far an overflowing bank runs over is told up to this many bytes.
void Image::Skip(size_t count) {
    constexpr size_t kFarthest = size_t{1} << 30U;
    offset_ = static_cast<uint32_t>(std::min(offset_ + count, kFarthest));
}

uint8_t* Image::At(int16_t slot, uint32_t offset) {
    return BytesOf(slot) + offset;
}

bool Image::Settle(int16_t slot, int16_t bank) {
    Leave();
    Location& location = locations_[static_cast<size_t>(bank)];
    if (location.used) return false;
    location.used = true;
    Reserve(static_cast<uint32_t>(bank) + 1);
    std::memcpy(BytesOf(bank), BytesOf(slot), kBankSize);
    return true;
}

std::vector<uint8_t> Image::Take(uint32_t banks) {
    file_.resize(kHeaderSize + size_t{banks} * kBankSize, kFill);
    return std::exchange(file_, {});
}

}  // namespace bw::assembler
