// What packaging/publish needs of the program: writes the two JSON files to the standard output,
// and reads a release as the program would. Exit status: 0 good, 1 faults, 2 wrong usage.
#include <iostream>

#include <CLI/CLI.hpp>

#include "language/problem_text.h"
#include "release/release_check.h"
#include "release/release_json.h"
#include "support/files.h"
#include "support/text.h"

namespace {

constexpr uint64_t kLargestText = 1u << 16;  // bytes

// Options that name files with texts.
struct TextFiles {
    std::string english;
    std::string chinese;
};

void AddTextFiles(CLI::App& command, TextFiles& files) {
    command.add_option("--text-en", files.english, "File with the text in English");
    command.add_option("--text-zh", files.chinese, "File with the text in Chinese");
}

// An empty name is an empty text.
std::string ReadText(const std::string& name) {
    if (name.empty()) return {};
    const auto bytes = bw::ReadFile(name, kLargestText);
    if (!bytes)
        throw CLI::ValidationError(
            bw::ToUtf8(bw::ProblemText(bytes.Problem(), bw::Language::kEnglish)));
    std::string text(bytes->begin(), bytes->end());
    if (bw::ToUtf8(bw::ToWide(text)) != text) throw CLI::ValidationError(name + " isn't UTF-8");
    while (text.ends_with('\n'))
        text.pop_back();
    return text;
}

bw::ReleaseTexts ReadTexts(const TextFiles& files) {
    return {.english = ReadText(files.english), .chinese = ReadText(files.chinese)};
}

int Print(const std::string& json) {
    return std::cout << json << std::flush ? 0 : 1;
}

int Print(const bw::ReleaseReport& report) {
    for (const std::string& line : report.found)
        std::cout << line << "\n";
    for (const std::string& fault : report.faults)
        std::cerr << "error: " << fault << "\n";
    return report.faults.empty() ? 0 : 1;
}

}  // namespace

int main(int count, char** words) {
    CLI::App program("Writes and checks what a host of updates has");
    program.require_subcommand(1);
    TextFiles files;

    bw::ReleaseUpdate update;
    CLI::App& updateJson = *program.add_subcommand("update-json", "Write update.json");
    updateJson.add_option("--version", update.version)->required();
    updateJson.add_option("--url", update.url)->required();
    updateJson.add_flag("--force", update.force, "Fetch it without asking");
    AddTextFiles(updateJson, files);

    bw::ReleaseNotice notice;
    CLI::App& notifyJson = *program.add_subcommand("notify-json", "Write notify.json");
    notifyJson.add_option("--id", notice.id)->required();
    notifyJson.add_flag("--restart", notice.atEachStart, "Show it at each start");
    notifyJson.add_option("--users", notice.users, "Audiences, a bit each; 1 without this");
    AddTextFiles(notifyJson, files);

    std::string folder;
    bw::Deployment deployment;
    deployment.version = "0.0.0.0";
    CLI::App& check = *program.add_subcommand("check", "Read a release as the program would");
    check.add_option("folder", folder, "What lies at /raw/master/Release")->required();
    check.add_option("--host", deployment.host)->required();
    check.add_option("--key", deployment.key, "Public key")->required();
    check.add_flag("--plain-http", deployment.plainHttp, "For programs built to take it over http");

    try {
        program.parse(count, words);
        const bw::ReleaseTexts texts = ReadTexts(files);
        update.texts = notice.texts = texts;
        if (updateJson.parsed()) return Print(bw::UpdateJson(update));
        if (notifyJson.parsed()) return Print(bw::NoticeJson(notice));
        return Print(bw::CheckRelease(folder, deployment));
    } catch (const CLI::ParseError& error) {
        return program.exit(error) == 0 ? 0 : 2;
    }
}
