// What the window and the command line both say of a build.
#pragma once

#include <string>

#include "builder/build_driver.h"
#include "language/language.h"

namespace bw {

// What a stage does, such as "Reading games".
std::u16string StageText(BuildStage stage, Language language);

// A line on the ROM that was written.
std::u16string BuildSummary(const BuildOutcome& outcome, Language language);
// By how much a layout is more than the board holds; empty if it isn't.
std::u16string OverText(const LayoutResult& layout, BoardType board, Language language);
// A line on the sectors that differ from the earlier cart whose places were kept.
std::u16string ChangesText(const SectorChanges& changes, Language language);
// A line on a build that the user gave up.
std::u16string BuildStoppedText(Language language);

}  // namespace bw
