// What the commands that open a cart print, in UTF-8.
#pragma once

#include <filesystem>
#include <string>

#include "builder/carts/cart_compare.h"
#include "builder/carts/cart_contents.h"
#include "language/language.h"

namespace bw {

// One row for each game: number, name, what its header says, its places in the ROM, what isn't
// known.
std::string CartTable(const CartContents& cart, Language language);
std::string CartJson(const CartContents& cart, const std::filesystem::path& file);

// What differs, by game and by sector; nothing if nothing does.
std::string ComparisonTable(const CartComparison& comparison, const CartContents& cart,
                            Language language);
std::string ComparisonJson(const CartComparison& comparison, const CartContents& cart);

}  // namespace bw
