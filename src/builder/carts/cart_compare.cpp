#include "builder/carts/cart_compare.h"

#include <algorithm>
#include <array>
#include <span>

#include "builder/tables/cart_file.h"

namespace bw {
namespace {

using Bytes = std::span<const uint8_t>;

constexpr uint32_t kBlockSize = 256 * 1024;  // bytes; a multiple of every sector
constexpr size_t kMostPlaces = 1000;
constexpr uint8_t kErased = 0xFF;

// Part of the ROM that belongs to the menu or to a game.
struct Part {
    uint64_t begin;
    uint64_t end;
    uint64_t* differing;
};

bool IsErased(Bytes bytes) {
    return std::ranges::all_of(bytes, [](uint8_t byte) { return byte == kErased; });
}

class Comparing {
  public:
    Comparing(const CartFile& cart, const CartFile& dump, const CartContents& contents,
              uint32_t sectorBytes)
        : cart_(cart), dump_(dump), games_(contents.tables.games.size()) {
        result_.romBytes = cart.RomBytes();
        result_.dumpBytes = dump.RomBytes();
        result_.sectorBytes = sectorBytes;
        const auto add = [&](uint64_t begin, uint64_t size, uint64_t& differing) {
            parts_.push_back({begin, begin + size, &differing});
        };
        const CartTables& tables = contents.tables;
        add(tables.menuOffset, uint64_t{tables.menuUnits} * kPrgUnit, result_.menuBytes);
        for (size_t i = 0; i < games_.size(); ++i) {
            add(tables.games[i].prgOffset, tables.games[i].prgBytes, games_[i]);
            add(tables.games[i].chrOffset, tables.games[i].chrBytes, games_[i]);
        }
    }

    // False if it was stopped.
    FileResult<bool> Run(const std::function<bool(uint64_t, uint64_t)>& progress) {
        if (const FileResult<> found = FindMissing(); !found) return found.Problem();
        const uint64_t all = std::max(result_.romBytes, result_.dumpBytes);
        for (uint64_t at = 0; at < all; at += kBlockSize) {
            if (progress && !progress(at, all)) return false;
            if (const FileResult<> done = Block(at); !done) return done.Problem();
        }
        return true;
    }

    CartComparison Take() {
        CloseRun();
        for (uint32_t i = 0; i < games_.size(); ++i) {
            if (games_[i] != 0) result_.games.push_back({i, games_[i]});
        }
        result_.sectorsInAll = (result_.romBytes + result_.sectorBytes - 1) / result_.sectorBytes;
        return std::move(result_);
    }

  private:
    // Filling at the cart's end that the dump doesn't have is no loss: what is left of the cart
    // ends with its last byte that isn't erased flash.
    FileResult<> FindMissing() {
        while (result_.romBytes > result_.dumpBytes) {
            const uint64_t begin =
                std::max(result_.dumpBytes, (result_.romBytes - 1) / kBlockSize * kBlockSize);
            const std::span block =
                std::span(ofCart_).first(static_cast<size_t>(result_.romBytes - begin));
            const FileResult<size_t> arrived = cart_.ReadRom(begin, block);
            if (!arrived) return arrived.Problem();
            const auto last = std::find_if(block.rbegin(), block.rend(),
                                           [](uint8_t byte) { return byte != kErased; });
            result_.romBytes = begin + static_cast<uint64_t>(block.rend() - last);
            if (last != block.rend()) break;
        }
        if (result_.romBytes > result_.dumpBytes)
            result_.missingBytes = result_.romBytes - result_.dumpBytes;
        return {};
    }

    FileResult<> Block(uint64_t at) {
        const auto within = [&](uint64_t bytes) {
            return static_cast<size_t>(std::min<uint64_t>(bytes - std::min(at, bytes), kBlockSize));
        };
        const std::span cart = std::span(ofCart_).first(within(result_.romBytes));
        const std::span dump = std::span(ofDump_).first(within(result_.dumpBytes));
        FileResult<size_t> arrived = cart_.ReadRom(at, cart);
        if (arrived) arrived = dump_.ReadRom(at, dump);
        if (!arrived) return arrived.Problem();
        const Bytes behind = dump.subspan(std::min(cart.size(), dump.size()));
        result_.behindBytes += behind.size();
        result_.behindErased = result_.behindErased && IsErased(behind);
        const size_t common = std::min(cart.size(), dump.size());
        if (cart.size() > common || !std::ranges::equal(cart.first(common), dump.first(common)))
            Count(at, cart, dump.first(common));
        return {};
    }

    void Count(uint64_t at, Bytes cart, Bytes dump) {
        before_[0] = 0;
        for (size_t i = 0; i < cart.size(); ++i) {
            const bool differs = i >= dump.size() || cart[i] != dump[i];
            before_[i + 1] = before_[i] + (differs ? 1 : 0);
            if (differs) AddToRun(at + i);
        }
        const uint64_t end = at + cart.size();
        const auto count = [&](uint64_t from, uint64_t to) -> uint64_t {
            return before_[static_cast<size_t>(to - at)] - before_[static_cast<size_t>(from - at)];
        };
        result_.differing += count(at, end);
        for (const Part& part : parts_) {
            const uint64_t from = std::max(part.begin, at);
            const uint64_t to = std::min(part.end, end);
            if (from < to) *part.differing += count(from, to);
        }
        for (uint64_t from = at; from < end; from += result_.sectorBytes) {
            const uint64_t to = std::min(end, from + result_.sectorBytes);
            if (count(from, to) != 0)
                result_.sectors.push_back(static_cast<uint32_t>(from / result_.sectorBytes));
        }
    }

    void AddToRun(uint64_t place) {
        if (place != run_.end) {
            CloseRun();
            run_ = {place, place};
        }
        ++run_.end;
    }
    void CloseRun() {
        if (run_.end > run_.begin && result_.places.size() < kMostPlaces)
            result_.places.push_back(run_);
        run_ = {};
    }

    const CartFile& cart_;
    const CartFile& dump_;
    CartComparison result_;
    std::vector<uint64_t> games_;  // bytes that differ
    std::vector<Part> parts_;
    CartDifference run_;  // that may go on
    std::vector<uint8_t> ofCart_ = std::vector<uint8_t>(kBlockSize);
    std::vector<uint8_t> ofDump_ = std::vector<uint8_t>(kBlockSize);
    // Of the bytes of a block, how many before each differ.
    std::vector<uint32_t> before_ = std::vector<uint32_t>(kBlockSize + 1);
};

}  // namespace

FileResult<CartComparison> CompareCart(const std::filesystem::path& cart,
                                       const CartContents& contents,
                                       const std::filesystem::path& dump, uint32_t sectorBytes,
                                       const std::function<bool(uint64_t, uint64_t)>& progress) {
    const FileResult<CartFile> ofCart = CartFile::Open(cart);
    if (!ofCart) return ofCart.Problem();
    const FileResult<CartFile> ofDump = CartFile::Open(dump);
    if (!ofDump) return ofDump.Problem();
    Comparing comparing(*ofCart, *ofDump, contents, sectorBytes);
    const FileResult<bool> done = comparing.Run(progress);
    if (!done) return done.Problem();
    if (!*done) return ProblemOf(cart, std::errc::operation_canceled);
    return comparing.Take();
}

}  // namespace bw
