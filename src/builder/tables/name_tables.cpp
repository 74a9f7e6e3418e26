#include "builder/tables/name_tables.h"

#include <algorithm>
#include <optional>
#include <regex>
#include <vector>

#include "builder/tables/generated_text.h"
#include "list/console_name.h"
#include "support/files.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr uint32_t kBytesPerName = 3;  // length byte and pointer
constexpr unsigned char kTwoBytes =
    128;  // the one code of a console name that UTF-8 has two bytes for
constexpr TableNames kNames{"game_name", "game_name_begin", "game_name_list"};
constexpr TableFiles kFiles{"game_list_", "game_list_bank.asm", "game_list_bank_index", 16};

// ConsoleName keeps code 128 as one byte; in the file it is UTF-8.
std::string FileText(const std::string& name) {
    std::string text;
    for (const char c : name) {
        if (static_cast<unsigned char>(c) == kTwoBytes) {
            text += "\xC2\x80";
        } else {
            text += c;
        }
    }
    return text;
}

std::string BankText(const TableBanks::Bank& bank, std::span<const std::string> names) {
    std::string text = TableBankHeadText(kNames, bank);
    for (uint32_t game = bank.first; game < bank.first + bank.count; ++game) {
        AppendTableLabel(text, kNames.label, game);
        if (names[game].empty()) {
            text += " .DB $00";
        } else {
            AppendCountedString(text, FileText(names[game]));
        }
        text += kLineEnd;
    }
    text += kLineEnd;
    return text;
}

// Cuts the names to the screen and deals them to banks.
TableBanks PackNames(std::vector<std::string>& names, uint32_t nameColumn) {
    const uint32_t room = ConsoleRoom(nameColumn);
    TableBankPacker packer;
    for (std::string& name : names) {
        const auto length = static_cast<uint32_t>(name.size());
        const uint32_t cut = std::min(length, room);
        if (packer.Overflows(cut + kBytesPerName)) {
            packer.Add(length + kBytesPerName);
        } else {
            packer.Add(cut + kBytesPerName);
            name.resize(cut);
        }
    }
    return packer.Take();
}

}  // namespace

FileResult<> GenerateNameTables(std::span<const std::u16string> names,
                                const std::filesystem::path& folder,
                                const NameTableOptions& options, uint32_t& bankCount) {
    const auto invalid = [&] {
        return ProblemOf(folder / kFiles.indexFile, std::errc::invalid_argument);
    };
    if (names.empty()) return invalid();
    std::optional<std::regex> removal;
    if (!options.removalPattern.empty()) {
        try {
            removal.emplace(options.removalPattern, std::regex::ECMAScript);
        } catch (const std::regex_error&) {
            return invalid();
        }
    }
    std::vector<std::string> texts;
    texts.reserve(names.size());
    for (const std::u16string& name : names) {
        texts.push_back(ConsoleName(name));
        if (removal) texts.back() = std::regex_replace(texts.back(), *removal, "");
    }
    const TableBanks banks = PackNames(texts, options.nameColumn);
    bankCount = static_cast<uint32_t>(banks.banks.size());

    FileResult<> tables = WriteTable(
        kFiles, banks, [&](const TableBanks::Bank& bank) { return BankText(bank, texts); }, folder,
        options.files);
    std::string title;
    AppendCountedString(title, ToUtf8(MulticartTitle(names.size())));
    tables.Join(WriteScratchFile(folder / "game_title.asm", title));
    return tables;
}

}  // namespace bw
