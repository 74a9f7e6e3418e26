#include "builder/build_base.h"

#include <algorithm>
#include <span>
#include <utility>

#include "builder/layout/image_warnings.h"
#include "builder/layout/shared_saves.h"
#include "builder/resources.h"
#include "builder/tables/menu_tables.h"
#include "language/problem_text.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr size_t kReadStep = 32;  // games between two steps of the progress

}  // namespace

void BuildBase::ShowError(std::u16string_view text) const {
    user_.Message(text, Text(TextId::kErrorTitle), MessageKind::kError);
}

void BuildBase::ShowFileProblem(const FileProblem& problem) const {
    ShowError(Text(TextId::kOperationFailed) + u"\r\n" + ProblemText(problem, language_));
}

bool BuildBase::Passes(const std::optional<Diagnostic>& fault) const {
    if (fault) ShowError(fault->text);
    return !fault;
}

bool BuildBase::Passes(const std::vector<Diagnostic>& faults) const {
    std::u16string lines;
    for (const Diagnostic& fault : faults)
        lines += fault.text + u"\r\n";
    if (!faults.empty()) ShowError(lines);
    return faults.empty();
}

void BuildBase::AskToShow(const std::filesystem::path& path) const {
    if (user_.AskYesNo(Text(TextId::kDoneOpenFolder), Text(TextId::kTipsTitle))) {
        user_.ShowInFileManager(path);
    }
}

bool BuildBase::ReadGames(NameRules rules) {
    names_ = DisplayNames(context_.games, context_.settings.Numbers(), rules);
    std::vector<std::filesystem::path> paths;
    std::vector<uint32_t> rows;
    paths.reserve(names_.size());
    for (uint32_t row = 0; row < context_.games.size(); ++row) {
        const GameEntry& entry = context_.games[row];
        if (!entry.checked) continue;
        paths.push_back(TextPath(entry.path));
        rows.push_back(row + 1);
    }
    if (context_.menuOnly) {
        items_.reserve(rows.size());
        for (uint32_t index = 0; index < rows.size(); ++index) {
            MulticartItem& item = items_.emplace_back();
            item.index = index;
            item.row = rows[index];
        }
        return true;
    }
    // All at once: an archive is read but once, however its games are spread over the list.
    bool stopped = false;
    items_ = LoadMulticartItems(paths, [&](size_t done, size_t total) {
        if (done % kReadStep != 0) return true;
        user_.Progress(BuildStage::kReadGames, done, total, names_[done]);
        stopped = user_.Cancelled();
        return !stopped;
    });
    for (uint32_t index = 0; index < items_.size(); ++index) {
        items_[index].index = index;
        items_[index].row = rows[index];
    }
    return !stopped;
}

bool BuildBase::PrepareGames(BoardType board) {
    if (context_.menuOnly) return true;
    RoundChrUnits(items_);
    unfit_ = CheckGames(items_, board, language_);
    if (!Passes(unfit_)) return false;
    if (board != BoardType::kCoolgirl) ApplyPrgMinimum(items_);
    return true;
}

bool BuildBase::AcceptsIncomplete(std::span<const MulticartItem> items) const {
    bool accepted = true;
    for (const Diagnostic& warning : FindIncompleteImages(items, language_))
        accepted = user_.Warn(warning.text) && accepted;
    return accepted;
}

void BuildBase::TellOfSaves(BoardType board) const {
    if (context_.menuOnly) return;
    const std::vector<uint32_t> rows = RowsSharingSaves(context_.games, board);
    if (!rows.empty()) user_.Note(SharedSavesText(context_.games, rows, language_));
}

bool BuildBase::CountBanks(BoardType board, uint32_t menuPrgUnits,
                           const std::filesystem::path& folder) {
    banks_ = CountTableBanks(names_, board, NameColumn(context_.settings, context_.design), folder);
    return Passes(CheckTableBanks(banks_, menuPrgUnits, language_));
}

void BuildBase::LoadDesign() const {
    LoadDesignData(context_.design, context_.store, DefaultTileSet());
}

}  // namespace bw
