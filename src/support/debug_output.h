// A line for whoever looks for a fault. Users never see it: it goes to the debugger's output on
// Windows, and elsewhere to standard error where the variable BANKWEAVER_DEBUG is set.
#pragma once

#include <string_view>

namespace bw {

// As it stands, with its own line end. From any thread; never fails.
void WriteDebugOutput(std::string_view text);

}  // namespace bw
