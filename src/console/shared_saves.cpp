#include "console/shared_saves.h"

#include "builder/layout/shared_saves.h"
#include "support/text.h"

namespace bw {

std::u16string GameName(const CheckSubject& subject, uint32_t index) {
    return index < subject.names.size() ? subject.names[index] : subject.tables.games[index].name;
}

std::vector<std::u16string> SharesItsSave(const CheckSubject& subject, uint32_t index) {
    std::vector<std::u16string> others;
    const std::vector<CartGame>& games = subject.tables.games;
    std::vector<bool> batteries;
    for (const CartGame& game : games)
        batteries.push_back(game.battery);
    if (!batteries[index]) return others;
    for (const uint32_t other : SharingSaves(batteries)) {
        if (other != index) {
            others.push_back(FormatText(u"%d %s", other + 1, GameName(subject, other)));
        }
    }
    return others;
}

}  // namespace bw
