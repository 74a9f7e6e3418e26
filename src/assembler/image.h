#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <span>
#include <vector>

namespace bw::assembler {

inline constexpr uint32_t kBankSize = 0x2000;  // bytes of a .BANK
inline constexpr uint32_t kHeaderSize = 16;
inline constexpr int16_t kBankCountLimit = 255 * 2 + 255;  // what an iNES header can name
inline constexpr size_t kUnknownBankLimit = 64;            // slots of SelectUnknown()
inline constexpr uint8_t kFill = 0xFF;                     // of ROM that nothing is put in

// The ROM while it is assembled: header, banks, and for each bank where the next byte goes.
//
// Banks live in slots. Slot n below kBankCountLimit is bank n of the ROM. Slots from
// kBankCountLimit on stand for banks whose number isn't known yet; Settle() moves such a slot into
// its bank once it is.
class Image {
  public:
    // Makes `slot` current, at the location where it was left, or at 0 when it is new.
    void Select(int16_t slot);
    // A slot for a bank of unknown number, made current: a new one, or beyond kUnknownBankLimit the
    // last one again. Until SetAddress() its location is not known either.
    int16_t SelectUnknown();
    // Makes the bank behind a current one of known number current, from its start on. Addresses go
    // on behind those of the bank that is left.
    void SelectNext();
    void SetAddress(uint32_t address);

    int16_t Slot() const { return slot_; }
    uint32_t Offset() const { return offset_; }  // in the bank; may run past kBankSize
    uint32_t Address() const { return page_ + offset_; }
    bool Located() const { return located_; }

    // Puts a byte at the location and moves on; past the end of the bank it only moves on.
    void Put(uint8_t value) {
        if (offset_ < kBankSize) current_[offset_] = value;
        ++offset_;
    }
    void Put(std::span<const uint8_t> bytes);
    void Skip(size_t count);

    // The byte at an offset of a slot, for values that become known later.
    uint8_t* At(int16_t slot, uint32_t offset);

    // Moves a slot of SelectUnknown() into its bank. False if that bank was selected by other means
    // too: what lies where, and what lies on top, is then only known with the number at hand.
    bool Settle(int16_t slot, int16_t bank);

    void Reserve(uint32_t banks);
    // Ends assembly: the file of exactly `banks` banks, with room for the header in front.
    std::vector<uint8_t> Take(uint32_t banks);

  private:
    struct Location {
        uint32_t offset = 0;
        uint32_t page = 0;  // the address bits above the offset
        bool used = false;
    };
    using Bank = std::array<uint8_t, kBankSize>;

    uint8_t* BytesOf(int16_t slot);
    void Leave();

    std::vector<uint8_t> file_ = std::vector<uint8_t>(kHeaderSize + kBankSize, kFill);
    std::deque<Bank> unknown_;
    std::vector<Location> locations_ = std::vector<Location>(kBankCountLimit);
    uint8_t* current_ = file_.data() + kHeaderSize;
    int16_t slot_ = 0;
    uint32_t offset_ = 0;
    uint32_t page_ = 0;
    bool located_ = true;
};

}  // namespace bw::assembler
