// A host that lies, babbles and never ends: whatever it sends, the program goes on, stays small and
// installs nothing. BANKWEAVER_HOSTILE_SECONDS=300 makes a night of it.
#include <array>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include "common/temporary_folder.h"
#include "update/network_source.h"
#include "update/notice_record.h"
#include "update/plain_text.h"
#include "update/version_numbers.h"

namespace bw {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using Random = std::mt19937;

constexpr auto kPatience = 1500ms;       // of one try
constexpr long kMostMemory = 64L << 10;  // KB
constexpr std::string_view kKey = "RWQf6LRCGA9i53mlYecO4IzT51TGPpvWucNSCh1CBM0QTaLn73Y7GFO3";

size_t Roll(Random& random, size_t below) {
    return std::uniform_int_distribution<size_t>(0, below - 1)(random);
}

std::string Bytes(Random& random, size_t count) {
    std::string bytes(count, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(Roll(random, 256));
    return bytes;
}

std::string Repeated(std::string_view piece, size_t size) {
    std::string text;
    while (text.size() < size)
        text += piece;
    return text;
}

template <size_t kCount>
std::string OneOf(Random& random, const std::array<const char*, kCount>& choices) {
    return choices[Roll(random, kCount)];
}

std::string Json(Random& random, const std::string& self) {
    static const std::array kVersions{"9.0.0.0", "9", "-1.2.3.4", "../../x", "9.0.0.0/../y", ""};
    const std::array kAddresses{self.c_str(), "file:///etc/passwd", "http://[::1", "", "x"};
    switch (Roll(random, 7)) {
        case 0:
            return Repeated("[", 1 << 20);
        case 1:
            return Repeated("{\"a\":", 1 << 20);
        case 2:
            return "{" + Repeated("\"k\":0,", 1 << 20) + "\"k\":1}";
        case 3:
            return "{\"version\":\"" + Bytes(random, 1 << 12) + "\"}";
        case 4:
            return "{\"notify_id\":" + Repeated("9", 1 << 16) + "}";
        default:
            return R"({"force_update":true,"version":")" + OneOf(random, kVersions) +
                   R"(","url":")" + OneOf(random, kAddresses) +
                   R"(","update_describe":{"en-us":"\u0000\ud800"},"for_users_type":1})";
    }
}

std::string Signature(Random& random) {
    std::string text =
        "untrusted comment: x\n"
        "RUQf6LRCGA9i559r3g7V1qNyJDApGip8MfqcadIgT9CuhV3EMhHoN1mGTkUidF/"
        "z7SrlQgXdy8ofjb7bNJJylDOocrCo8KLzZwo=\n"
        "trusted comment: bankweaver 9.0.0.0 x\n"
        "y/rUw2y8/hOUYjZU71eHp/Wo1KZ40fGy2VJEDl34XMJM+TX48Ss/"
        "17u3IvIfbVR1FkZZSNCisQbuQY+bHwhEBg==\n";
    for (size_t i = Roll(random, 4); i > 0; --i)
        text[Roll(random, text.size())] = static_cast<char>(Roll(random, 256));
    return text;
}

class HostileServer {
  public:
    HostileServer() {
        listener_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        auto* plain = reinterpret_cast<sockaddr*>(&address);
        EXPECT_EQ(bind(listener_, plain, size), 0);
        EXPECT_EQ(listen(listener_, 64), 0);
        EXPECT_EQ(getsockname(listener_, plain, &size), 0);
        self_ = "http://127.0.0.1:" + std::to_string(ntohs(address.sin_port));
        // All the talking is done by a few threads; who waits too long is gone by then.
        for (unsigned i = 0; i < 6; ++i)
            threads_.emplace_back(
                [this, i](const std::stop_token& stop) { Serve(stop, Random(i)); });
    }
    HostileServer(const HostileServer&) = delete;
    HostileServer& operator=(const HostileServer&) = delete;
    ~HostileServer() {
        threads_.clear();
        close(listener_);
    }

    const std::string& Url() const { return self_; }

