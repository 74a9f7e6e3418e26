#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "assembler/source_provider.h"

namespace bw::assembler {

// An error makes the run fail; a warning is for the reader only. There is no third kind: a run goes
// on after an error. Only text without end, too much of it or a macro that calls itself, ends it.
enum class Severity : uint8_t { Warning, Error };

struct Diagnostic {
    Severity severity = Severity::Error;
    std::string file;   // as named on the command line or in the INCLUDE
    uint32_t line = 0;  // from 1
    std::string text;
};

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
