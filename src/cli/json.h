// The JSON that the commands print, in UTF-8.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include "support/numbers.h"
#include "support/text.h"

namespace bw {

// A thin layer over the writer: keys and values in one call.
class Json {
  public:
    Json() : writer_(buffer_) { writer_.SetIndent(' ', 2); }

    void BeginObject() { writer_.StartObject(); }
    void EndObject() { writer_.EndObject(); }
    void BeginArray(const char* key) {
        writer_.Key(key);
        writer_.StartArray();
    }
    void EndArray() { writer_.EndArray(); }
    void Number(const char* key, uint64_t value) {
        writer_.Key(key);
        writer_.Uint64(value);
    }
    void Signed(const char* key, int64_t value) {
        writer_.Key(key);
        writer_.Int64(value);
    }
    void Decimal(const char* key, double value) {
        constexpr int kPlaces = 3;
        writer_.Key(key);
        writer_.SetMaxDecimalPlaces(kPlaces);
        writer_.Double(value);
    }
    void Key(const char* key) { writer_.Key(key); }
    void Bool(const char* key, bool value) {
        writer_.Key(key);
        writer_.Bool(value);
    }
    void String(const char* key, std::u16string_view value) { Utf8(key, ToUtf8(value)); }
    void Utf8(const char* key, const std::string& value) {
        writer_.Key(key);
        writer_.String(value.data(), static_cast<rapidjson::SizeType>(value.size()));
    }
    void Crc(const char* key, uint32_t value) {
        std::string text;
        AppendHex(text, value, 8);
        Utf8(key, text);
    }
    void Bytes(const char* key, std::span<const uint8_t> bytes) { Numbers(key, bytes); }
    template <typename Values>
    void Numbers(const char* key, const Values& values) {
        writer_.SetFormatOptions(rapidjson::kFormatSingleLineArray);
        BeginArray(key);
        for (const auto value : values)
            writer_.Uint(value);
        EndArray();
        writer_.SetFormatOptions(rapidjson::kFormatDefault);
    }
    // Without control characters: those of names that the writer lets pass could command a
    // terminal.
    std::string Take() const {
        std::string text;
        for (const char* at = buffer_.GetString(); *at != '\0'; ++at) {
            const auto byte = static_cast<uint8_t>(*at);
            const auto next = static_cast<uint8_t>(at[1]);
            if (byte == 0x7F || (byte == 0xC2 && next < 0xA0)) {  // U+007F; U+0080 to U+009F
                text += "\\u";
                AppendHex(text, byte == 0x7F ? byte : next, 4);
                if (byte != 0x7F) ++at;
            } else {
                text += *at;
            }
        }
        return text + "\n";
    }

  private:
    rapidjson::StringBuffer buffer_;
    rapidjson::PrettyWriter<rapidjson::StringBuffer> writer_;
};

}  // namespace bw
