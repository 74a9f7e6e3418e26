#include "shell/tasks/find_commands.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "support/text.h"

namespace bw {
namespace {

// One command on its way. The task's thread alone uses it until it ends.
struct Search {
    FindRecord record;
    Language language;
    std::vector<SearchRow> rows;
    size_t findRow;
    size_t findNextRow;

    std::vector<RowName> names = {};         // the new ones
    std::optional<size_t> found = {};        // the hit, if one was looked for
    std::optional<HitCount> hits = {};       // where the hit stands among all
    std::optional<std::u16string> end = {};  // why nothing was done
    bool badPattern = false;
};

using SearchStep = void (*)(Search&, const NamePattern&, TaskControl&);
using SearchFinish = void (*)(Search&, ListHost&);

class RowProgress final : public SearchProgress {
  public:
    RowProgress(TaskControl& control, const Search& search)
        : control_(control), what_(Words(search)) {
        Row(0, search.rows.size());
    }
    void Row(size_t done, size_t total) override { control_.Progress({what_, done, total}); }

  private:
    static std::u16string Words(const Search& search) {
        return LoadText(TextId::kSearchingNames, search.language);
    }
    TaskControl& control_;
    std::u16string what_;
};

// An expression that is slow on other rows can be stopped here and has found its row all the same.
void FindAmong(std::span<const SearchRow> rows, Search& search, const NamePattern& pattern,
               TaskControl& control) {
    const bool onlyChecked = search.record.onlyChecked;
    search.found = FindNext(rows, pattern, search.findNextRow, onlyChecked, control.Stop());
    if (!search.found) return;
    try {
        search.hits = CountHits(rows, pattern, *search.found, onlyChecked, control.Stop());
    } catch (const SearchStopped&) {  // the hit counts without a number
    }
}

void FindHit(Search& search, const NamePattern& pattern, TaskControl& control) {
    const RowProgress progress(control, search);
    FindAmong(search.rows, search, pattern, control);
}

void ReplaceInFindRow(Search& search, const NamePattern& pattern, TaskControl& control) {
    const RowProgress progress(control, search);
    std::vector<SearchRow> rows = search.rows;
    if (search.findRow < rows.size()) {
        std::u16string& name = rows[search.findRow].name;
        if (auto replaced = pattern.Replaced(name, control.Stop())) {
            search.names.push_back({search.findRow, *replaced});
            name = std::move(*replaced);  // what the next search looks at
        }
    }
    FindAmong(rows, search, pattern, control);
}

void ReplaceInAll(Search& search, const NamePattern& pattern, TaskControl& control) {
    RowProgress progress(control, search);
    search.names =
        ReplaceAll(search.rows, pattern, search.record.onlyChecked, control.Stop(), progress);
}

void RunSearch(Search& search, SearchStep step, TaskControl& control) {
    std::unique_ptr<NamePattern> pattern;
    if (auto problem = NamePattern::Compile(search.record, search.language, pattern)) {
        search.badPattern = true;
        search.end = std::move(problem->text);
        return;
    }
    try {
        step(search, *pattern, control);
    } catch (SearchStopped& stopped) {
        search.end = std::move(stopped.reason);
        if (!search.end->empty()) return;
        search.end = LoadText(TextId::kSearchStopped, search.language);
    }
}

// Not every command waits for the end of a search: rows may have been cleared, sorted, renamed.
bool SameNames(const GameList& games, const std::vector<SearchRow>& rows) {
    return std::ranges::equal(games, rows, {}, &GameEntry::name, &SearchRow::name);
}

void GiveNames(Search& search, ListHost& host) {
    if (!search.names.empty()) host.Editor().Rename(std::move(search.names));
}

void FinishReplacing(Search& search, ListHost& host) {
    const size_t count = search.names.size();
    GiveNames(search, host);
    host.ShowSearchOutcome(
        count == 0 ? LoadText(TextId::kNothingFound, search.language)
                   : FormatText(LoadText(TextId::kNamesReplaced, search.language), count));
}

void FinishFinding(Search& search, ListHost& host) {
    GiveNames(search, host);
    ListEditor& editor = host.Editor();
    editor.SetFindNextRow(search.found ? *search.found + 1 : 0);
    if (search.found) editor.SetFindRow(*search.found);
    if (search.hits) {
        host.ShowSearchOutcome(FormatText(LoadText(TextId::kHitOfHits, search.language),
                                          search.hits->upToRow, search.hits->all));
    } else if (!search.found) {
        host.ShowSearchOutcome(LoadText(TextId::kNothingFound, search.language));
    }
    host.ShowFound(search.found.has_value());
}

void Finish(Search& search, SearchFinish finish, ListHost& host) {
    if (search.badPattern) {
        host.ShowSearchOutcome(*search.end);
    } else if (search.end) {
        host.Tell(*search.end);
    } else if (SameNames(host.Editor().Games(), search.rows)) {
        finish(search, host);
    } else {
        host.Tell(LoadText(TextId::kListChangedMeanwhile, search.language));
    }
}

// Nothing but `finish` touches the list, on the window's thread and at once.
void Start(ListHost& host, const FindRecord& record, SearchStep step, SearchFinish finish) {
    BackgroundTasks::Turn turn = BeginListTask(host);
    if (!turn) return;
    host.Tell({});
    host.ShowSearchOutcome({});
    const ListEditor& editor = host.Editor();
    const auto search =
        std::make_shared<Search>(Search{record, host.CurrentLanguage(), SearchRows(editor.Games()),
                                        editor.FindRow(), editor.FindNextRow()});
    const auto done = std::make_shared<bool>(false);
    host.Tasks().StartListTask(
        std::move(turn),
        [search, done, step](TaskControl& control) {
            RunSearch(*search, step, control);
            *done = true;
        },
        [search, done, finish, &host] {
            if (*done) Finish(*search, finish, host);
        });
}

}  // namespace

void FindCommands::FindNext(const FindRecord& record) {
    Start(host_, record, FindHit, FinishFinding);
}

void FindCommands::Replace(const FindRecord& record) {
    Start(host_, record, ReplaceInFindRow, FinishFinding);
}

void FindCommands::ReplaceAll(const FindRecord& record) {
    Start(host_, record, ReplaceInAll, FinishReplacing);
}

}  // namespace bw
