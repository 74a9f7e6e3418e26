#include "builder/layout/board_fit.h"

namespace bw {

BoardFit MeasureFit(const GameList&, const BuildSettings&, BoardType) {
    return {};
}

std::vector<uint32_t> RowsToLeaveOut(const GameList&, const BuildSettings&, BoardType, LeavingOut) {
    return {};
}

std::vector<uint32_t> RowsToFillUp(const GameList&, const BuildSettings&, BoardType,
                                   std::optional<std::span<const uint32_t>>) {
    return {};
}

}  // namespace bw
