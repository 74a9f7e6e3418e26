#include <archive_entry.h>
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

void Utf8Names::PrepareReader(archive*) {}

std::string Utf8Names::NameOf(archive_entry* entry) {
    const char* name = archive_entry_pathname_utf8(entry);
    if (name == nullptr) name = archive_entry_pathname(entry);
    return name == nullptr ? std::string() : std::string(name);
}

}  // namespace bw
