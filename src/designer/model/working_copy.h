// The design as its designer edits it: the document, the places where its user is, and what he has
// switched on to look at. Plain values: copy it for a snapshot.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "designer/model/design_document.h"
#include "designer/model/point.h"
#include "designer/model/views.h"

namespace bw {

// For a view's cursor, which is bounded by its view.
inline Point PointOf(Pos pos) {
    return {pos.X, pos.Y};
}

enum class PatternTable { kBackground, kSprites };

// What a drag in the editor of a tile draws.
enum class TileShape { kPencil, kLine, kRectangle, kFill };

// The strips of characters: cell 0 is the blank, the last one "_".
inline constexpr int kStripCells = 64;
inline constexpr int kFirstStripCode = 32;

struct WorkingCopy {
    DesignDocument document;

    DesignStore& Store() { return document.store; }
    const DesignStore& Store() const { return document.store; }

    uint8_t CurrentAttribute = 0;  // the byte of Attributes at AttrBytePos
    Pos AttrBytePos;               // 0 to 7 each, 32 pixels of the screen a step
    Pos AttrCellPos;               // columns 0 to 15, rows 0 to 14, two tiles a step
    Pos AttrQuadrantPos{1, 0};     // 0 or 1 each
    Pos BkgPalettePos{1, 0};       // X: entry 0 to 15
    Pos SpPalettePos;
    Pos SystemPalettePos;  // columns 0 to 15, rows 0 to 3
    Pos BkgTilePos;        // 0 to 15 each, in the pattern table
    Pos SpTilePos;
    Pos BkgPixelPos;  // 0 to 7 each, in the tile
    Pos SpPixelPos;
    Pos MapTargetPos;  // X: cell 0 to 63 of the strip, characters 32 to 95
    Pos MapSourcePos;
    Pos NameCellPos;                   // columns 0 to 31, rows 0 to 29
    bool SpritePaletteActive = false;  // the system palette acts on SpritePalette

    // What the next new item of each list gets as its Index.
    uint32_t nextBkgIndex = 0;
    uint32_t nextSpriteIndex = 0;
    uint32_t nextTextIndex = 0;

    std::vector<std::u16string> AllItemTextList;  // all names of the menu, in capitals
    std::vector<std::u16string> ItemTextList;     // the lines of the page shown
    int32_t PageFirstItem = 0;
    int32_t PageItemCount = 10;
    bool ItemBlankLine = false;  // an empty line behind each item
    bool ShowPageNumber = false;
    std::u16string PageNumberText = u"1/1";
    // What stands in the box of the caption: CaptionText, but for a caption that came with a
    // screen's part or its texts, which shows there when it is next edited.
    std::u16string captionBox;
    std::u16string CustomTextEdit;       // what stands in the box of the text to add
    std::optional<TextItem> PlacedText;  // a text that the mouse holds just now

    bool DragText = false;               // the mouse drags what lies on the screen
    bool QuickReplaceFromBkg = false;    // a click on a background tile maps a character
    bool QuickReplaceToBkg = false;      // a click on the font copies it to the background table
    bool QuickReplaceToSprites = false;  // the same to the sprite table
    bool QuickAction = false;            // a click on a tile places it on the screen
    TileShape tileShape = TileShape::kPencil;  // of both tile editors
    bool FillColor = false;                    // the attributes' colours below the name table
    bool DrawLine = false;                     // the grid over it
    bool MarkCursor = false;                   // a frame around the cursor
    bool markPlaces = true;                    // the frames around the current places
    bool Show_Bg_Tile = true;
    bool Show_Sp_Tile = true;
    bool Show_List = true;
    bool Show_Custom_Text = true;
    bool Show_Caption = true;
    bool Show_Cursor = true;
};

// After the lists of items were replaced: what new items get as their Index.
void CountItems(WorkingCopy& copy);

// Puts the system palette's cursor on the colour of the background palette's current entry.
Views ShowBkgColour(WorkingCopy& copy);

// After the document was replaced: brings the attribute byte, the quadrant, the entry of the
// background palette and the colour in the system palette in line with the cursors.
Views SynchroniseCursors(WorkingCopy& copy);

}  // namespace bw
