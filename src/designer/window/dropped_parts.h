// What a file that is dropped on the designer's window can be loaded as.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

#include "designer/files/design_parts.h"
#include "designer/gestures/designer_layout.h"

namespace bw {

// A file by its name, of `size` bytes, dropped on a view or beside them all: the parts to choose
// from, the likeliest first; a single one needs no question. None: the window can't load it. What
// the view's own buttons load goes before all else that has the extension.
std::vector<DesignPart> DroppedParts(const std::filesystem::path& file, uint64_t size,
                                     std::optional<Control> view);

}  // namespace bw
