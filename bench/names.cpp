// Replacing in the names of a full list, 20,000 rows, against a bare loop of std::regex_replace
// with std::wregex over the same names as the wide strings that it takes.
#include <cstdlib>
#include <regex>
#include <string>
#include <vector>

#include "full_list.h"
#include "list/search/name_search.h"
#include "measure.h"

namespace {

constexpr int kRounds = 11;

struct NoProgress : bw::SearchProgress {
    void Row(size_t, size_t) override {}
};

// A third of the names get a number in front.
bw::GameList NumberedList() {
    bw::GameList games = bench::FullList();
    for (size_t i = 0; i < games.size(); i += 3)
        games[i].name = bw::ToWide(std::to_string(i) + ".") + games[i].name;
    return games;
}

void Compare(const bw::GameList& games, const char* pattern, const char* replacement) {
    std::vector<std::wstring> wide;
    for (const bw::GameEntry& entry : games)
        wide.emplace_back(entry.name.begin(), entry.name.end());
    const bw::FindRecord record{bw::ToWide(pattern), bw::ToWide(replacement), true, false};
    const std::wstring widePattern(record.find.begin(), record.find.end());
    const std::wstring wideReplacement(record.replace.begin(), record.replace.end());

    size_t changed = 0;
    const auto ours = [&] {
        const bw::StopFlag stop = false;
        NoProgress progress;
        std::unique_ptr<bw::NamePattern> compiled;
        if (bw::NamePattern::Compile(record, bw::Language::kEnglish, compiled)) std::abort();
        changed = bw::ReplaceAll(bw::SearchRows(games), *compiled, false, stop, progress).size();
    };
    size_t changedBare = 0;
    const auto bare = [&] {
        changedBare = 0;
        const std::wregex compiled(widePattern);
        for (const std::wstring& name : wide)
            changedBare += std::regex_replace(name, compiled, wideReplacement) != name;
    };
    bench::Report(std::string("replace all by ") + pattern,
                  bench::InTurn(kRounds, ours, bare, [] {}));
    if (changed != changedBare || changed == 0) std::abort();
}

}  // namespace

int main() {
    const bw::GameList games = NumberedList();
    Compare(games, "^\\d+\\.", "");
    Compare(games, "(\\w+) (\\d+)$", "$2 $1");
    Compare(games, "[aeiou]", "_");
    return 0;
}
