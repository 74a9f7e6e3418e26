// Any bytes as the file of the undo history, as they are and with checksums that are right: what is
// taken can be walked through from end to end, and is stored again to the same bytes.

#include "designer/history/history_file.h"
#include "designer/history/step_names.h"
#include "designer/history/work_state.h"
#include "designer/model/stored_numbers.h"
#include "fuzz.h"
#include "rom/crc32.h"

namespace {

constexpr size_t kHeaderSize = 12;

void Read(std::span<const uint8_t> bytes) {
    auto history = bw::HistoryIn(bytes);
    if (!history) return;
    const std::vector<uint8_t> stored = bw::StoredHistory(*history);
    const auto again = bw::HistoryIn(stored);
    Expect(again && bw::StoredHistory(*again) == stored && again->Index() == history->Index());

    bw::StepNames names(*history);
    for (size_t state = 0; state < std::min<size_t>(history->Count(), 50); ++state)
        Expect(!names.Of(state, bw::Language::kEnglish).empty());
    const auto last = history->GoTo(history->Count() - 1);
    Expect(history->GoTo(0).has_value());
    while (history->CanRedo())
        history->Redo();
    Expect(history->Present() == *last);
    bw::WorkingCopy copy;
    bw::ApplyWorkState(*last, copy);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Read({data, size});
    std::vector<uint8_t> sealed(data, data + size);
    uint32_t crc = 0;
    size_t counted = 0;
    for (size_t at = kHeaderSize; at + 8 <= size;) {
        const size_t payload = bw::Read32(sealed, at);
        if (payload > size - at - 8) break;
        at += 4 + payload;
        crc = bw::Crc32(std::span(sealed).subspan(counted, at - counted), crc);
        counted = at;
        bw::Write32(sealed, at, crc);
        at += 4;
    }
    Read(sealed);
    return 0;
}
