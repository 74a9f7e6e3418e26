// The outer registers of the boards for one game. Sources: the NESdev wiki pages on the mappers
// 268 (COOLBOY, MINDKIDS) and 342 (COOLGIRL).
#pragma once

#include "builder/final_data.h"

namespace bw {

// Fill chrRegisters and prgRegisters from the item's place, sizes, mapper and flags.
void SetCoolboyRegisters(const MulticartItem& item, FinalDataRecord& record);
void SetCoolgirlRegisters(const MulticartItem& item, FinalDataRecord& record);

}  // namespace bw
