#include "app/window_arguments.h"

#include <gmock/gmock.h>

namespace bw {
namespace {

namespace fs = std::filesystem;

WindowArguments Parse(std::vector<const char*> words) {
    words.insert(words.begin(), "bankweaver");
    return ParseWindowArguments(static_cast<int>(words.size()), words.data());
}

TEST(WindowArguments, FilesCountFromTheCurrentFolderInTheirOrder) {
    const fs::path here = fs::current_path();
    EXPECT_EQ(Parse({"b.nes", "-platform", "offscreen", "./x/../a b.fcl", "/abs/c.nes"}).files,
              (std::vector<fs::path>{here / "b.nes", here / "a b.fcl", "/abs/c.nes"}));
    EXPECT_EQ(Parse({}).files, std::vector<fs::path>{});
    EXPECT_EQ(Parse({"--", "--odd.nes"}).files, std::vector<fs::path>{here / "--odd.nes"});
}

TEST(WindowArguments, TextsInsteadOfTheWindow) {
    EXPECT_THAT(Parse({"--version"}).text, testing::StartsWith("bankweaver "));
    EXPECT_THAT(Parse({"--help"}).text, testing::HasSubstr(".fcl"));
    EXPECT_EQ(Parse({"--help"}).exitCode, 0);
    const WindowArguments wrong = Parse({"--sing", "a.nes"});
    EXPECT_FALSE(wrong.files);
    EXPECT_EQ(wrong.exitCode, 2);
    EXPECT_THAT(wrong.text, testing::HasSubstr("--sing"));
}

}  // namespace
}  // namespace bw
