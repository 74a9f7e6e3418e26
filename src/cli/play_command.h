// The play command: a window that shows the running console.
#pragma once

#include "cli/arguments.h"

namespace bw {

// Returns when the window is closed. 0; 1 if the file can't be played; 3 where the emulator, the
// window program or a display is missing, or the window program's own end.
int PlayFile(const Arguments& arguments);

}  // namespace bw
