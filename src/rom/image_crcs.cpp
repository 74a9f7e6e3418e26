#include "rom/image_crcs.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstring>
#include <mutex>
#include <thread>

#include "rom/crc32.h"

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

// Nothing if not all of the file arrives.
std::optional<ImageSums> SumsOf(const ImageFile& image) {
    InesHeader header;
    ImageSums sums;
    sums.size = image.Size().ValueOr(0);
    const bool read = image.ReadAt(0, header.bytes).ValueOr(0) == header.bytes.size();
    if (!read || !header.HasMagic() || sums.size > kSummedBytes) return std::nullopt;
    sums.data = DataCrcsOf(image, header);
    sums.whole = Crc32(header.bytes);
    ReadBuffer buffer;
    for (uint64_t at = header.bytes.size(); at < sums.size;) {
        const size_t arrived = image.ReadAt(at, buffer).ValueOr(0);
        if (arrived == 0) return std::nullopt;
        const std::span piece = std::span(buffer).first(
            static_cast<size_t>(std::min<uint64_t>(arrived, sums.size - at)));
        sums.headerless = Crc32(piece, sums.headerless);
        sums.whole = Crc32(piece, sums.whole);
        at += piece.size();
    }
    return sums;
}

}  // namespace

DataCrcs DataCrcsOf(const ImageFile& image, const InesHeader& header) {
    ReadBuffer buffer;
    const uint32_t prgBytes = header.PrgLow() * kPrgUnit;
    const uint64_t start = kInesHeaderSize + (header.Trainer() ? kTrainerSize : 0);
    return {CrcOfFile(image, start, prgBytes, buffer),
            CrcOfFile(image, start + prgBytes, header.ChrLow() * kChrUnit, buffer)};
}

void VisitWithProgress(std::span<const std::filesystem::path> paths, ImageDepth depth,
                       const ImageVisit& visit, const ReadingProgress& progress) {
    std::mutex telling;
    size_t done = 0;
    std::atomic<bool> goOn{true};
    const auto tell = [&] {
        const std::lock_guard lock(telling);
        if (progress && goOn && !progress(done, paths.size())) goOn = false;
        ++done;
    };
    const size_t threads = std::clamp<size_t>(std::thread::hardware_concurrency(), 2, 8);
    VisitImages(
        paths, depth, threads,
        [&](size_t index, FileResult<ImageFile>& image) {
            tell();
            if (goOn) visit(index, image);
        },
        [&] { return goOn.load(); });
}

std::vector<std::optional<ImageSums>> ReadImageSums(std::span<const std::filesystem::path> paths,
                                                    const ReadingProgress& progress) {
    std::vector<std::optional<ImageSums>> sums(paths.size());
    VisitWithProgress(
        paths, ImageDepth::kAll,
        [&](size_t i, const FileResult<ImageFile>& image) {
            if (image) sums[i] = SumsOf(*image);
        },
        progress);
    return sums;
}

}  // namespace bw
