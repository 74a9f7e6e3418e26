// Databases of names in both of their forms.
#include "list/collection/dat_file.h"

#include <map>

#include <gmock/gmock.h>

#include "common/image_folder.h"
#include "support/text.h"

namespace bw {
namespace {

using Kind = DatProblem::Kind;

constexpr const char* kXml =
    "<?xml version=\"1.0\"?>\n"
    "<!DOCTYPE datafile PUBLIC \"-//X//DTD//EN\" \"http://nowhere.invalid/datafile.dtd\">\n"
    "<datafile><header><name>Short</name><description>The sets</description></header>\n"
    "<game name=\"One &amp; Only (USA)\"><description>Other</description>\n"
    "<rom name=\"a.nes\" size=\"3\" crc=\"0000ABCD\"/><rom name=\"b\" CRC=\"1\"/>"
    "<rom crc=\"1f\" status=\"verified\"/></game>\n"
    "<machine name=\"Two\"><rom crc=\"0xABCD\"/><rom crc=\"2\"/></machine></datafile>";

constexpr const char* kText =
    "clrmamepro (\n\tname \"Short\"\n\tdescription \"The sets\"\n)\n\n"
    "game (\r\n\tname \"One & Only (USA)\"\r\n\tdescription \"Other\"\r\n"
    "\trom ( name \"a ( .nes\" size 3 crc 0000ABCD md5 x )\r\n\trom ( name b )\r\n"
    "\trom ( name c(1).nes crc 1f baddump)\r\n)\n"
    "machine ( name Two release ( name \"Three\" crc 3 ) rom ( crc 0xABCD ) rom ( crc 2 ) )\n\x1A";

class DatFile : public testing::Test {
  protected:
    Result<DatNames, DatProblem> Read(const std::string& text) {
        return ReadDat(folder_.Write("x.dat", text), {0xABCD, 0x1F, 2, 3}, progress_);
    }
    static std::string Names(const DatNames& names) {
        std::map<uint32_t, std::u16string> sorted(names.byCrc.begin(), names.byCrc.end());
        std::string text;
        for (const auto& [crc, name] : sorted)
            text += std::to_string(crc) + "=" + ToUtf8(name) + "|";
        return text;
    }

