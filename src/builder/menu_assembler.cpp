#include "builder/menu_assembler.h"

#include <chrono>

#include "builder/assembler_call.h"
#include "support/process.h"
#include "support/text.h"

namespace bw {
namespace {

using namespace std::chrono_literals;
constexpr auto kSilence = 3000ms;
constexpr auto kEnding = 500ms;  // from the end of its output to its own end

std::u16string FailureText(int status, const std::filesystem::path& assembler, Language language) {
    if (status == Process::kStillRunning) {
        return FormatText(LoadText(TextId::kAssemblerSilent, language), PathText(assembler));
    }
    return FormatText(LoadText(TextId::kAssemblerFailed, language), PathText(assembler), status);
}

}  // namespace

AssemblyOutcome RunAssembler(const std::filesystem::path& assembler,
                             const std::filesystem::path& source,
                             const std::filesystem::path& folder, Language language) {
    Process process;
    const AssemblerCall call = CallOf(source, folder);
    if (!process.Start(assembler, call.words, call.folder)) {
        return {false,
                FormatText(LoadText(TextId::kAssemblerNotStarted, language), PathText(assembler))};
    }
    AssemblyOutcome outcome;
    outcome.output = ToWide(process.ReadOutput(kSilence));
    const int status = process.ExitStatus(kEnding);
    outcome.done = status == 0;
    if (!outcome.done && outcome.output.empty()) {
        outcome.output = FailureText(status, assembler, language);
    }
    return outcome;
}

}  // namespace bw
