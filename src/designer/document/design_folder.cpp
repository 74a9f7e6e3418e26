#include "designer/document/design_folder.h"

#include <string_view>

#include "designer/document/chunk_file.h"
#include "designer/document/design_text.h"
#include "designer/document/tile_picture.h"
#include "support/files.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr std::string_view kTextName = "design.txt";
constexpr uint64_t kLargestText = kLargestDesignFile * 4;  // three characters a byte, at most
constexpr uint64_t kLargestPicture = uint64_t{1} << 24;

std::string ReasonOfLastFailure() {
    const std::string reason = LastFileProblem({}).reason;
    return reason.empty() ? "can't be read or written" : reason;
}

std::u16string Problem(const std::filesystem::path& file, std::string_view place,
                       std::string_view reason) {
    return PathText(file) + ToWide(place) + u": " + ToWide(reason);
}

std::optional<std::string> ReadPicture(const std::filesystem::path& file,
                                       std::span<uint8_t> table) {
    const auto png = ReadFile(file, kLargestPicture);
    const std::string name = file.filename().string();
    if (!png) return name + ": " + ReasonOfLastFailure();
    const auto problem = ReadTilePicture(*png, table);
    return problem ? std::optional(name + ": " + *problem) : std::nullopt;
}

}  // namespace

DesignProblem PackDesign(const std::filesystem::path& folder, std::vector<uint8_t>& bytes) {
    const std::filesystem::path textFile = folder / kTextName;
    const auto text = ReadFile(textFile, kLargestText);
    if (!text) return Problem(textFile, "", ReasonOfLastFailure());
    const auto problem = ParseDesign(
        {reinterpret_cast<const char*>(text->data()), text->size()},
        [&](const std::string& name, std::span<uint8_t> table) {
            return ReadPicture(folder / TextPath(ToWide(name)), table);
        },
        bytes);
    if (!problem) return std::nullopt;
    return Problem(textFile, ':' + std::to_string(problem->line), problem->text);
}

DesignProblem UnpackDesign(const std::filesystem::path& file, const std::filesystem::path& folder,
                           Language language) {
    std::vector<uint8_t> bytes;
    DesignDocument unused;
    if (auto problem = LoadDesign(file, unused, bytes, language)) return problem;
    const ChunkList list = ReadChunks(bytes);
    const DesignText design = DescribeDesign(list.chunks);
    if (!MakeFolders(folder)) return Problem(folder, "", ReasonOfLastFailure());
    const auto write = [&](std::string_view name, const auto& contents) -> DesignProblem {
        if (WriteFile(folder / name, contents)) return std::nullopt;
        return Problem(folder / name, "", ReasonOfLastFailure());
    };
    if (!design.tiles.empty()) {
        const auto background = design.tiles.first(kPatternTableSize);
        const auto sprites = design.tiles.last(kPatternTableSize);
        if (auto problem = write(kBackgroundPicture, TilePicture(background))) return problem;
        if (auto problem = write(kSpritesPicture, TilePicture(sprites))) return problem;
    }
    return write(kTextName, design.text);
}

}  // namespace bw
