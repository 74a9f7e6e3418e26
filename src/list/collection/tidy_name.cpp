#include "list/collection/tidy_name.h"

namespace bw {

std::u16string TidyName(std::u16string_view name, const TidyRules&) {
    return std::u16string(name);
}

std::u16string ShortenByWords(std::u16string_view name, size_t room) {
    return std::u16string(name.substr(0, room));
}

}  // namespace bw
