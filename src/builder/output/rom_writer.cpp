#include "builder/output/rom_writer.h"

#include <algorithm>
#include <map>
#include <mutex>
#include <thread>
#include <vector>

#include "rom/image_files.h"
#include "support/files.h"
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
    RomComposer(File& out, uint64_t base) : out_(out), base_(base), buffer_(kBufferSize) {}

    // 0xFF from the furthest byte written so far up to `offset` of the ROM.
    FileResult<> FillTo(uint64_t offset) {
        if (offset <= written_) return {};
        std::fill(buffer_.begin(), buffer_.end(), uint8_t{0xFF});
        while (written_ < offset) {
            const auto size =
                static_cast<size_t>(std::min<uint64_t>(buffer_.size(), offset - written_));
            if (FileResult<> written = Write(written_, size); !written) return written;
            written_ += size;
        }
        return {};
    }

    // Counts as written; Copy writes it in its own time.
    void Reserve(const Block& block) { written_ = std::max(written_, block.End()); }

    FileResult<> Copy(const Block& block, const ImageFile& in) {
        for (uint32_t copy = 0; copy < block.copies; ++copy) {
            for (uint32_t done = 0; done < block.size;) {
                const size_t size = std::min<size_t>(buffer_.size(), block.size - done);
                FileResult<> passed = Read(in, block.source + done, size);
                if (passed) passed = Write(block.target + uint64_t{copy} * block.size + done, size);
                if (!passed) return passed;
                done += static_cast<uint32_t>(size);
            }
        }
        Reserve(block);
        return {};
    }

  private:
    // Data behind the end of the file counts as 0xFF.
    FileResult<> Read(const ImageFile& in, uint64_t offset, size_t size) {
        const FileResult<size_t> arrived = in.ReadAt(offset, std::span(buffer_).first(size));
        if (!arrived) return arrived.Problem();
        std::fill(buffer_.begin() + static_cast<std::ptrdiff_t>(*arrived),
                  buffer_.begin() + static_cast<std::ptrdiff_t>(size), uint8_t{0xFF});
        return {};
    }
    FileResult<> Write(uint64_t offset, size_t size) {
        return out_.WriteAt(base_ + offset, std::span(buffer_).first(size));
    }

    File& out_;
    uint64_t base_;
    std::vector<uint8_t> buffer_;
    uint64_t written_ = 0;  // ROM bytes from the start that hold data or filling
};

// Writes the blocks: those of files in the order of their places, then those in archives in the
// archives' own order, for which room was left.
class RomFiller {
  public:
    RomFiller(RomComposer& composer, const std::vector<Block>& blocks, const RomProgress& progress)
        : composer_(composer), blocks_(blocks), progress_(progress) {}

    // Ends early without a problem if it was stopped.
    FileResult<> Fill() {
        FileResult<> written;
        for (const Block& block : blocks_) {
            written = composer_.FillTo(block.target);
            if (!written) return written;
            const std::filesystem::path& path = block.item->path;
            if (ContainerOf(path) != path) {
                composer_.Reserve(block);
                archived_[path].push_back(&block);
            } else {
                if (!GoesOn(block)) return {};
                FileResult<File> in = File::OpenForReading(path);
                if (!in) return in.Problem();
                written = composer_.Copy(block, ImageFile(std::move(*in)));
                if (!written) return written;
            }
        }
        return FillArchived();
    }
    bool Stopped() const { return stopped_; }

  private:
    // Unpacking takes the time, and several threads; writing is one's at a time.
    FileResult<> FillArchived() {
        std::vector<std::filesystem::path> paths;
        std::vector<const std::vector<const Block*>*> parts;
        for (const auto& [path, part] : archived_) {
            paths.push_back(path);
            parts.push_back(&part);
        }
        std::mutex writing;
        FileResult<> written;
        const size_t threads = std::clamp<size_t>(std::thread::hardware_concurrency(), 1, 4);
        VisitImages(
            paths, ImageDepth::kWhole, threads,
            [&](size_t index, const FileResult<ImageFile>& image) {
                const std::lock_guard lock(writing);
                for (const Block* block : *parts[index]) {
                    if (!written || stopped_ || !GoesOn(*block)) return;
                    written =
                        image ? composer_.Copy(*block, *image) : FileResult<>(image.Problem());
                }
            },
            [&] {
                const std::lock_guard lock(writing);
                return written && !stopped_;
            });
        return written;
    }

    bool GoesOn(const Block& block) {
        stopped_ = progress_ && !progress_(done_, blocks_.size(), *block.item);
        ++done_;
        return !stopped_;
    }

    RomComposer& composer_;
    const std::vector<Block>& blocks_;
    const RomProgress& progress_;
    std::map<std::filesystem::path, std::vector<const Block*>> archived_;
    size_t done_ = 0;
    bool stopped_ = false;
};

}  // namespace

FileResult<RomEnd> WriteRom(const LayoutResult& layout, BoardType board, RomFormat format,
                            const std::filesystem::path& target, const RomProgress& progress,
                            const RomFinish& finish) {
    const Container container = MakeContainer(format, layout.romSize, board);
    RemoveAbandonedReplacements(target);
    FileResult<ReplacementFile> out = ReplacementFile::Begin(target);
    if (!out) return out.Problem();
    FileResult<> written = out->Contents().WriteAt(0, container.head);
    RomComposer composer(out->Contents(), container.head.size());
    const std::vector<Block> blocks = InOrderOfPlace(CollectBlocks(layout));
    const uint64_t romBytes = container.fileSize - container.head.size();
    RomFiller filler(composer, blocks, progress);
    if (written) written = filler.Fill();
    if (written && filler.Stopped()) return RomEnd::kStopped;
    if (written) written = composer.FillTo(romBytes);
    if (written && finish) written = finish(out->Contents(), container.head.size(), romBytes);
    if (written) written = out->Commit();
    if (!written) return written.Problem();
    return RomEnd::kWritten;
}

std::filesystem::path WithFormatExtension(const std::filesystem::path& path, RomFormat format) {
    const std::string_view extension = FormatExtension(format);
    if (HasExtension(path, extension)) return path;
    std::filesystem::path result = path;
    result += ".";
    result += extension;
    return result;
}

}  // namespace bw
