// The words for what a reading of files has left out.
#pragma once

#include <string>

#include "language/language.h"
#include "rom/image_files.h"
#include "support/diagnostic.h"

namespace bw {

// A warning, with the place as its file.
Diagnostic LeftOutDiagnostic(const LeftOut& item, Language language);
// One line for people, the place among it.
std::u16string LeftOutText(const LeftOut& item, Language language);

}  // namespace bw
