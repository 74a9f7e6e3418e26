#include "designer/history/undo_history.h"

#include <string_view>

#include <gtest/gtest.h>

#include "common/this_process.h"
#include "designer/history/work_state.h"

namespace bw {
namespace {

WorkState Of(std::string_view text) {
    return {text.begin(), text.end()};
}

// A step from one state to another.
bool Step(UndoHistory& history, const WorkState& before, const WorkState& after) {
    history.BeginEditStep(before);
    return history.CommitEditStep(after);
}

TEST(UndoHistory, StepsUndoAndRedo) {
    UndoHistory history;
    EXPECT_FALSE(history.Undo() || history.Redo() || history.CanUndo() || history.CanRedo());
    EXPECT_FALSE(history.CommitEditStep(Of("A"))) << "none was begun";
    EXPECT_FALSE(Step(history, Of("A"), Of("A")));
    EXPECT_EQ(history.Count(), 0u);
    EXPECT_TRUE(Step(history, Of("A"), Of("B")));
    EXPECT_EQ(history.Count(), 2u) << "the first step makes two";
    EXPECT_TRUE(Step(history, Of("B"), Of("C")));
    EXPECT_EQ(history.Count() * 10 + history.Index(), 32u);
    EXPECT_FALSE(history.Redo());
    for (const char* state : {"B", "A", "A"})  // the first one again
        EXPECT_EQ(history.Undo(), Of(state));
    EXPECT_TRUE(!history.CanUndo() && history.CanRedo());
    EXPECT_FALSE(Step(history, Of("A"), Of("A")));
    EXPECT_EQ(history.Count(), 3u) << "nothing changed: what can be redone stays";
    EXPECT_EQ(history.Redo(), Of("B"));
    EXPECT_EQ(history.Undo(), Of("A"));
    // A change outside of steps replaces the state before.
    EXPECT_TRUE(Step(history, Of("a"), Of("D")));
    EXPECT_EQ(history.Count(), 2u);
    EXPECT_TRUE(history.CanUndo() && !history.CanRedo());
    EXPECT_TRUE(Step(history, Of("d"), Of("E")));
    for (const char* state : {"d", "a"})
        EXPECT_EQ(history.Undo(), Of(state));
    EXPECT_EQ(history.Redo(), Of("d"));
}

TEST(UndoHistory, StoredFormAndItsDamages) {
    UndoHistory history;
    for (const char* after : {"BB", "", "CCCC"})
        Step(history, Of("A"), Of(after));  // A, A, A, CCCC
    history.Undo();
    const std::vector<uint8_t> stored = history.Store();
    ASSERT_EQ(stored.size(), 4u * 16 + 3 + 4);
    const WorkState first(stored.begin(), stored.begin() + 17);
    EXPECT_EQ(first, (WorkState{16, 0, 0, 0, 255, 255, 255, 255, 1, 0, 0, 0, 1, 0, 0, 0, 'A'}));

    const auto load = &UndoHistory::FromStored;
    UndoHistory same = load(stored, history.Index());
    EXPECT_EQ(same.Store(), stored);
    EXPECT_EQ(same.Redo(), Of("CCCC"));
    EXPECT_EQ(load(stored, 4).Index(), 3u) << "beyond the end: the last";
    EXPECT_EQ(load(stored, ~uint64_t{0}).Index(), 3u);
    EXPECT_EQ(load({}, 7).Count(), 0u);

    std::vector<uint8_t> damaged = stored;
    damaged[66] = 0xFF;  // 4 GB
    EXPECT_EQ(load(damaged, 0).Count(), 3u);
    damaged.resize(59);
    EXPECT_EQ(load(damaged, 0).Count(), 3u);
    damaged[34] = 17;  // the third header
    EXPECT_EQ(load(damaged, 0).Count(), 2u);
}

TEST(UndoHistory, CostsWhatChanged) {
    UndoHistory history;
    WorkingCopy copy;
    copy.Store().BkgTileList.resize(100);
    constexpr size_t kSteps = 200;
    const size_t held = test::HeldBytes();  // 0 under a sanitizer, and afterwards as well
    for (size_t i = 0; i < kSteps; ++i) {
        history.BeginEditStep(BuildWorkState(copy));
        copy.Store().ChrData[i * 16] = 1;
        if (i % 2 == 0) copy.Store().BkgTileList.pop_back();
        history.CommitEditStep(BuildWorkState(copy));
    }
    EXPECT_EQ(history.Count(), kSteps + 1);
    EXPECT_LE(test::HeldBytes() - held, kSteps * 500) << "states are 10 KB and more each";
}

}  // namespace
}  // namespace bw
