// The check of a cart: games with one fault each, a healthy one beside them, and emulators that are
// no help.
#include "console/cart_check.h"

#include <chrono>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "assembler/assembler.h"
#include "assembler/memory_source.h"
#include "menu_cart.h"
#include "support/text.h"

namespace bw::console {
namespace {

using test::Noise;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

// A game without a mapper whose picture moves. After a second it calls Fault. Probe tells in Z
// whether its tiles can be written to, which spoils none of them: how a game may know that it isn't
// at home.
constexpr std::string_view kGame = R"asm(
 .INESPRG 1
 .INESCHR 1
 .INESMAP 0
 .INESMIR 1
 .BANK 0
 .ORG $C000
Reset:
 SEI
 CLD
 LDX #$FF
 TXS
 INX
 STX $2000
 STX $2001
 JSR Wait
 JSR Wait
 LDA #$3F
 JSR Address
.colour
 TXA
 AND #$3F
 STA $2007
 INX
 CPX #$20
 BNE .colour
 LDA #$20
 JSR Address
 LDY #$08
.fill
 TYA
 STA $2007
 INX
 BNE .fill
 DEY
 BNE .fill
 LDA #$0A
 STA $2001
Loop:
 JSR Wait
 INC <$10
 LDA <$10
 STA $2005
 STA $2005
 CMP #60
 BNE Loop
 JSR Fault
 JMP Loop
Wait:
 BIT $2002
.wait
 BIT $2002
 BPL .wait
 RTS
Address:
 STA $2006
 LDX #0
 STX $2006
 RTS
Probe:
 JSR Read
 STA <$11
 EOR #$FF
 JSR Write
 JSR Read
 EOR <$11
 PHP
 LDA <$11
 JSR Write
 PLP
 RTS
Read:
 LDA #0
 JSR Address
 LDA $2007
 LDA $2007
 RTS
Write:
 PHA
 LDA #0
 JSR Address
 PLA
 STA $2007
 LDA #0
 JSR Address
 RTS
Fault:
)asm";
constexpr std::string_view kEnd = R"asm(
 RTS
 .BANK 1
 .ORG $FFFA
 .DW Reset, Reset, Reset
)asm";
constexpr const char* kOnlyOnTheCart = " JSR Probe\n BNE .here\n RTS\n.here\n";
constexpr const char* kDarkIn = " LDA #0\n STA $2001\n";

std::string Image(const std::string& fault, uint32_t seed, uint8_t flags = 0) {
    assembler::MemorySource source;
    source.files["game.asm"] = std::string(kGame) + fault + std::string(kEnd);
    const auto assembled = assembler::Assemble("game.asm", source);
    EXPECT_TRUE(assembled.Ok()) << assembler::FormatDiagnostics(assembled);
    std::string rom(assembled.rom.begin(), assembled.rom.end());
    rom.resize(16 + 0x4000);
    rom[6] = static_cast<char>(rom[6] | flags);
    return rom + Noise(0x2000, seed);
}

struct NoListener : CheckListener {
    void Checked(const CheckedGame&, size_t done, size_t total) override { EXPECT_LE(done, total); }
};

class CartCheckTest : public testing::Test {
  protected:
    void Add(const std::string& name, const std::string& fault, uint8_t flags = 0) {
        const auto file = folder_ / (name + ".nes");
        WriteText(file, Image(fault, static_cast<uint32_t>(games_.size()) + 1, flags));
        games_.emplace_back(file);
        games_.back().checked = true;
    }
    CheckSubject Build(BoardType board) {
        CartPlan plan{.board = board, .games = games_};
        const Cart cart = BuildCart(plan, folder_.Path(), BoardName(board));
        CheckSubject subject{.cart = cart.rom, .tables = {}};
        FileResult<CartTables> tables = ReadCart(cart.rom);
        EXPECT_TRUE(tables);
        if (tables) subject.tables = std::move(*tables);
        for (const GameEntry& game : games_) {
            subject.images.push_back(TextPath(game.path));
            subject.names.push_back(game.name);
        }
        return subject;
    }
    static CheckOutcome Check(const CheckSubject& subject, const CheckOptions& options = {}) {
        const std::unique_ptr<Emulator> emulator = FindEmulator();
        EXPECT_TRUE(emulator);
        NoListener listener;
        return CheckCart(*emulator, subject, options, listener);
    }
    // "name: kind kind", errors only, of the games that have any.
    static std::vector<std::string> Errors(const CheckOutcome& outcome) {
        std::vector<std::string> all;
        for (const CheckedGame& game : outcome.games) {
            EXPECT_THAT(ToUtf8(game.notRun), IsEmpty());
            std::string line = ToUtf8(game.name) + ":";
            for (const CheckFinding& finding : game.findings) {
                if (finding.severity == FindingSeverity::kNote) continue;
                line.append(" ").append(FindingKindName(finding.kind));
            }
            if (game.HasErrors()) all.push_back(line);
        }
        return all;
    }

