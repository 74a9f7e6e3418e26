// Hosts that say other things than what is true, or say nothing.
#include <chrono>
#include <set>

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
Fetched Fetch(const std::string& url, const HttpLimits& limits = {}, size_t room = 20000) {
    const std::atomic<bool> cancel{false};
    Fetched fetched{.result = {}, .bytes = std::string(room, 'x')};
    fetched.result = HttpClient(cancel).DownloadToBuffer(
        url, {reinterpret_cast<uint8_t*>(fetched.bytes.data()), fetched.bytes.size()}, {}, limits);
    return fetched;
}

// Answers to the question of the length, or to the second range.
TEST(HttpLies, AreHeldAgainstWhatWasAskedFor) {
    const std::string whole = WithLength(kFile);
    const auto length = [](const std::string& fields) { return Answer("200 OK", fields, kFile); };
    const auto part = [](const std::string& fields, const std::string& body = {}) {
        return Part("bytes=5000-9999", fields, body);
    };
    const std::string good = part({});
    const std::string second = kFile.substr(5000);
    const auto place = [&](const std::string& range) {
        return Answer("206 Part", "Content-Range: " + range, second);
    };
    const std::string many(2000, 'y');
    const std::string n = "Content-Length: 10000";
    const std::string chunked = "Transfer-Encoding: chunked";

    struct Case {
        const char* name;
        Reply toLength, toSecond;
    };
    const Case true_[] = {
        {"plain", {whole}, {good}},
        {"total", {whole}, {place("bytes 5000-9999/10000")}},
        {"chunks", {whole}, {part(chunked, Chunked(second))}},
        {"gzip", {whole}, {part("Content-Encoding: gzip")}},
        {"interim", {whole}, {"HTTP/1.1 103 Early\r\nLink: <a>\r\n\r\n" + good}},
        {"1.0", {"HTTP/1.0" + whole.substr(8)}, {"HTTP/1.0" + good.substr(8)}},
        {"twice", {length(n + "\r\n" + n)}, {good}},
    };
    const Case lies[] = {
        {"no ranges", {whole}, {whole}},
        {"no length", {length("A: b")}, {good}},
        {"two lengths", {length(n + "1\r\n" + n)}, {good}},
        {"below zero", {length("Content-Length: -1")}, {good}},
        {"20 digits", {length("Content-Length: 99999999999999999999")}, {good}},
        {"2^63-1", {length("Content-Length: 9223372036854775807")}, {good}},
        {"no chunks", {Answer("200 OK", chunked + "\r\n" + n, Chunked(kFile))}, {good}},
        {"404", {Answer("404 No", n, kFile)}, {good}},
        {"401", {Answer("401 No", "WWW-Authenticate: Basic realm=a\r\n" + n, kFile)}, {good}},
        {"204", {Answer("204 No", n, "")}, {good}},
        {"500", {whole}, {Answer("500 No", "Content-Length: 5000", second)}},
        {"cut off", {whole}, {good.substr(0, good.size() - 1)}},
        {"fewer", {whole}, {part({}, second.substr(1))}},
        {"more", {whole}, {part({}, second + "x")}},
        {"more, untold", {whole}, {part("A: b", second + "x")}},
        {"without end", {whole}, {.bytes = part("A: b"), .again = many}},
        {"no place", {whole}, {Answer("206 Part", "Content-Length: 5000", second)}},
        {"other place", {whole}, {place("bytes 4999-9999/10000")}},
        {"no bytes", {whole}, {place("bytes 0-0/0")}},
        {"other total", {whole}, {place("bytes 5000-9999/10001")}},
        {"two places", {whole}, {place("bytes 0-4999/*\r\nContent-Range: bytes 5000-9999/*")}},
        {"no HTTP", {"SSH-2.0-a\r\n"}, {good}},
        {"nothing", {whole}, {""}},
        {"long field", {"HTTP/1.1 200 OK\r\nA: ", many}, {good}},
        {"many fields", {"HTTP/1.1 200 OK\r\n", "A: b\r\n"}, {good}},
        {"interim ever", {"", "HTTP/1.1 100 Go on\r\n\r\n"}, {good}},
        {"to a file", {Answer("302 To", "Location: file:///etc/passwd", "")}, {good}},
        {"to FTP", {whole}, {Answer("302 To", "Location: ftp://127.0.0.1/file", "")}},
        {"to nowhere", {Answer("302 To", n, kFile)}, {good}},
    };
    const auto check = [](const Case& test, Kind kind) {
        SCOPED_TRACE(test.name);
        ScriptedServer server([&](const std::string& request) {
            if (RangeOf(request).first != 0) return test.toSecond;
            return RangeOf(request) ? Reply{Part(request)} : test.toLength;
        });
        const Fetched fetched = Fetch(server.Url());
        EXPECT_EQ(fetched.result.kind, kind);
        // What lies behind the file's place in the buffer is nobody's.
        EXPECT_EQ(fetched.bytes.substr(10000), std::string(10000, 'x'));
        EXPECT_TRUE(kind != Kind::kDone || fetched.bytes.starts_with(kFile));
    };
    for (const Case& test : true_)
        check(test, Kind::kDone);
    for (const Case& test : lies)
        check(test, Kind::kFailed);
}

