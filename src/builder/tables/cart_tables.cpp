#include "builder/tables/cart_tables.h"

#include <algorithm>
#include <array>
#include <span>

#include "builder/layout/bank_layout.h"
#include "builder/layout/build_checks.h"
#include "builder/tables/cart_file.h"
#include "builder/tables/menu_banks.h"
#include "builder/tables/menu_program.h"
#include "builder/tables/table_banks.h"
#include "language/problem_text.h"
#include "support/text.h"

namespace bw {
namespace {

using Bytes = std::span<const uint8_t>;

constexpr uint32_t kTableAddress = 0xA000;  // where the menu sees the bank of a table
constexpr uint32_t kPointerSize = 2;
constexpr uint32_t kBanksOfTable = 16;  // at most
constexpr std::array<uint32_t, 5> kMenuUnits{8, 16, 32, 64, 128};
constexpr size_t kSearched = 16;  // places that may hold names; more aren't looked at

constexpr uint32_t kProgramBank = 0x3D;
constexpr uint32_t kLastBank = 0xFF;     // of a menu of any size
constexpr size_t kRecordIndex = 0x0000;  // places in the last bank
constexpr size_t kNameIndex = 0x0800;

uint32_t Word(Bytes bytes, size_t at) {
    return bytes[at] | uint32_t{bytes[at + 1]} << 8;
}

// The bytes that an entry takes, from its start to the bank's end; 0 if it is none.
using EntrySize = size_t (*)(Bytes rest);

size_t NameSize(Bytes rest) {
    const size_t size = size_t{1} + rest[0];
    if (size > rest.size()) return 0;
    // ASCII, and C2 80, which a name's last code has become.
    const bool readable = std::ranges::all_of(
        rest.first(size).subspan(1), [](uint8_t byte) { return byte <= 0x80 || byte == 0xC2; });
    return readable ? size : 0;
}
size_t CoolboyRecordSize(Bytes) {
    return 10;
}
size_t CoolgirlRecordSize(Bytes) {
    return 12;
}

// A table as read: its games' entries, and the bank of each, counted from the table's first.
struct Table {
    uint64_t place = 0;  // of its first bank in the ROM
    std::vector<std::vector<uint8_t>> entries{};
    std::vector<uint8_t> bankOfGame{};
};

// The entries of a bank that begins with game number `first`: nothing unless its pointers lead to
// entries that lie one behind the other, the first one right behind the pointers. That is also how
// many there are: no number tells it.
std::vector<Bytes> EntriesOf(const CartBank& bank, size_t first, EntrySize sizeOf) {
    const Bytes bytes(bank);
    if (Word(bytes, 0) != first) return {};
    uint32_t next = Word(bytes, kTableBankHead);  // address of the entry that is to come
    const uint32_t pointers = next - kTableAddress - kTableBankHead;
    if (next < kTableAddress + kTableBankHead || pointers % kPointerSize != 0) return {};
    if (pointers > kTableBankSize - kTableBankHead) return {};
    std::vector<Bytes> entries;
    for (size_t at = kTableBankHead; at < kTableBankHead + pointers; at += kPointerSize) {
        if (Word(bytes, at) != next || next - kTableAddress >= bytes.size()) return {};
        const Bytes rest = bytes.subspan(next - kTableAddress);
        const size_t size = sizeOf(rest);
        if (size == 0 || size > rest.size()) return {};
        entries.push_back(rest.first(size));
        next += static_cast<uint32_t>(size);
    }
    return entries;
}

// The table whose first bank lies at this offset of the ROM: as many banks as go on with the number
// of the next game. Nothing if it isn't one.
std::optional<Table> ReadTable(const CartFile& file, uint64_t offset, EntrySize sizeOf,
                               uint32_t gameLimit) {
    Table table{.place = offset};
    for (uint8_t number = 0; number < kBanksOfTable; ++number) {
        const std::optional<CartBank> bank = file.Bank(offset + uint64_t{number} * kCartBankSize);
        if (!bank) break;
        const std::vector<Bytes> entries = EntriesOf(*bank, table.entries.size(), sizeOf);
        if (entries.empty()) break;
        for (const Bytes entry : entries)
            table.entries.emplace_back(entry.begin(), entry.end());
        table.bankOfGame.resize(table.entries.size(), number);
        if (table.entries.size() > gameLimit) return std::nullopt;
    }
    if (table.entries.empty()) return std::nullopt;
    return table;
}

std::u16string NameOf(const std::vector<uint8_t>& entry) {
    return ToWide(std::string(entry.begin() + 1, entry.end()));
}

std::optional<CartGame> GameOf(Bytes record, BoardType board) {
    const bool coolgirl = board == BoardType::kCoolgirl;
    MulticartItem known;
    CartGame game;
    const uint8_t flags = record[coolgirl ? 3 : 0];
    known.SetChrCount(record[coolgirl ? 2 : 1]);
    known.mirroring = flags & 1;
    known.battery = flags >> 1 & 1;
    known.fourScreen = flags >> 2 & 1;
    if (coolgirl) {
        known.chrOffset = Word(record, 0) * kChrUnit;
        std::ranges::copy(record.subspan(4, 8), game.registers.prg.begin());
    } else {
        std::ranges::copy(record.subspan(2, 4), game.registers.chr.begin());
        std::ranges::copy(record.subspan(6, 4), game.registers.prg.begin());
    }
    const std::optional<MulticartItem> item = coolgirl
                                                  ? ItemOfCoolgirlRegisters(game.registers, known)
                                                  : ItemOfCoolboyRegisters(game.registers, known);
    const uint64_t limit = LimitOf(board).romBytes;
    if (flags > 7 || !item || uint64_t{item->prgOffset} + item->prgSpan > limit ||
        uint64_t{item->chrOffset} + item->chrSpan > limit) {
        return std::nullopt;
    }
    game.prgOffset = item->prgOffset;
    game.prgBytes = item->prgSpan;
    game.chrOffset = item->chrOffset;
    game.chrBytes = item->chrBytes;
    game.mapper = static_cast<uint16_t>(item->mapper);
    game.vertical = item->mirroring != 0;
    game.battery = item->battery != 0;
    game.fourScreen = item->fourScreen != 0;
    game.registersOpen = !coolgirl && item->mapper == 0;
    return game;
}

// A menu in the ROM of a file, read as one board's.
class MenuReader {
  public:
    MenuReader(const CartFile& file, BoardType board) : file_(file), board_(board) {}

