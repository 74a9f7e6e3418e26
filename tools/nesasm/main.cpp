#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "assembler/assembler.h"
#include "nesasm/command_line.h"
#include "nesasm/output_file.h"
#include "support/program_words.h"

namespace bw::nesasm {
namespace {

constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

// Without a buffer the text leaves in one write.
void Print(std::FILE* stream, const std::string& text) {
    std::setvbuf(stream, nullptr, _IONBF, 0);
    std::fwrite(text.data(), 1, text.size(), stream);
}

bool WriteOutput(const std::string& path, const void* bytes, size_t size, std::string& messages) {
    if (ReplaceFile(path, bytes, size)) return true;
    messages += path + ": error: Can not write file!\n# 1 error(s)\n";
    return false;
}

// All messages leave in one write at the end: a reader that takes what the first read gives must
// get the whole.
int Run(const CommandLine& line) {
    assembler::DiskSourceProvider disk;
    const assembler::AssemblyOptions options{!line.listing.empty(), !line.symbols.empty()};
    const assembler::AssemblyResult result = assembler::Assemble(line.source, disk, options);
    std::string messages = assembler::FormatDiagnostics(result);
    bool done = result.Ok();
    if (done) done = WriteOutput(line.output, result.rom.data(), result.rom.size(), messages);
    if (done && options.symbols) {
        done = WriteOutput(line.symbols, result.symbols.data(), result.symbols.size(), messages);
    }
    if (options.listing) {
        const std::string& text = result.listing;
        done = WriteOutput(line.listing, text.data(), text.size(), messages) && done;
    }
    if (!messages.empty()) Print(stdout, messages);
    return done ? kDone : kFailed;
}

int Main(const std::vector<std::string_view>& words) {
    const CommandLine line = ParseCommandLine(words);
    switch (line.action) {
        case Action::Assemble:
            return Run(line);
        case Action::Help:
            Print(stdout, HelpText());
            return kDone;
        case Action::Version:
            Print(stdout, "nesasm " BANKWEAVER_VERSION "\n");
            return kDone;
        case Action::UsageError:
            break;
    }
    Print(stderr, "nesasm: " + line.error + "\nTry nesasm --help.\n");
    return kWrongUsage;
}

}  // namespace
}  // namespace bw::nesasm

int main(int argc, char** argv) {
    const std::vector<std::string> words = bw::ProgramWords(argc, argv);
    return bw::nesasm::Main(std::vector<std::string_view>(words.begin(), words.end()));
}
