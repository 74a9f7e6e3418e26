// Taking the games out of a cart as images.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "builder/carts/cart_contents.h"

namespace bw {

enum class SplitEnd : uint8_t {
    kRight,     // the data has the manifest's sums
    kWrong,     // it hasn't: the image is written all the same, and told of
    kNotKnown,  // no sums to compare with
    kCutShort,  // the file ends before the game does: not written
    kExists,    // a file of that name is there: not written
    kNotWritten,
};
struct SplitGame {
    std::filesystem::path file;
    SplitEnd end = SplitEnd::kNotKnown;
    std::optional<FileProblem> problem;  // kNotWritten
};

// Writes the games into the folder (made if need be), named "001 NAME.nes". No file is replaced;
// one that is there with just these bytes counts as written. `progress` (games done, in all) gives
// false to stop; the result then has the games up to there. A problem: the folder can't be made, or
// the cart can't be opened.
FileResult<std::vector<SplitGame>> SplitCart(
    const std::filesystem::path& cart, const CartContents& contents,
    const std::filesystem::path& folder, const std::function<bool(size_t, size_t)>& progress = {});

// What is wrong with a game, in words, its file among them; empty for kRight and kNotKnown.
std::u16string SplitProblemText(const SplitGame& game, Language language);

}  // namespace bw
