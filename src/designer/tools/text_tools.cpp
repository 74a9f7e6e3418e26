#include "designer/tools/text_tools.h"

#include <algorithm>
#include <string>

#include "designer/model/tiles.h"
#include "designer/tools/attribute_tools.h"
#include "designer/tools/list_tools.h"
#include "designer/tools/map_tools.h"
#include "designer/tools/tile_tools.h"
#include "support/text.h"

namespace bw {
namespace {

std::u16string MenuName(const std::u16string& name) {
    if (name.empty()) return u" ";
    std::u16string shown = name;
    for (char16_t& character : shown) {
        if (character >= u'a' && character <= u'z') {
            character = static_cast<char16_t>(character - u'a' + u'A');
        } else if (character >= 128) {
            character = u'?';
        }
    }
    return shown;
}

int32_t ItemCount(const WorkingCopy& copy) {
    return static_cast<int32_t>(copy.AllItemTextList.size());
}

// "03/12": the page shown, with as many digits as the number of pages has.
std::u16string PageText(const WorkingCopy& copy) {
    const int32_t count = ItemCount(copy);
    if (count == 0) return u"1/1";
    const std::string pages = std::to_string((count - 1) / copy.PageItemCount + 1);
    std::string page = std::to_string(copy.PageFirstItem / copy.PageItemCount + 1);
    if (page.size() < pages.size()) page.insert(0, pages.size() - page.size(), '0');
    return ToWide(page + "/" + pages);
}

Views ShowPage(WorkingCopy& copy, int32_t firstItem) {
    copy.PageFirstItem = firstItem;
    copy.ItemTextList.clear();
    const int32_t end = std::min(ItemCount(copy) - firstItem, copy.PageItemCount) + firstItem;
    for (int32_t item = firstItem; item < end; ++item) {
        copy.ItemTextList.push_back(copy.AllItemTextList[static_cast<size_t>(item)]);
        if (copy.ItemBlankLine) copy.ItemTextList.emplace_back();
    }
    copy.PageNumberText = PageText(copy);
    return View::kNameTable;
}

// The column that centres a text; truncated, so that longer ones begin left of the middle.
int32_t CentredColumn(size_t length) {
    return (kScreenColumns - static_cast<int32_t>(length)) / 2;
}

size_t LongestItem(const WorkingCopy& copy) {
    constexpr size_t kWidestList = 30;  // columns
    size_t longest = 0;
    for (const std::u16string& name : copy.AllItemTextList)
        longest = std::max(longest, name.size());
    return std::min(longest, kWidestList);
}

}  // namespace

Views SetItems(WorkingCopy& copy, const std::vector<std::u16string>& names, int32_t itemsOnPage,
               bool blankLine) {
    copy.AllItemTextList.clear();
    for (const std::u16string& name : names)
        copy.AllItemTextList.push_back(MenuName(name));
    copy.PageItemCount = std::max(1, itemsOnPage);
    copy.ItemBlankLine = blankLine;
    return ShowPage(copy, 0);
}

Views TurnPage(WorkingCopy& copy, PageTurn turn) {
    const int32_t count = ItemCount(copy);
    const int32_t next = copy.PageFirstItem + copy.PageItemCount;
    const int32_t previous = copy.PageFirstItem - copy.PageItemCount;
    switch (turn) {
        case PageTurn::kFirst:
            return ShowPage(copy, 0);
        case PageTurn::kPrevious:
            return previous < 0 ? Views() : ShowPage(copy, previous);
        case PageTurn::kNext:
            return next >= count ? Views() : ShowPage(copy, next);
        case PageTurn::kLast:
            return ShowPage(copy, std::max(0, count - 1) / copy.PageItemCount * copy.PageItemCount);
    }
    return {};
}

Views SetCaption(WorkingCopy& copy, std::u16string_view text) {
    copy.captionBox = copy.Store().CaptionText = text;
    return View::kNameTable;
}

Views AddText(WorkingCopy& copy, std::u16string_view text) {
    if (text.empty()) return {};
    copy.Store().CustomText.push_back(
        {.Index = copy.nextTextIndex++, .Text = std::u16string(text)});
    return View::kNameTable;
}

Views ClearTexts(WorkingCopy& copy) {
    copy.Store().CustomText.clear();
    copy.nextTextIndex = 0;
    return View::kNameTable;
}

Views ResetTexts(WorkingCopy& copy) {
    DesignDocument& document = copy.document;
    SetCaption(copy, ToWide(std::to_string(ItemCount(copy)) + " IN 1"));
    document.CaptionPos = {CentredColumn(document.store.CaptionText.size()), 2};
    document.PageNumberPos = {CentredColumn(copy.PageNumberText.size()), 27};
    document.ItemPos = {CentredColumn(LongestItem(copy)), 5};
    ResetSmallCursor(document);
    document.store.ArrowTileList.clear();
    RebuildShortLargeCursor(document);
    return ClearTexts(copy) | ClearItems(copy, PatternTable::kBackground) | ResetAttributes(copy) |
           View::kCaptionBox | View::kCheckBoxes;
}

Views ResetAttributes(WorkingCopy& copy) {
    copy.Store().Attributes = kDefaultAttributes;
    return View::kNameTable | SynchroniseCursors(copy);
}

Views ResetPalette(WorkingCopy& copy, PatternTable table) {
    const bool background = table == PatternTable::kBackground;
    (background ? copy.Store().BkgPalette : copy.Store().SpritePalette) =
        background ? kDefaultBkgPalette : kDefaultSpritePalette;
    return TableViews(table) | View::kSpritePalette | SynchroniseCursors(copy);
}

Views ResetDesign(WorkingCopy& copy) {
    copy.Store().BkgTileSelected.fill(0);
    copy.Store().SpriteTileSelected.fill(0);
    const Views changed =
        ResetCharMap(copy) | ResetTexts(copy) | ResetPalette(copy, PatternTable::kBackground) |
        ResetPalette(copy, PatternTable::kSprites) |
        ResetPatternTable(copy, PatternTable::kBackground) |
        ResetPatternTable(copy, PatternTable::kSprites) | ClearItems(copy, PatternTable::kSprites);
    // Behind the resets, which move the entry to the attribute's palette.
    copy.BkgPalettePos = copy.SpPalettePos = {1, 0};
    return changed | ShowBkgColour(copy);
}

}  // namespace bw
