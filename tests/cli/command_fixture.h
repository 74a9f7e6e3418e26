// The program as a script runs it: exit codes, streams, files.
#pragma once

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <rapidjson/document.h>

#include "common/child_process.h"
#include "common/game_image.h"
#include "common/temporary_folder.h"
#include "support/paths.h"
#include "support/text.h"

namespace bw {

using test::ImageBytes;
using test::ImageShape;
using test::ReadText;
using test::WriteText;
using std::literals::operator""s;
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

struct RunResult {
    int exitCode = -1;
    std::string out;
    std::string err;
};

class Commands : public testing::Test {
  protected:
    Commands() { std::filesystem::create_directory(folder_ / "home"); }
    // The words of a line: blanks part them, but for those between single quotes.
    static std::vector<std::string> Words(const std::string& line) {
        std::vector<std::string> words(1);
        bool quoted = false;
        for (const char c : line) {
            if (c == '\'') {
                quoted = !quoted;
            } else if (c == ' ' && !quoted) {
                words.emplace_back();
            } else {
                words.back() += c;
            }
        }
        std::erase(words, "");
        return words;
    }
    // As the program prints for people on a POSIX system: lines end in LF, folders in a slash.
    static std::string AsPosix(std::string text) {
        std::erase(text, '\r');
        if (std::filesystem::path::preferred_separator == '\\' && !text.starts_with('{'))
            std::ranges::replace(text, '\\', '/');
        return text;
    }
    // Runs the program in the test's folder.
    RunResult Run(const std::string& arguments) const {
        std::vector<std::string> words = Words(arguments);
        words.insert(words.begin(), BANKWEAVER_CLI);
        const test::ProgramRun run = test::RunProgram(
            {.words = words,
             .environment = {"LC_ALL=C", "BANKWEAVER_HOME=" + ToUtf8(PathText(folder_ / "home"))},
             .workingFolder = folder_.Path(),
             .logFile = {}});
        return {run.status, AsPosix(run.out), AsPosix(run.err)};
    }
    // A run that ends well.
    RunResult Done(const std::string& arguments) {
        RunResult run = Run(arguments);
        EXPECT_EQ(run.exitCode, 0) << arguments << ": " << run.err;
        return run;
    }
    void Image(const std::string& name, ImageShape shape, uint32_t seed = 1) {
        const std::filesystem::path file = folder_ / TextPath(BytesToWide(name));
        std::filesystem::create_directories(file.parent_path());
        WriteText(file, ImageBytes(shape, seed));
    }
    // Refused: exit 1, `words` on standard error, nothing on standard output, no file written and
    // none changed, no work folder left.
    void ExpectRefused(const std::string& arguments, const std::string& words) {
        ExpectRefusal(arguments, words, [&] { return Run(arguments); });
    }
    template <typename Running>
    void ExpectRefusal(const std::string& arguments, const std::string& words,
                       const Running& running) {
        SCOPED_TRACE(arguments);
        WriteText(folder_ / "old.nes", "precious");
        const auto files = CountAll();
        const RunResult run = running();
        EXPECT_EQ(run.exitCode, 1);
        EXPECT_THAT(run.err, HasSubstr(words));
        EXPECT_THAT(run.out, IsEmpty());
        EXPECT_TRUE(ReadText(folder_ / "old.nes") == "precious") << "written over";
        EXPECT_EQ(CountAll(), files) << "a file was left behind";
    }
    // The same images under names with numbers, as arguments.
    std::string Images(uint32_t count, const std::string& name, ImageShape shape) {
        std::string arguments;
        for (uint32_t i = 0; i < count; ++i) {
            const std::string file = name + std::to_string(i) + ".nes";
            Image(file, shape, i);
            arguments += " " + file;
        }
        return arguments;
    }
    // Packs a design of this text into a file.
    void Pack(const std::string& text, const std::string& file) {
        std::filesystem::create_directory(folder_ / "mine");
        WriteText(folder_ / "mine/design.txt", text);
        EXPECT_THAT(Done("design pack mine -o " + file).err, StartsWith("Wrote "));
    }
    static rapidjson::Document Json(const RunResult& run) {
        rapidjson::Document json;
        json.Parse(run.out.c_str());
        EXPECT_FALSE(json.HasParseError());
        return json;
    }
    std::ptrdiff_t CountAll() const {
        using Walk = std::filesystem::recursive_directory_iterator;
        return std::count_if(Walk(folder_.Path()), Walk(),
                             [](const auto& entry) { return !entry.is_directory(); });
    }

    // Temporary files of outputs, and work folders; not the file that on Windows is the claim on
    // one.
    std::ptrdiff_t Leftovers() const {
        using Walk = std::filesystem::directory_iterator;
        const auto work = folder_ / "home/scratch/Temp/Bankweaver";
        const auto isTemporary = [](const auto& item) { return item.path().extension() == ".tmp"; };
        const auto isFolder = [](const auto& item) { return item.path().extension() != ".lock"; };
        return std::count_if(Walk(folder_.Path()), Walk(), isTemporary) +
               (std::filesystem::exists(work) ? std::count_if(Walk(work), Walk(), isFolder) : 0);
    }

    // The status of a build of 60 games of 2 MB that `end` ends while it writes. One that was
    // quicker tries again.
    template <typename End>
    int EndedBuild(const End& end) const {
        std::filesystem::create_directory(folder_ / "games");
        for (int i = 0; i < 60; ++i) {
            const auto game = folder_ / "games" / (std::to_string(i) + ".nes");
            WriteText(game, test::Header({128, 0, 0x40}) + std::to_string(i));
            std::filesystem::resize_file(game, 16 + (2 << 20));
        }
        const test::ChildCommand command{
            .words = {BANKWEAVER_CLI, "build", "--board", "coolgirl", "-o", "x.nes", "games"},
            .environment = {"BANKWEAVER_HOME=" + ToUtf8(PathText(folder_ / "home"))},
            .workingFolder = folder_.Path(),
            .logFile = folder_ / "stdout.txt"};
        int status = 0;
        for (int i = 0; i < 5 && status == 0; ++i) {
            auto child = test::ChildProcess::Start(command);
            while (Leftovers() < 2 && !child->WaitFor(std::chrono::milliseconds(0))) {
            }
            end(*child);
            EXPECT_TRUE(child->WaitFor(std::chrono::seconds(10)));
            status = child->Status();
        }
        return status;
    }

    TemporaryFolder folder_;
};

}  // namespace bw
