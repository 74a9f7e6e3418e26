#include "designer/history/history_file.h"

#include <string_view>

#include <gtest/gtest.h>

#include "common/temporary_folder.h"
#include "designer/history/designer_settings.h"
#include "designer/history/work_state.h"
#include "designer/tools/pointer_edits.h"
#include "designer/tools/tile_tools.h"

namespace bw {
namespace {

constexpr PatternTable kBkg = PatternTable::kBackground;

void Paint(EditSession& session, int32_t column) {
    session.Run([=](WorkingCopy& copy) {
        copy.BkgPalettePos = {column % 3 + 1, 0};
        return PaintPixel(copy, kBkg, {column % 8, column / 8});
    });
}
WorkState StateOf(UndoHistory history, size_t number) {
    return history.GoTo(number).value();
}
// A short history: six states of 2 to 6 bytes, the fourth of them the present one.
UndoHistory Short() {
    UndoHistory history;
    WorkState state = {'A', 'A'};
    for (const std::string_view next : {"AAB", "C", "CDDDDD", "CDEE", "F"}) {
        history.BeginEditStep(state);
        state.assign(next.begin(), next.end());
        history.CommitEditStep(state);
    }
    history.GoTo(3);
    return history;
}

// States that lead to the same one side by side, the present one included.
void ExpectPartOf(const UndoHistory& part, const UndoHistory& whole) {
    ASSERT_GE(whole.Index(), part.Index());
    ASSERT_EQ(part.Present(), whole.Present());
    const size_t first = whole.Index() - part.Index();
    ASSERT_LE(first + part.Count(), whole.Count());
    for (size_t i = 0; i < part.Count(); ++i)
        ASSERT_EQ(StateOf(part, i), StateOf(whole, first + i));
}

TEST(HistoryFile, DamageOrACutLeavesTheStatesNearThePresentOne) {
    const UndoHistory whole = Short();
    const std::vector<uint8_t> stored = StoredHistory(whole);
    const auto same = HistoryIn(stored);
    ASSERT_TRUE(same && same->Count() == 6 && same->Index() == 3);
    ExpectPartOf(*same, whole);
    size_t least = 6;
    for (size_t at = 0; at < stored.size(); ++at) {
        const std::span<const uint8_t> front = std::span(stored).first(at);
        if (const auto cut = HistoryIn(front)) {
            ExpectPartOf(*cut, whole);
            EXPECT_LT(cut->Count(), 6u);
            least = std::min(least, cut->Count());
        }
        for (unsigned bit = 0; bit < 8; ++bit) {
            std::vector<uint8_t> damaged = stored;
            damaged[at] ^= static_cast<uint8_t>(1u << bit);
            const auto read = HistoryIn(damaged);
            if (!read) continue;
            ExpectPartOf(*read, whole);
            EXPECT_LT(read->Count(), 6u) << "byte " << at;
        }
    }
    EXPECT_EQ(least, 1u);
    // A limit leaves out what is furthest away.
    for (size_t limit = stored.size(); limit-- > 0;) {
        const auto limited = HistoryIn(StoredHistory(whole, limit));
        ASSERT_TRUE(limited);
        ExpectPartOf(*limited, whole);
        least = std::min(least, limited->Count());
    }
}

TEST(HistoryFile, GoesFromRunToRunInPlaceOfTheSettings) {
    const TemporaryFolder folder;
    const auto file = folder / "new folder" / "history";
    const auto settings = MakeMemoryStore();
    const auto hasOld = [&] {
        size_t size = 0;
        return settings->RegValueSize(kDesignKey, "HistoryDataList", size);
    };
    EditSession old;
    Paint(old, 1);
    Paint(old, 2);
    ASSERT_TRUE(CloseDesigner(old, *settings));
    EditSession idle;
    ASSERT_TRUE(CloseDesigner(idle, *settings, file));
    EXPECT_TRUE(hasOld() && !std::filesystem::exists(file)) << "no steps: nothing to keep";

    EditSession first;
    OpenDesigner(first, *settings, file);
    ASSERT_EQ(first.Steps().Count(), 3u) << "the form of earlier versions";
    // Two copies of the program: both have the old steps, the last to close wins whole.
    EditSession second;
    OpenDesigner(second, *settings, file);
    Paint(first, 3);
    for (const int32_t column : {4, 5, 6})
        Paint(second, column);
    second.Undo();
    ASSERT_TRUE(CloseDesigner(second, *settings, file));
    EXPECT_FALSE(hasOld());
    ASSERT_TRUE(CloseDesigner(first, *settings, file));
    EditSession third;
    OpenDesigner(third, *settings, file);
    ExpectPartOf(third.Steps(), first.Steps());
    EXPECT_TRUE(third.Steps().Count() == 4 && third.Steps().Index() == 3);
    EXPECT_EQ(BuildWorkState(third.Copy()), BuildWorkState(first.Copy()));

    // A write that fails is told, and leaves everything: a file stands where the folder should be.
    EXPECT_FALSE(CloseDesigner(second, *settings, file / "below a file"));
    EXPECT_EQ(ReadHistoryFile(file)->Count(), 4u);
    // What a later version or another program has left there isn't lost.
    ASSERT_TRUE(WriteFile(file, std::string_view("BWUNDO\n\2something else")));
    EXPECT_FALSE(ReadHistoryFile(file));
    ASSERT_TRUE(CloseDesigner(first, *settings, file));
    EXPECT_EQ(ReadHistoryFile(file)->Count(), 4u);
    EXPECT_EQ(ReadFile(folder / "new folder" / "history.kept")->size(), 22u);
}

TEST(HistoryFile, GoingToAStateIsThatManyUndosOrRedos) {
    EditSession session;
    for (int32_t step = 0; step < 12; ++step) {
        session.Run([&](WorkingCopy& copy) {
            if (step % 3 == 0) copy.Store().CustomText.push_back({.Text = u"AB"});
            if (step % 3 == 1) PlaceTile(copy, kBkg);
            if (step % 3 == 2) copy.Store().CustomText.front().Text += u"C";
            return PaintPixel(copy, kBkg, {step % 8, step / 8});
        });
    }
    std::vector<WorkState> states(13);
    for (size_t state = 12; state-- > 0;) {
        session.Undo();
        states[state] = BuildWorkState(session.Copy());
    }
    for (size_t state = 1; state <= 12; ++state) {
        session.Redo();
        states[state] = BuildWorkState(session.Copy());
    }
    for (const size_t state : {0, 12, 5, 6, 4, 4, 11, 1}) {
        EXPECT_FALSE(session.GoTo(state).Empty());
        EXPECT_EQ(session.Steps().Index(), state);
        EXPECT_EQ(BuildWorkState(session.Copy()), states[state]);
    }
    EXPECT_TRUE(session.GoTo(13).Empty());
    EXPECT_EQ(session.Steps().Index(), 1u);
}

}  // namespace
}  // namespace bw
