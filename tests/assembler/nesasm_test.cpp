#include <filesystem>
#include <regex>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "common/child_process.h"
#include "common/game_image.h"
#include "common/special_files.h"
#include "common/temporary_folder.h"

// The command line as a process: exit status, files, messages.

namespace {

namespace fs = std::filesystem;

struct Outcome {
    int status = -1;
    std::string output;  // of both streams
};

class Nesasm : public testing::Test {
  protected:
    Nesasm() {
        Write("good.asm", " .db 1,2,3\n");
        Write("bad.asm", " lda #300\n");
    }
    void Write(const std::string& name, const std::string& text) const {
        bw::test::WriteText(folder_ / name, text);
    }
    std::string Text(const std::string& name) const { return bw::test::ReadText(folder_ / name); }
    size_t FileCount() const { return folder_.CountFiles(); }

    // Words between blanks; a pair of quotes is an empty one.
    Outcome Run(const std::string& arguments) const {
        std::vector<std::string> words{BANKWEAVER_NESASM};
        std::istringstream stream(arguments);
        for (std::string word; stream >> word;)
            words.push_back(word == "''" ? "" : word);
        const bw::test::ProgramRun run =
            bw::test::RunProgram({.words = words, .workingFolder = folder_.Path(), .logFile = {}});
        return {run.status, run.out + run.err};
    }

    TemporaryFolder folder_;
};

TEST_F(Nesasm, WritesTheRomBesideTheSource) {
    fs::create_directory(folder_ / "sub.dir");
    Write("sub.dir/menu.v2.asm", " .db 1\n");
    EXPECT_EQ(Run("sub.dir/menu.v2.asm").output, "");
    EXPECT_EQ(Text("sub.dir/menu.v2.nes").size(), 16U + 16384U);
    Write("sub.dir/plain", " .db 1\n");
    Run("sub.dir/plain");
    EXPECT_TRUE(fs::exists(folder_ / "sub.dir/plain.nes"));
    // Included files are looked for from the working folder.
    fs::create_directory(folder_ / "sub");
    Write("sub/main.asm", " include \"sub/part.asm\"\n incbin \"sub\\data\"\n");
    Write("sub/part.asm", " .db 7\n");
    Write("sub/data", "x");
    EXPECT_EQ(Run("sub/main.asm").output, "");
    EXPECT_EQ(Text("sub/main.nes").substr(16, 2), "\x07x");
}

TEST_F(Nesasm, OldOutputOutlivesAFailedRun) {
    Write("bad.nes", "old");
    const Outcome outcome = Run("bad.asm");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, "bad.asm:1: error: Incorrect immediate value! 300\n# 1 error(s)\n");
    EXPECT_EQ(Text("bad.nes"), "old");
    EXPECT_EQ(FileCount(), 3U);
}

TEST_F(Nesasm, WritesWhatTheOptionsName) {
    Write("out.nes", "old");
    EXPECT_EQ(Run("-l list.txt -s names.txt -o out.nes good.asm").status, 0);
    EXPECT_EQ(Text("out.nes").size(), 16U + 16384U);
    EXPECT_FALSE(fs::exists(folder_ / "good.nes"));
    EXPECT_NE(Text("list.txt").find("01 02 03"), std::string::npos);
    EXPECT_EQ(FileCount(), 5U);
}

TEST_F(Nesasm, OutputThatCannotBeWrittenIsAFailure) {
    fs::create_directory(folder_ / "taken.nes");
    for (const char* output : {"missing/out.nes", "taken.nes"}) {
        const Outcome outcome = Run(std::string("-o ") + output + " good.asm");
        EXPECT_EQ(outcome.status, 1);
        EXPECT_NE(outcome.output.find(output), std::string::npos);
    }
    EXPECT_EQ(FileCount(), 3U);
}

TEST_F(Nesasm, WrongCommandLinesAreRefused) {
    for (const char* arguments :
         {"", "-x good.asm", "good.asm bad.asm", "-o", "good.asm -o", "-o '' good.asm",
          "-o a -o b good.asm", "-o good.asm good.asm", "-l x -s x good.asm", "--versions"}) {
        const Outcome outcome = Run(arguments);
        EXPECT_EQ(outcome.status, 2) << arguments;
        EXPECT_NE(outcome.output.find("nesasm"), std::string::npos) << arguments;
    }
    EXPECT_EQ(FileCount(), 2U);
}

TEST_F(Nesasm, HelpAndVersionGoToStandardOutput) {
    const Outcome help = Run("--help");
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(help.output.substr(0, 6), "Usage:");
    EXPECT_EQ(Run("--version").output.substr(0, 7), "nesasm ");
    // The manual has every option and directive.
    const std::string manual = bw::test::ReadText(BANKWEAVER_DOCS "/assembler.md");
    const std::regex word("-[a-z]\\b|--[a-z]+|\\.[A-Z]+\\b");
    const auto& text = help.output;
    for (std::sregex_iterator it(text.begin(), text.end(), word), end; it != end; ++it)
        EXPECT_TRUE(std::regex_search(manual, std::regex("`.*" + it->str() + "\\b"))) << it->str();
}

TEST_F(Nesasm, UnreadableSourcesAreFailures) {
    std::vector<fs::path> sources = bw::test::SpecialFiles(folder_.Path());
    sources.insert(sources.end(), {"gone.asm", "."});
    for (const fs::path& source : sources)
        EXPECT_EQ(Run(source.string()).status, 1) << source;
}

}  // namespace