  private:
    void Serve(const std::stop_token& stop, Random random) {
        while (!stop.stop_requested()) {
            pollfd ready{.fd = listener_, .events = POLLIN, .revents = 0};
            if (poll(&ready, 1, 50) != 1) continue;
            const int client = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
            if (client == -1) continue;
            Answer(stop, client, random);
            close(client);
        }
    }
    // False if the client has gone or the test ends.
    static bool Say(const std::stop_token& stop, int client, std::string_view text) {
        const auto end = Clock::now() + 2 * kPatience;
        while (!text.empty() && !stop.stop_requested() && Clock::now() < end) {
            const ssize_t sent = send(client, text.data(), text.size(), MSG_NOSIGNAL);
            if (sent > 0) {
                text.remove_prefix(static_cast<size_t>(sent));
                continue;
            }
            if (errno != EAGAIN) return false;
            pollfd ready{.fd = client, .events = POLLOUT, .revents = 0};
            poll(&ready, 1, 20);
        }
        return text.empty();
    }
    static std::string Hear(int client) {
        std::array<char, 8192> piece{};
        pollfd ready{.fd = client, .events = POLLIN, .revents = 0};
        if (poll(&ready, 1, 500) != 1) return {};
        const ssize_t got = read(client, piece.data(), piece.size());
        return {piece.data(), got > 0 ? static_cast<size_t>(got) : 0};
    }
    static void SayForEver(const std::stop_token& stop, int client, const std::string& piece) {
        const auto end = Clock::now() + 2 * kPatience;
        while (Clock::now() < end && Say(stop, client, piece)) {
        }
    }
    // The bytes that were asked for, as an honest host gives them.
    static std::string Honest(const std::string& request, const std::string& body) {
        const size_t range = request.find("bytes=");
        if (range == std::string::npos) {
            return "HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(body.size()) +
                   "\r\n\r\n" + body;
        }
        char* end = nullptr;
        const size_t first = std::strtoull(request.c_str() + range + 6, &end, 10);
        const size_t last = std::strtoull(end + 1, nullptr, 10);
        if (first >= body.size() || last < first) return "HTTP/1.1 416 No\r\n\r\n";
        const std::string part = body.substr(first, last - first + 1);
        return "HTTP/1.1 206 Part\r\nContent-Range: bytes " + std::to_string(first) + "-" +
               std::to_string(last) + "/" + std::to_string(body.size()) +
               "\r\nContent-Length: " + std::to_string(part.size()) + "\r\n\r\n" + part;
    }
    void Answer(const std::stop_token& stop, int client, Random& random) {
        static const std::array kLengths{"0",
                                         "1",
                                         "4096",
                                         "99999999",
                                         "-1",
                                         "9223372036854775807",
                                         "18446744073709551616",
                                         "0x10",
                                         "5, 7",
                                         "536870913"};
        static const std::array kRanges{"bytes 0-0/1",
                                        "bytes 0-/",
                                        "bytes */*",
                                        "0-9/10",
                                        "bytes 18446744073709551615-0/0",
                                        "bytes 0-2047/4096"};
        static const std::array kPlaces{
            "/again", "file:///etc/passwd",   "ftp://127.0.0.1/x", "http://127.0.0.1:1/",
            "//",     "http://u:p@127.0.0.1/"};
        const std::string request = Hear(client);
        // Bodies hold for a while, so that both steps of a fetch meet the same one.
        Random lasting(static_cast<unsigned>(Clock::now().time_since_epoch() / 300ms));
        const std::string body = request.find(".minisig") != std::string::npos ? Signature(lasting)
                                 : request.find("/program") != std::string::npos
                                     ? Bytes(lasting, 1 + Roll(lasting, 1 << 16))
                                     : Json(lasting, self_ + "/program");
        const std::string head =
            "HTTP/1.1 " +
            OneOf(random, std::array{"200 OK", "206 Part", "100 Go", "999 No", "204 None"});
        switch (Roll(random, 24)) {
            case 0:
                Say(stop, client, Bytes(random, Roll(random, 1 << 16)));
                break;
            case 1:
                Say(stop, client, head + "\r\n" + Bytes(random, 4096) + "\r\n\r\n" + body);
                break;
            case 2:
                Say(stop, client,
                    head + "\r\nContent-Length: " + OneOf(random, kLengths) + "\r\n\r\n");
                Say(stop, client, body.substr(0, Roll(random, body.size() + 1)));
                break;
            case 3:
                Say(stop, client,
                    "HTTP/1.1 206 Part\r\nContent-Range: " + OneOf(random, kRanges) +
                        "\r\nContent-Length: " + OneOf(random, kLengths) + "\r\n\r\n" + body);
                break;
            case 4:
                Say(stop, client,
                    head + "\r\nContent-Length: " + OneOf(random, kLengths) + "\r\n\r\n");
                SayForEver(stop, client, Bytes(random, 1 << 16));
                break;
            case 5:
                Say(stop, client, head + "\r\nTransfer-Encoding: chunked\r\n\r\n");
                SayForEver(stop, client, "10000\r\n" + Bytes(random, 0x10000) + "\r\n");
                break;
            case 6:
                Say(stop, client, head + "\r\n");
                SayForEver(stop, client, "X-" + Repeated("a", 5000) + ": b\r\n");
                break;
            case 7:
                SayForEver(stop, client, "HTTP/1.1 100 Continue\r\n\r\n");
                break;
            case 8:
                Say(stop, client,
                    "HTTP/1.1 302 There\r\nLocation: " + OneOf(random, kPlaces) +
                        "\r\nContent-Length: 0\r\n\r\n");
                break;
            case 9:
                break;  // closes at once
            case 10:
                std::this_thread::sleep_for(200ms);
                break;
            default:
                Say(stop, client, Honest(request, body));
        }
    }

