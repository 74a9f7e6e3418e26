#include "designer/model/design_records.h"

#include <gmock/gmock.h>

#include "designer/record_bytes.h"

namespace bw {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(TileRecords, FieldsStandInTheirOrder) {
    const Bytes bytes = {1, 2, 3, 4, 0xFE, 0xFF, 0xFF, 0xFF, 0x2C, 1,
                         0, 0, 1, 0, 0,    0x80, 31,   3,    7,    9};
    EXPECT_THAT(ReadTileItems(bytes), ElementsAre(TileItem{.Index = 0x04030201,
                                                           .X = -2,
                                                           .Y = 300,
                                                           .Selected = 0x80000001,
                                                           .Tile = 31,
                                                           .Palette = 3,
                                                           .Flags = 7,
                                                           .Reserved = 9}));
}

TEST(TileRecords, RestTooShortForARecordIsIgnored) {
    Bytes bytes;
    AppendTile(bytes, 1, 2, 3);
    AppendTile(bytes, 4, 5, 6);
    EXPECT_EQ(ReadTileItems(bytes).size(), 2u);
    bytes.pop_back();
    EXPECT_EQ(ReadTileItems(bytes).size(), 1u);
    EXPECT_THAT(ReadTileItems({}), IsEmpty());
}

TEST(TextRecords, PlaceTextAndNumber) {
    Bytes bytes;
    AppendText(bytes, {.x = -2, .y = 29, .text = u"A\u9B42"});
    AppendText(bytes, {.x = 3, .y = 0, .text = u""});
    EXPECT_THAT(ReadTextItems(bytes),
                ElementsAre(TextItem{.Index = 0, .X = -2, .Y = 29, .Text = u"A\u9B42"},
                            TextItem{.Index = 1, .X = 3, .Y = 0, .Text = u""}));
}

TEST(TextRecords, OtherTypesArePassedOverBySize) {
    Bytes bytes;
    AppendText(bytes, {.text = u"one"});
    AppendText(bytes, {.type = 12, .text = u"not a text"});
    Append32(bytes, 99);
    Append32(bytes, 0);
    Append32(bytes, 1);
    Append32(bytes, 0);  // a record of its header only
    AppendText(bytes, {.text = u"two"});
    const auto items = ReadTextItems(bytes);
    ASSERT_EQ(items.size(), 2u);
    EXPECT_EQ(items[1].Text, u"two");
    EXPECT_EQ(items[1].Index, 1u);
}

TEST(TextRecords, LongestText) {
    const std::u16string longest(260, u'A');
    const std::u16string tooLong(261, u'A');
    Bytes bytes;
    AppendText(bytes, {.text = longest});
    EXPECT_EQ(ReadTextItems(bytes).at(0).Text, longest);
    bytes.clear();
    AppendText(bytes, {.text = tooLong});
    EXPECT_THAT(ReadTextItems(bytes), IsEmpty());
}

TEST(TextRecords, ReadingEndsAtDamageAndKeepsWhatStandsBefore) {
    struct Case {
        const char* about;
        TextRecord damaged;
    };
    const Case cases[] = {
        {"the size leaves the data", {.text = u"bad", .size = 1000}},
        {"the size is as large as can be", {.text = u"bad", .size = 0xFFFFFFFF}},
        {"no room for the place", {.text = u"bad", .size = 11}},
        {"the text leaves its record", {.text = u"bad", .textBytes = 16}},
        {"the length is as large as can be", {.text = u"bad", .textBytes = 0xFFFFFFFF}},
        {"half a unit", {.text = u"bad", .textBytes = 5}},
    };
    for (const Case& c : cases) {
        Bytes bytes;
        AppendText(bytes, {.text = u"good"});
        AppendText(bytes, c.damaged);
        AppendText(bytes, {.text = u"behind"});
        const auto items = ReadTextItems(bytes);
        ASSERT_EQ(items.size(), 1u) << c.about;
        EXPECT_EQ(items[0].Text, u"good") << c.about;
    }
}

}  // namespace
}  // namespace bw
