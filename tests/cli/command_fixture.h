// The program as a script runs it: exit codes, streams, files.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>

#include <gmock/gmock.h>
#include <rapidjson/document.h>
#include <sys/wait.h>

#include "common/game_image.h"
#include "common/temporary_folder.h"

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
    Commands() {
        std::filesystem::create_directory(folder_ / "home");
        Run("--version");  // so that the files of its streams are there
    }
    // Runs the program in the test's folder. `before` is shell text in front of it.
    RunResult Run(const std::string& arguments, const std::string& before = "") {
        const std::string command =
            "cd '" + folder_.Path().string() + "' && export LC_ALL=C BANKWEAVER_HOME='" +
            (folder_ / "home").string() + "' && " + before + " '" + BANKWEAVER_CLI + "' " +
            arguments + " > stdout.txt 2> stderr.txt < /dev/null";
        const int status = std::system(command.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadText(folder_ / "stdout.txt"),
                ReadText(folder_ / "stderr.txt")};
    }
    // A run that ends well.
    RunResult Done(const std::string& arguments) {
        RunResult run = Run(arguments);
        EXPECT_EQ(run.exitCode, 0) << arguments << ": " << run.err;
        return run;
    }
    void Image(const std::string& name, ImageShape shape, uint32_t seed = 1) {
        std::filesystem::create_directories((folder_ / name).parent_path());
        WriteText(folder_ / name, ImageBytes(shape, seed));
    }
    // Refused: exit 1, `words` on standard error, nothing on standard output, no file written and
    // none changed, no work folder left.
    void ExpectRefused(const std::string& arguments, const std::string& words,
                       const std::string& before = "") {
        SCOPED_TRACE(arguments);
        WriteText(folder_ / "old.nes", "precious");
        const auto files = CountAll();
        const RunResult run = Run(arguments, before);
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

    // Temporary files of outputs, and work folders.
    std::ptrdiff_t Leftovers() const {
        using Walk = std::filesystem::directory_iterator;
        const auto work = folder_ / "home/scratch/Temp/Bankweaver";
        return std::count_if(Walk(folder_.Path()), Walk(),
                             [](const auto& item) { return item.path().extension() == ".tmp"; }) +
               (std::filesystem::exists(work) ? std::distance(Walk(work), Walk()) : 0);
    }

    TemporaryFolder folder_;
};

}  // namespace bw
