// What the window says of a cart that was opened.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

#include "builder/carts/cart_compare.h"
#include "builder/carts/cart_contents.h"
#include "builder/carts/cart_split.h"
#include "language/language.h"

namespace bw {

// Board, format, size, games and menu, and whether the cart tells all of its games.
std::u16string CartFactsText(const CartContents& cart, Language language);

// Line by line, the sum first: what differs by game and by sector, and what is missing or over.
std::u16string ComparisonText(const CartContents& cart, const CartComparison& comparison,
                              const std::filesystem::path& dump, Language language);

// Line by line, the sum first: how many of the cart's games came out, and what is wrong with which.
std::u16string SplitText(const std::vector<SplitGame>& split, size_t games,
                         const std::filesystem::path& folder, Language language);
// There is an image of the game now.
bool IsTakenOut(const SplitGame& game);

// Rising numbers with runs drawn together, such as "1-3, 7".
std::u16string NumberRuns(std::span<const uint32_t> numbers);

}  // namespace bw
