// Finding and replacing text in the names of a list, literally or by regular expression.
#pragma once

#include <atomic>
#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "language/language.h"
#include "list/list_editor.h"

namespace bw {

struct FindRecord {
    std::u16string find;
    std::u16string replace;
    bool regex = false;
    bool onlyChecked = false;
};

// What a search reads of a row: a snapshot, since searches run beside the window.
struct SearchRow {
    std::u16string name;
    bool checked = false;
};
std::vector<SearchRow> SearchRows(const GameList& games);

// Set from another thread to end a search; an expression can take longer than a life.
using StopFlag = std::atomic<bool>;

// Thrown out of a search that was stopped, or whose expression needs more stack than there is.
struct SearchStopped {
    std::u16string reason;  // empty if the user stopped it
};

// A compiled search. Compiling is done once for each command.
class NamePattern {
  public:
    // Words for the user if the pattern can't be compiled: what is wrong and where, if known.
    struct Problem {
        std::u16string text;
    };
    static std::optional<Problem> Compile(const FindRecord& record, Language language,
                                          std::unique_ptr<NamePattern>& out);
    virtual ~NamePattern() = default;

    virtual bool Matches(std::u16string_view name, const StopFlag& stop) const = 0;
    // The name with every match replaced; nothing if there is no match.
    virtual std::optional<std::u16string> Replaced(std::u16string_view name,
                                                   const StopFlag& stop) const = 0;
};

// Told every so many rows, from the searching thread.
class SearchProgress {
  public:
    virtual ~SearchProgress() = default;
    virtual void Row(size_t done, size_t total) = 0;
};

// The first hit from `start` to the end, then, if there was none, from the top on.
std::optional<size_t> FindNext(std::span<const SearchRow> rows, const NamePattern& pattern,
                               size_t start, bool onlyChecked, const StopFlag& stop);

// The hits of all rows, and those up to `row`, which is one of them.
struct HitCount {
    size_t all = 0;
    size_t upToRow = 0;
};
HitCount CountHits(std::span<const SearchRow> rows, const NamePattern& pattern, size_t row,
                   bool onlyChecked, const StopFlag& stop);

// The new names of all rows that get another one, in order.
std::vector<RowName> ReplaceAll(std::span<const SearchRow> rows, const NamePattern& pattern,
                                bool onlyChecked, const StopFlag& stop, SearchProgress& progress);

}  // namespace bw
