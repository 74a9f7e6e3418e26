// What commands do to a collection before they use it.
#include "cli/command_fixture.h"
#include "rom/crc32.h"
#include "support/numbers.h"

namespace bw {
namespace {

std::string HexCrc(const std::string& image, size_t from) {
    std::string hex;
    AppendHex(hex,
              Crc32({reinterpret_cast<const uint8_t*>(image.data()) + from, image.size() - from}),
              8);
    return hex;
}

class Collections : public Commands {
  protected:
    Collections() {
        Image("roms/Alpha, The (U) [b1].nes", {1, 1, 0}, 1);
        Image("roms/Alpha, The (J).nes", {1, 1, 0}, 2);
        Image("roms/Beta (E).nes", {2, 1, 0}, 3);
        Image("roms/Other name (U).nes", {2, 1, 0}, 3);
        Image("roms/Unknown Game of Many Words (U).nes", {1, 0, 0}, 4);
        WriteText(folder_ / "a.dat", "game ( name \"Alpha (Japan)\" rom ( crc " +
                                         HexCrc(ImageBytes({1, 1, 0}, 2), 16) + " ) )");
        WriteText(folder_ / "b.xml", "<datafile><game name=\"Never\"><rom crc=\"" +
                                         HexCrc(ImageBytes({1, 1, 0}, 2), 16) +
                                         "\"/></game><game name=\"Beta Two (World)\"><rom crc=\"" +
                                         HexCrc(ImageBytes({2, 1, 0}, 3), 0) +
                                         "\"/></game></datafile>");
    }
};

TEST_F(Collections, NamesAndBestVersions) {
    const RunResult best = Done("list --keep-best --names a.dat --names b.xml roms");
    EXPECT_EQ(std::ranges::count(best.out, '\n'), 3);
    EXPECT_THAT(best.out, AllOf(HasSubstr("1  Alpha (Japan) "), HasSubstr("2  Beta Two (World) ")));
    EXPECT_THAT(best.out, AllOf(HasSubstr("Other name (U).nes"), Not(HasSubstr("[b1]"))));
    EXPECT_THAT(best.err, AllOf(HasSubstr("Warn: In no database"), HasSubstr("Unknown Game")));
    EXPECT_EQ(Run("list --strict --names a.dat roms").exitCode, 2) << "no option of list";
    EXPECT_EQ(Run("build --strict -o x.nes --names a.dat roms").exitCode, 1);
    EXPECT_THAT(Done("list --names a.dat --tidy-names roms").out,
                AllOf(HasSubstr("  Alpha  "), HasSubstr("  The Alpha  ")));
    Done("build -o x.bin --number --tidy-names --shorten-names roms");
    EXPECT_THAT(ReadText(folder_ / "x.bin"), HasSubstr("5.UNKNOWN GAME OF MANY"));
    EXPECT_THAT(ReadText(folder_ / "x.bin"), Not(HasSubstr("WORDS")));
}

TEST_F(Collections, DamagedDatabasesEndTheCommand) {
    WriteText(folder_ / "cut.dat", "game (\n\tname \"x\"\n");
    const RunResult run = Run("list -o new --names a.dat --names cut.dat roms");
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.err, HasSubstr("Error: cut.dat is damaged or incomplete at line 3"));
    EXPECT_FALSE(std::filesystem::exists(folder_ / "new.fcl"));
    EXPECT_THAT(Run("build -o x.nes --names none.dat roms").err, HasSubstr("none.dat: "));
    EXPECT_THAT(Run("export -d out --names x.nes 'roms/Beta (E).nes'").err, HasSubstr("x.nes: "));
    EXPECT_THAT(Run("build -o x.nes --report a.dat --names a.dat roms").err, HasSubstr("a.dat"));
    EXPECT_THAT(ReadText(folder_ / "a.dat"), StartsWith("game"));
}

TEST_F(Collections, MissingFilesAreFoundByNameAndByData) {
    Done("list -o shelf --names a.dat roms");
    EXPECT_THAT(ReadText(folder_ / "shelf.fcl"), HasSubstr("_size=40976\r\n"));
    std::filesystem::create_directories(folder_ / "new/deep");
    const auto move = [&](const char* from, const char* to) {
        std::filesystem::rename(folder_ / "roms" / from, folder_ / "new" / to);
    };
    move("Alpha, The (J).nes", "deep/renamed.nes");
    move("Beta (E).nes", "BETA (e).nes");
    move("Alpha, The (U) [b1].nes", "same name.txt");
    Image("new/Alpha, The (U) [b1].nes", {1, 1, 0}, 9);  // the name and the size, other data
    const rapidjson::Document before = Json(Done("list --json shelf.fcl"));
    EXPECT_TRUE(before["games"][0]["missing"].GetBool());
    EXPECT_EQ(before["games"][0]["same"].GetInt(), before["games"][1]["same"].GetInt());
    EXPECT_TRUE(before["games"][2].HasMember("prgCrc"));
    EXPECT_FALSE(before["games"][4].HasMember("same"));
    const RunResult run = Run("list --json --look-in new shelf.fcl");
    EXPECT_THAT(run.err, AllOf(HasSubstr("new: 2 of 3"), HasSubstr("Still missing: "),
                               HasSubstr("[b1].nes")));
    const rapidjson::Document found = Json(run);
    EXPECT_THAT(found["games"][0]["path"].GetString(), HasSubstr("renamed.nes"));
    EXPECT_STREQ(found["games"][0]["name"].GetString(), "Alpha (Japan)");
    EXPECT_THAT(found["games"][2]["path"].GetString(), HasSubstr("BETA (e).nes"));
    EXPECT_TRUE(found["games"][1]["missing"].GetBool());
    EXPECT_EQ(Run("list --look-in nowhere shelf.fcl").exitCode, 1);
}

}  // namespace
}  // namespace bw
