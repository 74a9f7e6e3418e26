#include "designer/history/undo_history.h"

#include <functional>
#include <random>
#include <string_view>

#include <gtest/gtest.h>
#include <malloc.h>

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
    EXPECT_EQ(history.Count(), 3u);
    EXPECT_EQ(history.Index(), 2u);
    EXPECT_FALSE(history.Redo());
    EXPECT_EQ(history.Undo(), Of("B"));
    EXPECT_EQ(history.Undo(), Of("A"));
    EXPECT_TRUE(!history.CanUndo() && history.CanRedo());
    EXPECT_EQ(history.Undo(), Of("A")) << "the first one again";
    EXPECT_FALSE(Step(history, Of("A"), Of("A")));
    EXPECT_EQ(history.Count(), 3u) << "nothing changed: what can be redone stays";
    EXPECT_EQ(history.Redo(), Of("B"));
    EXPECT_EQ(history.Undo(), Of("A"));
    EXPECT_TRUE(Step(history, Of("A"), Of("D")));
    EXPECT_EQ(history.Count(), 2u);
    EXPECT_TRUE(history.CanUndo() && !history.CanRedo());
    EXPECT_EQ(history.Undo(), Of("A"));
    EXPECT_EQ(history.Redo(), Of("D"));
}

TEST(UndoHistory, ChangesOutsideOfStepsReplaceTheStateBefore) {
    UndoHistory history;
    Step(history, Of("A"), Of("B"));
    Step(history, Of("b"), Of("C"));
    EXPECT_EQ(history.Undo(), Of("b"));
    EXPECT_EQ(history.Undo(), Of("A"));
    Step(history, Of("a"), Of("D"));
    EXPECT_EQ(history.Undo(), Of("a"));
    EXPECT_EQ(history.Count(), 2u);
}

TEST(UndoHistory, StoredFormAndItsDamages) {
    UndoHistory history;
    for (const char* after : {"BB", "", "CCCC"})
        Step(history, Of("A"), Of(after));  // A, A, A, CCCC
    history.Undo();
    const std::vector<uint8_t> stored = history.Store();
    ASSERT_EQ(stored.size(), 4u * 16 + 3 + 4);
    EXPECT_EQ(stored[0], 16);
    EXPECT_EQ(stored[4], 0xFF);
    EXPECT_EQ(stored[8], 1);
    EXPECT_EQ(stored[12], 1);
    EXPECT_EQ(stored[16], 'A');

    const auto load = [&](const std::vector<uint8_t>& bytes, uint64_t index) {
        UndoHistory loaded;
        loaded.Load(bytes, index);
        return loaded;
    };
    UndoHistory same = load(stored, history.Index());
    EXPECT_EQ(same.Store(), stored);
    EXPECT_EQ(same.Redo(), Of("CCCC"));
    EXPECT_EQ(load(stored, 4).Index(), 3u) << "beyond the end: the last";
    EXPECT_EQ(load(stored, ~uint64_t{0}).Index(), 3u);
    EXPECT_EQ(load({}, 7).Count(), 0u);

    std::vector<uint8_t> damaged = stored;
    damaged[34] = 17;  // the third header
    EXPECT_EQ(load(damaged, 0).Count(), 2u);
    damaged = stored;
    damaged[66] = 0xFF;  // 4 GB
    EXPECT_EQ(load(damaged, 0).Count(), 3u);
    damaged.resize(59);
    EXPECT_EQ(load(damaged, 0).Count(), 3u);
}

// A state of chunks like the designer's: two lists and some tables, in a fixed order.
struct Model {
    std::vector<WorkState> tiles;
    std::vector<WorkState> texts;
    WorkState table = WorkState(8192, 0);
    WorkState place = WorkState(8, 0);

    WorkState Bytes() const {
        WorkState bytes(16, 0);
        bytes[0] = 16;
        const auto chunk = [&](uint8_t type, const WorkState& payload) {
            const auto size = payload.size();
            bytes.insert(bytes.end(),
                         {type, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, static_cast<uint8_t>(size),
                          static_cast<uint8_t>(size >> 8), 0, 0});
            bytes.insert(bytes.end(), payload.begin(), payload.end());
        };
        for (const WorkState& tile : tiles)
            chunk(12, tile);
        chunk(4, table);
        for (const WorkState& text : texts)
            chunk(6, text);
        chunk(17, place);
        return bytes;
    }
};

class RandomSteps {
  public:
    void Change(Model& model) {
        model.place[Below(8)] = Byte();
        switch (Below(7)) {
            case 0:
                for (size_t i = 0; i < 16; ++i)
                    model.table[512 + i] = Byte();
                break;
            case 1:
                model.table[Below(8192)] = Byte();
                break;
            case 2:
                model.tiles.insert(model.tiles.begin() + Place(model.tiles), WorkState(20, Byte()));
                break;
            case 3:
                if (!model.tiles.empty()) model.tiles.erase(model.tiles.begin());
                break;
            case 4:
                model.texts.push_back(WorkState(20 + Below(40), Byte()));
                break;
            case 5:
                model.texts.clear();
                break;
            default:
                for (WorkState& tile : model.tiles)
                    tile[12] ^= 1;
        }
    }
    size_t Below(size_t limit) { return random_() % limit; }

  private:
    uint8_t Byte() { return static_cast<uint8_t>(random_()); }
    ptrdiff_t Place(const std::vector<WorkState>& list) {
        return static_cast<ptrdiff_t>(Below(list.size() + 1));
    }

    std::mt19937 random_{45};
};

TEST(UndoHistory, LongWalkGivesBackEveryStateAndCostsWhatChanged) {
    UndoHistory history;
    Model model;
    RandomSteps steps;
    std::vector<WorkState> states = {model.Bytes()};
    while (states.size() < 2000) {
        steps.Change(model);
        if (const WorkState state = model.Bytes(); state != states.back()) states.push_back(state);
    }
    const size_t held = mallinfo2().uordblks;  // 0 under a sanitizer, and afterwards as well
    for (size_t i = 1; i < states.size(); ++i)
        Step(history, states[i - 1], states[i]);
    EXPECT_LE(mallinfo2().uordblks - held, states.size() * 1000) << "states are 9 KB and more each";
    ASSERT_EQ(history.Count(), states.size());
    for (size_t i = states.size() - 1; i-- > 0;)
        ASSERT_EQ(history.Undo(), states[i]) << i;
    for (size_t i = 1; i < states.size(); ++i)
        ASSERT_EQ(history.Redo(), states[i]) << i;
}

TEST(StateDelta, TakesAnyBytes) {
    std::mt19937 random(46);
    for (int round = 0; round < 3000; ++round) {
        WorkState sides[2];
        for (WorkState& side : sides) {
            for (size_t count = random() % 5; count > 0; --count) {
                const auto size = static_cast<uint8_t>(random() % 4);
                side.insert(side.end(),
                            {static_cast<uint8_t>(random() % 3), 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
                             size, 0, 0, static_cast<uint8_t>(random() % 20 == 0)});
                side.insert(side.end(), size, static_cast<uint8_t>(random() % 2));
            }
            side.resize(side.size() - std::min<size_t>(side.size(), random() % 3));
        }
        const StateDelta delta(sides[0], sides[1]);
        ASSERT_EQ(delta.Forward(sides[0]), sides[1]) << round;
        ASSERT_EQ(delta.Backward(sides[1]), sides[0]) << round;
    }
}

}  // namespace
}  // namespace bw
