#include "console/findings.h"

#include <algorithm>

namespace bw {

std::string_view FindingKindName(FindingKind kind) {
    switch (kind) {
        case FindingKind::kNoStart:
            return "no-start";
        case FindingKind::kJam:
            return "jam";
        case FindingKind::kBlack:
            return "black";
        case FindingKind::kFrozen:
            return "frozen";
        case FindingKind::kTiles:
            return "tiles";
        case FindingKind::kRegisters:
            return "registers";
        case FindingKind::kSaves:
            return "saves";
    }
    return "";
}

bool CheckedGame::HasErrors() const {
    return std::ranges::any_of(findings, [](const CheckFinding& finding) {
        return finding.severity == FindingSeverity::kError;
    });
}

}  // namespace bw
