#include "designer/files/design_file.h"

#include <algorithm>
#include <array>
#include <utility>

#include "designer/model/design_chunks.h"
#include "language/problem_text.h"
#include "support/files.h"
#include "support/text.h"

namespace bw {
namespace {

using enum ChunkType;

// In the order of writing.
std::span<const ChunkType> WrittenTypes(DesignScope scope) {
    static constexpr std::array kWhole{kBkgTile,       kSpriteTile,    kCharMapData, kAttributes,
                                       kBkgPalette,    kSpritePalette, kCaptionPos,  kCaptionText,
                                       kPageNumberPos, kItemPos,       kArrowTile,   kArrowTileItem,
                                       kChrData,       kCustomText,    kBigCursor,   kBigSprite};
    static constexpr std::array kScreen{kBkgTile,       kAttributes, kCaptionPos, kCaptionText,
                                        kPageNumberPos, kItemPos,    kArrowTile,  kCustomText};
    static constexpr std::array kTexts{kCaptionPos, kCaptionText, kCustomText};
    switch (scope) {
        case DesignScope::kWhole:
            return kWhole;
        case DesignScope::kScreen:
            return kScreen;
        default:
            return kTexts;
    }
}

// A screen is read with palettes, which it is written without: they are the user's to choose.
std::span<const ChunkType> ReadTypes(DesignScope scope) {
    static constexpr std::array kScreen{kAttributes, kBkgPalette,    kSpritePalette, kCaptionText,
                                        kCaptionPos, kPageNumberPos, kItemPos,       kArrowTile,
                                        kCustomText, kBkgTile};
    return scope == DesignScope::kScreen ? std::span<const ChunkType>(kScreen)
                                         : WrittenTypes(scope);
}

Diagnostic Fault(std::u16string text) {
    return {Severity::kError, std::move(text)};
}

}  // namespace

DesignProblem ReadDesign(std::span<const uint8_t> bytes, DesignDocument& document,
                         Language language, DesignScope scope) {
    const auto takes = [&](ChunkType type) {
        return std::ranges::find(ReadTypes(scope), type) != ReadTypes(scope).end();
    };
    const ChunkList list = ReadChunks(bytes);
    DesignDocument read = document;
    if (takes(kCustomText)) read.store.CustomText.clear();
    if (takes(kBkgTile)) read.store.BkgTileList.clear();
    if (takes(kSpriteTile)) read.store.SpriteTileList.clear();
    if (takes(kArrowTileItem)) read.store.ArrowTileList.clear();
    bool isDesign = false;
    for (const ChunkView& chunk : list.chunks) {
        if (!takes(static_cast<ChunkType>(chunk.type))) continue;
        isDesign = true;
        if (const auto fault = ApplyChunk(chunk, read)) return Fault(FaultText(*fault, language));
    }
    // The first bytes of another kind of file aren't to be taken for a damaged design.
    if (list.fault && (isDesign || IsDesignChunk(list.fault->type))) {
        return Fault(FaultText(*list.fault, language));
    }
    if (!isDesign) {
        return Fault(bytes.empty() ? LoadText(TextId::kFileEmpty, language)
                                   : LoadText(TextId::kNotADesign, language));
    }
    if (scope == DesignScope::kWhole) {
        read.store.BkgTileSelected.fill(0);
        read.store.SpriteTileSelected.fill(0);
    }
    document = std::move(read);
    return std::nullopt;
}

std::vector<uint8_t> WriteDesign(const DesignDocument& document, DesignScope scope) {
    std::vector<uint8_t> bytes;
    bytes.reserve(2 * kChrDataSize);  // a design without items takes some 9 KB
    for (const ChunkType type : WrittenTypes(scope))
        AppendDesignChunk(bytes, type, document);
    return bytes;
}

DesignProblem LoadDesign(const std::filesystem::path& file, DesignDocument& document,
                         std::vector<uint8_t>& bytes, Language language) {
    auto contents = ReadFile(file, kLargestDesignFile);
    if (!contents) return FileDiagnostic(contents.Problem(), language);
    if (auto problem = ReadDesign(*contents, document, language)) {
        problem->place.file = PathText(file);
        return problem;
    }
    bytes = std::move(*contents);
    return std::nullopt;
}

DesignProblem LoadDesign(const std::filesystem::path& file, DesignDocument& document,
                         Language language) {
    std::vector<uint8_t> unused;
    return LoadDesign(file, document, unused, language);
}

DesignProblem OpenDesign(const std::filesystem::path& file, DesignDocument& document,
                         Language language) {
    std::vector<uint8_t> bytes;
    if (auto problem = LoadDesign(file, document, bytes, language)) return problem;
    if (!HoldsChunk(bytes, kArrowTile)) ResetSmallCursor(document);
    RebuildShortLargeCursor(document);
    return std::nullopt;
}

DesignProblem SaveDesign(const std::filesystem::path& file, std::span<const uint8_t> bytes,
                         Language language) {
    if (const FileResult<> written = WriteFile(file, bytes); !written) {
        return FileDiagnostic(written.Problem(), language);
    }
    return std::nullopt;
}

DesignProblem SaveDesign(const std::filesystem::path& file, const DesignDocument& document,
                         Language language) {
    return SaveDesign(file, WriteDesign(document), language);
}

}  // namespace bw
