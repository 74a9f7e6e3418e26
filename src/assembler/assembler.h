#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "assembler/source_provider.h"
#include "support/diagnostic.h"

namespace bw::assembler {

// A run goes on after an error. Only text without end, too much of it or a macro that calls itself,
// ends it. Texts are bytes, as the source has them; files are named as on the command line or in
// the INCLUDE.
using Diagnostic = BasicDiagnostic<std::string>;

// Limits that keep any input from eating time or memory without end.
inline constexpr size_t kTextLimit = size_t{32} << 20U;  // bytes of all files and macros
inline constexpr size_t kIncludeDepth = 16;
inline constexpr size_t kMacroDepth = 64;
inline constexpr size_t kConditionDepth = 256;
inline constexpr int kExpressionDepth = 256;

struct AssemblyOptions {
    bool listing = false;
    bool symbols = false;
    size_t textLimit = kTextLimit;
};

struct AssemblyResult {
    // iNES file: 16 bytes of header, then all banks; empty if there was an error.
    std::vector<uint8_t> rom;
    // In source order, the first kDiagnosticLimit of them.
    std::vector<Diagnostic> diagnostics;
    size_t errorCount = 0;  // of all, those beyond the limit too
    std::string listing;    // text of the listing, if asked for
    std::string symbols;    // text of the symbol file, if asked for

    bool Ok() const { return errorCount == 0; }
};

inline constexpr size_t kDiagnosticLimit = 200;

// Assembles `path` and what it includes. No output but the result, no exception for any input.
AssemblyResult Assemble(std::string_view path, SourceProvider& sources,
                        const AssemblyOptions& options = {});

// The diagnostics as lines "FILE:LINE: error: TEXT", closed by "# N error(s)" if there are errors.
std::string FormatDiagnostics(const AssemblyResult& result);

}  // namespace bw::assembler
