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
// A line on a build that the user gave up.
std::u16string BuildStoppedText(Language language);

}  // namespace bw