    // The built-in program's menu, with its tables where it has them.
    std::optional<CartTables> ReadBuiltIn() const {
        for (const MenuBanks& banks : kMenuBanks) {
            if (HasBuiltInReset(banks.units)) return ReadBuiltIn(banks);
        }
        return std::nullopt;
    }
    // It is there, whatever its tables hold.
    bool HasBuiltIn() const {
        return std::ranges::any_of(
            kMenuBanks, [&](const MenuBanks& banks) { return HasBuiltInReset(banks.units); });
    }

    // A menu of somebody's own, with our tables anywhere in it.
    std::optional<CartTables> ReadOther() const {
        for (const uint32_t units : kMenuUnits) {
            if (!file_.Bank(Place(units, kLastBank))) continue;
            std::vector<Table> names;
            for (uint32_t bank = 0; bank < units * 2 && names.size() < kSearched; ++bank) {
                std::optional<Table> table = Names(Place(units, bank));
                if (table) names.push_back(std::move(*table));
            }
            for (uint32_t bank = 0; bank < units * 2 && !names.empty(); ++bank) {
                const std::optional<Table> records = Records(Place(units, bank));
                if (!records) continue;
                for (const Table& table : names) {
                    std::optional<CartTables> tables = Join(table, *records, units);
                    if (tables) return tables;
                }
            }
        }
        return std::nullopt;
    }

  private:
    bool IsCoolgirl() const { return board_ == BoardType::kCoolgirl; }

    // Offset of a bank in the ROM. Higher bits of the number than the menu has are dropped.
    uint64_t Place(uint32_t units, uint32_t bank) const {
        return MenuOffset(units, board_) + uint64_t{bank % (units * 2)} * kCartBankSize;
    }

    bool HasBuiltInReset(uint32_t units) const {
        const std::optional<CartBank> last = file_.Bank(Place(units, kLastBank));
        const std::optional<MenuReset> reset = last ? ReadMenuReset(*last) : std::nullopt;
        if (!reset || reset->units != units) return false;
        // COOLBOY and MINDKIDS have one form of tables, and a menu of one may stand in a file of
        // the other; which is what is to be found out of a bare ROM.
        return file_.Board() ? (reset->board == BoardType::kCoolgirl) == IsCoolgirl()
                             : reset->board == board_;
    }

