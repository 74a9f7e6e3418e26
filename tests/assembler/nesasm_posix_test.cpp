#include <cstdio>
#include <string>

#include <gtest/gtest.h>
#include <unistd.h>

#include "common/game_image.h"
#include "common/temporary_folder.h"

// The program that runs the assembler takes the first piece of output for the whole. Elsewhere the
// pieces of a pipe can't be told.

namespace {

TEST(NesasmOnPosix, ManyErrorsComeInOnePiece) {
    const TemporaryFolder folder;
    std::string text;
    for (int i = 0; i < 500; ++i)
        text += " lda nowhere\n";
    bw::test::WriteText(folder / "many.asm", text);
    const std::string command =
        "'" BANKWEAVER_NESASM "' '" + (folder / "many.asm").string() + "' 2>&1";
    std::FILE* pipe = ::popen(command.c_str(), "r");
    text.resize(65536);
    const ssize_t got = ::read(::fileno(pipe), text.data(), text.size());
    text.resize(static_cast<size_t>(got));
    ::pclose(pipe);
    EXPECT_TRUE(text.ends_with("# 500 error(s)\n"));
}

}  // namespace
