// Designs as the commands that look at their screen open them.
#pragma once

#include "cli/arguments.h"
#include "cli/inputs.h"
#include "designer/files/design_file.h"
#include "designer/model/working_copy.h"
#include "list/game_list.h"

namespace bw {

// The design as a designer that has just been opened has it, with the names of the inputs by the
// list's options. Page numbers are shown if they ask for it.
DesignProblem OpenScreen(const Arguments& arguments, const GatheredGames& gathered, NameRules rules,
                         Language language, WorkingCopy& copy);

}  // namespace bw
