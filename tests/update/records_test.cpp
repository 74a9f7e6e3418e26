#include <fmt/format.h>
#include <gtest/gtest.h>

#include "support/text.h"
#include "update/notice_record.h"
#include "update/plain_text.h"
#include "update/update_record.h"
#include "update/version_numbers.h"

namespace bw {
namespace {

using namespace std::literals;

std::string Shown(const LanguageTexts& texts) {
    std::string shown;
    for (const auto& [key, text] : texts)
        shown += " " + key + "=" + ToUtf8(text);
    return shown;
}

std::string Update(const std::string& json) {
    const UpdateRecord record = ReadUpdateRecord(json);
    return fmt::format("{}|{}|{}|{}|{}", ToUtf8(record.version), record.url,
                       ToUtf8(record.notify_id), record.force_update ? "set" : "",
                       Shown(record.update_describe));
}

std::string Notice(const std::string& json) {
    const NoticeRecord record = ReadNoticeRecord(json);
    return fmt::format("{}|{}|{}|{}", record.notify_id, record.restart_show ? "set" : "",
                       record.for_users_type, Shown(record.notify_message));
}

// Each value stands under every key of a file; those of the right type are read.
TEST(Records, EveryKeyTakesItsOwnTypeOnly) {
    const auto object = [](std::initializer_list<const char*> keys, const std::string& value) {
        std::string json = "\xEF\xBB\xBF {";
        for (const char* const key : keys)
            json += fmt::format("\"{}\":{},", key, value);
        json.back() = '}';
        return json + " ";
    };
    const std::string text = R"("x\u00e9\ud83d\ude00")", texts = R"({"en-us":"e","zh-cn":"z"})";
    for (const std::string& value :
         {text, texts, "true"s, "7"s, "-1"s, "4294967296"s, "1e300"s, "1.0"s, "null"s,
          R"([{"en-us":"e"}])"s, R"({"en-us":["e"],"fr":"f","zh-cn":7})"s,
          R"({"x":{"en-us":"e","version":"1"}})"s}) {
        const std::string is = value == text ? "xé😀" : "", seven = value == "7" ? "7" : "0";
        const std::string force = value == "true" ? "set" : "";
        const std::string shown = value == texts ? " en-us=e zh-cn=z" : "";
        EXPECT_EQ(Update(object({"version", "url", "notify_id", "force_update", "update_describe"},
                                value)),
                  fmt::format("{}|{}|{}|{}|{}", is, is, is, force, shown));
        EXPECT_EQ(Notice(object({"notify_id", "restart_show", "for_users_type", "notify_message"},
                                value)),
                  fmt::format("{}|{}|{}|{}", seven, force, seven, shown));
    }
    EXPECT_EQ(Update(R"({"version":5,"version":"2","url":"a\u0000b","url":"c","update_describe":)"
                     R"({"zh-cn":[],"zh-cn":"z","en-us":"1","en-us":"2"},"URL":"d"})"),
              std::string("|a\0b|||", 7) + " en-us=1");
    EXPECT_EQ(Update("{\"version\":\"\x80 \xED\xA0\x80\",\"url\":\"\xFF\"}"), "� ���|�|||");
}

TEST(Records, OtherFilesAreEmptyAtAnySize) {
    constexpr size_t kMegabyte = size_t{1} << 20;
    const std::string good = R"({"version":"1","force_update":true,"notify_id":9)";
    const std::string deep(kMegabyte, '['), empties(kMegabyte / 2, ']');
    for (const std::string& json :
         {""s, "\xEF\xBB"s, "[]"s, "\"version\""s, good, good + "} {}", good + ",}",
          good + R"(,"x":1e999})", good + R"(,"x":"\ud800"})", deep, good + ",\"x\":" + deep,
          std::string(kMegabyte, '\0'), good + ",\"url\":\"" + deep}) {
        EXPECT_EQ(Update(json), "||||") << json.substr(0, 80);
        EXPECT_EQ(Notice(json), "0||0|") << json.substr(0, 80);
    }
    std::string many = good;
    while (many.size() < kMegabyte)
        many += ",\"\":{}";
    EXPECT_EQ(Update(many + "}"), "1|||set|");
    EXPECT_EQ(Update(good + ",\"x\":" + deep.substr(empties.size()) + empties + "}"), "1|||set|");
}

TEST(Records, VersionsAreReadFieldByField) {
    struct Case {
        const char16_t* text;
        std::array<uint32_t, 4> fields;
        bool plain = false;
    };
    constexpr uint32_t kMost = UINT32_MAX;
    for (const auto& [text, fields, plain] :
         {Case{u"", {}}, Case{u"1.2", {1, 2}}, Case{u" 1.\t2.+3.\n4", {1, 2, 3, 4}},
          Case{u"1.2.3.4.5", {1, 2, 3, 4}}, Case{u"-1.0.0.0", {kMost}}, Case{u"1..2", {1}},
          Case{u"99999999999.0.0.-99999999999", {kMost, 0, 0, 0x8000'0000}}, Case{u"1 .2", {1}},
          Case{u"../../x", {}}, Case{u"1.2.3.4/../x", {1, 2, 3, 4}}, Case{u"1.- 2", {1}},
          Case{u"1.2.3.٤", {1, 2, 3}}, Case{u"1.2.3.ı", {1, 2, 3}}, Case{u"1.2.3.4 ", {1, 2, 3, 4}},
          Case{u"1.2.3.1234567890", {1, 2, 3, 1234567890}}, Case{u"0.0.0.0", {}, true},
          Case{u"01.2.30.999999999", {1, 2, 30, 999999999}, true}}) {
        EXPECT_EQ(ReadVersion(text).fields, fields) << ToUtf8(text);
        EXPECT_EQ(ReadVersion(ToUtf8(text)).fields, fields) << ToUtf8(text);
        EXPECT_EQ(IsPlainVersion(text), plain) << ToUtf8(text);
    }
    EXPECT_LT(ReadVersion("1.9.9.9"), ReadVersion("1.10"));
    EXPECT_LT(ReadVersion("1.2"), ReadVersion("1.2.0.1"));
}

TEST(Records, TextsForEyesArePlainAndShort) {
    EXPECT_EQ(PlainText(u"a\r\n\tb\u0007\u009b[2J\u202ec\u2066\u200f<b>\0d"sv),
              u"a\r\n\tb[2Jc<b>d");
    const std::u16string long4000(kMostCharacters, u'x');
    EXPECT_EQ(PlainText(long4000 + u"\u202e"), long4000);
    EXPECT_EQ(PlainText(long4000.substr(1) + u"😀"), long4000.substr(1));
    const UpdateRecord record{.version = u"1.2\n\u202e" + long4000,
                              .update_describe = {{"zh-cn", u"中\u0001"}}};
    EXPECT_EQ(ShownVersion(record.version), u"1.2?" + long4000.substr(0, kMostOfVersion - 4));
    EXPECT_EQ(DescriptionOf(record, Language::kChinese), u"中");
    EXPECT_EQ(DescriptionOf(record, Language::kEnglish), u"");
}

}  // namespace
}  // namespace bw
