#include "release/release_json.h"

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

namespace bw {
namespace {

// One object, closed by Finish().
class JsonObject {
  public:
    JsonObject() : writer_(buffer_) { writer_.StartObject(); }

    void Add(const char* key, const std::string& text) {
        writer_.Key(key);
        writer_.String(text.c_str(), static_cast<rapidjson::SizeType>(text.size()));
    }
    void Add(const char* key, bool value) {
        writer_.Key(key);
        writer_.Bool(value);
    }
    void Add(const char* key, uint32_t value) {
        writer_.Key(key);
        writer_.Uint(value);
    }
    void Add(const char* key, const ReleaseTexts& texts) {
        writer_.Key(key);
        writer_.StartObject();
        if (!texts.english.empty()) Add("en-us", texts.english);
        if (!texts.chinese.empty()) Add("zh-cn", texts.chinese);
        writer_.EndObject();
    }
    std::string Finish() {
        writer_.EndObject();
        return std::string(buffer_.GetString(), buffer_.GetSize()) + "\n";
    }

  private:
    rapidjson::StringBuffer buffer_;
    rapidjson::PrettyWriter<rapidjson::StringBuffer> writer_;
};

}  // namespace

std::string UpdateJson(const ReleaseUpdate& update) {
    JsonObject json;
    json.Add("version", update.version);
    json.Add("url", update.url);
    json.Add("force_update", update.force);
    json.Add("update_describe", update.texts);
    return json.Finish();
}

std::string NoticeJson(const ReleaseNotice& notice) {
    JsonObject json;
    json.Add("notify_id", notice.id);
    json.Add("restart_show", notice.atEachStart);
    json.Add("for_users_type", notice.users);
    json.Add("notify_message", notice.texts);
    return json.Finish();
}

}  // namespace bw
