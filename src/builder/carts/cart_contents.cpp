#include "builder/carts/cart_contents.h"

#include <algorithm>
#include <array>
#include <span>

#include "builder/layout/bank_layout.h"
#include "builder/layout/build_checks.h"
#include "builder/tables/cart_file.h"
#include "builder/tables/cart_manifest.h"
#include "support/numbers.h"
#include "support/text.h"

namespace bw {
namespace {

// What COOLBOY and MINDKIDS show of a smaller game: it fills this much several times over.
constexpr uint32_t kLeastShown = 8 * kPrgUnit;
constexpr uint8_t kHeaderMappers = 0xF0;  // of byte 7

// Whether a build of an image with this header gives the game's record.
bool Agrees(const InesHeader& header, const CartGame& game, BoardType board) {
    MulticartItem item;
    item.valid = header.HasMagic();
    item.mapper = header.Mapper();
    item.SetPrgCount(header.PrgLow());
    item.SetPrgUnits(header.PrgLow());
    item.SetChrCount(header.ChrLow());
    item.SetChrUnits(header.ChrLow());
    item.trainer = header.Trainer();
    item.mirroring = header.Vertical();
    item.fourScreen = header.FourScreen();
    item.prgOffset = game.prgOffset;
    item.chrOffset = game.chrOffset;
    const std::span one(&item, 1);
    RoundChrUnits(one);
    if (FindGameFault(item, board) != GameFault::kNone) return false;
    if (board != BoardType::kCoolgirl) ApplyPrgMinimum(one);
    const BoardRegisters registers =
        board == BoardType::kCoolgirl ? CoolgirlRegisters(item) : CoolboyRegisters(item);
    return registers == game.registers && item.chrBytes == game.chrBytes &&
           header.Vertical() == game.vertical && header.Battery() == game.battery &&
           header.FourScreen() == game.fourScreen;
}

bool OthersAgree(const CartGame& game, BoardType board) {
    InesHeader header = HeaderOf(game);
    for (uint32_t mapper = 0; mapper < 256; ++mapper) {
        header.bytes[6] = static_cast<uint8_t>((header.bytes[6] & 0x0F) | (mapper & 0x0F) << 4);
        header.bytes[7] = static_cast<uint8_t>(mapper & kHeaderMappers);
        if (mapper != game.mapper && Agrees(header, game, board)) return true;
    }
    return false;
}

// Where the board can't show less than it does: the smallest power of two of bytes, of at least one
// unit, that all of it repeats.
uint32_t RepeatedBytes(const CartFile& file, const CartGame& game, BoardType board) {
    if (board == BoardType::kCoolgirl || game.mapper == 0 || game.prgBytes != kLeastShown)
        return game.prgBytes;
    std::vector<uint8_t> shown(kLeastShown);
    if (file.ReadRom(game.prgOffset, shown).ValueOr(0) != shown.size()) return game.prgBytes;
    std::span rest(shown);
    while (rest.size() > kPrgUnit &&
           std::ranges::equal(rest.first(rest.size() / 2), rest.subspan(rest.size() / 2))) {
        rest = rest.first(rest.size() / 2);
    }
    return static_cast<uint32_t>(rest.size());
}

CartEntry EntryByTables(const CartFile& file, const CartGame& game, BoardType board) {
    CartEntry entry;
    entry.prgBytes = RepeatedBytes(file, game, board);
    entry.sizeGuessed = entry.prgBytes != game.prgBytes;
    entry.header = HeaderOf(game);
    entry.header.bytes[4] = static_cast<uint8_t>(entry.prgBytes / kPrgUnit);
    entry.mapperGuessed = OthersAgree(game, board);
    return entry;
}

CartEntry EntryByManifest(const ManifestGame& noted) {
    CartEntry entry;
    entry.prgBytes = noted.header.PrgLow() * kPrgUnit;
    entry.header = noted.header;
    entry.crcs = noted.crcs;
    return entry;
}

std::optional<CartManifest> ReadManifest(const CartFile& file, const CartTables& tables) {
    const std::optional<ManifestRoom> room =
        ManifestRoomOf(tables.menuUnits, tables.board, tables.games.size());
    if (!room) return std::nullopt;
    std::vector<uint8_t> bytes(room->size);
    const size_t arrived = file.ReadRom(tables.menuOffset + room->offset, bytes).ValueOr(0);
    std::optional<CartManifest> manifest = UnpackManifest(std::span(bytes).first(arrived));
    if (!manifest || manifest->size() != tables.games.size()) return std::nullopt;
    return manifest;
}

// What builds put before the name of the game with this ordinal: "5.", or filled up with zeros.
std::u16string NumberText(size_t ordinal, size_t digits) {
    std::string text;
    AppendDecimal(text, static_cast<uint32_t>(ordinal), static_cast<int>(digits));
    return ToWide(text + ".");
}

// Takes the numbers off if each name has its own.
void RemoveNumbers(std::vector<CartEntry>& games) {
    const size_t filled = NumberText(games.size(), 1).size() - 1;
    for (const size_t digits : {size_t{1}, filled}) {
        size_t ordinal = 0;
        const bool all = std::ranges::all_of(games, [&](const CartEntry& game) {
            return game.name.starts_with(NumberText(++ordinal, digits));
        });
        if (!all) continue;
        ordinal = 0;
        for (CartEntry& game : games)
            game.name.erase(0, NumberText(++ordinal, digits).size());
        return;
    }
}

}  // namespace

FileResult<CartContents> ReadCartContents(const std::filesystem::path& cart) {
    FileResult<CartTables> tables = ReadCart(cart);
    if (!tables) return tables.Problem();
    const FileResult<CartFile> file = CartFile::Open(cart);
    if (!file) return file.Problem();
    CartContents contents;
    contents.tables = std::move(*tables);
    const BoardType board = contents.tables.board;
    const std::optional<CartManifest> manifest = ReadManifest(*file, contents.tables);
    contents.hasManifest = manifest.has_value();
    for (size_t i = 0; i < contents.tables.games.size(); ++i) {
        const CartGame& game = contents.tables.games[i];
        const bool noted = manifest && Agrees((*manifest)[i].header, game, board);
        CartEntry entry =
            noted ? EntryByManifest((*manifest)[i]) : EntryByTables(*file, game, board);
        entry.name = game.name;
        entry.prgOffset = game.prgOffset;
        entry.chrOffset = game.chrOffset;
        entry.chrBytes = game.chrBytes;
        contents.games.push_back(std::move(entry));
    }
    RemoveNumbers(contents.games);
    return contents;
}

std::u16string NotKnownText(const CartEntry& game, Language language) {
    std::u16string text;
    const auto add = [&](const std::u16string& words) {
        text += (text.empty() ? u"" : u"; ") + words;
    };
    if (game.mapperGuessed) {
        add(FormatText(LoadText(TextId::kMapperIsLikely, language), game.header.Mapper()));
    }
    if (game.sizeGuessed) {
        add(FormatText(LoadText(TextId::kPrgIsLikely, language), game.prgBytes / 1024));
    }
    if (!game.crcs) add(LoadText(TextId::kNoSumsNoted, language));
    return text;
}

}  // namespace bw
