// Which tiles of a design a picture may draw anew.
#pragma once

#include "designer/import/tile_choice.h"
#include "designer/model/working_copy.h"

namespace bw {

struct DesignRoom {
    TileRoom room;
    // Tiles that letters have which nothing prints yet, as far as is known: for pictures that can't
    // do without, by their numbers: signs mostly come first. The last to be taken is tile 0, and
    // that only where the picture hides it all over.
    std::vector<uint8_t> reserve;
};

// Kept are tile 0, the tiles of texts, names and caption, those placed outside `area`, and those of
// tall sprites; and while there are no names, all letters that names can have. Free are the others,
// blank ones first.
DesignRoom RoomFor(const WorkingCopy& copy, const TileArea& area);

// All tiles as they are: none is free.
TileRoom AllTiles(const WorkingCopy& copy);

}  // namespace bw
