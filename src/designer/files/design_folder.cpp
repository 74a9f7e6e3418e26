#include "designer/files/design_folder.h"

#include <string_view>
#include <utility>

#include "designer/files/design_text.h"
#include "designer/files/tile_picture.h"
#include "designer/model/chunk_file.h"
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

struct NewFile {
    std::string_view name;
    std::vector<uint8_t> bytes;
};

// All are written before the first takes its name, so that a full disk leaves the old ones.
DesignProblem ReplaceFiles(const std::filesystem::path& folder, std::span<const NewFile> files) {
    std::vector<ReplacementFile> written;
    for (const NewFile& file : files) {
        auto replacement = ReplacementFile::Begin(folder / file.name);
        if (!replacement || !replacement->Contents().WriteAt(0, file.bytes)) {
            return Problem(folder / file.name, "", ReasonOfLastFailure());
        }
        written.push_back(std::move(*replacement));
    }
    for (size_t i = 0; i < files.size(); ++i) {
        if (!written[i].Commit()) {
            return Problem(folder / files[i].name, "", ReasonOfLastFailure());
        }
    }
    return std::nullopt;
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
    std::vector<NewFile> files;
    if (!design.tiles.empty()) {
        files.push_back({kBackgroundPicture, TilePicture(design.tiles.first(kPatternTableSize))});
        files.push_back({kSpritesPicture, TilePicture(design.tiles.last(kPatternTableSize))});
    }
    files.push_back({kTextName, {design.text.begin(), design.text.end()}});
    return ReplaceFiles(folder, files);
}

}  // namespace bw
