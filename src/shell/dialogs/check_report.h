// What a check has shown so far, game by game, for the window that shows it.
#pragma once

#include <QByteArray>
#include <QImage>
#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "console/findings.h"
#include "language/language.h"
#include "rom/board_tables.h"

namespace bw {

// A picture that waits to be seen, in some kilobytes instead of 240.
class PackedPicture {
  public:
    PackedPicture() = default;
    explicit PackedPicture(const ConsolePicture& picture);  // on any thread

    bool IsEmpty() const { return bytes_.isEmpty(); }
    ConsolePicture Unpacked() const;
    QImage Image() const;  // null without a picture

  private:
    QByteArray bytes_;
};

struct ReportGame {
    CheckedGame game;  // without its picture
    PackedPicture picture{};
    bool done = false;
};

// Nothing for a game of which nothing was found.
std::optional<FindingSeverity> WorstOf(const std::vector<CheckFinding>& findings);

// Errors and notes, each with its word before it; one for each paragraph.
QString FindingLines(const std::vector<CheckFinding>& findings, Language language);

// All that there is to say of a game.
QString GameText(const ReportGame& one, Language language);

// The window's thread alone uses it.
struct CheckReport {
    enum class State : uint8_t { kNone, kRunning, kDone, kStopped };

    BoardType board = BoardType::kCoolboy;
    State state = State::kNone;
    std::vector<ReportGame> games;  // in the menu's order
    size_t done = 0;
    std::optional<std::chrono::seconds> left{};  // if it can be told
    std::u16string problem{};                    // what kept it from going on

    size_t Count(FindingSeverity severity) const;
};

// How far it is, the time left, how much was found, what went wrong.
std::u16string StateLine(const CheckReport& report, Language language);

// "1:05"
std::u16string TimeText(std::chrono::seconds time);

}  // namespace bw
