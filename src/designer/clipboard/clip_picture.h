// A clip as a picture, for other programs.
#pragma once

#include "designer/clipboard/design_clip.h"
#include "designer/pictures/surface.h"

namespace bw {

// One pixel for a pixel of the console, in the colours that `copy` has, out of which the clip has
// just been taken: its items and sprites as they are on the screen, as much of it as they cover, on
// the backdrop; of a clip without these its tiles as they lie in their table, the background's
// above the sprites'. The clip mustn't be empty.
Surface ClipPicture(const DesignClip& clip, const WorkingCopy& copy);

}  // namespace bw
