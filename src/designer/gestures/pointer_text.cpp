#include "designer/gestures/pointer_text.h"

#include <string_view>
#include <variant>

#include "designer/tools/tile_tools.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr PatternTable kBkg = PatternTable::kBackground;
constexpr PatternTable kSprites = PatternTable::kSprites;

using Place = std::optional<PointerPlace>;

class Words {
  public:
    Words(Language language, TextId separator)
        : language_(language), separator_(LoadText(separator, language)) {}

    template <typename... Arguments>
    void Add(TextId id, const Arguments&... arguments) {
        const std::u16string words = FormatText(LoadText(id, language_), arguments...);
        if (!text_.empty() && !words.empty()) text_ += separator_;
        text_ += words;
    }
    // Nothing where the value isn't known.
    template <typename Value>
    void AddIf(TextId id, const std::optional<Value>& value) {
        if (value) Add(id, static_cast<int>(*value));
    }
    const std::u16string& Text() const { return text_; }

  private:
    Language language_;
    std::u16string separator_;
    std::u16string text_;
};

std::u16string Visible(char16_t character) {
    return VisibleText(std::u16string(1, character));
}

void AddView(Words& words, const PointerPlace& place) {
    const auto add = [&](TextId id) { words.Add(id, place.cell.X, place.cell.Y); };
    switch (place.view) {
        case Control::kNameTable:
            return add(TextId::kPointerScreen);
        case Control::kBkgTileList:
            return words.Add(TextId::kPointerBkgTable);
        case Control::kSpriteTileList:
            return words.Add(TextId::kPointerSpriteTable);
        case Control::kBkgTileEditor:
            return add(TextId::kPointerBkgEditor);
        case Control::kSpriteTileEditor:
            return add(TextId::kPointerSpriteEditor);
        case Control::kTargetStrip:
            return words.Add(TextId::kPointerTargetStrip);
        case Control::kSourceStrip:
            return words.Add(TextId::kPointerSourceStrip);
        case Control::kAttribute:
            return add(TextId::kPointerAttribute);
        case Control::kBkgPalette:
            return add(TextId::kPointerBkgPalette);
        case Control::kSpritePalette:
            return add(TextId::kPointerSpritePalette);
        case Control::kSystemPalette:
            return words.Add(TextId::kPointerSystemPalette);
    }
}

TextId WrittenId(ScreenText of) {
    switch (of) {
        case ScreenText::kCaption:
            return TextId::kPointerOfCaption;
        case ScreenText::kPageNumber:
            return TextId::kPointerOfPageNumber;
        case ScreenText::kList:
            return TextId::kPointerOfList;
        default:
            return TextId::kPointerOfText;
    }
}

// What a press would do, by the gesture that takes it.
class PressWords {
  public:
    PressWords(const GestureTrial& trial, const PointerPlace& place, const PointerEvent& event,
               Words& words)
        : copy_(trial.copy), place_(place), event_(event), words_(words) {}

