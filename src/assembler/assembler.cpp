#include "assembler/assembler.h"

#include <memory>
#include <utility>

#include "assembler/pass.h"

namespace bw::assembler {
namespace {

// Readings of the source before locations count as unable to settle. Two do for all but sources
// that stack forward .ORGs upon each other.
constexpr int kReadings = 8;

}  // namespace

AssemblyResult Assemble(std::string_view path, SourceProvider& sources,
                        const AssemblyOptions& options) {
    SourceFiles files(sources);
    std::unique_ptr<Pass> before;
    for (int reading = 1;; ++reading) {
        auto pass = std::make_unique<Pass>(files, options, before.get());
        pass->Read(path);
        pass->Finish();
        if (pass->NeedsAnother() && reading == kReadings) pass->ReportUnsettled();
        if (!pass->NeedsAnother() || reading == kReadings) return pass->TakeResult();
        before = std::move(pass);
    }
}

std::string FormatDiagnostics(const AssemblyResult& result) {
    std::string text;
    for (const Diagnostic& diagnostic : result.diagnostics) {
        const bool error = diagnostic.severity == Severity::kError;
        text.append(SpotText(diagnostic.place))
            .append(error ? ": error: " : ": warning: ")
            .append(diagnostic.text)
            .append("\n");
    }
    if (result.errorCount != 0) {
        text.append("# ").append(std::to_string(result.errorCount)).append(" error(s)\n");
    }
    return text;
}

}  // namespace bw::assembler
