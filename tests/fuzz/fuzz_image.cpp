// Any bytes as a game image: the header's accessors, the board tests and the deep reading.
#include <algorithm>
#include <vector>

#include "fuzz.h"
#include "list/game_entry.h"
#include "memory_file.h"
#include "rom/board_tables.h"
#include "rom/multicart_item.h"

namespace {

void CheckEntry(const bw::GameEntry& entry, size_t size) {
    Expect(entry.headerRead == (size >= bw::kInesHeaderSize));
    Expect(entry.header.PrgCount() <= 4095 && entry.header.ChrCount() <= 4095);
    Expect(entry.header.Mapper() <= 4095);
    // COOLBOY's mappers are among COOLGIRL's, with the same sizes or fewer.
    Expect(!entry.coolboySupported || entry.coolgirlSupported);
    Expect(!entry.coolgirlSupported || entry.HasValidHeader());
}

void CheckItem(const bw::MulticartItem& item, const bw::GameEntry& entry, size_t size) {
    Expect(item.valid == 1 && item.fileSize == size);
    Expect(item.prgBytes == item.prgCount * bw::kPrgUnit && item.prgSpan == item.prgBytes);
    Expect(item.chrBytes == item.chrCount * bw::kChrUnit && item.chrSpan == item.chrBytes);
    Expect(item.prgCount == entry.header.PrgLow() && item.chrCount == entry.header.ChrLow());
    Expect(item.mapper == entry.header.Mapper());
    Expect(item.chrBytes != 0 || item.chrCrc == 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    std::vector<uint8_t> image(data, data + size);
    // A few units: megabytes behind the end of a file are 0xFF, one like the other.
    for (size_t i = 4; i < std::min<size_t>(size, 6); ++i)
        image[i] &= 3;
    const MemoryFile file(image);
    const bw::GameEntry entry(file.Path());
    CheckEntry(entry, size);
    bw::MulticartItem item;
    const bool loaded = item.Load(file.Path());
    Expect(loaded == entry.header.HasMagic());
    if (loaded) CheckItem(item, entry, size);
    for (const auto board :
         {bw::BoardType::kCoolboy, bw::BoardType::kMindkids, bw::BoardType::kCoolgirl}) {
        const uint32_t mapper = entry.header.Mapper();
        Expect(!bw::BoardTakesMapper(board, mapper) || bw::FindMapperCapability(mapper) != nullptr);
    }
    return 0;
}
