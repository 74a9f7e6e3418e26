#include "designer/files/design_parts.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "designer/files/bare_tables.h"
#include "designer/model/design_chunks.h"
#include "designer/model/stored_numbers.h"
#include "designer/model/tiles.h"
#include "language/problem_text.h"
#include "support/file_queries.h"
#include "support/files.h"
#include "support/paths.h"
#include "support/text.h"

namespace bw {
namespace {

using Bytes = std::vector<uint8_t>;

Diagnostic Fault(std::u16string text) {
    return {Severity::kError, std::move(text)};
}

std::optional<DesignScope> ScopeOf(DesignPart part) {
    switch (part) {
        case DesignPart::kDesign:
            return DesignScope::kWhole;
        case DesignPart::kScreen:
            return DesignScope::kScreen;
        case DesignPart::kTexts:
            return DesignScope::kTexts;
        default:
            return std::nullopt;
    }
}

// The box of the caption keeps its text after a screen or texts.
Views ViewsOf(DesignScope scope) {
    switch (scope) {
        case DesignScope::kWhole:
            return Views::All();
        case DesignScope::kScreen:
            return Views::All().Without(View::kCaptionBox);
        default:
            return View::kNameTable;
    }
}

std::variant<Views, Diagnostic> LoadChunks(DesignScope scope, std::span<const uint8_t> bytes,
                                           WorkingCopy& copy, Language language) {
    if (auto problem = ReadDesign(bytes, copy.document, language, scope)) {
        return std::move(*problem);
    }
    CountItems(copy);
    if (scope == DesignScope::kWhole && HoldsChunk(bytes, ChunkType::kCaptionText)) {
        copy.captionBox = copy.Store().CaptionText;
    }
    if (scope != DesignScope::kTexts) SynchroniseCursors(copy);
    return ViewsOf(scope);
}

std::variant<Views, Diagnostic> LoadVideoMemory(size_t screen, std::span<const uint8_t> bytes,
                                                WorkingCopy& copy, Language language) {
    if (bytes.size() != kVideoMemorySize) {
        return Fault(FormatText(LoadText(TextId::kVideoMemorySizeWrong, language), kVideoMemorySize,
                                bytes.size()));
    }
    ReadVideoMemory(bytes.first<kVideoMemorySize>(), screen, copy);
    SynchroniseCursors(copy);
    return Views::All();
}

Views LoadTiles(PatternTable table, std::span<const uint8_t> bytes, Shift shift,
                WorkingCopy& copy) {
    const int first = shift == Shift::kDown ? CurrentTile(copy, table) : 0;
    ReadTiles(bytes, table, static_cast<size_t>(first), copy.Store());
    return TableViews(table);
}

Views LoadNameTable(std::span<const uint8_t> bytes, Shift shift, WorkingCopy& copy) {
    if (shift == Shift::kUp) {
        copy.Store().BkgTileList.clear();
        copy.nextBkgIndex = 0;
    }
    ReadNameTable(bytes, copy);
    return View::kNameTable;
}

Views LoadColours(DesignPart part, std::span<const uint8_t> bytes, WorkingCopy& copy) {
    DesignStore& store = copy.Store();
    const bool background = part == DesignPart::kBkgPalette;
    Overwrite(background ? store.BkgPalette : store.SpritePalette, bytes);
    return TableViews(background ? PatternTable::kBackground : PatternTable::kSprites) |
           View::kNameTable | View::kSpritePalette | SynchroniseCursors(copy);
}

Diagnostic NotThisWay(Language language) {
    return Fault(LoadText(TextId::kNotThisWay, language));
}

// Written over the start of an existing file.
bool KeepsTail(DesignPart part) {
    static constexpr std::array kParts{DesignPart::kScreen,          DesignPart::kTexts,
                                       DesignPart::kAttributes,      DesignPart::kMmc5Attributes,
                                       DesignPart::kAttributesAsBin, DesignPart::kBkgPalette,
                                       DesignPart::kSpritePalette};
    return std::ranges::find(kParts, part) != kParts.end();
}

template <typename Table>
Bytes BytesOf(const Table& table) {
    return {table.begin(), table.end()};
}

}  // namespace

std::string_view PartExtension(DesignPart part) {
    switch (part) {
        case DesignPart::kDesign:
            return "fcm";
        case DesignPart::kScreen:
            return "fcc";
        case DesignPart::kTexts:
            return "fct";
        case DesignPart::kBkgTiles:
        case DesignPart::kSpriteTiles:
            return "chr";
        case DesignPart::kNameTable:
            return "nam";
        case DesignPart::kAttributes:
        case DesignPart::kMmc5Attributes:
            return "attr";
        case DesignPart::kSprites:
            return "spl";
        case DesignPart::kBkgPalette:
        case DesignPart::kSpritePalette:
            return "pal";
        default:
            return "bin";
    }
}

std::filesystem::path WithPartExtension(const std::filesystem::path& path,
                                        std::string_view extension) {
    std::filesystem::path file = path;
    if (!HasExtension(file, extension)) {
        file += ".";
        file += std::string(extension);
    }
    return file;
}

std::variant<Views, Diagnostic> LoadPart(DesignPart part, std::span<const uint8_t> bytes,
                                         Shift shift, WorkingCopy& copy, Language language) {
    if (bytes.empty()) return Fault(LoadText(TextId::kFileEmpty, language));
    if (const auto scope = ScopeOf(part)) return LoadChunks(*scope, bytes, copy, language);
    switch (part) {
        case DesignPart::kVideoMemory2000:
            return LoadVideoMemory(0x2000, bytes, copy, language);
        case DesignPart::kVideoMemory2C00:
            return LoadVideoMemory(0x2C00, bytes, copy, language);
        case DesignPart::kBkgTiles:
            return LoadTiles(PatternTable::kBackground, bytes, shift, copy);
        case DesignPart::kSpriteTiles:
            return LoadTiles(PatternTable::kSprites, bytes, shift, copy);
        case DesignPart::kNameTable:
            return LoadNameTable(bytes, shift, copy);
        case DesignPart::kAttributes:
            Overwrite(copy.Store().Attributes, bytes);
            return View::kNameTable | SynchroniseCursors(copy);
        case DesignPart::kSprites:
            ReadSprites(bytes, copy);
            return View::kNameTable | View::kCheckBoxes;
        case DesignPart::kBkgPalette:
        case DesignPart::kSpritePalette:
            return LoadColours(part, bytes, copy);
        default:
            return NotThisWay(language);
    }
}

std::variant<Bytes, Diagnostic> StorePart(DesignPart part, Shift shift, const WorkingCopy& copy,
                                          Language language) {
    const DesignStore& store = copy.Store();
    const bool shifted = shift == Shift::kDown;
    if (const auto scope = ScopeOf(part)) return WriteDesign(copy.document, *scope);
    switch (part) {
        case DesignPart::kBkgTiles:
            return StoredTiles(PatternTable::kBackground, shifted, store);
        case DesignPart::kSpriteTiles:
            return StoredTiles(PatternTable::kSprites, shifted, store);
        case DesignPart::kNameTable:
            return StoredNameTable(shifted, copy);
        case DesignPart::kAttributes:
            return BytesOf(store.Attributes);
        case DesignPart::kAttributesAsBin:
            return Bytes();
        case DesignPart::kMmc5Attributes:
            return StoredMmc5Attributes(store);
        case DesignPart::kSprites:
            if (auto bytes = StoredSprites(shifted, store)) return std::move(*bytes);
            return Fault(FormatText(LoadText(TextId::kTooManySprites, language), kSpritesInMemory));
        case DesignPart::kBkgPalette:
            return BytesOf(store.BkgPalette);
        case DesignPart::kSpritePalette:
            return BytesOf(store.SpritePalette);
        case DesignPart::kCharMap:
            return BytesOf(store.CharMapData);
        default:
            return NotThisWay(language);
    }
}

DesignProblem SavePart(const std::filesystem::path& file, DesignPart part, Shift shift,
                       const WorkingCopy& copy, Language language) {
    auto stored = StorePart(part, shift, copy, language);
    if (auto* problem = std::get_if<Diagnostic>(&stored)) {
        problem->place.file = PathText(file);
        return std::move(*problem);
    }
    Bytes& bytes = std::get<Bytes>(stored);
    if (KeepsTail(part) && FileSize(file).ValueOr(0) > bytes.size()) {
        const auto old = ReadFile(file);
        if (!old) return FileDiagnostic(old.Problem(), language);
        const std::span<const uint8_t> tail =
            std::span(*old).subspan(std::min(old->size(), bytes.size()));
        bytes.insert(bytes.end(), tail.begin(), tail.end());
    }
    return SaveDesign(file, bytes, language);
}

}  // namespace bw
