// The boards' numbers in a NES 2.0 header. Source: the NESdev wiki's list of mappers.
#pragma once

#include <cstdint>

#include "rom/board_tables.h"

namespace bw {

struct BoardMapper {
    uint32_t mapper;
    uint8_t submapper;
    bool operator==(const BoardMapper&) const = default;
};

constexpr BoardMapper MapperOf(BoardType board) {
    switch (board) {
        case BoardType::kMindkids:
            return {268, 1};
        case BoardType::kCoolgirl:
            return {342, 0};
        default:
            return {268, 0};
    }
}

}  // namespace bw
