#include "release/release_json.h"

#include "cli/json.h"
#include "update/json_file.h"

namespace bw {
namespace {

void AddTexts(Json& json, const char* key, const ReleaseTexts& texts) {
    json.Key(key);
    json.BeginObject();
    const auto add = [&](Language language, const std::string& text) {
        if (!text.empty()) json.Utf8(std::string(LanguageKey(language)).c_str(), text);
    };
    add(Language::kEnglish, texts.english);
    add(Language::kChinese, texts.chinese);
    json.EndObject();
}

}  // namespace

std::string UpdateJson(const ReleaseUpdate& update) {
    Json json;
    json.BeginObject();
    json.Utf8("version", update.version);
    json.Utf8("url", update.url);
    json.Bool("force_update", update.force);
    AddTexts(json, "update_describe", update.texts);
    json.EndObject();
    return json.Take();
}

std::string NoticeJson(const ReleaseNotice& notice) {
    Json json;
    json.BeginObject();
    json.Number("notify_id", notice.id);
    json.Bool("restart_show", notice.atEachStart);
    json.Number("for_users_type", notice.users);
    AddTexts(json, "notify_message", notice.texts);
    json.EndObject();
    return json.Take();
}

}  // namespace bw
