// The X display that the emulator draws on.
#pragma once

#include <string>

namespace bw::console {

struct DisplayName {
    // Such as ":99"; empty if there is none.
    std::string name;
    // Why there is none, with the package to install.
    std::string problem;
};

// The display of this test program. The first call starts an Xvfb on a free number, unless
// BANKWEAVER_TEST_DISPLAY names a display; it ends with the program. The thread of the first call
// must live as long as the display is used. Safe from several threads after that.
const DisplayName& SharedDisplay();

}  // namespace bw::console
