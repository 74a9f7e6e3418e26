#include <string>

#include "support/debug_output.h"
#include "support/text.h"
#include "support/windows_api.h"

namespace bw {

void WriteDebugOutput(std::string_view text) {
    const std::u16string wide = ToWide(text);
    OutputDebugStringW(std::wstring(wide.begin(), wide.end()).c_str());
}

}  // namespace bw
