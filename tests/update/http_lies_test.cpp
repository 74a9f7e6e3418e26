// Hosts that say other things than what is true, or say nothing.
#include <chrono>
#include <map>

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <netdb.h>

#include "common/environment_variable.h"
#include "common/game_image.h"
#include "scripted_server.h"
#include "update/http_client.h"
#include "update/http_request.h"

// The library's look-up of names comes by here.
extern "C" int getaddrinfo(const char* name, const char* service, const addrinfo* hints,
                           addrinfo** result) {
    if (std::string_view(name) == "sleeping.example") {
        sleep(2);
        return EAI_FAIL;
    }
    return reinterpret_cast<decltype(&getaddrinfo)>(dlsym(RTLD_NEXT, "getaddrinfo"))(name, service,
                                                                                     hints, result);
}

namespace bw::test {
namespace {

using Kind = HttpResult::Kind;
using namespace std::chrono_literals;

const std::string kFile = Noise(10000, 1);

std::string Answer(const std::string& status, const std::string& fields, const std::string& body) {
    return "HTTP/1.1 " + status + "\r\n" + fields + (fields.empty() ? "" : "\r\n") + "\r\n" + body;
}
std::string WithLength(const std::string& body) {
    return Answer("200 OK", "Content-Length: " + std::to_string(body.size()), body);
}
struct Asked {
    size_t first = 0, last = 0;
    explicit operator bool() const { return last != 0; }
};
Asked RangeOf(const std::string& request) {
    Asked asked;
    const size_t at = std::min(request.find("bytes="), request.size());
    std::sscanf(request.c_str() + at, "bytes=%zu-%zu", &asked.first, &asked.last);
    return asked;
}
// Of the range that is asked for, with other fields or another body where they are named.
std::string Part(const std::string& request, const std::string& fields = {},
                 std::string body = {}) {
    const auto [first, last] = RangeOf(request);
    if (body.empty()) body = kFile.substr(first, last - first + 1);
    const std::string range = std::to_string(first) + "-" + std::to_string(last) + "/*\r\n";
    const std::string length = "Content-Length: " + std::to_string(body.size());
    return Answer("206 Part", "Content-Range: bytes " + range + (fields.empty() ? length : fields),
                  body);
}
Reply TrueReply(const std::string& request) {
    return {RangeOf(request) ? Part(request) : WithLength(kFile)};
}
std::string Chunked(const std::string& body) {
    char size[16];
    snprintf(size, sizeof size, "%zx\r\n", body.size());
    return size + body + "\r\n0\r\nContent-Range: bytes 1-1/1\r\n\r\n";
}

struct Fetched {
    HttpResult result;
    std::string bytes;
};
Fetched Fetch(const std::string& url, const HttpLimits& limits = {}) {
    const std::atomic<bool> cancel{false};
    Fetched fetched{.result = {}, .bytes = std::string(20000, 'x')};
    fetched.result = HttpClient(cancel).DownloadToBuffer(
        url, {reinterpret_cast<uint8_t*>(fetched.bytes.data()), fetched.bytes.size()}, {}, limits);
    return fetched;
}

// What comes of an answer to the question of the length, and of one to the second range.
TEST(HttpLies, AreHeldAgainstWhatWasAskedFor) {
    const std::string whole = WithLength(kFile);
    const auto length = [](const std::string& fields) { return Answer("200 OK", fields, kFile); };
    const auto ranged = [](const std::string& fields, const std::string& body = {}) {
        return Part("bytes=5000-9999", fields, body);
    };
    const std::string good = ranged({});
    const std::string second = kFile.substr(5000);
    const auto misplaced = [&](const std::string& range) {
        return Answer("206 Part", "Content-Range: " + range, second);
    };
    const std::string many(2000, 'y');
    const struct {
        const char* name;
        Reply toLength, toSecond;
        Kind kind;
    } cases[] = {
        {"true", {whole}, {good}, Kind::kDone},
        {"total known", {whole}, {misplaced("bytes 5000-9999/10000")}, Kind::kDone},
        {"chunks", {whole}, {ranged("Transfer-Encoding: chunked", Chunked(second))}, Kind::kDone},
        {"gzip", {whole}, {ranged("Content-Encoding: gzip")}, Kind::kDone},
        {"interim", {whole}, {"HTTP/1.1 103 Early\r\nLink: <a>\r\n\r\n" + good}, Kind::kDone},
        {"1.0", {"HTTP/1.0" + whole.substr(8)}, {"HTTP/1.0" + good.substr(8)}, Kind::kDone},
        {"same twice",
         {length("Content-Length: 10000\r\nContent-Length: 10000")},
         {good},
         Kind::kDone},
        {"no ranges", {whole}, {whole}, Kind::kFailed},
        {"no length", {length("A: b")}, {good}, Kind::kFailed},
        {"other length",
         {length("Content-Length: 10000\r\nContent-Length: 10001")},
         {good},
         Kind::kFailed},
        {"below zero", {length("Content-Length: -1")}, {good}, Kind::kFailed},
        {"beyond", {length("Content-Length: 99999999999999999999")}, {good}, Kind::kFailed},
        {"2^63", {length("Content-Length: 9223372036854775807")}, {good}, Kind::kFailed},
        {"length of chunks",
         {Answer("200 OK", "Transfer-Encoding: chunked\r\nContent-Length: 10000", Chunked(kFile))},
         {good},
         Kind::kFailed},
        {"404", {Answer("404 No", "Content-Length: 10000", kFile)}, {good}, Kind::kFailed},
        {"500", {whole}, {Answer("500 No", "Content-Length: 5000", second)}, Kind::kFailed},
        {"401",
         {Answer("401 No", "WWW-Authenticate: Basic realm=a\r\nContent-Length: 1", "a")},
         {good},
         Kind::kFailed},
        {"204", {Answer("204 No", "Content-Length: 10000", "")}, {good}, Kind::kFailed},
        {"cut off", {whole}, {good.substr(0, good.size() - 1)}, Kind::kFailed},
        {"fewer", {whole}, {ranged({}, second.substr(1))}, Kind::kFailed},
        {"more", {whole}, {ranged({}, second + "x")}, Kind::kFailed},
        {"more, untold", {whole}, {ranged("A: b", second + "x")}, Kind::kFailed},
        {"without end", {whole}, {.bytes = ranged("A: b"), .again = many}, Kind::kFailed},
        {"no place", {whole}, {Answer("206 Part", "Content-Length: 5000", second)}, Kind::kFailed},
        {"other place", {whole}, {misplaced("bytes 4999-9998/10000")}, Kind::kFailed},
        {"no bytes", {whole}, {misplaced("bytes 0-0/0")}, Kind::kFailed},
        {"other total", {whole}, {misplaced("bytes 5000-9999/10001")}, Kind::kFailed},
        {"two places", {whole}, {ranged("Content-Range: bytes 0-4999/10000")}, Kind::kFailed},
        {"no HTTP", {"SSH-2.0-a\r\n"}, {good}, Kind::kFailed},
        {"nothing", {whole}, {""}, Kind::kFailed},
        {"long field", {"HTTP/1.1 200 OK\r\nA: ", many}, {good}, Kind::kFailed},
        {"many fields", {"HTTP/1.1 200 OK\r\n", "A: b\r\n"}, {good}, Kind::kFailed},
        {"interim ever", {"", "HTTP/1.1 100 Go on\r\n\r\n"}, {good}, Kind::kFailed},
        {"file:", {Answer("302 To", "Location: file:///etc/passwd", "")}, {good}, Kind::kFailed},
        {"ftp:", {whole}, {Answer("302 To", "Location: ftp://127.0.0.1/file", "")}, Kind::kFailed},
        {"nowhere", {Answer("302 To", "Content-Length: 10000", kFile)}, {good}, Kind::kFailed},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.name);
        ScriptedServer server([&](const std::string& request) {
            if (RangeOf(request).first != 0) return test.toSecond;
            return RangeOf(request) ? Reply{Part(request)} : test.toLength;
        });
        const Fetched fetched = Fetch(server.Url());
        EXPECT_EQ(fetched.result.kind, test.kind);
        // What lies behind the file's place in the buffer is nobody's.
        EXPECT_EQ(fetched.bytes.substr(10000), std::string(10000, 'x'));
        if (test.kind == Kind::kDone) {
            EXPECT_EQ(fetched.bytes.substr(0, 10000), kFile);
        }
    }
}

TEST(HttpLies, AreNoneInWhatIsSent) {
    ScriptedServer server([&](const std::string& request) -> Reply {
        if (request.starts_with("GET /old"))  // its own body never ends
            return {
                Answer("307 To",
                       "Set-Cookie: a=b\r\nLocation: http://me:word@" + server.Host() + "/new a?b",
                       ""),
                "endless"};
        return TrueReply(request);
    });
    EXPECT_EQ(Fetch("http://you:secret@" + server.Host() + "/old#here").bytes.substr(0, 10000),
              kFile);
    const auto expected = [&](const std::string& path, const std::string& range) {
        return "GET /" + path + " HTTP/1.1\r\nHost: " + server.Host() + "\r\n" + range +
               "User-Agent: WinInetGet/0.1\r\nCache-Control: no-cache\r\nPragma: no-cache\r\n\r\n";
    };
    std::map<std::string, int> sent;
    for (const std::string& request : server.Requests())
        ++sent[request];
    std::map<std::string, int> all;
    for (const char* range : {"", "Range: bytes=0-4999\r\n", "Range: bytes=5000-9999\r\n"})
        all[expected("old", range)] = all[expected("new%20a?b", range)] = 1;
    EXPECT_EQ(sent, all);

    const EnvironmentVariable proxy("http_proxy", server.Url().c_str());
    EXPECT_TRUE(Fetch("http://host.example/file").result);
    EXPECT_TRUE(server.Requests().back().starts_with("GET http://host.example/file HTTP/1.1\r\n"));
}

TEST(HttpLies, AreCoveredByOneRequestForAll) {
    const struct {
        std::string whole;
        Kind kind;
    } cases[] = {{WithLength(kFile), Kind::kDone},
                 {Answer("200 OK", "A: b", kFile), Kind::kDone},
                 {Answer("200 OK", "A: b", kFile + "x"), Kind::kFailed},
                 {Answer("200 OK", "A: b", kFile.substr(1)), Kind::kFailed},
                 {WithLength(kFile + "x"), Kind::kFailed},
                 {Answer("404 No", "A: b", kFile), Kind::kFailed}};
    for (const auto& test : cases) {
        std::atomic<int> asked{0};
        ScriptedServer server([&](const std::string& request) -> Reply {
            const bool isLast = !RangeOf(request) && asked++ == 1;
            return {isLast ? test.whole : WithLength(kFile)};
        });
        const Fetched fetched = Fetch(server.Url(), {.wholeIfNoRanges = true});
        EXPECT_EQ(fetched.result.kind, test.kind) << test.whole.substr(0, 40);
        if (fetched.result) {
            EXPECT_EQ(fetched.bytes.substr(0, 10000), kFile);
        }
    }
}

TEST(HttpLies, TakeAsManyThreadsAsAreSensible) {
    for (const auto& [wanted, taken] : {std::pair(0, 2), {1, 2}, {3, 3}, {65, 64}, {1000, 64}}) {
        ScriptedServer server(TrueReply);
        EXPECT_EQ(Fetch(server.Url(), {.threads = wanted}).bytes.substr(0, 10000), kFile);
        EXPECT_EQ(server.Requests().size(), static_cast<size_t>(1 + taken));
    }
}

// A host that takes no connection any more: its queue is full.
class DeafHost {
  public:
    DeafHost() {
        socklen_t size = sizeof address_;
        address_.sin_family = AF_INET;
        address_.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        bind(sockets_[0], reinterpret_cast<sockaddr*>(&address_), size);
        getsockname(sockets_[0], reinterpret_cast<sockaddr*>(&address_), &size);
        listen(sockets_[0], 0);
        for (size_t i = 1; i < std::size(sockets_); ++i)
            connect(sockets_[i], reinterpret_cast<sockaddr*>(&address_), size);
    }
    ~DeafHost() {
        for (const int each : sockets_)
            close(each);
    }
    std::string Url() const {
        return "http://127.0.0.1:" + std::to_string(ntohs(address_.sin_port)) + "/";
    }

