// Where the saves lie of what is played.
#pragma once

#include <filesystem>

namespace bw {

// The file for the battery's memory of this ROM, below the user's data folder. A game has one by
// its contents, wherever its file lies and whatever it is called; a cart has one by its place, so
// that building it again keeps what its battery holds, as burning it again would. Reads the file:
// not for the window's thread.
std::filesystem::path SaveFileOf(const std::filesystem::path& rom);

}  // namespace bw
