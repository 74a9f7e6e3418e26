#include "update/json_file.h"

#include <algorithm>
#include <set>

#include <rapidjson/encodedstream.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

#include "support/debug_output.h"
#include "support/text.h"

namespace bw {
namespace {

// Takes the parser's events. Each gives false to end the parse: that is so for a file whose value
// isn't an object.
class Fields : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Fields> {
  public:
    explicit Fields(std::span<const JsonKey> keys) : keys_(keys) {}

    // Values that no key wants: null, negative numbers, fractions, numbers over 32 bits.
    bool Default() {
        target_ = {};
        return depth_ > 0;
    }
    bool Bool(bool value) { return Store(value); }
    bool Uint(unsigned value) { return Store<uint32_t>(value); }
    bool String(const char* text, rapidjson::SizeType length, bool) {
        if (const auto* const narrow = std::get_if<std::string*>(&target_)) {
            **narrow = ToUtf8(ToWide({text, length}));
        } else if (const auto* const wide = std::get_if<std::u16string*>(&target_)) {
            **wide = ToWide({text, length});
        } else if (!language_.empty()) {
            texts_->emplace(language_, ToWide({text, length}));
        }
        language_ = {};
        return Default();
    }

    bool StartObject() {
        if (depth_ == 1) {
            const auto* const texts = std::get_if<LanguageTexts*>(&target_);
            texts_ = texts ? *texts : nullptr;
            languagesSeen_.clear();
        }
        return Open(true);
    }
    bool EndObject(rapidjson::SizeType) { return Close(); }
    bool StartArray() { return Open(false); }
    bool EndArray(rapidjson::SizeType) { return Close(); }

    bool Key(const char* text, rapidjson::SizeType length, bool) {
        const std::string_view name(text, length);
        target_ = {};
        language_ = {};
        if (depth_ == 1) {
            const auto key = std::ranges::find(keys_, name, &JsonKey::name);
            if (key != keys_.end() && keysSeen_.insert(key->name).second) target_ = key->target;
        } else if (depth_ == 2 && texts_) {
            for (const Language language : {Language::kChinese, Language::kEnglish}) {
                const std::string_view key = LanguageKey(language);
                if (key == name && languagesSeen_.insert(key).second) language_ = key;
            }
        }
        return true;
    }

  private:
    template <typename T>
    bool Store(T value) {
        if (T* const* const place = std::get_if<T*>(&target_)) **place = value;
        language_ = {};
        return Default();
    }
    bool Open(bool object) {
        target_ = {};
        language_ = {};
        return depth_++ > 0 || object;
    }
    bool Close() {
        if (--depth_ == 1) texts_ = nullptr;
        return true;
    }

    std::span<const JsonKey> keys_;
    size_t depth_ = 0;                // of open objects and arrays
    JsonTarget target_;               // of the key that was read last
    LanguageTexts* texts_ = nullptr;  // of the object that is open at depth 2
    std::string_view language_;       // its key that was read last, if its text is wanted
    std::set<std::string_view> keysSeen_;
    std::set<std::string_view> languagesSeen_;
};

}  // namespace

bool ReadJsonFile(std::string_view json, std::span<const JsonKey> keys) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (json.starts_with(kByteOrderMark)) json.remove_prefix(kByteOrderMark.size());
    rapidjson::MemoryStream bytes(json.data(), json.size());
    rapidjson::EncodedInputStream<rapidjson::UTF8<>, rapidjson::MemoryStream> stream(bytes);
    Fields fields(keys);
    // A parser that calls itself for each level would let a file of brackets overflow the stack.
    if (rapidjson::Reader().Parse<rapidjson::kParseIterativeFlag>(stream, fields)) return true;
    WriteDebugOutput("Some exception...\r\n");
    return false;
}

std::string_view LanguageKey(Language language) {
    return language == Language::kChinese ? "zh-cn" : "en-us";
}

}  // namespace bw
