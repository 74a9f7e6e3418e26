#include "console/shared_saves.h"

#include "support/text.h"

namespace bw {

std::u16string GameName(const CheckSubject& subject, uint32_t index) {
    return index < subject.names.size() ? subject.names[index] : subject.tables.games[index].name;
}

std::vector<std::u16string> SharesItsSave(const CheckSubject& subject, uint32_t index) {
    std::vector<std::u16string> others;
    const std::vector<CartGame>& games = subject.tables.games;
    for (uint32_t other = 0; games[index].battery && other < games.size(); ++other) {
        if (other != index && games[other].battery) {
            others.push_back(FormatText(u"%d %s", other + 1, GameName(subject, other)));
        }
    }
    return others;
}

}  // namespace bw
