#include "console/alone_image.h"

#include <algorithm>
#include <vector>

#include "rom/image_files.h"
#include "rom/ines_header.h"
#include "support/files.h"

namespace bw {
namespace {

constexpr size_t kBufferSize = 65536;  // bytes

// Copies pieces of a cart's ROM one behind the other.
class ImageWriter {
  public:
    ImageWriter(const ImageFile& cart, const CartTables& tables, File& image)
        : cart_(cart), tables_(tables), image_(image), buffer_(kBufferSize) {}

    FileResult<> Append(uint64_t offset, uint64_t bytes) {
        const uint64_t end = offset + bytes;
        while (offset < end) {
            const auto size = static_cast<size_t>(std::min<uint64_t>(end - offset, kBufferSize));
            const std::span piece = std::span(buffer_).first(size);
            const uint64_t there = tables_.romBytes - std::min(offset, tables_.romBytes);
            const FileResult<size_t> arrived =
                cart_.ReadAt(tables_.romStart + offset,
                             piece.first(static_cast<size_t>(std::min<uint64_t>(size, there))));
            if (!arrived) return arrived.Problem();
            std::ranges::fill(piece.subspan(*arrived), uint8_t{0xFF});
            if (FileResult<> written = Append(piece); !written) return written;
            offset += size;
        }
        return {};
    }
    FileResult<> Append(std::span<const uint8_t> bytes) {
        FileResult<> written = image_.WriteAt(written_, bytes);
        written_ += bytes.size();
        return written;
    }

  private:
    const ImageFile& cart_;
    const CartTables& tables_;
    File& image_;
    std::vector<uint8_t> buffer_;
    uint64_t written_ = 0;
};

}  // namespace

FileResult<> WriteAloneImage(const std::filesystem::path& cart, const CartTables& tables,
                             const CartGame& game, const std::filesystem::path& image) {
    const FileResult<ImageFile> from = OpenImage(cart);
    if (!from) return from.Problem();
    FileResult<File> to = File::Create(image);
    if (!to) return to.Problem();
    ImageWriter writer(*from, tables, *to);
    FileResult<> done = writer.Append(HeaderOf(game).bytes);
    if (done) done = writer.Append(game.prgOffset, game.prgBytes);
    if (done) done = writer.Append(game.chrOffset, game.chrBytes);
    if (done) done = to->Close();
    if (!done) DeleteFile(image);
    return done;
}

}  // namespace bw
