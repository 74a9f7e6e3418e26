// The designer's copy, cut and paste over the system's clipboard: as a clip of our own, which other
// running copies of the program read as well, and as a picture for other programs.
#pragma once

#include <QImage>
#include <functional>

#include "designer/clipboard/design_clip.h"
#include "designer/window/design_host.h"

class QMimeData;

namespace bw {

inline constexpr const char* kClipMime = "application/x-bankweaver-design-clip";

// What the functions below put on the clipboard; the caller owns it. The clip isn't empty and has
// just been taken out of `copy`.
QMimeData* MakeClipData(const DesignClip& clip, const WorkingCopy& copy);

// Each says in the status bar what was done. During a gesture a copy is of what there is just now,
// a cut and a paste wait for its end.
void CopySelection(DesignHost& host);
void CutSelection(DesignHost& host);
// A clip of our own, or else a picture, which goes to `picture`. Where there is neither, or nothing
// of it has room, the status bar says so.
void PasteSelection(DesignHost& host, const std::function<void(QImage)>& picture);

// The keys of the arrows: what is selected on the screen moves by a pixel, with Shift by a cell;
// with nothing selected the current place does.
void MoveByArrow(DesignHost& host, Point direction, bool shift);

// The key Delete.
void DeleteSelected(DesignHost& host);

}  // namespace bw
