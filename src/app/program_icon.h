#pragma once

#include <QIcon>

namespace bw {

// The program's icon in all its sizes, from the program itself: it is the same wherever the program
// was started from, and needs no plug-in that draws SVG.
QIcon ProgramIcon();

}  // namespace bw
