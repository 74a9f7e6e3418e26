#include "builder/tables/kept_cart.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include "rom/crc32.h"

namespace bw {
namespace {

// The banks of the ROM in which the layout has something.
std::vector<bool> UsedBanks(const LayoutResult& layout, uint64_t banks) {
    std::vector<bool> used(banks);
    const auto mark = [&](uint64_t offset, uint64_t span) {
        const uint64_t end = (offset + span + kCartBankSize - 1) / kCartBankSize;
        for (uint64_t bank = offset / kCartBankSize; bank < std::min(end, banks); ++bank)
            used[bank] = true;
    };
    for (const MulticartItem& item : layout.items) {
        mark(item.prgOffset, item.prgSpan);
        mark(item.chrOffset, item.chrSpan);
    }
    return used;
}

CartBank Erased() {
    CartBank bank;
    bank.fill(0xFF);
    return bank;
}

}  // namespace

FileResult<KeptCart> KeptCart::Open(const std::filesystem::path& path) {
    FileResult<CartTables> tables = ReadCart(path);
    if (!tables) return tables.Problem();
    FileResult<CartFile> file = CartFile::Open(path);
    if (!file) return file.Problem();
    return KeptCart(std::move(*file), std::move(*tables));
}

std::vector<KeptPlace> KeptCart::PlacesFor(std::span<const MulticartItem> items) const {
    std::set<uint32_t> lengths;  // that the items have
    for (const MulticartItem& item : items) {
        lengths.insert(item.prgBytes);
        lengths.insert(item.chrBytes);
    }
    std::map<uint32_t, uint32_t> starts;  // of the cart's data, with the most bytes to look at
    for (const CartGame& game : tables_.games) {
        uint32_t& prg = starts[game.prgOffset];
        prg = std::max(prg, game.prgBytes);
        if (game.chrBytes == 0) continue;
        uint32_t& chr = starts[game.chrOffset];
        chr = std::max(chr, game.chrBytes);
    }
    std::vector<KeptPlace> places;
    for (const auto& [start, most] : starts) {
        uint32_t crc = 0;
        for (uint32_t bytes = kCartBankSize; bytes <= most; bytes += kCartBankSize) {
            const auto bank = file_.Bank(uint64_t{start} + bytes - kCartBankSize);
            if (!bank) break;
            crc = Crc32(*bank, crc);
            if (lengths.contains(bytes)) places.push_back({start, bytes, crc});
        }
    }
    return places;
}

FileResult<SectorChanges> KeptCart::FillGaps(const LayoutResult& layout, File& rom, uint64_t start,
                                             uint64_t bytes) const {
    const uint64_t banks = bytes / kCartBankSize;
    const std::vector<bool> used = UsedBanks(layout, banks);
    SectorChanges changes;
    changes.sectors =
        static_cast<uint32_t>((bytes + SectorChanges::kBytes - 1) / SectorChanges::kBytes);
    for (uint64_t number = 0; number < banks; ++number) {
        const uint64_t offset = number * kCartBankSize;
        const CartBank before = file_.Bank(offset).value_or(Erased());
        if (!used[number]) {
            const FileResult<> written = rom.WriteAt(start + offset, before);
            if (!written) return written.Problem();
            continue;
        }
        CartBank now;
        const FileResult<size_t> read = rom.ReadAt(start + offset, now);
        if (!read) return read.Problem();
        const auto sector = static_cast<uint32_t>(offset / SectorChanges::kBytes);
        if (now != before && (changes.changed.empty() || changes.changed.back() != sector)) {
            changes.changed.push_back(sector);
        }
    }
    return changes;
}

}  // namespace bw