    TemporaryFolder folder_;
    GameList games_;
};

TEST_F(CartCheckTest, NamesEachFaultAndNoHealthyGame) {
    Add("healthy", "");
    Add("tiles",
        kDarkIn + std::string(" LDA #0\n JSR Address\n.more\n STX $2007\n INX\n BNE .more\n"
                              " LDA #$0A\n STA $2001\n"));
    // Its twin writes to tiles that nothing shows: there are no sprites.
    Add("jam", kOnlyOnTheCart + std::string(" .DB $02\n"));
    Add("jams at home too", " .DB $02\n");
    Add("black", kOnlyOnTheCart + std::string(kDarkIn) + ".stay\n JMP .stay\n");
    Add("frozen", kOnlyOnTheCart + std::string(".stay\n JMP .stay\n"));
    Add("frozen at home too", ".stay\n JMP .stay\n");
    Add("registers", " LDA #$02\n STA $5000\n STA $6000\n");
    Add("mirroring", " LDA #1\n STA $A000\n");
    Add("harmless", " LDA #$46\n STA $8000\n");
    Add("save 1", "", 2);
    Add("save 2", "", 2);
    for (const BoardType board : {BoardType::kCoolboy, BoardType::kMindkids}) {
        SCOPED_TRACE(BoardName(board));
        CheckSubject subject = Build(board);
        const std::vector<std::string> expected{"tiles: tiles",
                                                "jam: jam",
                                                "black: black",
                                                "frozen: frozen",
                                                "registers: registers frozen",
                                                "mirroring: registers"};
        CheckOutcome outcome = Check(subject);
        ASSERT_EQ(outcome.games.size(), games_.size()) << ToUtf8(outcome.problem);
        EXPECT_EQ(Errors(outcome), expected);
        EXPECT_THAT(ToUtf8(outcome.games[10].findings.at(0).text), HasSubstr("12 save 2"));
        EXPECT_THAT(outcome.games[9].findings, IsEmpty());
        if (board == BoardType::kCoolboy) continue;
        // By the cart's bytes alone it is the same.
        subject.images.clear();
        EXPECT_EQ(Errors(Check(subject)), expected);
    }
    // It has its tiles in ROM, and its lock holds.
    EXPECT_THAT(Errors(Check(Build(BoardType::kCoolgirl))), IsEmpty());
}

TEST_F(CartCheckTest, SeesThatAPlaceHoldsNoGame) {
    Add("healthy", "");
    Add("lost", " NOP\n");
    Add("other", " NOP\n NOP\n");
    CheckSubject subject = Build(BoardType::kCoolboy);
    std::string bytes = ReadText(subject.cart);
    const CartGame& lost = subject.tables.games[1];
    bytes.replace(subject.tables.romStart + lost.prgOffset, lost.prgBytes, lost.prgBytes, '\xFF');
    WriteText(subject.cart, bytes);
    EXPECT_THAT(Errors(Check(subject)), testing::ElementsAre(HasSubstr("lost: no-start")));
    subject.images.clear();
    const CheckOutcome outcome = Check(subject, {.jobs = 1, .frames = 30, .only = {1, 2, 7}});
    EXPECT_EQ(outcome.games.size(), 2u);
    EXPECT_EQ(Errors(outcome), std::vector<std::string>{"lost: no-start"});
    // A wrong bank: the middle of a game, which stays healthy itself.
    subject.tables.games[1].prgOffset = subject.tables.games[2].prgOffset - 0x2000;
    EXPECT_EQ(Errors(Check(subject)), std::vector<std::string>{"lost: no-start"});
}

TEST_F(CartCheckTest, DrivesAMenuOfOnesOwnByItsKeys) {
    Add("first", "");
    Add("jams", kOnlyOnTheCart + std::string(" .DB $02\n"));
    Add("last", "\n NOP\n");
    CartPlan plan{.games = games_};
    std::filesystem::copy(BANKWEAVER_EXTERNAL_MENU, folder_ / "mine");
    plan.settings.ExternMenuEnable = true;
    plan.settings.ExternMenuPath = folder_ / "mine" / "menu.asm";
    const Cart cart = BuildCart(plan, folder_.Path(), "external");
    const FileResult<CartTables> tables = ReadCart(cart.rom);
    ASSERT_TRUE(tables);
    EXPECT_FALSE(tables->ownProgram);
    const CheckOutcome outcome = Check({.cart = cart.rom, .tables = *tables}, {.jobs = 1});
    EXPECT_EQ(Errors(outcome), std::vector<std::string>{"JAMS: jam"});
}

