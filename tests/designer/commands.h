// Every command of the designer, for walks over all of them.
#pragma once

#include <functional>
#include <vector>

#include "designer/tools/attribute_tools.h"
#include "designer/tools/list_tools.h"
#include "designer/tools/map_tools.h"
#include "designer/tools/text_tools.h"
#include "designer/tools/tile_tools.h"

namespace bw {

using Command = std::function<Views(WorkingCopy&)>;

// Every command, some of them in several forms.
inline std::vector<Command> EveryCommand() {
    std::vector<Command> commands;
    for (int tool = 0; tool <= static_cast<int>(TileTool::kPixelsDown); ++tool)
        commands.push_back(
            [tool](WorkingCopy& c) { return ApplyTileTool(c, static_cast<TileTool>(tool)); });
    for (const PatternTable table : {PatternTable::kBackground, PatternTable::kSprites}) {
        const auto with = [&](auto command) {
            commands.push_back([=](WorkingCopy& c) { return command(c, table); });
        };
        with(CopySelectedTiles);
        with(ResetPatternTable);
        with(SelectAllItems);
        with(InvertItemSelection);
        with(ClearItems);
        with(CopyFont);
        with(ResetPalette);
        with([](WorkingCopy& c, PatternTable t) { return MoveItems(c, t, 1, -8); });
        with([](WorkingCopy& c, PatternTable t) { return PaintPixel(c, t, {3, 5}); });
    }
    for (const Direction direction :
         {Direction::kLeft, Direction::kRight, Direction::kUp, Direction::kDown}) {
        commands.push_back([=](WorkingCopy& c) { return ShiftAttributes(c, direction); });
    }
    for (Views (*command)(WorkingCopy&) :
         {SwapPatternTables, BlankSelectedTiles, RemoveSelectedItems, SwapSpriteTables,
          SwapAllSpriteTables, SplitTallSprites, MakeSpritesOfTiles, MapAllCharacters,
          MapUsedCharacters, ClearUnusedBkgTiles, ClearUnusedSpriteTiles, OrganiseBkgTiles,
          OrganiseSpriteTiles, ResetCharMap, ClearTexts, ResetTexts, ResetAttributes,
          ResetDesign}) {
        commands.emplace_back(command);
    }
    commands.push_back([](WorkingCopy& c) { return AddText(c, u"MORE"); });
    commands.push_back([](WorkingCopy& c) { return SetBigSprite(c, c.Store().BigSprite == 0); });
    commands.push_back([](WorkingCopy& c) { return SetBigCursor(c, c.document.BigCursor == 0); });
    commands.push_back([](WorkingCopy& c) { return SetSpriteFlag(c, 1, true); });
    return commands;
}

}  // namespace bw