    std::optional<CartTables> ReadBuiltIn(const MenuBanks& banks) const {
        const std::optional<CartBank> last = file_.Bank(Place(banks.units, kLastBank));
        const std::optional<CartBank> program = file_.Bank(Place(banks.units, kProgramBank));
        const std::optional<Table> names = Names(Place(banks.units, banks.names));
        const std::optional<Table> records = Records(Place(banks.units, banks.records));
        if (!last || !program || !names || !records) return std::nullopt;
        const auto indexed = [&](const Table& table, size_t index) {
            return std::equal(table.bankOfGame.begin(), table.bankOfGame.end(),
                              last->begin() + static_cast<std::ptrdiff_t>(index));
        };
        if (!indexed(*names, kNameIndex) || !indexed(*records, kRecordIndex)) return std::nullopt;
        std::optional<CartTables> tables = Join(*names, *records, banks.units);
        if (tables) tables->ownProgram = IsThisMenuProgram(*program);
        return tables;
    }

    std::optional<Table> Names(uint64_t place) const {
        return ReadTable(file_, place, NameSize, LimitOf(board_).games);
    }
    std::optional<Table> Records(uint64_t place) const {
        return ReadTable(file_, place, IsCoolgirl() ? CoolgirlRecordSize : CoolboyRecordSize,
                         LimitOf(board_).games);
    }

    std::optional<CartTables> Join(const Table& names, const Table& records, uint32_t units) const {
        if (names.entries.size() != records.entries.size() || names.place == records.place) {
            return std::nullopt;
        }
        CartTables tables{.board = board_,
                          .format = file_.Format(),
                          .romStart = file_.RomStart(),
                          .romBytes = file_.RomBytes(),
                          .menuOffset = MenuOffset(units, board_),
                          .menuUnits = units};
        for (size_t i = 0; i < records.entries.size(); ++i) {
            std::optional<CartGame> game = GameOf(records.entries[i], board_);
            if (!game) return std::nullopt;
            game->name = NameOf(names.entries[i]);
            tables.games.push_back(std::move(*game));
        }
        return tables;
    }

    const CartFile& file_;
    BoardType board_;
};

std::optional<CartTables> ReadMenu(const CartFile& file) {
    std::vector<MenuReader> readers;
    for (const BoardType board :
         {BoardType::kCoolboy, BoardType::kMindkids, BoardType::kCoolgirl}) {
        if (file.Board().value_or(board) == board) readers.emplace_back(file, board);
    }
    bool builtIn = false;
    for (const MenuReader& reader : readers) {
        std::optional<CartTables> tables = reader.ReadBuiltIn();
        if (tables) return tables;
        builtIn = builtIn || reader.HasBuiltIn();
    }
    // A built-in menu whose tables don't hold is a damaged one, and whatever else is found in such
    // a ROM isn't what the console would read.
    for (size_t i = 0; i < readers.size() && !builtIn; ++i) {
        std::optional<CartTables> tables = readers[i].ReadOther();
        if (tables) return tables;
    }
    return std::nullopt;
}

}  // namespace

FileResult<CartTables> ReadCart(const std::filesystem::path& file) {
    const FileResult<CartFile> cart = CartFile::Open(file);
    if (!cart) return cart.Problem();
    std::optional<CartTables> tables = ReadMenu(*cart);
    if (!tables) return FileProblem{file, FileProblem::Kind::kWrongKind};
    return std::move(*tables);
}

InesHeader HeaderOf(const CartGame& game) {
    InesHeader header;
    header.bytes[4] = static_cast<uint8_t>(game.prgBytes / kPrgUnit);
    header.bytes[5] = static_cast<uint8_t>(game.chrBytes / kChrUnit);
    header.bytes[6] = static_cast<uint8_t>((game.mapper & 0x0F) << 4 | (game.fourScreen ? 8 : 0) |
                                           (game.battery ? 2 : 0) | (game.vertical ? 1 : 0));
    header.bytes[7] = static_cast<uint8_t>(game.mapper & 0xF0);
    return header;
}

uint16_t FirstRegister(BoardType board) {
    return board == BoardType::kCoolboy ? 0x6000 : 0x5000;
}

std::u16string NoCartText(const FileProblem& problem, Language language) {
    if (problem.kind != FileProblem::Kind::kWrongKind) return ProblemText(problem, language);
    return FormatText(LoadText(TextId::kNoCart, language), VisibleText(PathText(problem.file)));
}

}  // namespace bw
