#include <archive.h>
#include <archive_entry.h>

#include "rom/utf8_names.h"
#include "support/text.h"
#include "support/windows_path.h"

namespace bw {
namespace {

constexpr UINT kDosLetters = 437;  // of names that no archive says anything about

// The bytes that were taken for such letters, if they are UTF-8 for all that; otherwise empty.
std::string Utf8InDisguise(const std::wstring& name) {
    const auto size = static_cast<int>(name.size());
    std::string bytes(name.size(), '\0');
    BOOL foreign = FALSE;
    if (WideCharToMultiByte(kDosLetters, WC_NO_BEST_FIT_CHARS, name.data(), size, bytes.data(),
                            size, nullptr, &foreign) != size ||
        foreign)
        return {};
    return ToUtf8(ToWide(bytes)) == bytes ? bytes : std::string();
}

}  // namespace

Utf8Names::Utf8Names() = default;
Utf8Names::~Utf8Names() = default;

// Names come as 16-bit text, whose letters must tell the bytes where the archive tells no encoding.
void Utf8Names::PrepareReader(archive* reader) {
    archive_read_set_options(reader, "hdrcharset=CP437");  // which not every format needs
}

std::string Utf8Names::NameOf(archive_entry* entry) {
    const wchar_t* text = archive_entry_pathname_w(entry);
    if (text == nullptr) return {};
    const std::wstring name = text;
    std::string utf8 = Utf8InDisguise(name);
    return utf8.empty() ? ToUtf8(std::u16string(name.begin(), name.end())) : utf8;
}

}  // namespace bw
