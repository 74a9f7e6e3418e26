#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "common/archive_writer.h"
#include "common/image_folder.h"
#include "list/game_entry.h"
#include "list/list_file.h"
#include "rom/image_crcs.h"
#include "rom/image_files.h"
#include "rom/multicart_item.h"
#include "support/text.h"

namespace bw {
namespace {

using test::ArchiveMember;
using test::Header;
using test::ImageBytes;
using test::ImageFolder;
using testing::ElementsAre;
using testing::IsEmpty;
using enum LeftOut::Reason;

// Paths below `folder`.
std::vector<std::string> Paths(const ImageFolder& folder, std::span<const GameEntry> entries) {
    std::vector<std::string> paths;
    for (const GameEntry& entry : entries)
        paths.push_back(TextPath(entry.path).lexically_relative(folder.Path()).generic_string());
    return paths;
}

// What stands behind a folder's path, with the separators of archives.
std::string Below(const std::filesystem::path& path, const std::filesystem::path& folder) {
    std::string below = path.string().substr(folder.string().size());
    std::ranges::replace(below, '\\', '/');
    return below;
}

struct Listed {
    explicit Listed(const ImageFolder& folder, const std::filesystem::path& path) {
        std::vector<LeftOut> left;
        entries = ReadGameFolder(path, nullptr, &left);
        paths = Paths(folder, entries);
        for (const LeftOut& item : left)
            leftOut.emplace_back(Below(item.place, path), item.reason);
    }
    std::vector<GameEntry> entries;
    std::vector<std::string> paths;
    std::vector<std::pair<std::string, LeftOut::Reason>> leftOut;
};

constexpr const char* kKinds[] = {"a.zip",    "a.7z",  "a.rar",     "a.tar",
                                  "a.TAR.gz", "a.tgz", "a.tar.bz2", "a.tbz2",
                                  "a.tar.xz", "a.txz", "a.tar.zst", "a.tzst"};

TEST(Archives, OfEveryKindAreFoldersOfImages) {
    const ImageFolder folder;
    const std::string big = ImageBytes({.prg = 4, .chr = 2}, 1);
    const std::string small = ImageBytes({.prg = 1}, 2) + "behind the data";
    const ArchiveMember members[] = {{"b/Big.NES", big},
                                     {"readme.txt", "no"},
                                     {"b.nes", small},
                                     {"./a\\x.nes", small},
                                     {"b.nes", big}};
    for (const std::string kind : kKinds) {
        const std::filesystem::path file = folder / kind;
        test::WriteArchive(file, members);
        const Listed listed(folder, file);
        ASSERT_THAT(listed.paths,
                    ElementsAre(kind + "/a/x.nes", kind + "/b/Big.NES", kind + "/b.nes"));
        EXPECT_THAT(listed.leftOut, IsEmpty());
        EXPECT_EQ(listed.entries[2].size, small.size()) << kind;
        EXPECT_TRUE(listed.entries[1].HasValidHeader() && listed.entries[1].headerRead) << kind;
        EXPECT_EQ(ContainerOf(file / "b/Big.NES"), file);
        // From one archive, in another order than its own, one twice, one that isn't there.
        const std::vector<std::filesystem::path> paths = {file / "b.nes", file / "b/Big.NES",
                                                          file / "no.nes", file / "b.nes"};
        const std::vector<std::optional<ImageSums>> sums = ReadImageSums(paths);
        ASSERT_TRUE(sums[0] && sums[1] && !sums[2] && sums[3]) << kind;
        EXPECT_EQ(sums[1]->whole, test::CrcOf(big)) << kind;
        EXPECT_EQ(sums[0]->headerless, test::CrcOf(small.substr(16))) << kind;
        EXPECT_EQ(sums[0]->data.prg, test::CrcOf(small.substr(16, 16384))) << kind;
        const std::vector<MulticartItem> items = LoadMulticartItems(paths);
        EXPECT_EQ(items[1].prgCrc, sums[1]->data.prg);
        EXPECT_EQ(items[1].chrCrc, test::CrcOf(big.substr(16 + 65536))) << kind;
        EXPECT_EQ(items[3].prgCrc, sums[0]->data.prg);
        EXPECT_EQ(items[2].valid, 0);
        EXPECT_TRUE(GameEntry(paths[2]).missing);
    }
    test::WriteArchive(folder / "One.nes.gz", std::span(members).first(1));
    const Listed one(folder, folder / "One.nes.gz");
    ASSERT_THAT(one.paths, ElementsAre("One.nes.gz/One.nes"));
    EXPECT_EQ(one.entries[0].size, big.size());
    EXPECT_EQ(MulticartItem().Load(folder / "One.nes.gz/One.nes"), true);
}

TEST(Archives, StandAmongFoldersAndGiveWayToThem) {
    const ImageFolder folder;
    const ArchiveMember members[] = {{"x.nes", ImageBytes({}, 1)}};
    test::WriteArchive(folder / "b.zip", members);
    test::WriteArchive(folder / "e.zip", std::vector<ArchiveMember>{{"x.txt", "no"}});
    for (const char* name : {"a.nes", "b/y.nes", "c.zip/real.nes", "d.nes"})
        folder.Write(name, ImageBytes({}, 2));
    const Listed listed(folder, folder.Path());
    EXPECT_THAT(listed.paths,
                ElementsAre("a.nes", "b/y.nes", "b.zip/x.nes", "c.zip/real.nes", "d.nes"));
    EXPECT_THAT(listed.leftOut, ElementsAre(std::pair("/e.zip", kNoImages)));
    EXPECT_EQ(ContainerOf(folder / "c.zip/real.nes"), folder / "c.zip/real.nes");
    // A list keeps such paths, and finds them again where it has moved with its archive.
    SaveListFile(folder / "list.fcl", listed.entries, folder.Path());
    std::filesystem::create_directory(folder / "new");
    std::filesystem::rename(folder / "b.zip", folder / "new/b.zip");
    GameList loaded;
    ASSERT_TRUE(LoadListFile(folder / "list.fcl", folder / "new", loaded, folder.Path()));
    EXPECT_EQ(loaded[2].path, PathText(folder / "new" / "b.zip" / "x.nes"));
    EXPECT_TRUE(loaded[2].headerRead && loaded[3].headerRead);
}

TEST(Archives, LeaveOutWhatIsNoPlainImage) {
    const ImageFolder folder;
    const std::string image = ImageBytes({.prg = 2}, 1);
    const ArchiveMember members[] = {{"/abs.nes", image},
                                     {"a/../../up.nes", image},
                                     {"C:/drive.nes", image},
                                     {"link.nes", "", "good.nes"},
                                     {"in.zip", "PK"},
                                     {"good.nes", image},
                                     {"hard.nes", "", "", "good.nes"}};
    test::WriteArchive(folder / "a.tar.gz", members);
    const Listed odd(folder, folder / "a.tar.gz");
    EXPECT_THAT(odd.paths, ElementsAre("a.tar.gz/good.nes"));
    EXPECT_THAT(
        odd.leftOut,
        ElementsAre(std::pair("//abs.nes", kUnsafePath), std::pair("/a/../../up.nes", kUnsafePath),
                    std::pair("/C:/drive.nes", kUnsafePath), std::pair("/link.nes", kLink),
                    std::pair("/in.zip", kNested), std::pair("/hard.nes", kLink)));

    test::WriteArchive(folder / "e.zip", std::span(members).subspan(5, 1),
                       "zip:encryption=zipcrypt");
    EXPECT_THAT(Listed(folder, folder / "e.zip").leftOut,
                ElementsAre(std::pair("/good.nes", kEncrypted)));
    EXPECT_EQ(OpenImage(folder / "e.zip/good.nes").Problem().kind, FileProblem::Kind::kEncrypted);

    folder.Write("no.7z", "no archive");
    EXPECT_THAT(Listed(folder, folder / "no.7z").leftOut, ElementsAre(std::pair("", kDamaged)));
}

TEST(Archives, KeepWhatStandsBeforeTheDamage) {
    const ImageFolder folder;
    const std::string first = ImageBytes({.prg = 2}, 1);
    const std::string second = ImageBytes({.prg = 8}, 2);
    const ArchiveMember members[] = {{"1.nes", first}, {"2.nes", second}};
    for (const char* kind : {"a.zip", "a.rar", "a.tar", "a.tgz", "a.txz"}) {
        const std::filesystem::path file = folder / kind;
        test::WriteArchive(file, members);
        std::filesystem::resize_file(file, std::filesystem::file_size(file) - 60000);
        EXPECT_TRUE(OpenImage(file / "1.nes")) << kind;
        EXPECT_EQ(MulticartItem().Load(file / "1.nes"), true) << kind;
        EXPECT_EQ(OpenImage(file / "2.nes").Problem().kind, FileProblem::Kind::kDamaged) << kind;
    }
    // A flipped bit in the data: the zip's own sum tells.
    test::WriteArchive(folder / "b.zip", members, "zip:compression=store");
    std::string bytes = test::ReadText(folder / "b.zip");
    bytes[1000] ^= 1;
    folder.Write("b.zip", bytes);
    EXPECT_EQ(OpenImage(folder / "b.zip/1.nes").Problem().kind, FileProblem::Kind::kDamaged);
    EXPECT_TRUE(OpenImage(folder / "b.zip/2.nes"));
}

TEST(Archives, UnpackNoMoreThanAnImageAnnounces) {
    const ImageFolder folder;
    const std::string bomb = Header({2, 0}) + std::string(100 << 20, '\0');
    const ArchiveMember members[] = {{"bomb.nes", bomb}, {"x.nes", ImageBytes({}, 1)}};
    for (const char* kind : {"a.zip", "a.7z", "a.tgz"}) {
        test::WriteArchive(folder / kind, members);
        const FileResult<ImageFile> image = OpenImage(folder / kind / "bomb.nes");
        ASSERT_TRUE(image);
        std::vector<uint8_t> data(100'000);
        EXPECT_EQ(image->ReadAt(0, data).ValueOr(0), 16 + 32768u) << kind;
        EXPECT_EQ(image->Size().ValueOr(0), bomb.size());
        EXPECT_TRUE(OpenImage(folder / kind / "x.nes"));
    }
}

TEST(Archives, FindNamesOfOtherCodePagesAgain) {
    const ImageFolder folder;
    const std::string image = ImageBytes({}, 1);
    const ArchiveMember members[] = {{"caf\x82.nes", image},           // code page 437
                                     {"\xD3\xCE\xCF\xB7.nes", image},  // GBK
                                     {"\xE6\xB8\xB8.nes", image},      // UTF-8
                                     {"a\nb.nes", image}};
    for (const std::string kind : {"a.zip", "a.tar", "a.gnu.tar", "a.rar"}) {
        // There its writer, not the reader, takes the bytes for letters.
        if (kind == "a.tar" && std::filesystem::path::preferred_separator == '\\') continue;
        test::WriteArchive(folder / kind, members);
        std::vector<GameEntry> entries = ReadGameFolder(folder / kind);
        ASSERT_EQ(entries.size(), 4u) << kind;
        EXPECT_EQ(entries[0].name, u"a_b");
        EXPECT_EQ(entries[1].name, u"caf\u00E9");
        EXPECT_EQ(entries[3].name, u"\u6E38");
        EXPECT_EQ(entries[2].name, u"\u2559\u256C\u2567\u2556");
        SaveListFile(folder / "list.fcl", entries, folder.Path());
        GameList loaded;
        ASSERT_TRUE(LoadListFile(folder / "list.fcl", folder.Path(), loaded));
        for (const GameEntry& entry : loaded)
            EXPECT_TRUE(entry.HasValidHeader()) << kind << ToUtf8(entry.path);
    }
}

}  // namespace
}  // namespace bw
