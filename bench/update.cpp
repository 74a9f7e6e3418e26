// Fetches 300 MB from a web server on the loopback, by ranges, against as many processes of curl
// that fetch a range each. Then how much memory ours has taken.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "child.h"
#include "common/game_image.h"
#include "common/temporary_folder.h"
#include "common/web_server.h"
#include "measure.h"
#include "update/http_client.h"

namespace {

constexpr uint64_t kSize = 300'000'000;  // bytes
constexpr size_t kPiece = 1'000'000;
constexpr int kRounds = 5;

void Require(bool condition, const std::string& otherwise) {
    if (condition) return;
    std::fprintf(stderr, "%s\n", otherwise.c_str());
    std::exit(1);
}

void FetchByUs(const std::string& url, const std::filesystem::path& target, int ranges) {
    const std::atomic<bool> cancel{false};
    bw::FileResult<bw::File> file = bw::File::Create(target);
    Require(static_cast<bool>(file), "no file can be written here");
    const bw::HttpResult result =
        bw::HttpClient(cancel).DownloadToFile(url, *file, {}, {.threads = ranges});
    Require(result && result.size == kSize && file->Close(), "our own download failed");
}

void FetchByCurl(const std::string& url, const std::filesystem::path& target, int ranges) {
    const uint64_t chunk = kSize / static_cast<uint64_t>(ranges);
    std::vector<pid_t> children;
    for (int i = 0; i < ranges; ++i) {
        const uint64_t first = chunk * static_cast<uint64_t>(i);
        const uint64_t last = i + 1 < ranges ? first + chunk - 1 : kSize - 1;
        children.push_back(bench::StartChild({"/usr/bin/curl", "-sf", "-r",
                                              std::to_string(first) + "-" + std::to_string(last),
                                              "-o", target.string() + std::to_string(i), url}));
    }
    for (const pid_t child : children) {
        int status = -1;
        Require(waitpid(child, &status, 0) == child && status == 0, "curl failed");
    }
}

// Of this program, at its highest.
long PeakKilobytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

}  // namespace

int main() {
    const TemporaryFolder served;
    {
        std::ofstream file(served / "program", std::ios::binary);
        for (uint32_t i = 0; i < kSize / kPiece; ++i)
            file << bw::test::Noise(kPiece, i);
    }
    const bw::test::WebServer server(served.Path());
    Require(server.Problem().empty(), server.Problem());
    const std::string url = server.Url("program");
    for (const int ranges : {2, 4, 16}) {
        // The last round's files: emptying them belongs to no side's time.
        std::optional<TemporaryFolder> targets;
        const bench::Pair times = bench::InTurn(
            kRounds, [&] { FetchByUs(url, *targets / "ours", ranges); },
            [&] { FetchByCurl(url, *targets / "curl", ranges); }, [&] { targets.emplace(); });
        bench::Report("300 MB in " + std::to_string(ranges) + " ranges, by us and by curl", times);
    }
    std::printf("memory at its highest: %ld KB\n", PeakKilobytes());
    return 0;
}
