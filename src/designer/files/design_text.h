// A design as text: one statement for each chunk of its file, in the file's order, so that the file
// can be made again byte for byte. docs/formats.md tells the statements.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "designer/model/chunk_file.h"
#include "support/diagnostic.h"

namespace bw {

// The pictures that the text of a design names.
inline constexpr std::string_view kBackgroundPicture = "background.png";
inline constexpr std::string_view kSpritesPicture = "sprites.png";

struct DesignText {
    std::string text;
    // Both pattern tables, if the text has the statement that names the two pictures. Points into
    // the chunks' file.
    std::span<const uint8_t> tiles;
};

// The chunks are those of a design that ReadDesign takes.
DesignText DescribeDesign(std::span<const ChunkView> chunks);

// Reads the picture `name`, a plain file name, into a pattern table of 4096 bytes, or says what is
// wrong; the text names the picture.
using PictureReader =
    std::function<std::optional<std::string>(const std::string& name, std::span<uint8_t> table)>;

// Makes the design's file from its text. A text with a problem leaves `bytes` as they were; the
// problem's place has the line and no file.
std::optional<Diagnostic> ParseDesign(std::string_view text, const PictureReader& readPicture,
                                      std::vector<uint8_t>& bytes);

}  // namespace bw
