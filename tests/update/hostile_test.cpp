// A host that lies, babbles and never ends: whatever it sends, the program goes on, stays small and
// installs nothing. BANKWEAVER_HOSTILE_SECONDS=300 makes a night of it.
#include <array>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <random>

#include <gtest/gtest.h>

#include "common/temporary_folder.h"
#include "scripted_server.h"
#include "update/network_source.h"
#include "update/notice_record.h"
#include "update/plain_text.h"
#include "update/version_numbers.h"

namespace bw::test {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using Random = std::mt19937;

constexpr auto kPatience = 600ms;        // of one try
constexpr long kMostMemory = 64L << 10;  // KB
constexpr const char* kKey = "RWQf6LRCGA9i53mlYecO4IzT51TGPpvWucNSCh1CBM0QTaLn73Y7GFO3";
// Of the right form and key id; of no file here.
constexpr const char* kSignature =
    "untrusted comment: x\n"
    "RUQf6LRCGA9i559r3g7V1qNyJDApGip8MfqcadIgT9CuhV3EMhHoN1mGTkUidF/"
    "z7SrlQgXdy8ofjb7bNJJylDOocrCo8KLzZwo=\n"
    "trusted comment: bankweaver 9.0.0.0 program\n"
    "y/rUw2y8/hOUYjZU71eHp/Wo1KZ40fGy2VJEDl34XMJM+TX48Ss/17u3IvIfbVR1FkZZSNCisQbuQY+bHwhEBg==\n";

size_t Roll(Random& random, size_t below) {
    return std::uniform_int_distribution<size_t>(0, below - 1)(random);
}

template <size_t kCount>
std::string OneOf(Random& random, const std::array<const char*, kCount>& choices) {
    return choices[Roll(random, kCount)];
}

std::string Bytes(Random& random, size_t count) {
    std::string bytes(count, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(Roll(random, 256));
    return bytes;
}

std::string Megabyte(std::string_view piece) {
    std::string text;
    while (text.size() < 1 << 20)
        text += piece;
    return text;
}

std::string Json(Random& random, const std::string& self) {
    static const std::array kVersions{"9.0.0.0", "9", "-1.2.3.4", "../../x", "9.0.0.0/../y", ""};
    static const std::array kPlaces{"file:///etc/passwd", "http://[::1", "", "x"};
    switch (Roll(random, 8)) {
        case 0:
            return Megabyte("[");
        case 1:
            return Megabyte("{\"a\":");
        case 2:
            return "{" + Megabyte("\"k\":0,") + "\"k\":1}";
        case 3:
            return "{\"version\":\"" + Bytes(random, 1 << 12) + "\"}";
        case 4:
            return "{\"notify_id\":" + Megabyte("9") + "}";
        default:
            return R"({"force_update":true,"version":")" + OneOf(random, kVersions) +
                   R"(","url":")" + (Roll(random, 2) ? self : OneOf(random, kPlaces)) +
                   R"(","notify_message":{"en-us":"\u0000\ud800"},"for_users_type":1})";
    }
}

// The bytes that were asked for, as an honest host gives them.
std::string Honest(const std::string& request, const std::string& body) {
    const size_t range = request.find("bytes=");
    size_t first = 0;
    size_t size = body.size();
    std::string head = "HTTP/1.1 200 OK\r\n";
    if (range != request.npos) {
        char* end = nullptr;
        first = std::min<size_t>(std::strtoull(&request[range + 6], &end, 10), size);
        const size_t last = std::strtoull(end + 1, nullptr, 10);
        head = "HTTP/1.1 206 Part\r\nContent-Range: bytes " + std::to_string(first) + "-" +
               std::to_string(last) + "/" + std::to_string(size) + "\r\n";
        size = std::min(last + 1, size) - first;
    }
    return head + "Content-Length: " + std::to_string(size) + "\r\n\r\n" + body.substr(first, size);
}

