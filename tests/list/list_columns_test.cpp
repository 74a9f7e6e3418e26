#include "list/list_columns.h"

#include <gtest/gtest.h>

#include "support/text.h"

namespace bw {
namespace {

TEST(ListColumns, CellsAndTitles) {
    GameEntry entry;
    entry.name = u"Name";
    entry.remark = u"Remark";
    entry.path = u"/p.nes";
    entry.header.bytes = {'N', 'E', 'S', 0x1A, 255, 8, 0x47, 0x08, 0, 0x21};
    entry.coolgirlSupported = true;
    std::string line;
    std::string titles;
    for (size_t i = 0; i < kListColumns; ++i) {
        const auto column = static_cast<ListColumn>(i);
        line += ToUtf8(CellText(entry, 41, column, Language::kEnglish)) + "|";
        titles += ToUtf8(LoadText(TraitsOf(column).titleId, Language::kEnglish)) + "|";
    }
    EXPECT_EQ(line, "42|Name|511 (8176KB)|520 (4160KB)|4|V|Yes|Yes|NO|YES|Remark|/p.nes|");
    EXPECT_EQ(titles,
              "Number|File name|PRG ROM|CHR ROM|Mapper #|Mirroring|Battery-backed|Trained|COOLBOY|"
              "COOLGIRL|Remark|File path|");
    EXPECT_EQ(CellText({}, 0, ListColumn::kPrg, Language::kEnglish), u" 0 (000KB)");
    entry.name.assign(300, u'x');
    EXPECT_EQ(CellText(entry, 0, ListColumn::kName, Language::kEnglish).size(), 260u);
}

}  // namespace
}  // namespace bw
