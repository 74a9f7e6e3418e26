// The sentences of a finding: what was seen, what it means on the board, how sure it is, what may
// help.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "console/emulator.h"
#include "console/findings.h"
#include "language/language.h"
#include "rom/board_tables.h"

namespace bw {

class FindingWords {
  public:
    FindingWords(Language language, BoardType board, std::string emulator)
        : language_(language), board_(board), emulator_(std::move(emulator)) {}

    // `mapper` of the game tells which other boards could be tried.
    CheckFinding NoMenu() const;
    CheckFinding NoHandOver(uint32_t frames) const;
    CheckFinding NoProgram(uint16_t resetVector) const;
    CheckFinding OtherBytes(uint16_t mapper) const;
    CheckFinding Jam(uint16_t address, uint16_t mapper) const;
    CheckFinding JamByItself(uint16_t address) const;
    CheckFinding Black(uint32_t frames, uint16_t mapper) const;
    CheckFinding Frozen(uint32_t frames, uint16_t mapper) const;
    CheckFinding OtherStill(uint16_t mapper) const;
    CheckFinding Tiles(bool seen) const;
    CheckFinding FourScreen() const;
    // `differs`: nothing of what it shows is as it shows it alone; else a part is.
    CheckFinding Registers(const WatchedWrites& writes, bool differs) const;
    // The same for the MMC3's, which the game doesn't expect.
    CheckFinding MapperRegisters(const WatchedWrites& writes, bool differs) const;
    CheckFinding Mirroring(bool differs) const;
    // `others`: the numbers and names of the games that share the memory with it.
    CheckFinding Saves(std::span<const std::u16string> others) const;

    std::u16string NotRun(const ConsoleProblem& problem) const;
    std::u16string NotDriven() const;
    std::u16string Broken(const ConsoleProblem& problem) const;

  private:
    std::u16string Text(TextId id) const { return LoadText(id, language_); }
    // Joins the sentences, and ends with those on how sure it is and what may help.
    CheckFinding Make(FindingKind kind, FindingSeverity severity, std::u16string text,
                      const std::u16string& help) const;
    std::u16string HelpOf(uint16_t mapper) const;
    std::u16string TryBoards(std::string_view boards) const;
    std::u16string Seen(const WatchedWrites& writes, TextId meaning, bool differs) const;
    std::u16string Ended(const ConsoleProblem& problem) const;

    Language language_;
    BoardType board_;
    std::string emulator_;
};

}  // namespace bw
