// Any bytes as a file of the host: what is read of it stays within its limits, whatever it says.
#include <algorithm>

#include "fuzz.h"
#include "support/text.h"
#include "update/notice_record.h"
#include "update/plain_text.h"
#include "update/update_record.h"
#include "update/version_numbers.h"

namespace {

void CheckTexts(const bw::LanguageTexts& texts, size_t size) {
    for (const auto& [key, text] : texts) {
        Expect(key == "zh-cn" || key == "en-us");
        Expect(text.size() <= size);
        const std::u16string plain = bw::PlainText(text);
        Expect(plain.size() <= bw::kMostCharacters && plain.size() <= text.size());
        Expect(bw::PlainText(plain) == plain && bw::ToWide(bw::ToUtf8(plain)) == plain);
        Expect(plain.find_first_of(u"\u001b\u202e\u2067") == plain.npos);
    }
}

void CheckVersion(std::u16string_view text) {
    const bw::VersionNumbers version = bw::ReadVersion(text);
    if (!bw::IsPlainVersion(text)) return;
    Expect(text.size() <= 39 && text.find_first_not_of(u"0123456789.") == text.npos);
    Expect(text.find(u"..") == text.npos && std::ranges::count(text, u'.') == 3);
    Expect(
        std::ranges::all_of(version.fields, [](uint32_t field) { return field < 1'000'000'000; }));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view bytes = TextOf({data, size});
    const bw::UpdateRecord update = bw::ReadUpdateRecord(bytes);
    Expect(update.version.size() <= size && bw::ToUtf8(bw::ToWide(update.url)) == update.url);
    Expect(bw::ShownVersion(update.version).size() <= bw::kMostOfVersion);
    CheckTexts(update.update_describe, size);
    CheckTexts(bw::ReadNoticeRecord(bytes).notify_message, size);
    CheckVersion(update.version);
    CheckVersion(bw::ToWide(bytes));
    Expect(bw::ReadVersion(bytes) == bw::ReadVersion(bw::ToWide(bytes)));
    return 0;
}
