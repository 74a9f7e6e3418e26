// Carts opened by the command line.
#include "cli/command_fixture.h"

namespace bw {
namespace {

TEST_F(Commands, OpenACartTakeItApartAndCompareIt) {
    Image("one.nes", {1, 1, 0, 1}, 1);
    Image("two.nes", {4, 3, 4, 2}, 2);
    Done("build -o cart.bin one.nes two.nes");
    const rapidjson::Document cart = Json(Done("list --json cart.bin"));
    EXPECT_TRUE(cart["notes"].GetBool());
    EXPECT_EQ(cart["games"][1]["prgSize"].GetUint(), 65536u);
    ExpectRefused("list -o games cart.bin", "bankweaver-cli split CART -d FOLDER");
    WriteText(folder_ / "other.bin", "foreign");
    WriteText(folder_ / "bad.nes", ReadText(folder_ / "one.nes").replace(6, 3, "\xC1\x08\x01"));
    for (const char* command :
         {"list other.bin", "list bad.nes", "split other.bin -d there", "compare one.nes two.nes"})
        ExpectRefused(command, "isn't a cart of Bankweaver");

    EXPECT_THAT(Done("split cart.bin -d games").err, HasSubstr("2 of 2 game(s)"));
    EXPECT_TRUE(ReadText(folder_ / "games/002 TWO.nes") == ReadText(folder_ / "two.nes"));

    std::string rom = ReadText(folder_ / "cart.bin");
    const size_t at = cart["games"][1]["prgOffset"].GetUint() + 9;
    rom[at] = static_cast<char>(~rom[at]);
    WriteText(folder_ / "dump", rom + "\xFF\xFF");
    EXPECT_THAT(Done("compare cart.bin cart.bin").out, IsEmpty());
    const RunResult differs = Run("compare cart.bin dump --sector 4");
    EXPECT_EQ(differs.exitCode, 1);
    EXPECT_THAT(differs.out, AllOf(HasSubstr("2       TWO"), Not(HasSubstr("ONE"))));
    EXPECT_THAT(differs.err, AllOf(HasSubstr("1 byte(s) differ, in 1 of"), HasSubstr("erased")));
    const rapidjson::Document json = Json(Run("compare --json cart.bin dump"));
    EXPECT_FALSE(json["same"].GetBool());
    EXPECT_EQ(json["sectors"][0]["begin"].GetUint(), at / 65536 * 65536);
    const RunResult wrong = Run("split dump -d wrong");
    EXPECT_EQ(wrong.exitCode, 1);
    EXPECT_THAT(wrong.err, AllOf(HasSubstr("002 TWO.nes"), HasSubstr("its sums differ")));
}

}  // namespace
}  // namespace bw
