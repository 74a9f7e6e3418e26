#include "builder/tables/cart_manifest.h"

#include <algorithm>
#include <array>

#include "builder/tables/final_data.h"
#include "builder/tables/menu_banks.h"
#include "builder/tables/table_banks.h"
#include "rom/crc32.h"

namespace bw {
namespace {

using Bytes = std::span<const uint8_t>;

constexpr std::array<uint8_t, 4> kMagic{'B', 'W', 'G', 0x1A};
constexpr uint8_t kVersion = 1;
constexpr size_t kHeadSize = 10;  // magic, version, 0, number of games, length in all
constexpr size_t kGameSize = 12;  // bytes 4 to 7 of the header, two sums
constexpr size_t kSumSize = 4;
constexpr size_t kMagicOfHeader = 4;
constexpr size_t kShortHeader = 8;  // what stands with each game ends here
constexpr size_t kHeaderRest = kInesHeaderSize - kShortHeader;
constexpr size_t kMostBytes = 0xFFFF;
constexpr uint8_t kFilling = 0xFF;  // the assembler's

void Append(std::vector<uint8_t>& bytes, Bytes more) {
    bytes.insert(bytes.end(), more.begin(), more.end());
}

void AppendNumber(std::vector<uint8_t>& bytes, uint32_t value, int size) {
    for (int i = 0; i < size; ++i)
        bytes.push_back(static_cast<uint8_t>(value >> 8 * i));
}

uint32_t Number(Bytes bytes, size_t at, int size) {
    uint32_t value = 0;
    for (int i = 0; i < size; ++i)
        value |= uint32_t{bytes[at + static_cast<size_t>(i)]} << 8 * i;
    return value;
}

Bytes RestOf(const ManifestGame& game) {
    return Bytes(game.header.bytes).subspan(kShortHeader);
}

bool HasRest(const ManifestGame& game) {
    return std::ranges::any_of(RestOf(game), [](uint8_t byte) { return byte != 0; });
}

// One bit for each game.
size_t BitBytes(size_t games) {
    return (games + 7) / 8;
}
bool HasBit(Bytes bits, size_t game) {
    return (bits[game / 8] >> game % 8 & 1) != 0;
}

}  // namespace

CartManifest ManifestOf(std::span<const MulticartItem> items) {
    CartManifest manifest;
    manifest.reserve(items.size());
    for (const MulticartItem& item : items)
        manifest.push_back({item.header, {item.prgCrc, item.chrCrc}});
    return manifest;
}

std::vector<uint8_t> PackManifest(const CartManifest& manifest) {
    std::vector<uint8_t> games;
    std::vector<uint8_t> bits(BitBytes(manifest.size()));
    std::vector<uint8_t> rests;
    for (size_t i = 0; i < manifest.size(); ++i) {
        const ManifestGame& game = manifest[i];
        Append(games, Bytes(game.header.bytes).first(kShortHeader).subspan(kMagicOfHeader));
        AppendNumber(games, game.crcs.prg, 4);
        AppendNumber(games, game.crcs.chr, 4);
        if (!HasRest(game)) continue;
        bits[i / 8] = static_cast<uint8_t>(bits[i / 8] | 1 << i % 8);
        Append(rests, RestOf(game));
    }
    const size_t size = kHeadSize + games.size() + bits.size() + rests.size() + kSumSize;
    if (size > kMostBytes) return {};
    std::vector<uint8_t> bytes(kMagic.begin(), kMagic.end());
    AppendNumber(bytes, kVersion, 2);
    AppendNumber(bytes, static_cast<uint32_t>(manifest.size()), 2);
    AppendNumber(bytes, static_cast<uint32_t>(size), 2);
    Append(bytes, games);
    Append(bytes, bits);
    Append(bytes, rests);
    AppendNumber(bytes, Crc32(bytes), 4);
    return bytes;
}

std::optional<CartManifest> UnpackManifest(Bytes bytes) {
    if (bytes.size() < kHeadSize || !std::ranges::equal(bytes.first(kMagic.size()), kMagic) ||
        Number(bytes, 4, 2) != kVersion) {
        return std::nullopt;
    }
    const size_t games = Number(bytes, 6, 2);
    const size_t size = Number(bytes, 8, 2);
    const size_t bitsAt = kHeadSize + games * kGameSize;
    size_t rest = bitsAt + BitBytes(games);
    if (size > bytes.size() || rest + kSumSize > size) return std::nullopt;
    const size_t sumAt = size - kSumSize;
    if (Number(bytes, sumAt, 4) != Crc32(bytes.first(sumAt))) return std::nullopt;
    CartManifest manifest(games);
    for (size_t i = 0; i < games; ++i) {
        ManifestGame& game = manifest[i];
        const size_t at = kHeadSize + i * kGameSize;
        std::ranges::copy(bytes.subspan(at, kShortHeader - kMagicOfHeader),
                          game.header.bytes.begin() + kMagicOfHeader);
        game.crcs = {Number(bytes, at + 4, 4), Number(bytes, at + 8, 4)};
        if (!HasBit(bytes.subspan(bitsAt), i)) continue;
        if (rest + kHeaderRest > sumAt) return std::nullopt;
        std::ranges::copy(bytes.subspan(rest, kHeaderRest),
                          game.header.bytes.begin() + kShortHeader);
        rest += kHeaderRest;
    }
    return rest == sumAt ? std::optional(std::move(manifest)) : std::nullopt;
}

std::optional<ManifestRoom> ManifestRoomOf(uint32_t menuUnits, BoardType board, size_t games) {
    const auto* banks = std::ranges::find(kMenuBanks, menuUnits, &MenuBanks::units);
    const uint32_t bytesPerGame = FinalDataBytes(board);
    const TableBanks table = PackEqual(games, bytesPerGame);
    const auto used = static_cast<uint32_t>(table.banks.size());
    if (banks == kMenuBanks.end() || used == 0 || used > kLeastRecordBanks) return std::nullopt;
    const uint32_t first = banks->records % (menuUnits * 2) * kTableBankSize;
    const uint32_t begin =
        (used - 1) * kTableBankSize + kTableBankHead + table.banks.back().count * bytesPerGame;
    return ManifestRoom{first + begin, kLeastRecordBanks * kTableBankSize - begin};
}

bool AddManifest(std::span<uint8_t> menu, BoardType board, CartManifest manifest) {
    const auto units = static_cast<uint32_t>(menu.size() / kPrgUnit);
    const std::optional<ManifestRoom> room = ManifestRoomOf(units, board, manifest.size());
    if (!room) return false;
    std::vector<uint8_t> bytes = PackManifest(manifest);
    if (bytes.size() > room->size) {
        for (ManifestGame& game : manifest)
            std::ranges::fill(std::span(game.header.bytes).subspan(kShortHeader), uint8_t{0});
        bytes = PackManifest(manifest);
    }
    if (bytes.empty() || bytes.size() > room->size) return false;
    const std::span place = menu.subspan(room->offset, bytes.size());
    if (!std::ranges::all_of(place, [](uint8_t byte) { return byte == kFilling; })) return false;
    std::ranges::copy(bytes, place.begin());
    return true;
}

}  // namespace bw