  private:
    static int Make() { return socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0); }
    const int sockets_[4] = {Make(), Make(), Make(), Make()};
    sockaddr_in address_{};
};

TEST(HttpStop, EndsWhateverIsWaitedFor) {
    const DeafHost deaf;
    ScriptedServer silent([](const auto&) { return Reply{.bytes = "HTTP/1.1 ", .hang = true}; });
    ScriptedServer half([](const std::string& request) {
        if (!RangeOf(request)) return TrueReply(request);
        const std::string part = Part(request);
        return Reply{.bytes = part.substr(0, part.size() - 100), .hang = true};
    });
    ScriptedServer busy([](const std::string& request) {
        const std::string length = "Content-Length: 99999999999";
        return RangeOf(request) ? Reply{Part(request, "A: b", "a"), kFile}
                                : Reply{Answer("200 OK", length, "")};
    });
    for (const std::string& url :
         {std::string("http://sleeping.example/"), deaf.Url(), silent.Url(),
          "https://" + silent.Host(), half.Url(), busy.Url()}) {
        std::atomic<bool> cancel{false};
        FileResult<File> file = File::Create("/dev/null");
        HttpResult result;
        std::thread fetch([&] { result = HttpClient(cancel).DownloadToFile(url, *file, {}, {}); });
        std::this_thread::sleep_for(200ms);
        const auto start = std::chrono::steady_clock::now();
        cancel = true;
        fetch.join();
        EXPECT_LT(std::chrono::steady_clock::now() - start, 100ms) << url;
        EXPECT_EQ(result.kind, Kind::kStopped) << url;
    }
}

TEST(HttpStop, ComesByItselfWhereNextToNothingArrives) {
    const DeafHost deaf;
    ScriptedServer head([](const auto&) { return Reply{"HTTP/1.1 ", "2", 100}; });
    ScriptedServer body([](const auto&) { return Reply{Answer("200 OK", "A: b", ""), "a", 100}; });
    for (const std::string& url : {deaf.Url(), head.Url(), "https://" + head.Host(), body.Url()}) {
        const std::atomic<bool> cancel{false};
        const auto goOn = [](const auto&) { return true; };
        const HttpRequest request{
            .url = *CrackUrl(url), .patience = 1s, .onHead = goOn, .onBody = goOn};
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(request.Perform(cancel), HttpRequest::End::kFailed) << url;
        EXPECT_LT(std::chrono::steady_clock::now() - start, 5s) << url;
    }
}

}  // namespace
}  // namespace bw::test
