#include "designer/files/design_folder.h"

#include <string_view>
#include <utility>

#include "designer/files/design_text.h"
#include "designer/files/tile_picture.h"
#include "designer/model/chunk_file.h"
#include "language/problem_text.h"
#include "support/files.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr std::string_view kTextName = "design.txt";
constexpr uint64_t kLargestText = kLargestDesignFile * 4;  // three characters a byte, at most
constexpr uint64_t kLargestPicture = uint64_t{1} << 24;

// The picture is named without its folder: the problem's place is the text beside it.
std::optional<std::string> ReadPicture(const std::filesystem::path& file, std::span<uint8_t> table,
                                       Language language) {
    const auto png = ReadFile(file, kLargestPicture);
    const std::string name = ToUtf8(PathText(file.filename())) + ": ";
    if (!png) return name + ToUtf8(FileDiagnostic(png.Problem(), language).text);
    const auto problem = ReadTilePicture(*png, table);
    return problem ? std::optional(name + *problem) : std::nullopt;
}

struct NewFile {
    std::string_view name;
    std::vector<uint8_t> bytes;
};

// All are written before the first takes its name, so that a full disk leaves the old ones.
FileResult<> ReplaceFiles(const std::filesystem::path& folder, std::span<const NewFile> files) {
    std::vector<ReplacementFile> replacements;
    for (const NewFile& file : files) {
        auto replacement = ReplacementFile::Begin(folder / file.name);
        if (!replacement) return replacement.Problem();
        FileResult<> written = replacement->Contents().WriteAt(0, file.bytes);
        if (!written) return written;
        replacements.push_back(std::move(*replacement));
    }
    for (ReplacementFile& replacement : replacements) {
        if (FileResult<> done = replacement.Commit(); !done) return done;
    }
    return {};
}

}  // namespace

DesignProblem PackDesign(const std::filesystem::path& folder, std::vector<uint8_t>& bytes,
                         Language language) {
    const std::filesystem::path textFile = folder / kTextName;
    const auto text = ReadFile(textFile, kLargestText);
    if (!text) return FileDiagnostic(text.Problem(), language);
    DesignProblem problem = ParseDesign(
        {reinterpret_cast<const char*>(text->data()), text->size()},
        [&](const std::string& name, std::span<uint8_t> table) {
            return ReadPicture(folder / TextPath(ToWide(name)), table, language);
        },
        bytes);
    if (problem) problem->place.file = PathText(textFile);
    return problem;
}

DesignProblem UnpackDesign(const std::filesystem::path& file, const std::filesystem::path& folder,
                           Language language) {
    std::vector<uint8_t> bytes;
    DesignDocument unused;
    if (auto problem = LoadDesign(file, unused, bytes, language)) return problem;
    const ChunkList list = ReadChunks(bytes);
    const DesignText design = DescribeDesign(list.chunks);
    std::vector<NewFile> files;
    if (!design.tiles.empty()) {
        files.push_back({kBackgroundPicture, TilePicture(design.tiles.first(kPatternTableSize))});
        files.push_back({kSpritesPicture, TilePicture(design.tiles.last(kPatternTableSize))});
    }
    files.push_back({kTextName, {design.text.begin(), design.text.end()}});
    FileResult<> written = MakeFolders(folder);
    if (written) written = ReplaceFiles(folder, files);
    if (!written) return FileDiagnostic(written.Problem(), language);
    return std::nullopt;
}

}  // namespace bw
