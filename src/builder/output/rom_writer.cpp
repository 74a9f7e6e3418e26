#include "builder/output/rom_writer.h"

#include <algorithm>
#include <cerrno>
#include <vector>

#include "support/paths.h"

namespace bw {
namespace {

constexpr size_t kBufferSize = size_t{256} * 1024;  // bytes; fits a processor's second-level cache

// One item's PRG or CHR data: where it comes from and where it goes.
struct Block {
    const MulticartItem* item;
    uint64_t source;  // byte offset in the item's file
    uint32_t size;    // bytes in the file
    uint32_t target;  // byte offset in the ROM
    uint32_t copies;  // end to end
    uint32_t crc;

    uint64_t End() const { return uint64_t{target} + uint64_t{size} * copies; }
    bool SameAs(const Block& other) const {
        return target == other.target && crc == other.crc && size == other.size &&
               copies == other.copies;
    }
};

// First all PRG blocks, then all CHR blocks, in the laid order: where blocks overlap, the later
// one counts. Items that share data with an earlier one add nothing.
std::vector<Block> CollectBlocks(const LayoutResult& layout) {
    std::vector<Block> blocks;
    blocks.reserve(layout.items.size() * 2);
    for (const MulticartItem& item : layout.items) {
        if (item.prgCount != 0 && item.prgUnits != 0) {
            blocks.push_back({&item, uint64_t{item.headerSize} + item.trainerSize, item.prgBytes,
                              item.prgOffset, item.prgUnits / item.prgCount, item.prgCrc});
        }
    }
    for (const MulticartItem& item : layout.items) {
        if (item.chrBytes != 0) {
            blocks.push_back({&item, uint64_t{item.headerSize} + item.trainerSize + item.prgBytes,
                              item.chrBytes, item.chrOffset, 1, item.chrCrc});
        }
    }
    return blocks;
}

// The blocks by place in the ROM, each piece of shared data once. Stable, so that of blocks at the
// same place the later one stays the later one.
std::vector<Block> InOrderOfPlace(std::vector<Block> blocks) {
    std::stable_sort(blocks.begin(), blocks.end(),
                     [](const Block& a, const Block& b) { return a.target < b.target; });
    const auto end = std::unique(blocks.begin(), blocks.end(),
                                 [](const Block& a, const Block& b) { return a.SameAs(b); });
    blocks.erase(end, blocks.end());
    return blocks;
}

class RomComposer {
  public:
    RomComposer(File& out, uint64_t base, const std::filesystem::path& target)
        : out_(out), base_(base), target_(target), buffer_(kBufferSize) {}

    // 0xFF from the furthest byte written so far up to `offset` of the ROM.
    bool FillTo(uint64_t offset) {
        if (offset <= written_) {
            return true;
        }
        std::fill(buffer_.begin(), buffer_.end(), uint8_t{0xFF});
        while (written_ < offset) {
            const auto size =
                static_cast<size_t>(std::min<uint64_t>(buffer_.size(), offset - written_));
            if (!Write(written_, size)) {
                return false;
            }
            written_ += size;
        }
        return true;
    }

    bool Copy(const Block& block) {
        const std::optional<File> in = File::OpenForReading(block.item->path);
        if (!in) {
            return Fail(block.item->path);
        }
        for (uint32_t copy = 0; copy < block.copies; ++copy) {
            for (uint32_t done = 0; done < block.size;) {
                const size_t size = std::min<size_t>(buffer_.size(), block.size - done);
                if (!Read(*in, block, done, size) ||
                    !Write(block.target + uint64_t{copy} * block.size + done, size)) {
                    return false;
                }
                done += static_cast<uint32_t>(size);
            }
        }
        written_ = std::max(written_, block.End());
        return true;
    }

    FileProblem Problem() const { return problem_; }

  private:
    bool Fail(const std::filesystem::path& file) {
        problem_ = LastFileProblem(file);
        return false;
    }
    // Data behind the end of the file counts as 0xFF.
    bool Read(const File& in, const Block& block, uint32_t done, size_t size) {
        errno = 0;
        const std::optional<size_t> arrived =
            in.ReadAt(block.source + done, std::span(buffer_).first(size));
        if (!arrived) {
            return Fail(block.item->path);
        }
        std::fill(buffer_.begin() + static_cast<std::ptrdiff_t>(*arrived),
                  buffer_.begin() + static_cast<std::ptrdiff_t>(size), uint8_t{0xFF});
        return true;
    }
    bool Write(uint64_t offset, size_t size) {
        errno = 0;
        return out_.WriteAt(base_ + offset, std::span(buffer_).first(size)) || Fail(target_);
    }

    File& out_;
    uint64_t base_;
    const std::filesystem::path& target_;
    std::vector<uint8_t> buffer_;
    uint64_t written_ = 0;  // ROM bytes from the start that hold data or filling
    FileProblem problem_;
};

}  // namespace

std::optional<FileProblem> WriteRom(const LayoutResult& layout, BoardType board, RomFormat format,
                                    const std::filesystem::path& target,
                                    const RomProgress& progress) {
    const Container container = MakeContainer(format, layout.romSize, board);
    errno = 0;
    std::optional<ReplacementFile> out = ReplacementFile::Begin(target);
    if (!out || !out->Contents().WriteAt(0, container.head)) {
        return LastFileProblem(target);
    }
    RomComposer composer(out->Contents(), container.head.size(), target);
    const std::vector<Block> blocks = InOrderOfPlace(CollectBlocks(layout));
    for (size_t i = 0; i < blocks.size(); ++i) {
        if (progress && !progress(i, blocks.size(), *blocks[i].item)) {
            return FileProblem{target, "given up"};
        }
        if (!composer.FillTo(blocks[i].target) || !composer.Copy(blocks[i])) {
            return composer.Problem();
        }
    }
    if (!composer.FillTo(container.fileSize - container.head.size())) {
        return composer.Problem();
    }
    errno = 0;
    if (!out->Commit()) {
        return LastFileProblem(target);
    }
    return std::nullopt;
}

std::filesystem::path WithFormatExtension(const std::filesystem::path& path, RomFormat format) {
    const std::string_view extension = FormatExtension(format);
    if (HasExtension(path, extension)) {
        return path;
    }
    std::filesystem::path result = path;
    result += ".";
    result += extension;
    return result;
}

}  // namespace bw