Reply Lie(Random& random, const std::string& body) {
    static const std::array kHeads{"200 OK", "206 Part", "100 Go", "999 No", "204 None"};
    static const std::array kLengths{"0",         "1",
                                     "4096",      "99999999",
                                     "-1",        "9223372036854775807",
                                     "0x10",      "5, 7",
                                     "536870913", "18446744073709551616"};
    static const std::array kRanges{
        "bytes 0-0/1",      "bytes 0-/", "bytes */*", "0-9/10", "bytes 18446744073709551615-0/0",
        "bytes 0-2047/4096"};
    static const std::array kPlaces{"/again", "file:///etc/passwd",  "ftp://127.0.0.1/x",
                                    "//",     "http://127.0.0.1:1/", "http://u:p@127.0.0.1/"};
    const std::string head = "HTTP/1.1 " + OneOf(random, kHeads) + "\r\n";
    const std::string length = "Content-Length: " + OneOf(random, kLengths) + "\r\n";
    switch (Roll(random, 12)) {
        case 0:
            return {Bytes(random, Roll(random, 1 << 16))};
        case 1:
            return {head + Bytes(random, 4096) + "\r\n\r\n" + body};
        case 2:
            return {head + length + "\r\n" + body.substr(0, Roll(random, body.size() + 1))};
        case 3:
            return {head + "Content-Range: " + OneOf(random, kRanges) + "\r\n" + length + "\r\n" +
                    body};
        case 4:
            return {head + length + "\r\n", Bytes(random, 1 << 16)};
        case 5:
            return {head + "Transfer-Encoding: chunked\r\n\r\n",
                    "10000\r\n" + Bytes(random, 0x10000) + "\r\n"};
        case 6:
            return {head, "X-Field: " + Bytes(random, 9000) + "\r\n"};
        case 7:
            return {"", "HTTP/1.1 100 Continue\r\n\r\n"};
        case 8:
            return {"HTTP/1.1 302 There\r\nLocation: " + OneOf(random, kPlaces) + "\r\n\r\n"};
        case 9:
            return {head + length + "\r\n", "", 0, true};
        case 10:
            return {head + "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n", "{", 30};
        default:
            return {};
    }
}

long PeakMemory() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmHWM:")) return std::atol(line.c_str() + 6);
    return -1;
}

TEST(HostileHost, NothingIsInstalledAndNothingBreaks) {
    const char* seconds = std::getenv("BANKWEAVER_HOSTILE_SECONDS");
    const auto end = Clock::now() + std::chrono::seconds(seconds ? std::atoi(seconds) : 4);
    std::atomic<unsigned> connections = 0;
    const ScriptedServer server([&](const std::string& request) {
        Random random(++connections);
        // Bodies hold for a while, so that all steps of a fetch meet the same one.
        Random lasting(static_cast<unsigned>(Clock::now().time_since_epoch() / 300ms));
        const std::string self = "http://" + server.Host() + "/program";
        std::string body = kSignature;
        if (request.find(".minisig") == request.npos) {
            const bool program = request.find("/program") != request.npos;
            body = program ? Bytes(lasting, 1 + Roll(lasting, 1 << 16)) : Json(lasting, self);
        } else if (Roll(lasting, 4) == 0) {
            body[Roll(lasting, body.size())] ^= 1;
        }
        return Roll(random, 8) == 0 ? Lie(random, body) : Reply{Honest(request, body)};
    });
    const TemporaryFolder folder;
    const Deployment deployment{
        .host = "http://" + server.Host(), .key = kKey, .plainHttp = true, .version = "0.1.0"};
    NetworkSource source(deployment);
    size_t texts = 0;
    std::map<UpdateOutcome::Kind, size_t> outcomes;
    // It was heard, and some of its programs came as far as their signature.
    const auto tried = [&] {
        return texts > 0 && outcomes[UpdateOutcome::Kind::kBadSignature] > 0;
    };
    while (Clock::now() < end || (!tried() && Clock::now() < end + 60s)) {
        std::atomic<bool> stop = false;
        const std::jthread watch([&](const std::stop_token& done) {
            for (const auto late = Clock::now() + kPatience;
                 !done.stop_requested() && Clock::now() < late;)
                std::this_thread::sleep_for(5ms);
            stop = true;
        });
        UpdateRecord record{.version = u"9.0.0.0", .url = server.Url("program")};
        if (const auto text = source.FetchText(UpdateFileUrl(deployment, 1ms), stop)) {
            ++texts;
            const NoticeRecord notice = ReadNoticeRecord(*text);
            EXPECT_LE(PlainText(TextFor(notice.notify_message, Language::kEnglish)).size(),
                      kMostCharacters);
            if (UpdateRecord told = ReadUpdateRecord(*text); IsPlainVersion(told.version))
                record = std::move(told);
        }
        const UpdateOutcome outcome =
            source.FetchProgram(record, folder / "Bankweaver_9.0.0.0.exe", stop, {});
        EXPECT_FALSE(outcome);
        EXPECT_EQ(folder.CountFiles(), 0u);
        ++outcomes[outcome.kind];
    }
    EXPECT_TRUE(tried());
    std::printf("%u connections, %zu texts, %ld KB at the most; ends:", connections.load(), texts,
                PeakMemory());
    for (const auto& [kind, count] : outcomes)
        std::printf(" %d: %zu", static_cast<int>(kind), count);
    std::puts("");
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    EXPECT_LT(PeakMemory(), kMostMemory);
#endif
}

}  // namespace
}  // namespace bw::test
