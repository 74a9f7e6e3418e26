#include "rom/image_crcs.h"

namespace bw {

std::vector<std::optional<ImageSums>> ReadImageSums(std::span<const std::filesystem::path> paths,
                                                    const ReadingProgress&) {
    return std::vector<std::optional<ImageSums>>(paths.size());
}

}  // namespace bw
