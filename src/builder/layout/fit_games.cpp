#include "builder/layout/fit_games.h"

#include <algorithm>
#include <unordered_map>

#include "builder/layout/build_checks.h"

namespace bw {
namespace {

// Numbers for pieces of data, from 0: equal sums get equal ones.
class DataNumbers {
  public:
    explicit DataNumbers(std::vector<uint32_t>& bytes, size_t expected) : bytes_(bytes) {
        numbers_.reserve(expected);
    }

    uint32_t Of(std::optional<uint32_t> crc, uint32_t bytes) {
        const auto next = static_cast<uint32_t>(bytes_.size());
        const uint32_t number = crc ? numbers_.try_emplace(*crc, next).first->second : next;
        if (number == next) bytes_.push_back(0);
        bytes_[number] = std::max(bytes_[number], bytes);
        return number;
    }

  private:
    std::vector<uint32_t>& bytes_;
    std::unordered_map<uint32_t, uint32_t> numbers_;
};

}  // namespace

MulticartItem ItemOfHeader(const InesHeader& header) {
    MulticartItem item;
    item.valid = header.HasMagic() ? 1 : 0;
    item.mapper = header.Mapper();
    item.trainer = header.Trainer() ? 1 : 0;
    item.SetPrgCount(header.PrgLow());
    item.SetPrgUnits(header.PrgLow());
    item.SetChrCount(header.ChrLow());
    item.SetChrUnits(header.ChrLow());
    RoundChrUnits({&item, 1});
    return item;
}

std::optional<MulticartItem> FitItem(const InesHeader& header, BoardType board) {
    MulticartItem item = ItemOfHeader(header);
    if (FindGameFault(item, board) != GameFault::kNone) return std::nullopt;
    if (board != BoardType::kCoolgirl) ApplyPrgMinimum({&item, 1});
    return item;
}

FitGames::FitGames(const GameList& list, const BuildSettings& settings, BoardType onBoard,
                   Rows rows)
    : board(onBoard),
      menuUnits(settings.MenuUnits(onBoard)),
      limitBytes(LimitOf(onBoard).romBytes),
      gameLimit(LimitOf(onBoard).games) {
    const auto known = static_cast<size_t>(
        std::ranges::count_if(list, [](const GameEntry& entry) { return entry.crcs.has_value(); }));
    DataNumbers prg(prgBytes, known);
    DataNumbers chr(chrBytes, known);
    for (uint32_t row = 0; row < list.size(); ++row) {
        const GameEntry& entry = list[row];
        if (rows == Rows::kChecked && !entry.checked) continue;
        const std::optional<MulticartItem> item = FitItem(entry.header, board);
        if (!item) continue;
        std::optional<uint32_t> prgCrc;
        std::optional<uint32_t> chrCrc;
        if (entry.crcs) prgCrc = entry.crcs->prg;
        if (entry.crcs && item->chrSpan != 0) chrCrc = entry.crcs->chr;
        games.push_back({row,
                         {item->prgSpan, item->chrSpan, prg.Of(prgCrc, item->prgSpan),
                          chr.Of(chrCrc, item->chrSpan)}});
    }
}

uint64_t FitGames::RomSize(std::span<const uint32_t> some) const {
    std::vector<GameShape> shapes;
    shapes.reserve(some.size());
    for (const uint32_t number : some)
        shapes.push_back(games[number].shape);
    return LayOutShapes(menuUnits, board, shapes).romSize;
}

DataSum::DataSum(const FitGames& games)
    : games_(games),
      prgUsers_(games.prgBytes.size()),
      chrUsers_(games.chrBytes.size()),
      bytes_(uint64_t{games.menuUnits} * kPrgUnit) {}

uint32_t DataSum::PrgAdded(const GameShape& game) const {
    return prgUsers_[game.prgData] == 0 ? games_.prgBytes[game.prgData] : 0;
}

uint32_t DataSum::ChrAdded(const GameShape& game) const {
    return chrUsers_[game.chrData] == 0 ? games_.chrBytes[game.chrData] : 0;
}

void DataSum::Add(const GameShape& game) {
    bytes_ += uint64_t{PrgAdded(game)} + ChrAdded(game);
    ++prgUsers_[game.prgData];
    ++chrUsers_[game.chrData];
}

void DataSum::Remove(const GameShape& game) {
    --prgUsers_[game.prgData];
    --chrUsers_[game.chrData];
    bytes_ -= uint64_t{PrgAdded(game)} + ChrAdded(game);
}

}  // namespace bw
