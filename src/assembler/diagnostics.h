#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "assembler/assembler.h"
#include "assembler/source_files.h"
#include "assembler/symbols.h"

namespace bw::assembler {

// One call of a macro: what was called and from where.
struct Expansion {
    std::string_view macro;
    Place caller;
};

// Collects what a run has to say.
class Diagnostics {
  public:
    explicit Diagnostics(const SourceFiles& files) : files_(files) {}

    // `detail` is put behind the text, after a blank, unless it is empty.
    void Error(const Place& place, std::string_view text, std::string_view detail = {});
    void Warning(const Place& place, std::string_view text, std::string_view detail = {});

    // "FILE:LINE" for texts that point elsewhere.
    std::string Spot(const Place& place) const;

    size_t ErrorCount() const { return errorCount_; }
    // The first kDiagnosticLimit in the order of the source.
    std::vector<Diagnostic> Take();

    std::vector<Expansion> expansions = std::vector<Expansion>(1);  // 0: not in a macro

  private:
    struct Entry {
        Severity severity = Severity::kError;
        Place place;
        std::string text;
    };

    void Add(Severity severity, const Place& place, std::string_view text, std::string_view detail);

    const SourceFiles& files_;
    std::vector<Entry> entries_;
    size_t errorCount_ = 0;
};

}  // namespace bw::assembler
