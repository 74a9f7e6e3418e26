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

// Files below the folder that the command line names.
class FolderSource : public assembler::SourceProvider {
  public:
    explicit FolderSource(const std::string& folder) : folder_(folder) {}
    assembler::SourceBytes Read(std::string_view path, size_t limit) override {
        return disk_.Read(FromFolder(folder_, path), limit);
    }

  private:
    const std::string& folder_;
    assembler::DiskSourceProvider disk_;
};

// All messages leave in one write at the end: a reader that takes what the first read gives must
// get the whole.
int Run(const CommandLine& line) {
    FolderSource disk(line.folder);
    const assembler::AssemblyOptions options{!line.listing.empty(), !line.symbols.empty()};
    const assembler::AssemblyResult result = assembler::Assemble(line.source, disk, options);
    std::string messages = assembler::FormatDiagnostics(result);
    bool done = result.Ok();
    const auto write = [&](const std::string& name, const auto& bytes) {
        return WriteOutput(FromFolder(line.folder, name), bytes.data(), bytes.size(), messages);
    };
    if (done) done = write(line.output, result.rom);
    if (done && options.symbols) done = write(line.symbols, result.symbols);
    if (options.listing) done = write(line.listing, result.listing) && done;
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