    test::ImageFolder folder_;
    DatProgress progress_;
};

TEST_F(DatFile, BothFormsGiveTheNamesThatAreWanted) {
    std::string wide;
    for (const char* letter = kXml; *letter != '\0'; ++letter)
        wide += {*letter, '\0'};
    for (const std::string& text :
         {std::string(kXml), std::string(kText), "\xEF\xBB\xBF" + std::string(kXml + 21),
          "\xEF\xBB\xBF" + std::string(kText), "\xFF\xFE" + wide}) {
        const auto names = Read(text);
        ASSERT_TRUE(names) << text;
        EXPECT_EQ(Names(*names), "2=Two|31=One & Only (USA)|43981=One & Only (USA)|") << text;
        EXPECT_EQ(names->roms, 5u);
        EXPECT_EQ(names->description, u"The sets");
    }
}

TEST_F(DatFile, NamesComeInEveryWayTheyAreWritten) {
    const struct {
        std::string text;
        const char* names;
    } cases[] = {
        {"<softwarelist name=\"nes\" description=\"Carts\"><software "
         "name=\"code\"><description>Real "
         "&#233;</description><part><dataarea><rom crc=\"2\"/></dataarea></part></software>"
         "</softwarelist>",
         "2=Real é|"},
        {"<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><datafile><game name=\"\xC9\">"
         "<rom crc=\"2\"/></game></datafile>",
         "2=É|"},
        {"game ( name \"\xC9 \\\"q\\\" \\x\" rom ( crc 2 ) )", "2=É \"q\" \\x|"},
        {"game ( name \"游戏\" rom ( crc 2 ) )", "2=游戏|"},
        {"game ( rom ( crc 2 ) name \"late\" rom ( crc 3 ) )", "3=late|"},
        {"game ( name \"long crc\" rom ( crc 000000002 ) rom ( crc -2 ) rom ( crc 2z ) )", ""},
        {"<datafile><game name=\"a&#10;b&#x9;c\"><rom crc=\"2\"/></game></datafile>", "2=a b c|"},
    };
    for (const auto& c : cases) {
        const auto names = Read(c.text);
        ASSERT_TRUE(names) << c.text;
        EXPECT_EQ(Names(*names), c.names) << c.text;
    }
    const auto names = Read("game ( name \"" + std::string(900, 'x') + "\" rom ( crc 2 ) )");
    EXPECT_EQ(names->byCrc.at(2).size(), 260u);
}

TEST_F(DatFile, NothingComesOfHalfADatabase) {
    const struct {
        std::string text;
        Kind kind;
        uint64_t line = 0;
    } cases[] = {
        {"", Kind::kNoDatabase},
        {" \n", Kind::kNoDatabase},
        {"<html><body/></html>", Kind::kNoDatabase},
        {"Dear reader (", Kind::kNoDatabase},
        {std::string(200000, 'x'), Kind::kNoDatabase},
        {std::string("NES\x1A\0\0\0", 7), Kind::kNoDatabase},
        {std::string(kXml).substr(0, 400), Kind::kDamaged, 6},
        {"<datafile>\n<game name=\"a\">\n<rom></game></datafile>", Kind::kDamaged, 3},
        {std::string(kText).substr(0, 160), Kind::kDamaged, 9},
        {"game (\nname \"a\n)", Kind::kDamaged, 2},
        {"game (\n)\n)", Kind::kDamaged, 3},
        {"game ( )\nname x", Kind::kDamaged, 2},
        {"game (\n( ) )", Kind::kDamaged, 2},
        {"<!DOCTYPE datafile [\n<!ENTITY a \"aaaa\">\n<!ENTITY b \"&a;&a;\">]>\n<datafile>&b;"
         "</datafile>",
         Kind::kDamaged, 2},
        {"<!DOCTYPE datafile [\n<!ENTITY a SYSTEM \"/etc/passwd\">]><datafile>&a;</datafile>",
         Kind::kDamaged, 2},
    };
    for (const auto& c : cases) {
        const auto names = Read(c.text);
        ASSERT_FALSE(names) << c.text;
        EXPECT_EQ(names.Problem().kind, c.kind) << c.text;
        EXPECT_EQ(names.Problem().line, c.line) << c.text;
    }
    EXPECT_EQ(ReadDat(folder_ / "none", {}).Problem().kind, Kind::kFile);
    EXPECT_EQ(ReadDat(folder_.Path(), {}).Problem().kind, Kind::kFile);
}

std::string Times(size_t count, const std::string& text) {
    std::string all;
    for (size_t i = 0; i < count; ++i)
        all += text;
    return all;
}

// What a document can do to a reader that keeps all of it, or does something for each pair.
TEST_F(DatFile, HostileDocumentsCostLittle) {
    std::string defaults = "<!DOCTYPE datafile [";
    for (int i = 0; i < 300; ++i)
        defaults += "<!ATTLIST game a" + std::to_string(i) + " CDATA \"x\">";
    for (const std::string& text :
         {"<datafile>" + Times(1000, "<a>"), "game ( " + Times(1000, "a ( "),
          "<datafile><!--" + std::string(6 << 20, 'x') + "--></datafile>",
          "game ( name \"" + std::string(6 << 20, 'x') + "\" )", defaults + "]><datafile/>"}) {
        const auto names = Read(text);
        ASSERT_FALSE(names) << text.substr(0, 100);
        EXPECT_EQ(names.Problem().kind, Kind::kDamaged);
    }
}

TEST_F(DatFile, StopsWhereItIsTold) {
    std::string text = "game ( name a rom ( crc 2 ) )\n" + std::string(600 << 10, ' ') +
                       "game ( name b rom ( crc 3 ) )\n";
    progress_ = [&](uint64_t done, uint64_t total) {
        EXPECT_EQ(total, text.size());
        return done > total / 2;
    };
    EXPECT_EQ(Names(*Read(text)), "2=a|");
}

}  // namespace
}  // namespace bw
