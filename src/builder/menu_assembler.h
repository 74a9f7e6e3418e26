// Runs the assembler over a menu source.
#pragma once

#include <filesystem>
#include <string>

#include "language/language.h"

namespace bw {

struct AssemblyOutcome {
    bool done = false;
    std::u16string output;  // what the assembler said; on a failure never empty
};

// Runs `assembler` over `source` in `folder` (see CallOf), and waits for its end. An assembler that
// says nothing for three seconds is stopped and counts as failed.
AssemblyOutcome RunAssembler(const std::filesystem::path& assembler,
                             const std::filesystem::path& source,
                             const std::filesystem::path& folder, Language language);

}  // namespace bw
