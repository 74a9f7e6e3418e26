// Any bytes as a cart. A menu lies half a megabyte deep in a file that is nearly empty, so an input
// is either a file as it is, behind a byte 0, or:
//   a byte: 1 to 3 a NES 2.0 file of one of the boards, 4 to 6 UNIF, 7 a bare ROM
//   a byte: its size, in 64 KB
//   pieces: bank of 8 KB (1 byte), offset in it (2), length (1), bytes
#include <algorithm>
#include <vector>

#include "builder/carts/cart_contents.h"
#include "builder/layout/build_checks.h"
#include "builder/output/rom_header.h"
#include "builder/tables/cart_tables.h"
#include "fuzz.h"
#include "memory_file.h"

namespace {

using Bytes = std::span<const uint8_t>;

void WriteCart(const MemoryFile& file, Bytes input) {
    const uint8_t kind = static_cast<uint8_t>(input[0] % 7);
    const uint32_t size = (input[1] % 40u) << 16;
    const auto format = kind == 0  ? bw::RomFormat::kBinary
                        : kind < 4 ? bw::RomFormat::kNes20
                                   : bw::RomFormat::kUnif;
    const auto head =
        bw::MakeContainer(format, size, static_cast<bw::BoardType>((kind + 2) % 3)).head;
    file.WriteAt(0, head);
    file.Lengthen(head.size() + size);
    input = input.subspan(2);
    while (input.size() > 4) {
        const uint64_t at = head.size() + input[0] * 8192u + (input[1] | (input[2] & 0x1Fu) << 8);
        const size_t length = std::min<size_t>(input[3], input.size() - 4);
        if (at + length <= head.size() + size) file.WriteAt(at, input.subspan(4, length));
        input = input.subspan(4 + length);
    }
}

void Check(const bw::CartTables& cart, uint64_t fileSize) {
    const bw::BoardLimit limit = bw::LimitOf(cart.board);
    Expect(cart.romStart + cart.romBytes <= fileSize);
    Expect(cart.menuOffset + uint64_t{cart.menuUnits} * bw::kPrgUnit <= cart.romBytes);
    Expect(!cart.games.empty() && cart.games.size() <= limit.games);
    for (const bw::CartGame& game : cart.games) {
        Expect(game.name.size() <= 255 && game.prgBytes != 0);
        Expect(uint64_t{game.prgOffset} + game.prgBytes <= limit.romBytes);
        Expect(uint64_t{game.chrOffset} + game.chrBytes <= limit.romBytes);
        Expect(bw::BoardTakesMapper(cart.board, game.mapper));
    }
}

void CheckOpened(const bw::CartContents& cart) {
    Expect(cart.games.size() == cart.tables.games.size());
    for (size_t i = 0; i < cart.games.size(); ++i) {
        const bw::CartEntry& game = cart.games[i];
        Expect(game.header.IsValid() && game.prgBytes <= cart.tables.games[i].prgBytes);
        Expect(game.header.PrgLow() * bw::kPrgUnit == game.prgBytes);
        Expect(game.header.ChrLow() * bw::kChrUnit == game.chrBytes);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const Bytes input(data, size);
    const bool whole = size < 2 || input[0] == 0;
    const MemoryFile file(whole ? input.subspan(std::min<size_t>(size, 1)) : Bytes{});
    if (!whole) WriteCart(file, input);
    const bw::FileResult<bw::CartTables> cart = bw::ReadCart(file.Path());
    if (cart) {
        Check(*cart, std::filesystem::file_size(file.Path()));
        const bw::FileResult<bw::CartContents> opened = bw::ReadCartContents(file.Path());
        Expect(static_cast<bool>(opened));
        CheckOpened(*opened);
    } else {
        Expect(cart.Problem().kind == bw::FileProblem::Kind::kWrongKind);
    }
    return 0;
}