    void operator()(const NoGesture&) const {}
    void operator()(const RubberBandDrag&) const { words_.Add(TextId::kPressBand); }
    void operator()(const StripDrag&) const { words_.Add(TextId::kPressCharacter); }
    void operator()(const CursorDrag&) const { words_.Add(TextId::kPressCursor); }
    void operator()(const LargeCursorDrag&) const { words_.Add(TextId::kPressCursor); }
    void operator()(const QuickReplace& click) const {
        if (click.Mode() == MouseMode::kTargetCharacter) {
            words_.Add(TextId::kPressCopyCharacter);
        } else if (click.Mode() == MouseMode::kSourceCharacter) {
            words_.Add(TextId::kPressCharacter);
        } else if (copy_.QuickReplaceFromBkg) {
            words_.Add(TextId::kPressMapCharacter);
        } else {
            words_.Add(TextId::kPressTile);
        }
    }
    void operator()(const QuickAction&) const {
        words_.Add(OnScreen() ? TextId::kPressPlace : TextId::kPressPutTile);
    }
    void operator()(const BackgroundDrag& drag) const {
        words_.Add(drag.FromTable() ? TextId::kPressTableTile : TextId::kPressScreenTile);
    }
    void operator()(const SpriteDrag& drag) const {
        words_.Add(drag.FromTable() ? TextId::kPressTableSprite : TextId::kPressScreenSprite);
    }
    void operator()(const ScreenClick&) const {
        event_.ctrl ? words_.Add(TextId::kPressColourCell) : words_.Add(TextId::kPressCell);
    }
    void operator()(const TextDrag& drag) const {
        switch (drag.Mode()) {
            case MouseMode::kDragCaption:
                return words_.Add(TextId::kPressCaption);
            case MouseMode::kDragPageNumber:
                return words_.Add(TextId::kPressPageNumber);
            case MouseMode::kDragItemList:
                return words_.Add(TextId::kPressList);
            default:
                return words_.Add(TextId::kPressText);
        }
    }
    void operator()(const ViewClick& click) const {
        switch (click.Mode()) {
            case MouseMode::kBkgPalette:
                return words_.Add(TextId::kPressBkgEntry);
            case MouseMode::kSpritePalette:
                return words_.Add(TextId::kPressSpriteEntry);
            case MouseMode::kSystemPalette:
                return words_.Add(TextId::kPressColour);
            default:
                return words_.Add(TextId::kPressQuarter);
        }
    }
    void operator()(const TilePaint& paint) const {
        const bool background = paint.Mode() == MouseMode::kPaintBkgTile;
        const int colour = CurrentColour(copy_, background ? kBkg : kSprites);
        words_.Add(PaintId(paint.Shape()), colour);
        words_.AddIf(TextId::kRightPress, place_.index);
    }

  private:
    static TextId PaintId(TileShape shape) {
        switch (shape) {
            case TileShape::kLine:
                return TextId::kPressLine;
            case TileShape::kRectangle:
                return TextId::kPressRectangle;
            case TileShape::kFill:
                return TextId::kPressFill;
            default:
                return TextId::kPressPencil;
        }
    }

    bool OnScreen() const { return place_.view == Control::kNameTable; }

    const WorkingCopy& copy_;
    const PointerPlace& place_;
    const PointerEvent& event_;
    Words& words_;
};

// What the release would do that ends the gesture under way.
class ReleaseWords {
  public:
    ReleaseWords(const WorkingCopy& copy, const GestureMachine& mouse, const PointerEvent& event,
                 const Place& place, Words& words)
        : copy_(copy), mouse_(mouse), event_(event), place_(place), words_(words) {}

    // The release of the others ends them, and that is all.
    template <typename Other>
    void operator()(const Other&) const {}
    void operator()(const RubberBandDrag&) const { words_.Add(TextId::kReleaseBand); }
    void operator()(const CursorDrag&) const { AddPixels(copy_.Store().ArrowTile); }
    void operator()(const LargeCursorDrag&) const {
        if (!copy_.Store().ArrowTileList.empty()) AddPixels(copy_.Store().ArrowTileList[0]);
    }
    void operator()(const TilePaint& paint) const {
        if (paint.Shape() == TileShape::kLine) words_.Add(TextId::kReleaseLine);
        if (paint.Shape() == TileShape::kRectangle) words_.Add(TextId::kReleaseRectangle);
    }
    void operator()(const TextDrag& drag) const {
        const DesignDocument& document = copy_.document;
        switch (drag.Mode()) {
            case MouseMode::kDragCaption:
                return AddCell(document.CaptionPos);
            case MouseMode::kDragPageNumber:
                return AddCell(document.PageNumberPos);
            case MouseMode::kDragItemList:
                return AddCell(document.ItemPos);
            default:
                break;
        }
        const auto texts = [](const WorkingCopy& copy) { return copy.Store().CustomText.size(); };
        if (texts(mouse_.TryRelease(event_).copy) == texts(copy_)) {
            words_.Add(TextId::kReleaseTextOff);
        } else if (copy_.PlacedText) {
            AddCell({copy_.PlacedText->X, copy_.PlacedText->Y});
        }
    }
    void operator()(const BackgroundDrag& drag) const {
        if (IsOn(Control::kNameTable)) return words_.Add(TextId::kReleaseTile, int{drag.Tile()});
        if (IsOn(Control::kSourceStrip)) {
            return words_.Add(TextId::kReleaseMap, Visible(place_->character.value_or(u' ')),
                              int{drag.Tile()});
        }
        AddTableDrop(drag, Control::kBkgTileList);
    }
    void operator()(const SpriteDrag& drag) const {
        const auto sprites = [](const WorkingCopy& copy) {
            return copy.Store().SpriteTileList.size();
        };
        if (IsOn(Control::kNameTable) && sprites(mouse_.TryRelease(event_).copy) > sprites(copy_)) {
            return words_.Add(TextId::kReleaseTile, int{drag.Tile()});
        }
        AddTableDrop(drag, Control::kSpriteTileList);
    }

