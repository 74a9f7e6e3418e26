// What folders of games hold on POSIX systems alone: links that anybody may make, named pipes,
// names that are no UTF-8.
#include <gmock/gmock.h>

#include "common/image_folder.h"
#include "common/special_files.h"
#include "list/game_entry.h"
#include "support/text.h"

namespace bw {
namespace {

using test::Header;
using testing::ElementsAre;

TEST(ReadGameFolderOnPosix, FollowsLinksToFilesAlone) {
    const test::ImageFolder folder;
    folder.Write("b.nes", Header({1}));
    folder.Write("a/Caf\xE9.nes", Header({1}));
    std::filesystem::rename(test::SpecialFiles(folder.Path())[0], folder / "pipe.nes");
    std::filesystem::create_symlink(folder / "b.nes", folder / "link.nes");
    std::filesystem::create_symlink(folder / "gone", folder / "broken.nes");
    // Followed, it would never end.
    std::filesystem::create_directory_symlink(folder.Path(), folder / "a" / "loop");
    std::filesystem::create_directory_symlink(folder / "a", folder / "loop.nes");

    std::vector<std::filesystem::path> paths;
    for (const GameEntry& entry : ReadGameFolder(folder.Path())) {
        paths.push_back(TextPath(entry.path));
        EXPECT_TRUE(entry.HasValidHeader() && GameEntry(entry.path).HasValidHeader());
    }
    EXPECT_THAT(paths,
                ElementsAre(folder / "a" / "Caf\xE9.nes", folder / "b.nes", folder / "link.nes"));
}

}  // namespace
}  // namespace bw
