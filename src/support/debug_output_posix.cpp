#include <cstdio>
#include <cstdlib>

#include "support/debug_output.h"

namespace bw {

void WriteDebugOutput(std::string_view text) {
    if (std::getenv("BANKWEAVER_DEBUG") == nullptr) return;
    std::fwrite(text.data(), 1, text.size(), stderr);
}

}  // namespace bw
