#include "rom/multicart_item.h"

#include "support/paths.h"
#include "support/text.h"

namespace bw {
bool MulticartItem::Load(const std::filesystem::path& file) {
    return Load(file, OpenImage(file));
}

bool MulticartItem::Load(const std::filesystem::path& file, const FileResult<ImageFile>& image) {
    path = file;
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

    const DataCrcs crcs = DataCrcsOf(*image, header);
    prgCrc = crcs.prg;
    chrCrc = crcs.chr;
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

std::vector<MulticartItem> LoadMulticartItems(std::span<const std::filesystem::path> paths,
                                              const ReadingProgress& progress) {
    std::vector<MulticartItem> items(paths.size());
    VisitWithProgress(
        paths, ImageDepth::kWhole,
        [&](size_t i, const FileResult<ImageFile>& image) { items[i].Load(paths[i], image); },
        progress);
    return items;
}

}  // namespace bw
