// The words for what is wrong with a file.
#pragma once

#include <string>

#include "language/language.h"
#include "support/diagnostic.h"
#include "support/file_problem.h"

namespace bw {

// The file as the place, the reason as the text: never empty.
Diagnostic FileDiagnostic(const FileProblem& problem, Language language,
                          Severity severity = Severity::kError);

// "FILE: REASON".
std::u16string ProblemText(const FileProblem& problem, Language language);

}  // namespace bw