// An emulator that shows the menu and plays `played` orders of each console, then does `then`.
class BadEmulator : public Emulator {
  public:
    BadEmulator(uint32_t played, ConsoleProblem::Kind then) : played_(played), then_(then) {}
    std::string Name() const override { return "BAD 1"; }
    ConsoleResult<std::unique_ptr<Console>> Start(const ConsoleStart&) const override {
        if (played_ == 0) return ConsoleProblem{then_, "why\nnot"};
        return std::unique_ptr<Console>(std::make_unique<BadConsole>(played_, then_));
    }

  private:
    class BadConsole : public Console {
      public:
        BadConsole(uint32_t left, ConsoleProblem::Kind then) : left_(left), then_(then) {}
        ConsoleResult<ConsoleRun> Run(const ConsoleOrder& order) override {
            if (order.codes || left_ == 0) return ConsoleProblem{then_, "why\nnot"};
            --left_;
            ConsoleRun run{.frames = order.frames, .reached = true};
            run.writes.resize(order.watched.size());
            run.picture.pixels.resize(size_t{256} * 240, 0xFF000000u);
            run.picture.pixels[left_] = 0xFFFFFFFFu;
            return run;
        }
        ConsoleResult<std::vector<uint8_t>> ReadCpu(uint16_t, uint32_t count) override {
            return std::vector<uint8_t>(count, count == 1 ? looks_++ % 2 == 0 ? 0x1E : 0 : 0xFF);
        }
        ConsoleResult<std::vector<uint8_t>> ReadPpu(uint16_t, uint32_t count) override {
            return std::vector<uint8_t>(count);
        }
        ConsoleResult<> WriteCpu(uint16_t, const std::vector<uint8_t>&) override { return {}; }
        ConsoleResult<> KeepState() override { return {}; }
        ConsoleResult<> RestoreState() override { return {}; }
        ConsoleResult<> Load(const std::filesystem::path&) override { return {}; }
        ConsoleResult<> Power() override { return {}; }
        ConsoleResult<> Reset() override { return {}; }
        void Rest() override {}
        int64_t ProcessId() const override { return 0; }

      private:
        uint32_t left_;
        ConsoleProblem::Kind then_;
        uint32_t looks_ = 0;
    };
    uint32_t played_;
    ConsoleProblem::Kind then_;
};

TEST(CartCheckOfBadEmulators, GoesOnOrSaysWhyNot) {
    CheckSubject subject{.cart = "/none", .tables = {}};
    subject.tables.ownProgram = true;
    subject.tables.games.resize(40);
    NoListener listener;
    const auto check = [&](uint32_t played, ConsoleProblem::Kind then) {
        return CheckCart(BadEmulator(played, then), subject, {.jobs = 2}, listener);
    };
    using enum ConsoleProblem::Kind;
    for (const auto kind : {kNotStarted, kRefused, kSilent, kEnded, kGarbled}) {
        const CheckOutcome never = check(0, kind);
        EXPECT_THAT(ToUtf8(never.problem), HasSubstr("BAD 1"));
        EXPECT_THAT(ToUtf8(never.problem), HasSubstr("(why not)"));
        EXPECT_LT(never.games.size(), 10u);
    }
    // Each console lasts for a few games: whatever was under way gets another one.
    for (const auto kind : {kSilent, kEnded, kGarbled}) {
        const CheckOutcome often = check(30, kind);
        EXPECT_EQ(often.games.size(), 40u);
        EXPECT_THAT(ToUtf8(often.problem), IsEmpty());
        for (const CheckedGame& game : often.games)
            EXPECT_THAT(ToUtf8(game.notRun), IsEmpty());
    }
}

TEST_F(CartCheckTest, StopsAtOnce) {
    for (int i = 0; i < 4; ++i)
        Add("game " + std::to_string(i), "");
    const CheckSubject subject = Build(BoardType::kMindkids);
    const std::unique_ptr<Emulator> emulator = FindEmulator();
    std::stop_source stop;
    std::chrono::steady_clock::time_point asked;
    NoListener listener;
    std::jthread stopper([&] {
        std::this_thread::sleep_for(std::chrono::seconds(1));
        asked = std::chrono::steady_clock::now();
        stop.request_stop();
    });
    const CheckOutcome outcome =
        CheckCart(*emulator, subject, {.frames = 30000}, listener, stop.get_token());
    // It would go on for a minute; a busy machine is slow to hear.
    EXPECT_LT(std::chrono::steady_clock::now() - asked, std::chrono::seconds(5));
    EXPECT_TRUE(outcome.stopped);
}

}  // namespace
}  // namespace bw::console
