// Any bytes as a part of a design, the first of them saying which: what is refused changes nothing,
// and what is taken can be stored and read again to the same end.

#include "designer/files/design_parts.h"
#include "fuzz.h"

namespace {

constexpr bw::Language kEnglish = bw::Language::kEnglish;
constexpr uint8_t kParts = static_cast<uint8_t>(bw::DesignPart::kCharMap) + 1;

using Bytes = std::vector<uint8_t>;

// Empty where the part can't be stored.
Bytes Stored(bw::DesignPart part, const bw::WorkingCopy& copy, bw::Shift shift) {
    auto result = bw::StorePart(part, shift, copy, kEnglish);
    const auto* bytes = std::get_if<Bytes>(&result);
    return bytes == nullptr ? Bytes() : *bytes;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size == 0) return 0;
    const auto part = static_cast<bw::DesignPart>(data[0] % kParts);
    const bw::Shift shift = (data[0] & 0x80) != 0 ? bw::Shift::kDown : bw::Shift::kUp;
    bw::WorkingCopy copy;
    copy.BkgTilePos = copy.SpTilePos = {7, 14};
    const Bytes before = bw::WriteDesign(copy.document);
    const auto result = bw::LoadPart(part, {data + 1, size - 1}, shift, copy, kEnglish);
    if (std::holds_alternative<bw::Diagnostic>(result)) {
        Expect(bw::WriteDesign(copy.document) == before);
        return 0;
    }
    Expect(copy.nextBkgIndex == copy.Store().BkgTileList.size() &&
           copy.nextSpriteIndex == copy.Store().SpriteTileList.size() &&
           copy.nextTextIndex == copy.Store().CustomText.size());
    const Bytes stored = Stored(part, copy, shift);
    if (stored.empty()) return 0;
    bw::WorkingCopy again = copy;
    Expect(!std::holds_alternative<bw::Diagnostic>(
        bw::LoadPart(part, stored, bw::Shift::kUp, again, kEnglish)));
    Expect(Stored(part, again, bw::Shift::kUp) == Stored(part, again, bw::Shift::kDown));
    return 0;
}
