// A program that keeps one list after the other in a folder until it is killed.
#include <iostream>

#include "list/kept_list.h"
#include "support/program_words.h"
#include "support/text.h"

int main(int count, char** values) {
    const std::filesystem::path folder =
        bw::TextPath(bw::ToWide(bw::ProgramWords(count, values)[0]));
    auto kept = bw::KeptList::Begin(folder);
    std::cout << "begun" << std::flush;
    for (size_t games = 1; kept; games = games % 900 + 1) {
        bw::GameList list(games);
        for (bw::GameEntry& game : list) {
            game.name = u"killed";
            game.path = u"/nowhere/game.nes";
            game.checked = true;
        }
        kept->Keep(list, folder, 77);
    }
}
