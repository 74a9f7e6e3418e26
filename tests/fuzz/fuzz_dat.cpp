// Any bytes as a database of names, in both of its forms: names that are wanted and no others, of a
// bounded length.
#include "fuzz.h"
#include "list/collection/dat_file.h"
#include "list/list_columns.h"
#include "memory_file.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::unordered_set<uint32_t> wanted{0, 1, 2, 0x1F, 0xABCD, 0x12345678};
    const MemoryFile file({data, size});
    const auto names = bw::ReadDat(file.Path(), wanted);
    if (names) {
        for (const auto& [crc, name] : names->byCrc) {
            Expect(wanted.contains(crc) && !name.empty() && name.size() <= bw::kCellTextLimit);
        }
        Expect(names->byCrc.size() <= names->roms);
    } else {
        const bool damaged = names.Problem().kind == bw::DatProblem::Kind::kDamaged;
        Expect(damaged == (names.Problem().line > 0));
        Expect(!bw::DatProblemText(names.Problem(), file.Path(), bw::Language::kEnglish).empty());
    }
    return 0;
}