    int listener_ = -1;
    std::string self_;
    std::vector<std::jthread> threads_;
};

long PeakMemory() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmHWM:")) return std::atol(line.c_str() + 6);
    return -1;
}

TEST(HostileHost, NothingIsInstalledAndNothingBreaks) {
    const char* seconds = std::getenv("BANKWEAVER_HOSTILE_SECONDS");
    const auto end =
        Clock::now() + std::chrono::seconds(seconds != nullptr ? std::atoi(seconds) : 4);
    const HostileServer server;
    const TemporaryFolder folder;
    const Deployment deployment{
        .host = server.Url(), .key = std::string(kKey), .plainHttp = true, .version = "0.1.0"};
    NetworkSource source(deployment);
    size_t rounds = 0;
    size_t texts = 0;
    size_t tries = 0;
    while (Clock::now() < end) {
        ++rounds;
        std::atomic<bool> stop = false;
        std::atomic<bool> done = false;
        const std::jthread watch([&] {
            for (const auto late = Clock::now() + kPatience; !done && Clock::now() < late;)
                std::this_thread::sleep_for(5ms);
            stop = true;
        });
        UpdateRecord record{.version = u"9.0.0.0", .url = server.Url() + "/program"};
        if (const auto text = source.FetchText(UpdateFileUrl(deployment, 1ms), stop)) {
            ++texts;
            const UpdateRecord told = ReadUpdateRecord(*text);
            const NoticeRecord notice = ReadNoticeRecord(*text);
            EXPECT_LE(PlainText(TextFor(notice.notify_message, Language::kEnglish)).size(),
                      kMostCharacters);
            ReadVersion(told.version);
            if (IsPlainVersion(told.version)) record = told;
        }
        ++tries;
        const auto target = folder / "Bankweaver_9.0.0.0.exe";
        EXPECT_FALSE(source.FetchProgram(record, target, stop, {}));
        EXPECT_EQ(folder.CountFiles(), 0u);
        done = true;
    }
    std::printf("%zu rounds, %zu texts, %zu tries to install, %ld KB at the most\n", rounds, texts,
                tries, PeakMemory());
    EXPECT_GT(texts, 0u);
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    EXPECT_LT(PeakMemory(), kMostMemory);
#endif
}

}  // namespace
}  // namespace bw
