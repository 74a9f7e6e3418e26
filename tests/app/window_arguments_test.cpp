#include "app/window_arguments.h"

#include <gmock/gmock.h>

namespace bw {
namespace {

WindowArguments Parse(const std::vector<std::string>& words) {
    return ParseWindowArguments(words);
}

TEST(WindowArguments, AreFilesFromTheCurrentFolderOrWordsInsteadOfTheWindow) {
    const std::filesystem::path here = std::filesystem::current_path();
    EXPECT_EQ(Parse({"b.nes", "-platform", "offscreen", "./x/../a b.fcl", "/abs/c.nes"}).files,
              (std::vector{here / "b.nes", here / "a b.fcl", std::filesystem::path("/abs/c.nes")}));
    EXPECT_TRUE(Parse({}).files->empty());
    EXPECT_EQ(Parse({"--", "--odd.nes"}).files, std::vector{here / "--odd.nes"});
    EXPECT_THAT(Parse({"--version"}).text, testing::StartsWith("bankweaver "));
    EXPECT_THAT(Parse({"--help"}).text, testing::HasSubstr(".fcl"));
    EXPECT_EQ(Parse({"--help"}).exitCode, 0);
    EXPECT_EQ(Parse({"--play", "a.nes"}).play, here / "a.nes");
    const WindowArguments wrong = Parse({"--sing", "a.nes"});
    EXPECT_FALSE(wrong.files);
    EXPECT_EQ(wrong.exitCode, 2);
    EXPECT_THAT(wrong.text, testing::HasSubstr("--sing"));
}

}  // namespace
}  // namespace bw
