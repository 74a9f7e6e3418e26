// A clip as bytes, for another running copy of the program.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "designer/clipboard/design_clip.h"

namespace bw {

// A run of chunks as a design file is one; docs/formats.md tells them.
std::vector<uint8_t> StoredClip(const DesignClip& clip);

// Nothing where the bytes are no clip, one of a later version, damaged, or more than a screen and
// two tables take; items off the screen and those below others are passed over.
std::optional<DesignClip> ReadClip(std::span<const uint8_t> bytes);

}  // namespace bw