  private:
    bool IsOn(Control view) const { return place_ && place_->view == view; }

    void AddCell(Pos cell) const { words_.Add(TextId::kReleaseCell, cell.X, cell.Y); }
    void AddPixels(const TileItem& item) const {
        words_.Add(TextId::kReleasePixels, item.X, item.Y);
    }

    // `own`: the view of the table that the tile belongs to.
    template <typename Drag>
    void AddTableDrop(const Drag& drag, Control own) const {
        const bool onTable = IsOn(Control::kBkgTileList) || IsOn(Control::kSpriteTileList);
        if (!onTable) {
            return words_.Add(drag.FromTable() ? TextId::kReleaseNothing : TextId::kReleaseTileOff);
        }
        if (drag.FromTable() && IsOn(own) && place_->tile == drag.Tile()) {
            return words_.Add(TextId::kReleaseNothing);
        }
        const bool moves = drag.FromTable() && IsOn(own) && !event_.ctrl;
        words_.Add(moves ? TextId::kReleaseMoveTile : TextId::kReleaseCopyTile, int{drag.Tile()});
    }

    const WorkingCopy& copy_;
    const GestureMachine& mouse_;
    const PointerEvent& event_;
    const Place& place_;
    Words& words_;
};

bool HasBand(Control view) {
    return view == Control::kNameTable || view == Control::kBkgTileList ||
           view == Control::kSpriteTileList;
}

void AddPress(const GestureMachine& mouse, const PointerEvent& event, const PointerPlace& place,
              Words& words) {
    const GestureTrial trial = mouse.TryPress(event);
    std::visit(PressWords(trial, place, event, words), trial.gesture);
    if (HasBand(place.view) && !std::holds_alternative<RubberBandDrag>(trial.gesture)) {
        words.Add(TextId::kShiftPress);
    }
}

}  // namespace

std::u16string PlaceText(const PointerPlace& place, Language language) {
    Words words(language, TextId::kPointerComma);
    AddView(words, place);
    if (place.character) words.Add(TextId::kPointerCharacter, Visible(*place.character));
    words.AddIf(TextId::kPointerTile, place.tile);
    words.AddIf(TextId::kPointerAddress, place.address);
    words.AddIf(TextId::kPointerAttributeAddress, place.attributes);
    words.AddIf(TextId::kPointerPalette, place.palette);
    if (place.written) {
        words.Add(WrittenId(place.written->of), Visible(place.written->character));
    }
    words.AddIf(TextId::kPointerSprite, place.sprite);
    if (place.cursor) words.Add(TextId::kPointerCursor);
    words.AddIf(TextId::kPointerIndex, place.index);
    words.AddIf(TextId::kPointerColour, place.colour);
    return words.Text();
}

std::u16string PointerText(const WorkingCopy& copy, const DesignerLayout& layout,
                           const GestureMachine& mouse, const PointerEvent& event,
                           Language language) {
    const Place place = PlaceUnder(copy, layout, event.at);
    Words words(language, TextId::kPointerStop);
    if (place) words.Add(TextId::kPointerSentence, PlaceText(*place, language));
    if (mouse.Captured()) {
        std::visit(ReleaseWords(copy, mouse, event, place, words), mouse.Current());
    } else if (place) {
        AddPress(mouse, event, *place, words);
    }
    return words.Text();
}

}  // namespace bw
