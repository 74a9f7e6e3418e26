#include "update/network_source.h"

#include <vector>

#include "support/files.h"
#include "update/download_file.h"
#include "update/http_client.h"
#include "update/http_url.h"
#include "update/signed_program.h"

namespace bw {
namespace {

constexpr size_t kTextRoom = 0x100000;  // bytes of a small file that are looked at

UpdateOutcome OutcomeOf(const HttpResult& result) {
    using Kind = UpdateOutcome::Kind;
    switch (result.kind) {
        case HttpResult::Kind::kDone:
            return {};
        case HttpResult::Kind::kStopped:
            return {Kind::kStopped};
        case HttpResult::Kind::kTooLarge:
            return {Kind::kTooLarge};
        case HttpResult::Kind::kFile:
            return {Kind::kFile, result.file};
        case HttpResult::Kind::kRefused:
        case HttpResult::Kind::kFailed:
            break;
    }
    return {Kind::kNetwork};
}

struct Fetched {
    HttpResult result;
    std::string text;
};

// In memory of its own: two fetches share nothing.
Fetched FetchSmall(const std::string& url, const std::atomic<bool>& stop,
                   const HttpLimits& limits) {
    std::vector<uint8_t> buffer(kTextRoom);
    const HttpResult result = HttpClient(stop).DownloadToBuffer(url, buffer, {}, limits);
    return {result, {buffer.begin(), buffer.begin() + static_cast<ptrdiff_t>(result.size)}};
}

}  // namespace

std::optional<std::string> NetworkSource::FetchText(const std::string& url,
                                                    const std::atomic<bool>& stop) {
    Fetched fetched = FetchSmall(url, stop, {});
    if (!fetched.result) return std::nullopt;
    return std::move(fetched.text);
}

UpdateOutcome NetworkSource::FetchProgram(const UpdateRecord& record,
                                          const std::filesystem::path& target,
                                          const std::atomic<bool>& stop,
                                          const ProgressCallback& progress) {
    const HttpLimits limits{.secureOnly = !deployment_.plainHttp, .largest = kLargestProgram};
    const Fetched signature = FetchSmall(record.url + ".minisig", stop, limits);
    if (signature.result.kind == HttpResult::Kind::kStopped) return OutcomeOf(signature.result);
    // Without it the rest would be fetched for nothing.
    if (!signature.result) return {UpdateOutcome::Kind::kNoSignature};

    // Whatever has that name is an earlier attempt's, or not to be written through: a link.
    RemoveAbandonedReplacements(target);
    if (const FileResult<> gone = DeleteFile(target); !gone) {
        return {UpdateOutcome::Kind::kFile, gone.Problem()};
    }
    FileResult<ReplacementFile> file = ReplacementFile::Begin(target);
    if (!file) return {UpdateOutcome::Kind::kFile, file.Problem()};
    const auto report = [&](uint64_t done, uint64_t total, uint32_t) {
        if (progress) progress({.done = done, .total = total});
    };
    const HttpResult fetched =
        CDownloadFile(stop).Download(record.url, file->Contents(), report, limits);
    if (!fetched) return OutcomeOf(fetched);
    // It takes its name, from which it is installed, only as one of ours.
    UpdateOutcome outcome = VerifyProgram(file->Temporary(), signature.text, deployment_.key,
                                          record.version, LastPart(record.url), stop);
    if (!outcome) return outcome;
    if (const FileResult<> kept = file->Commit(); !kept) {
        return {UpdateOutcome::Kind::kFile, kept.Problem()};
    }
    return {};
}

}  // namespace bw
