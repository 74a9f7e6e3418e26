// Addresses, and files from a real web server.
#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "common/file_size_limit.h"
#include "common/game_image.h"
#include "common/web_server.h"
#include "update/download_file.h"
#include "update/http_client.h"
#include "update/http_url.h"
#include "update/pipe_signal.h"

namespace bw::test {
namespace {

using Kind = HttpResult::Kind;
using Tls = WebServer::Tls;

TEST(HttpUrl, HasPartsThatFitTheirRooms) {
    const std::string s32(32, 's'), h256(256, 'h'), u128(128, 'u'), p2083(2083, 'p'),
        q259(259, 'q');
    const struct {
        std::string url;
        std::optional<HttpUrl> parts;
    } cases[] = {
        {"http://a", HttpUrl{"http", "a", 80, "", "", "/"}},
        {"HTTPS://A.b:8080?c#d", HttpUrl{"https", "A.b", 8080, "", "", "/?c"}},
        {"http://[::1]:/", HttpUrl{"http", "::1", 80, "", "", "/"}},
        {"http://me%40:w:%2F@a/b", HttpUrl{"http", "a", 80, "me@", "w:/", "/b"}},
        {s32 + "://a/", HttpUrl{s32, "a", 0, "", "", "/"}},
        {s32 + "s://a/", {}},
        {"http://" + h256, HttpUrl{"http", h256, 80, "", "", "/"}},
        {"http://h" + h256, {}},
        {"http://" + u128 + ":" + u128 + "@a", HttpUrl{"http", "a", 80, u128, u128, "/"}},
        {"http://u" + u128 + "@a", {}},
        {"http://:u" + u128 + "@a", {}},
        {"http://a/" + p2083, HttpUrl{"http", "a", 80, "", "", "/" + p2083}},
        {"http://a/p" + p2083, {}},
        {"http://a/?" + q259, HttpUrl{"http", "a", 80, "", "", "/?" + q259}},
        {"http://a/?q" + q259, {}},
    };
    for (const auto& [url, parts] : cases) {
        EXPECT_EQ(CrackUrl(url), parts) << url.substr(0, 40);
        EXPECT_EQ(parts ? CrackUrl(parts->WithoutUser()).has_value() : false, parts.has_value());
    }
    for (const char* none : {"",
                             "a",
                             "http:/a",
                             "://a",
                             "1://a",
                             "http://",
                             "http://:80/",
                             "http://a:0",
                             "http://a:65536",
                             "http://a:1x",
                             "http://[::1",
                             "http://[::g]/",
                             "http://[::1]a",
                             "http://a b/",
                             "http://a/b\r\nc",
                             "http://a\\b",
                             "http://a@b@c",
                             "http://%0d@a",
                             "http://%4@a",
                             "http://a%2e/",
                             "http://a/\x7F"})
        EXPECT_EQ(CrackUrl(none), std::nullopt) << none;
    const std::pair<const char*, const char*> names[] = {
        {"http://a/b/c-1_2.3~4+5?d/e", "c-1_2.3~4+5"},
        {"http://a/b/", ""},
        {"http://a", ""},
        {"http://a/..", ""},
        {"http://a/.", ""},
        {"http://a/b%2F", ""},
        {"http://a/b:c", ""},
        {"c", ""}};
    for (const auto& [url, name] : names)
        EXPECT_EQ(LastPart(url), name) << url;
}

long PeakKilobytes() {
    std::ifstream status("/proc/self/status");
    long kilobytes = 0;
    for (std::string line; std::getline(status, line);)
        std::sscanf(line.c_str(), "VmHWM: %ld", &kilobytes);
    return kilobytes;
}

class Http : public testing::Test {
  protected:
    // Noise here and there, so that misplaced parts show, and zeros between.
    void MakeFile(size_t size) const {
        std::ofstream file(folder_ / "file", std::ios::binary);
        for (uint32_t place = 0; place < size; place += 5 << 20)
            file.seekp(place) << Noise(99999, place);
        file.close();
        std::filesystem::resize_file(folder_ / "file", size);
    }
    HttpResult ToFile(const std::string& url, const HttpLimits& limits = {}) const {
        FileResult<File> file = File::Create(folder_ / "target");
        return HttpClient(cancel_).DownloadToFile(url, *file, {}, limits);
    }
    HttpResult ToBuffer(const std::string& url, std::span<uint8_t> buffer) const {
        return HttpClient(cancel_).DownloadToBuffer(url, buffer, {}, {.wholeIfNoRanges = true});
    }
    bool IsSame() const {
        return std::system(("cd " + folder_.Path().string() + " && cmp -s file target").c_str()) ==
               0;
    }