TEST(HttpLies, AreNoneInWhatIsSent) {
    ScriptedServer server([&](const std::string& request) -> Reply {
        if (!request.starts_with("GET /old")) return TrueReply(request);
        const std::string to = "Location: http://me:word@" + server.Host() + "/new a?b";
        return {Answer("307 To", "Set-Cookie: a=b\r\n" + to, ""), "a body without end"};
    });
    const std::string url = "http://you:secret@" + server.Host() + "/old#here";
    EXPECT_TRUE(Fetch(url).bytes.starts_with(kFile));
    std::multiset<std::string> expected;
    for (const char* path : {"old", "new%20a?b"}) {
        for (const char* range : {"", "Range: bytes=0-4999\r\n", "Range: bytes=5000-9999\r\n"}) {
            expected.insert(std::string("GET /") + path + " HTTP/1.1\r\nHost: " + server.Host() +
                            "\r\n" + range + "User-Agent: WinInetGet/0.1\r\n" +
                            "Cache-Control: no-cache\r\nPragma: no-cache\r\n\r\n");
        }
    }
    const std::vector<std::string> sent = server.Requests();
    EXPECT_EQ(std::multiset<std::string>(sent.begin(), sent.end()), expected);

    const EnvironmentVariable proxy("http_proxy", server.Url().c_str());
    EXPECT_TRUE(Fetch("http://host.example/file").result);
    EXPECT_TRUE(server.Requests().back().starts_with("GET http://host.example/file HTTP/1.1\r\n"));
}

TEST(HttpLies, AreCoveredByOneRequestForAll) {
    const struct {
        std::string whole;
        Kind kind;
        size_t room = 20000;
    } cases[] = {{WithLength(kFile), Kind::kDone},
                 {WithLength(kFile), Kind::kDone, 5000},
                 {WithLength(kFile + "x"), Kind::kFailed, 5000},
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
        const Fetched fetched = Fetch(server.Url(), {.wholeIfNoRanges = true}, test.room);
        EXPECT_EQ(fetched.result.kind, test.kind) << test.whole.substr(0, 40);
        EXPECT_TRUE(!fetched.result || fetched.bytes.starts_with(kFile.substr(0, test.room)));
    }
}

TEST(HttpRanges, AreAsManyAsIsSensible) {
    const struct {
        int threads;
        size_t size, ranges;
    } cases[] = {{0, 4096, 2},     {1, 4097, 2},  {3, 10000, 3}, {65, 10000, 64},
                 {1000, 4096, 64}, {64, 4095, 1}, {2, 1, 1},     {2, 0, 0}};
    for (const auto& [threads, size, ranges] : cases) {
        const std::string file = kFile.substr(0, size);
        ScriptedServer server([&](const std::string& request) -> Reply {
            return {RangeOf(request) ? Part(request) : WithLength(file)};
        });
        EXPECT_TRUE(Fetch(server.Url(), {.threads = threads}).bytes.starts_with(file + "x"));
        EXPECT_EQ(server.Requests().size(), 1 + ranges) << size;
    }
}

TEST(HttpStop, EndsWhateverIsWaitedFor) {
    const bool isPlain = std::string_view(BANKWEAVER_SANITIZE).empty();
    const ScriptedServer deaf(nullptr);
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
        std::this_thread::sleep_for(300ms);  // the library's own timers come round at 200
        const auto start = std::chrono::steady_clock::now();
        cancel = true;
        fetch.join();
        // Some 20 ms; what waits for a time of its own takes seconds. Others use this machine, too.
        EXPECT_LT(std::chrono::steady_clock::now() - start, isPlain ? 500ms : 2000ms) << url;
        EXPECT_EQ(result.kind, Kind::kStopped) << url;
    }
}

TEST(HttpStop, ComesByItselfWhereNextToNothingArrives) {
    const ScriptedServer deaf(nullptr);
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
