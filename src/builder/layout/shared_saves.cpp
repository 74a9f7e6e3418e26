#include "builder/layout/shared_saves.h"

namespace bw {

std::vector<uint32_t> RowsSharingSaves(const GameList&, BoardType) {
    return {};
}

std::u16string SharedSavesText(const GameList&, const std::vector<uint32_t>&, Language) {
    return {};
}

}  // namespace bw
