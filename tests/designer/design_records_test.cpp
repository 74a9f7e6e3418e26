#include "designer/model/design_records.h"

#include <gmock/gmock.h>

#include "designer/record_bytes.h"

namespace bw {
namespace {

using testing::ElementsAre;

TEST(TextRecords, OtherTypesArePassedOverBySize) {
    Bytes bytes;
    AppendText(bytes, {.x = -2, .y = 29, .text = u"A\u9B42"});
    AppendText(bytes, {.type = 12, .text = u"not a text"});
    bytes = bytes + Chunk(99, {});
    AppendText(bytes, {.x = 3, .y = 0, .text = u""});
    EXPECT_THAT(ReadTextItems(bytes),
                ElementsAre(TextItem{.Index = 0, .X = -2, .Y = 29, .Text = u"A\u9B42"},
                            TextItem{.Index = 1, .X = 3, .Y = 0, .Text = u""}));
}

TEST(TextRecords, LongestText) {
    for (const size_t length : {260, 261}) {
        Bytes bytes;
        const std::u16string text(length, u'A');
        AppendText(bytes, {.text = text});
        EXPECT_EQ(ReadTextItems(bytes).size(), length == 260 ? 1u : 0u);
    }
}

TEST(TextRecords, ReadingEndsAtDamageAndKeepsWhatStandsBefore) {
    const std::pair<const char*, TextRecord> cases[] = {
        {"the size leaves the data", {.text = u"bad", .size = 1000}},
        {"the size is as large as can be", {.text = u"bad", .size = 0xFFFFFFFF}},
        {"no room for the place", {.text = u"bad", .size = 11}},
        {"the text leaves its record", {.text = u"bad", .textBytes = 16}},
        {"the length is as large as can be", {.text = u"bad", .textBytes = 0xFFFFFFFF}},
        {"half a unit", {.text = u"bad", .textBytes = 5}},
    };
    for (const auto& [about, damaged] : cases) {
        Bytes bytes;
        AppendText(bytes, {.text = u"good"});
        AppendText(bytes, damaged);
        AppendText(bytes, {.text = u"behind"});
        const auto items = ReadTextItems(bytes);
        ASSERT_EQ(items.size(), 1u) << about;
        EXPECT_EQ(items[0].Text, u"good") << about;
    }
}

}  // namespace
}  // namespace bw
