#include "designer/gestures/text_drag.h"

#include <algorithm>
#include <utility>

#include "designer/gestures/gesture_places.h"

namespace bw {

TextDrag::TextDrag(MouseMode mode, Point inScreen, Pos text) : mode_(mode) {
    const Point inside = TextRect(text, {}).From(inScreen);
    hotSpot_ = {inside.x & ~(kNameCell - 1), inside.y & ~(kNameCell - 1)};
}

std::optional<TextDrag> TextDrag::TryPress(GestureContext& context, const PointerEvent& event) {
    const WorkingCopy& copy = context.copy;
    const DesignDocument& document = copy.document;
    if (!copy.DragText || !context.layout.IsOn(Control::kNameTable, event.at)) return std::nullopt;
    const Point inScreen = context.layout.Relative(Control::kNameTable, event.at);
    if (copy.Show_Caption &&
        TextRect(document.CaptionPos, copy.Store().CaptionText).Holds(inScreen)) {
        return TextDrag(MouseMode::kDragCaption, inScreen, document.CaptionPos);
    }
    if (copy.ShowPageNumber &&
        TextRect(document.PageNumberPos, copy.PageNumberText).Holds(inScreen)) {
        return TextDrag(MouseMode::kDragPageNumber, inScreen, document.PageNumberPos);
    }
    for (size_t line = 0; copy.Show_List && line < copy.ItemTextList.size(); ++line) {
        const auto below = static_cast<int64_t>(line);
        if (TextRect(document.ItemPos, copy.ItemTextList[line], below).Holds(inScreen)) {
            return TextDrag(MouseMode::kDragItemList, inScreen, document.ItemPos);
        }
    }
    return TryPressCustom(context, event, inScreen);
}

std::optional<TextDrag> TextDrag::TryPressCustom(GestureContext& context, const PointerEvent& event,
                                                 Point inScreen) {
    WorkingCopy& copy = context.copy;
    std::vector<TextItem>& texts = copy.Store().CustomText;
    for (size_t i = texts.size(); copy.Show_Custom_Text && i-- > 0;) {
        const Pos at{texts[i].X, texts[i].Y};
        if (!TextRect(at, texts[i].Text).Holds(inScreen)) continue;
        copy.PlacedText = texts[i];
        if (event.ctrl) {
            copy.PlacedText->Index = copy.nextTextIndex++;
        } else {
            texts.erase(texts.begin() + static_cast<std::ptrdiff_t>(i));
        }
        context.Refresh(View::kNameTable);
        return TextDrag(MouseMode::kDragText, inScreen, at);
    }
    return std::nullopt;
}

void TextDrag::Move(GestureContext& context, const PointerEvent& event) {
    WorkingCopy& copy = context.copy;
    const Pos place = DraggedTo(context.layout, event.at, hotSpot_, kNameCell);
    const auto keep = [&](int64_t columns, int64_t rows) {
        const auto last = [](int64_t size, int64_t of) {
            return static_cast<int32_t>(std::max<int64_t>(0, of - size));
        };
        return Pos{std::clamp(place.X, 0, last(columns, kScreenColumns)),
                   std::clamp(place.Y, 0, last(rows, kScreenRows))};
    };
    if (mode_ == MouseMode::kDragCaption) {
        copy.document.CaptionPos = keep(1, 1);
    } else if (mode_ == MouseMode::kDragPageNumber) {
        copy.document.PageNumberPos = keep(std::ssize(copy.PageNumberText), 1);
    } else if (mode_ == MouseMode::kDragItemList) {
        copy.document.ItemPos = keep(1, std::ssize(copy.ItemTextList));
    } else if (copy.PlacedText) {
        copy.PlacedText->X = place.X;
        copy.PlacedText->Y = place.Y;
    }
    context.Refresh(View::kNameTable);
}

void TextDrag::Drop(GestureContext& context, const PointerEvent&) {
    if (mode_ != MouseMode::kDragText) return;
    context.Refresh(View::kNameTable);
    const auto text = std::exchange(context.copy.PlacedText, std::nullopt);
    if (!text) return;
    const bool reachesScreen = static_cast<int64_t>(text->Text.size()) + text->X > 0;
    if (reachesScreen && text->X < kScreenColumns && text->Y >= 0 && text->Y < kScreenRows) {
        context.copy.Store().CustomText.push_back(*text);
    }
}

}  // namespace bw
