#include "console/game_facts.h"

#include <algorithm>
#include <bit>

#include "rom/image_files.h"
#include "rom/multicart_item.h"

namespace bw {
namespace {

constexpr uint32_t kBankBytes = 0x2000;
constexpr uint32_t kMostChr = 1 << 20;  // bytes; no row of the boards has more
constexpr uint16_t kMmc3 = 4;
constexpr uint16_t kMmc3WithChrRam = 74;

std::vector<uint8_t> BytesAt(const std::filesystem::path& path, uint64_t offset, uint32_t count) {
    std::vector<uint8_t> bytes(std::min(count, kMostChr), 0xFF);
    if (const FileResult<ImageFile> file = OpenImage(path)) file->ReadAt(offset, bytes);
    return bytes;
}

// The mappers that the registers of this one stand for, too.
std::vector<uint16_t> MappersLike(BoardType board, uint16_t mapper) {
    std::vector<uint16_t> like{mapper};
    const CoolgirlMapperConfig* own = FindCoolgirlMapperConfig(mapper);
    for (uint16_t other = 0; board == BoardType::kCoolgirl && own != nullptr && other < 256;
         ++other) {
        const CoolgirlMapperConfig* row = FindCoolgirlMapperConfig(other);
        if (other != mapper && row != nullptr && row->code == own->code &&
            row->flags == own->flags && row->prgMode == own->prgMode &&
            row->chrMode == own->chrMode) {
            like.push_back(other);
        }
    }
    if (mapper == kMmc3) like.push_back(kMmc3WithChrRam);
    return like;
}

GameFacts FactsOfImage(const MulticartItem& item) {
    GameFacts facts;
    facts.byImage = true;
    facts.mappers = {static_cast<uint16_t>(item.mapper)};
    facts.vertical = item.mirroring != 0;
    facts.fourScreen = item.fourScreen != 0;
    const uint64_t end = uint64_t{item.headerSize} + item.trainerSize + item.prgBytes;
    facts.lastPrg = BytesAt(item.path, end - kBankBytes, kBankBytes);
    facts.chr = BytesAt(item.path, end, item.chrBytes);
    return facts;
}

struct Span {
    uint64_t start;
    uint64_t bytes;
    // Shared data begins at the same place, whatever part of it each game sees.
    bool Crosses(const Span& other) const {
        return start != other.start && start < other.start + other.bytes &&
               other.start < start + bytes;
    }
};

bool Overlaps(const CartTables& tables, const CartGame& game) {
    constexpr uint64_t kMenuUnit = 0x4000;
    const Span own{game.prgOffset, game.prgBytes};
    return own.Crosses({tables.menuOffset, tables.menuUnits * kMenuUnit}) ||
           std::ranges::any_of(tables.games, [&](const CartGame& other) {
               return own.Crosses({other.prgOffset, other.prgBytes}) ||
                      own.Crosses({other.chrOffset, other.chrBytes});
           });
}

GameFacts FactsOfCart(const CheckSubject& subject, const CartGame& game) {
    GameFacts facts;
    facts.misplaced = std::has_single_bit(game.prgBytes) && game.prgOffset % game.prgBytes != 0;
    facts.overlaps = Overlaps(subject.tables, game);
    facts.mappers = MappersLike(subject.tables.board, game.mapper);
    facts.vertical = game.vertical;
    facts.fourScreen = game.fourScreen;
    const uint64_t start = subject.tables.romStart;
    if (game.prgBytes >= kBankBytes) {
        facts.lastPrg =
            BytesAt(subject.cart, start + game.prgOffset + game.prgBytes - kBankBytes, kBankBytes);
    }
    facts.chr = BytesAt(subject.cart, start + game.chrOffset, game.chrBytes);
    return facts;
}

// An instruction that programs begin with none of: a break, or one that the processor's makers
// never gave a meaning (NESdev wiki: CPU unofficial opcodes).
bool IsNoBeginning(uint8_t code) {
    constexpr std::array<uint8_t, 28> kUnofficial{
        0x02, 0x12, 0x22, 0x32, 0x42, 0x52, 0x62, 0x72, 0x92, 0xB2, 0xD2, 0xF2, 0x80, 0x82,
        0x89, 0xC2, 0xE2, 0x9C, 0x9E, 0x0C, 0x04, 0x44, 0x64, 0x14, 0x34, 0x54, 0x74, 0x00};
    return (code & 3) == 3 || std::ranges::find(kUnofficial, code) != kUnofficial.end();
}

}  // namespace

std::array<uint8_t, 6> GameFacts::Vectors() const {
    std::array<uint8_t, 6> vectors{};
    if (lastPrg.size() >= vectors.size()) {
        std::copy(lastPrg.end() - static_cast<std::ptrdiff_t>(vectors.size()), lastPrg.end(),
                  vectors.begin());
    }
    return vectors;
}

uint16_t GameFacts::ResetVector() const {
    const std::array<uint8_t, 6> vectors = Vectors();
    return static_cast<uint16_t>(vectors[2] | vectors[3] << 8);
}

bool GameFacts::HasFixedBank() const {
    constexpr std::array<uint16_t, 29> kFixed{0,  2,  3,  4,  9,  10,  18,  21,  22, 23,
                                              25, 33, 48, 65, 67, 69,  70,  71,  73, 74,
                                              75, 78, 87, 89, 93, 118, 152, 184, 206};
    return lastPrg.size() == kBankBytes &&
           std::ranges::find(kFixed, mappers.front()) != kFixed.end();
}

bool GameFacts::HasFixedTiles() const {
    constexpr uint16_t kTilesInRam = 30;
    return !chr.empty() && !Is(kMmc3WithChrRam) && !Is(kTilesInRam);
}

bool GameFacts::HasNoProgram() const {
    constexpr uint16_t kRomStart = 0x8000;
    constexpr uint16_t kFixedStart = 0xE000;
    if (!HasFixedBank()) return false;
    const uint16_t start = ResetVector();
    return start < kRomStart ||
           (start >= kFixedStart && IsNoBeginning(lastPrg[start - kFixedStart]));
}

GameFacts FactsOf(const CheckSubject& subject, uint32_t index) {
    MulticartItem item;
    if (index < subject.images.size() && item.Load(subject.images[index]) && item.valid != 0) {
        return FactsOfImage(item);
    }
    return FactsOfCart(subject, subject.tables.games[index]);
}

}  // namespace bw
