// Any bytes as a stored work state and as a stored history: what is refused changes nothing but for
// the lists that a foreign state empties, and what is taken is stored again to the same end.

#include "designer/history/undo_history.h"
#include "designer/history/work_state.h"
#include "fuzz.h"

namespace {

void ReadState(std::span<const uint8_t> bytes) {
    bw::WorkingCopy copy;
    copy.Store().BkgTileList.resize(2);
    copy.Store().ArrowTileList.resize(4);
    const bw::WorkState before = bw::BuildWorkState(copy);
    if (!bw::ApplyWorkState(bytes, copy)) {
        Expect(copy.Store().BkgTileList.empty() || bw::BuildWorkState(copy) == before);
        return;
    }
    const bw::WorkState taken = bw::BuildWorkState(copy);
    bw::WorkingCopy again;
    Expect(bw::ApplyWorkState(taken, again));
    Expect(bw::BuildWorkState(again) == taken);
}

void ReadHistory(std::span<const uint8_t> bytes) {
    const auto history = bw::UndoHistory::FromStored(bytes, bytes.size() % 5);
    const std::vector<uint8_t> stored = history.Store();
    auto again = bw::UndoHistory::FromStored(stored, history.Index());
    Expect(again.Store() == stored && again.Index() == history.Index());
    while (again.CanUndo())
        Expect(again.Undo().has_value());
    while (again.CanRedo())
        Expect(again.Redo().has_value());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    ReadState({data, size});
    ReadHistory({data, size});
    return 0;
}
