#include "builder/carts/cart_split.h"

#include <algorithm>
#include <span>
#include <string_view>

#include "builder/tables/cart_file.h"
#include "language/problem_text.h"
#include "rom/crc32.h"
#include "support/file_queries.h"
#include "support/files.h"
#include "support/numbers.h"
#include "support/paths.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr size_t kLeastDigits = 3;
constexpr size_t kLongestFile = 6u << 20;  // bytes; more than a header can tell

// As every system takes it. What Windows reserves ("CON") can't come up behind a number.
std::u16string SafeName(std::u16string_view name) {
    std::u16string safe;
    for (const char16_t unit : name) {
        const bool control = unit < 0x20 || (unit >= 0x7F && unit < 0xA0);
        const bool meant = std::u16string_view(u"/\\:*?\"<>|").find(unit) != std::u16string::npos;
        safe += control || meant ? u'_' : unit;
    }
    while (!safe.empty() && (safe.back() == u'.' || safe.back() == u' '))
        safe.pop_back();
    return safe;
}

// The numbers make the names differ, in any letter case.
std::filesystem::path FileName(const CartEntry& game, size_t number, size_t games) {
    std::string digits;
    AppendDecimal(digits, static_cast<uint32_t>(number),
                  static_cast<int>(std::max(kLeastDigits, std::to_string(games).size())));
    return TextPath(SafeName(ToWide(digits + " ") + game.name) + u".nes");
}

// The image; shorter where the cart ends before the game does.
FileResult<std::vector<uint8_t>> ImageOf(const CartFile& cart, const CartEntry& game) {
    std::vector<uint8_t> image(kInesHeaderSize + game.Bytes());
    std::ranges::copy(game.header.bytes, image.begin());
    const std::span data = std::span(image).subspan(kInesHeaderSize);
    const FileResult<size_t> prg = cart.ReadRom(game.prgOffset, data.first(game.prgBytes));
    if (!prg) return prg.Problem();
    const FileResult<size_t> chr = cart.ReadRom(game.chrOffset, data.subspan(game.prgBytes));
    if (!chr) return chr.Problem();
    image.resize(kInesHeaderSize + *prg + *chr);
    return image;
}

bool HasSums(std::span<const uint8_t> image, const CartEntry& game) {
    const std::span data = image.subspan(kInesHeaderSize);
    return DataCrcs{Crc32(data.first(game.prgBytes)), Crc32(data.subspan(game.prgBytes))} ==
           game.crcs;
}

SplitGame Split(const CartFile& cart, const CartEntry& game, std::filesystem::path file) {
    SplitGame split;
    split.file = std::move(file);
    const auto fail = [&](SplitEnd end, std::optional<FileProblem> problem = {}) {
        split.end = end;
        split.problem = std::move(problem);
        return split;
    };
    const FileResult<std::vector<uint8_t>> image = ImageOf(cart, game);
    if (!image) return fail(SplitEnd::kNotWritten, image.Problem());
    if (image->size() != kInesHeaderSize + game.Bytes()) return fail(SplitEnd::kCutShort);
    if (EntryKind(split.file) != FileKind::kNone) {
        const auto there = ReadFile(split.file, kLongestFile);
        if (!there || *there != *image) return fail(SplitEnd::kExists);
    } else if (const FileResult<> written = WriteFile(split.file, std::span(*image)); !written) {
        return fail(SplitEnd::kNotWritten, written.Problem());
    }
    if (game.crcs) split.end = HasSums(*image, game) ? SplitEnd::kRight : SplitEnd::kWrong;
    return split;
}

}  // namespace

FileResult<std::vector<SplitGame>> SplitCart(const std::filesystem::path& cart,
                                             const CartContents& contents,
                                             const std::filesystem::path& folder,
                                             const std::function<bool(size_t, size_t)>& progress) {
    const FileResult<CartFile> file = CartFile::Open(cart);
    if (!file) return file.Problem();
    if (const FileResult<> made = MakeFolders(folder); !made) return made.Problem();
    std::vector<SplitGame> games;
    const size_t count = contents.games.size();
    for (const CartEntry& game : contents.games) {
        if (progress && !progress(games.size(), count)) break;
        games.push_back(Split(*file, game, folder / FileName(game, games.size() + 1, count)));
    }
    return games;
}

std::u16string SplitProblemText(const SplitGame& game, Language language) {
    const std::u16string file = VisibleText(PathText(game.file));
    switch (game.end) {
        case SplitEnd::kRight:
        case SplitEnd::kNotKnown:
            return {};
        case SplitEnd::kWrong:
            return FormatText(LoadText(TextId::kSplitWrong, language), file);
        case SplitEnd::kCutShort:
            return FormatText(LoadText(TextId::kSplitCutShort, language), file);
        case SplitEnd::kExists:
            return FormatText(LoadText(TextId::kSplitExists, language), file);
        case SplitEnd::kNotWritten:
            break;
    }
    return game.problem ? ProblemText(*game.problem, language) : std::u16string();
}

}  // namespace bw
