#include "builder/layout/kept_layout.h"

#include <utility>

namespace bw {

LayoutResult AllocateKeeping(MulticartItem menu, std::vector<MulticartItem> games, BoardType board,
                             std::span<const KeptPlace>, uint64_t* keptBytes) {
    if (keptBytes != nullptr) *keptBytes = 0;
    return Allocate(std::move(menu), std::move(games), board);
}

}  // namespace bw
