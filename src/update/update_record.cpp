#include "update/update_record.h"

#include "support/text.h"
#include "update/json_file.h"
#include "update/plain_text.h"

namespace bw {

UpdateRecord ReadUpdateRecord(std::string_view json) {
    UpdateRecord record;
    const JsonKey keys[] = {{"version", &record.version},
                            {"url", &record.url},
                            {"notify_id", &record.notify_id},
                            {"force_update", &record.force_update},
                            {"update_describe", &record.update_describe}};
    return ReadJsonFile(json, keys) ? record : UpdateRecord{};
}

std::u16string TextFor(const LanguageTexts& texts, Language language) {
    const auto text = texts.find(LanguageKey(language));
    return text == texts.end() ? std::u16string() : text->second;
}

std::u16string DescriptionOf(const UpdateRecord& record, Language language) {
    return PlainText(TextFor(record.update_describe, language));
}

std::u16string ShownVersion(std::u16string_view version) {
    return VisibleText(PlainText(version).substr(0, kMostOfVersion));
}

}  // namespace bw
