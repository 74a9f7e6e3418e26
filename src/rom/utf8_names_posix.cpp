#include <locale.h>

#include "rom/utf8_names.h"

namespace bw {

Utf8Names::Utf8Names() {
    // Made once; where the system has no such locale, the user's stays.
    static const locale_t utf8 = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    if (utf8 != nullptr) before_ = uselocale(utf8);
}

Utf8Names::~Utf8Names() {
    if (before_ != nullptr) uselocale(static_cast<locale_t>(before_));
}

}  // namespace bw
