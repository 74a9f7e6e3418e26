// The sums by which the data of game images is known again.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "rom/image_files.h"
#include "rom/ines_header.h"

namespace bw {

// CRC-32 of the PRG and of the CHR data as a build reads them: sizes by bytes 4 and 5 of the
// header, 0xFF for what the file lacks, 0 where there is no data. Games of equal sums and sizes
// share their places in a ROM.
struct DataCrcs {
    uint32_t prg = 0;
    uint32_t chr = 0;
    bool operator==(const DataCrcs&) const = default;
};

// Of an image that is open, by its header.
DataCrcs DataCrcsOf(const ImageFile& image, const InesHeader& header);

struct ImageSums {
    DataCrcs data;
    uint32_t headerless = 0;  // CRC-32 of all that is behind the 16 bytes of the header
    uint32_t whole = 0;       // of the whole file, of at most kSummedBytes
    uint64_t size = 0;        // bytes of the file
};
// Longer files are no games; their sums count as not known.
inline constexpr uint64_t kSummedBytes = uint64_t{64} << 20;

// How far a reading of many images is; false to stop it. Called from one thread at a time.
using ReadingProgress = std::function<bool(size_t done, size_t total)>;

// Visits images as VisitImages does, by as many threads as there are processors.
void VisitWithProgress(std::span<const std::filesystem::path> paths, ImageDepth depth,
                       const ImageVisit& visit, const ReadingProgress& progress);

// The sums of many images, in the order of the paths, each archive read once; nothing for what
// can't be read, has no header, or wasn't reached before a stop. By several threads.
std::vector<std::optional<ImageSums>> ReadImageSums(std::span<const std::filesystem::path> paths,
                                                    const ReadingProgress& progress = {});

}  // namespace bw