    const TemporaryFolder folder_;
    const std::atomic<bool> cancel_{false};
};

TEST_F(Http, FetchesFilesOfAllSizesInBoundedMemory) {
    const WebServer server(folder_.Path());
    ASSERT_EQ(server.Problem(), "");
    for (const size_t size : {0, 1, 4095, 4096, 4097, 300 << 20}) {
        MakeFile(size);
        std::ofstream("/proc/self/clear_refs") << 5;  // the peak begins anew
        const long before = PeakKilobytes();
        const HttpResult result = ToFile(
            server.Url("file", size % 2 == 0 ? "[::1]" : "me:word@127.0.0.1"), {.threads = 64});
        // Sanitizers keep books of their own.
        const bool isPlain = std::string_view(BANKWEAVER_SANITIZE).empty();
        EXPECT_LT(isPlain ? PeakKilobytes() - before : 0, 64 * 256) << size;
        EXPECT_EQ(result.kind, Kind::kDone) << size;
        EXPECT_EQ(result.size, size);
        EXPECT_TRUE(IsSame()) << size;
    }
}

TEST_F(Http, KeepsItsLimits) {
    const WebServer server(folder_.Path(), Tls::kNone, R"(
        location /hop/ { rewrite ^/hop/(x*)x$ /hop/$1 redirect; rewrite ^ /file break; }
        location = /loop { return 302 /loop; }
        location = /whole { max_ranges 0; rewrite ^ /file break; }
        location = /locked { return 401; }
        location = /broken { return 500; })");
    ASSERT_EQ(server.Problem(), "");
    MakeFile(100000);
    const struct {
        std::string url;
        Kind kind;
        HttpLimits limits = {};
    } cases[] = {{server.Url("file"), Kind::kDone, {.largest = 100000}},
                 {server.Url("file"), Kind::kTooLarge, {.largest = 99999}},
                 {server.Url("file"), Kind::kRefused, {.secureOnly = true}},
                 {server.Url("hop/xxxxx"), Kind::kDone},
                 {server.Url("hop/xxxxxx"), Kind::kFailed},
                 {server.Url("loop"), Kind::kFailed},
                 {server.Url("whole"), Kind::kFailed},
                 {server.Url("whole"), Kind::kDone, {.wholeIfNoRanges = true}},
                 {server.Url("locked"), Kind::kFailed},
                 {server.Url("broken"), Kind::kFailed},
                 {server.Url("none"), Kind::kFailed},
                 {server.Url(std::string(2083, 'a')), Kind::kFailed},
                 {server.Url(std::string(2084, 'a')), Kind::kRefused},
                 {server.Url(std::string(3000, 'a')), Kind::kRefused},
                 {"http://127.0.0.1:1/", Kind::kFailed},
                 {"http://nowhere.invalid/", Kind::kFailed},
                 {"ftp://127.0.0.1/file", Kind::kRefused},
                 {"file:///etc/passwd", Kind::kRefused},
                 {"", Kind::kRefused}};
    for (const auto& [url, kind, limits] : cases) {
        EXPECT_EQ(ToFile(url, limits).kind, kind) << url;
        EXPECT_EQ(IsSame(), kind == Kind::kDone) << url;
    }

    std::vector<uint8_t> buffer(8000, 'x');
    EXPECT_EQ(ToBuffer(server.Url("file"), {}).kind, Kind::kRefused);
    for (const auto& [file, size] : {std::pair("file", 5000), {"file", 100}, {"whole", 4096}}) {
        const std::span<uint8_t> room = std::span(buffer).first(static_cast<size_t>(size));
        EXPECT_EQ(ToBuffer(server.Url(file), room).size, room.size());
        EXPECT_EQ(std::string(room.begin(), room.end()), Noise(room.size(), 0));
        EXPECT_EQ(buffer[room.size()], 'x');
        std::ranges::fill(buffer, 'x');
    }

    const FileSizeLimit fullDisk(70000);
    const HttpResult result = ToFile(server.Url("file"));
    EXPECT_EQ(result.kind, Kind::kFile);
    EXPECT_EQ(result.file.value_or(FileProblem{}).file, folder_ / "target");
}

TEST_F(Http, LetsDoubtfulCertificatesPass) {
    MakeFile(5000);
    const WebServer plain(folder_.Path());
    for (const Tls tls : {Tls::kTestAuthority, Tls::kOtherName, Tls::kExpired}) {
        const WebServer server(folder_.Path(), tls,
                               "location = /down { return 302 " + plain.Url("file") + "; }");
        ASSERT_EQ(plain.Problem() + server.Problem(), "");
        EXPECT_TRUE(ToFile(server.Url("file"), {.secureOnly = true}) && IsSame());
        EXPECT_TRUE(ToFile(server.Url("down")) && IsSame());
        EXPECT_EQ(ToFile(server.Url("down"), {.secureOnly = true}).kind, Kind::kFailed);
    }
}

TEST_F(Http, TellsHowFarItIs) {
    const WebServer server(folder_.Path(), Tls::kNone,
                           "location = /slow { limit_rate 20k; rewrite ^ /file break; }"
                           "location = /whole { max_ranges 0; rewrite ^ /file break; }");
    ASSERT_EQ(server.Problem(), "");
    MakeFile(100000);
    FileResult<File> file = File::Create(folder_ / "target");
    std::vector<std::array<uint64_t, 3>> told;
    std::atomic<bool> stop{false};
    CDownloadFile download(stop);
    const auto tell = [&](uint64_t progress, uint64_t total, uint32_t status) {
        told.push_back({progress, total, status});
    };
    EXPECT_TRUE(download.Download(server.Url("slow"), *file, tell, {}));
    ASSERT_GE(told.size(), 2U);
    EXPECT_TRUE(std::ranges::is_sorted(told));
    EXPECT_THAT(told.front(),
                testing::ElementsAre(testing::Lt(100000U), 100000U, CDownloadFile::kGoesOn));
    EXPECT_THAT(told.back(), testing::ElementsAre(100000U, 100000U, CDownloadFile::kEnds));
    std::vector<DownloadProgress> shown;
    EXPECT_TRUE(HttpClient(cancel_).DownloadToFile(
        server.Url("slow"), *file, [&](const auto& now) { shown.push_back(now); }, {}));
    ASSERT_GE(shown.size(), 2U);
    EXPECT_EQ(shown[0].perSecond, shown[0].done * 2);
    EXPECT_EQ(shown[1].perSecond, (shown[1].done - shown[0].done) * 2);

    EXPECT_EQ(download.OnProgress(1, 2, CDownloadFile::kGoesOn), CDownloadFile::kGoOn);
    EXPECT_TRUE(download.Download(server.Url("whole"), *file, {}, {}));
    stop = true;
    EXPECT_EQ(download.OnProgress(1, 2, CDownloadFile::kGoesOn), CDownloadFile::kAbort);
    EXPECT_EQ(download.Download(server.Url("file"), *file, tell, {}).kind, Kind::kStopped);
}

TEST(NoPipeSignal, LeavesAnErrorOnly) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    close(ends[0]);
    {
        const NoPipeSignal scope;
        EXPECT_EQ(write(ends[1], "a", 1), -1);
    }
    EXPECT_EXIT(static_cast<void>(write(ends[1], "a", 1)), testing::KilledBySignal(SIGPIPE), "");
    close(ends[1]);
}

}  // namespace
}  // namespace bw::test
