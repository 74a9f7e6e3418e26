// Games whose saves the board keeps in one place.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "console/cart_check.h"

namespace bw {

// The number and name of each other game on the cart with a battery; empty if this one has none.
std::vector<std::u16string> SharesItsSave(const CheckSubject& subject, uint32_t index);

// The name for people.
std::u16string GameName(const CheckSubject& subject, uint32_t index);

}  // namespace bw
