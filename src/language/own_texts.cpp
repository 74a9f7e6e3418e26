// The texts that the program has added to those with fixed numbers.
#include "language/language_table.h"

namespace bw {
namespace {

using enum TextId;

// clang-format off
constexpr TextRow kRows[] = {
    {kFilterListEntry, u"Filter the list(&K)", u"筛选列表(&K)"},
    {kTimes1, u"x1", u"x1"},
    {kTimes2, u"x2", u"x2"},
    {kTimes3, u"x3", u"x3"},
    {kTimes4, u"x4", u"x4"},
    {kKilobytes128, u"128KB", u"128KB"},
    {kKilobytes256, u"256KB", u"256KB"},
    {kKilobytes512, u"512KB", u"512KB"},
    {kKilobytes1024, u"1024KB", u"1024KB"},
    {kKilobytes2048, u"2048KB", u"2048KB"},
    {kMindkids, u"MINDKIDS ", u"MINDKIDS "},
};
// clang-format on

}  // namespace

std::span<const TextRow> OwnTexts() {
    return kRows;
}

}  // namespace bw
