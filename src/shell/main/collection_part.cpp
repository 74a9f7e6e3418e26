#include "shell/main/collection_part.h"

#include <QTimer>
#include <numeric>
#include <utility>

#include "shell/dialogs/best_dialog.h"
#include "shell/dialogs/names_dialog.h"
#include "support/text.h"

namespace bw {

CollectionPart::CollectionPart(ListHost& host, GameListView& view, CDialogBase& window,
                               std::function<ConsoleMenu()> menu)
    : host_(host), view_(view), window_(window), menu_(std::move(menu)), tasks_(host) {}

std::vector<uint32_t> CollectionPart::Rows() const {
    std::vector<uint32_t> rows = view_.HighlightedRows();
    if (rows.size() > 1) return rows;
    if (const ListEditor::ShownRows shown = view_.ShownRows())
        return {shown->begin(), shown->end()};
    rows.resize(host_.Editor().Games().size());
    std::iota(rows.begin(), rows.end(), 0U);
    return rows;
}

void CollectionPart::TidyNames() {
    ShowNames(Rows(), std::nullopt);
}

void CollectionPart::NamesFromDatabase() {
    tasks_.ReadDatabase(Rows(), [this](CollectionTasks::Named named) {
        // The end of the reading is told before the dialog holds everything up.
        const auto kept = std::make_shared<CollectionTasks::Named>(std::move(named));
        QTimer::singleShot(0, &window_, [this, kept] {
            std::vector<uint32_t> rows = kept->rows;
            ShowNames(std::move(rows), std::move(*kept));
        });
    });
}

void CollectionPart::ShowNames(std::vector<uint32_t> rows,
                               std::optional<CollectionTasks::Named> named) {
    const BackgroundTasks::Turn turn = BeginListTask(host_);
    const GameList& games = host_.Editor().Games();
    if (!turn || (!rows.empty() && rows.back() >= games.size())) return;
    std::optional<DatabaseNames> database;
    if (named) {
        const std::u16string& title = named->names.description;
        database = DatabaseNames{title.empty() ? PathText(named->database.filename()) : title,
                                 std::move(named->sums), std::move(named->names)};
    }
    CNamesDialog dialog(games, std::move(rows), std::move(database), menu_(), host_.Store(),
                        host_.CurrentLanguage(), &window_);
    if (dialog.DoModal() != kEndOk) return;
    std::vector<RowName> names = dialog.Names();
    const size_t count = names.size();
    host_.Editor().Rename(std::move(names));
    host_.Tell(FormatText(LoadText(TextId::kNamesGiven, host_.CurrentLanguage()), count));
}

void CollectionPart::KeepBest() {
    const BackgroundTasks::Turn turn = BeginListTask(host_);
    if (!turn) return;
    CBestDialog dialog(host_.Editor().Games(), host_.Store(), host_.CurrentLanguage(), &window_);
    if (dialog.DoModal() == kEndOk) host_.Editor().SetChecks(dialog.Surplus(), false);
}

void CollectionPart::UncheckShown() {
    host_.Editor().CheckExactly([](const GameEntry&) { return false; }, view_.ShownRows());
}

void CollectionPart::CheckOnlyShown() {
    const GameList& games = host_.Editor().Games();
    const ListEditor::ShownRows shown = view_.ShownRows();
    std::vector<bool> wanted(games.size(), !shown);
    if (shown) {
        for (const uint32_t row : *shown)
            wanted[row] = true;
    }
    host_.Editor().CheckExactly(
        [&](const GameEntry& entry) { return wanted[static_cast<size_t>(&entry - games.data())]; });
}

}  // namespace bw
