#include <string>

#include "support/file_problem.h"
#include "support/text.h"
#include "support/windows_api.h"

namespace bw {

// The library's own message comes in a code page that doesn't hold every letter.
std::u16string SystemMessage(std::error_code answer) {
    if (answer.category() != std::system_category()) return ToWide(answer.message());
    constexpr DWORD kFrom =
        FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK;
    std::wstring text(1024, L'\0');
    text.resize(FormatMessageW(kFrom, nullptr, static_cast<DWORD>(answer.value()), 0, text.data(),
                               static_cast<DWORD>(text.size()), nullptr));
    while (!text.empty() && (text.back() == L' ' || text.back() == L'.'))
        text.pop_back();
    if (text.empty()) return ToWide("error " + std::to_string(answer.value()));
    return {text.begin(), text.end()};
}

}  // namespace bw
