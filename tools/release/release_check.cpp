#include "release/release_check.h"

#include <atomic>
#include <optional>

#include <fmt/format.h>

#include "language/problem_text.h"
#include "support/files.h"
#include "support/text.h"
#include "update/http_url.h"
#include "update/json_file.h"
#include "update/minisign.h"
#include "update/network_source.h"
#include "update/notice_record.h"
#include "update/plain_text.h"
#include "update/signed_program.h"
#include "update/update_record.h"
#include "update/version_numbers.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

constexpr uint64_t kLargestJson = uint64_t{1} << 20;  // bytes; the program reads no more

class Check {
  public:
    Check(const fs::path& folder, const Deployment& deployment)
        : folder_(folder), deployment_(deployment) {}

    ReleaseReport Run() {
        if (const auto json = TextOf("update.json", kLargestJson)) {
            const UpdateRecord record = ReadUpdateRecord(*json);
            Version(record);
            Texts("update_describe", record.update_describe);
            const std::string name = Address(record.url);
            if (!name.empty()) Program(name, record.version);
        }
        std::error_code error;
        if (fs::exists(folder_ / "notify.json", error)) Notice();
        return report_;
    }

  private:
    template <typename... Values>
    void Found(fmt::format_string<Values...> text, Values&&... values) {
        report_.found.push_back(fmt::format(text, std::forward<Values>(values)...));
    }
    template <typename... Values>
    void Fault(fmt::format_string<Values...> text, Values&&... values) {
        report_.faults.push_back(fmt::format(text, std::forward<Values>(values)...));
    }

    std::optional<std::string> TextOf(const std::string& name, uint64_t limit) {
        const auto bytes = ReadFile(folder_ / name, limit);
        if (bytes) return std::string(bytes->begin(), bytes->end());
        Fault("{}", ToUtf8(ProblemText(bytes.Problem(), Language::kEnglish)));
        return std::nullopt;
    }

    void Version(const UpdateRecord& record) {
        const std::string version = ToUtf8(record.version);
        if (!IsPlainVersion(record.version)) {
            Fault("The version is \"{}\" and not four numbers parted by points.", version);
        } else if (ReadVersion(version) <= ReadVersion(deployment_.version)) {
            Fault("Version {} is not newer than {}.", version, deployment_.version);
        } else {
            Found("Version {}{}", version,
                  record.force_update ? ", fetched without asking" : ", offered");
        }
    }

    // The name of the program's file; empty if the address isn't one in this folder.
    std::string Address(const std::string& url) {
        std::string name = LastPart(url);
        const std::optional<HttpUrl> parts = CrackUrl(url);
        if (!parts || !parts->IsHttp() || name.empty()) {
            Fault("The url \"{}\" is no address of a file.", url);
        } else if (!parts->IsSecure() && !deployment_.plainHttp) {
            Fault("The url {} is not https.", url);
        } else if (url != fmt::format("{}/raw/master/Release/{}", deployment_.host, name)) {
            Fault("The url {} is not in the host's folder {}/raw/master/Release.", url,
                  deployment_.host);
        } else {
            Found("Address {}", url);
            return name;
        }
        return {};
    }

    void Program(const std::string& name, std::u16string_view version) {
        std::error_code error;
        const uintmax_t size = fs::file_size(folder_ / name, error);
        if (!error && size > kLargestProgram) {
            Fault("{} has {} bytes, more than the {} that are taken.", name, size, kLargestProgram);
        }
        const auto signature = TextOf(name + ".minisig", kLongestMinisign);
        if (!signature) return;
        const std::atomic<bool> stop = false;
        const UpdateOutcome outcome =
            VerifyProgram(folder_ / name, *signature, deployment_.key, version, name, stop);
        if (outcome) {
            Found("Program {}, {} bytes, signed for this version and name", name, size);
        } else {
            Fault("{}: {}", name, ToUtf8(UpdateOutcomeText(outcome, Language::kEnglish)));
        }
    }

    void Notice() {
        const auto json = TextOf("notify.json", kLargestJson);
        if (!json) return;
        const NoticeRecord record = ReadNoticeRecord(*json);
        if (record.notify_id == 0 && !record.restart_show)
            Fault("The notice has no number from 1 on, so it is never shown.");
        if (!record.IsForUs()) Fault("The notice is for nobody who uses this program.");
        Found("Notice {}{}", record.notify_id, record.restart_show ? ", at each start" : ", once");
        Texts("notify_message", record.notify_message);
    }

    void Texts(const char* key, const LanguageTexts& texts) {
        for (const Language each : {Language::kEnglish, Language::kChinese}) {
            const std::string_view language = LanguageKey(each);
            const auto text = texts.find(language);
            if (text == texts.end()) {
                Found("{}: no text for {}", key, language);
            } else if (PlainText(text->second) != text->second) {
                Fault(
                    "{}: the text for {} is longer than {} characters, or has control characters.",
                    key, language, kMostCharacters);
            } else {
                Found("{}: {} characters for {}", key, text->second.size(), language);
            }
        }
    }

    const fs::path& folder_;
    const Deployment& deployment_;
    ReleaseReport report_;
};

}  // namespace

ReleaseReport CheckRelease(const fs::path& folder, const Deployment& deployment) {
    return Check(folder, deployment).Run();
}

}  // namespace bw
