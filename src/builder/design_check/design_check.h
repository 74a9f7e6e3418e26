// What is wrong with a design, or looks otherwise on the console than in the designer.
#pragma once

#include <vector>

#include "builder/design_check/design_finding.h"
#include "designer/model/working_copy.h"
#include "language/language.h"

namespace bw {

// Errors first, then warnings, then notes. The names, the size of their pages, the blank lines
// between them and whether page numbers are shown are the working copy's; what its user looks at
// (the page, layers that are switched off) doesn't count. Of findings of one kind the first 20 are
// told, the last of them with how many more there are.
//
// A text, sprite, name or part of a page counts from 1 for people, columns and rows from 0.
std::vector<DesignFinding> CheckDesign(const WorkingCopy& copy, Language language);

}  // namespace bw
