#include "rom/multicart_item.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <thread>

#include "rom/crc32.h"
#include "rom/image_files.h"
#include "support/parallel.h"
#include "support/paths.h"
#include "support/text.h"

namespace bw {
namespace {

// Small enough for the processor's cache and a thread's stack, so that no image costs fresh pages.
using ReadBuffer = std::array<uint8_t, 65536>;

// The CRC of `size` bytes at `offset`; what the file doesn't have counts as 0xFF.
uint32_t CrcOfFile(const ImageFile& file, uint64_t offset, uint32_t size, ReadBuffer& buffer) {
    uint32_t crc = 0;
    size_t filled = buffer.size();  // 0xFF from here on
    while (size > 0) {
        const std::span piece = std::span(buffer).first(std::min<size_t>(size, buffer.size()));
        const size_t arrived = file.ReadAt(offset, piece).ValueOr(0);
        if (arrived < filled) std::memset(buffer.data() + arrived, 0xFF, filled - arrived);
        filled = arrived;
        crc = Crc32(piece, crc);
        offset += piece.size();
        size -= static_cast<uint32_t>(piece.size());
    }
    return crc;
}

}  // namespace

bool MulticartItem::Load(const std::filesystem::path& file) {
    path = file;
    const FileResult<ImageFile> image = OpenImage(path);
    InesHeader read;
    if (!image || !image->ReadAt(0, read.bytes) || !read.HasMagic()) return false;
    header = read;

    name = NameWithoutExtension(PathText(path));
    fileSize = image->Size().ValueOr(0);
    headerSize = kInesHeaderSize;
    trainerSize = header.Trainer() ? kTrainerSize : 0;
    mapper = header.Mapper();
    SetPrgCount(header.PrgLow());
    SetPrgUnits(header.PrgLow());
    SetChrCount(header.ChrLow());
    SetChrUnits(header.ChrLow());
    mirroring = header.Vertical();
    battery = header.Battery();
    trainer = header.Trainer();
    fourScreen = header.FourScreen();
    sizeHigh = header.IsNes20() ? header.bytes[9] : 0;
    valid = 1;

    ReadBuffer buffer;
    const uint64_t prgStart = uint64_t{headerSize} + trainerSize;
    prgCrc = CrcOfFile(*image, prgStart, prgBytes, buffer);
    chrCrc = CrcOfFile(*image, prgStart + prgBytes, chrBytes, buffer);
    return true;
}

void MulticartItem::SetPrgCount(uint32_t count) {
    prgCount = count;
    prgBytes = count * kPrgUnit;
}

void MulticartItem::SetChrCount(uint32_t count) {
    chrCount = count;
    chrBytes = count * kChrUnit;
}

void MulticartItem::SetPrgUnits(uint32_t units) {
    prgUnits = units;
    prgSpan = units * kPrgUnit;
}

void MulticartItem::SetChrUnits(uint32_t units) {
    chrUnits = units;
    chrSpan = units * kChrUnit;
}

std::optional<FileProblem> WhyUnread(const std::filesystem::path& file) {
    const FileResult<ImageFile> image = OpenImage(file);
    if (!image) return image.Problem();
    InesHeader header;
    const FileResult<size_t> arrived = image->ReadAt(0, header.bytes);
    return arrived ? std::nullopt : std::optional(arrived.Problem());
}

std::vector<MulticartItem> LoadMulticartItems(std::span<const std::filesystem::path> paths) {
    std::vector<MulticartItem> items(paths.size());
    const size_t threads = std::clamp<size_t>(std::thread::hardware_concurrency(), 2, 8);
    ForPieces(paths.size(), 4, threads, [&](size_t begin, size_t end) {
        for (size_t i = begin; i < end; ++i)
            items[i].Load(paths[i]);
    });
    return items;
}

}  // namespace bw
