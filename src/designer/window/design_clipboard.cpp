#include "designer/window/design_clipboard.h"

#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <memory>
#include <string>
#include <utility>

#include "designer/clipboard/clip_bytes.h"
#include "designer/clipboard/clip_picture.h"
#include "designer/files/surface_png.h"
#include "designer/tools/selection_tools.h"
#include "shell/framework/texts.h"
#include "support/text.h"

namespace bw {
namespace {

QByteArray ToBytes(const std::vector<uint8_t>& bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size())};
}

std::optional<DesignClip> ClipOf(const QMimeData& data) {
    const QByteArray bytes = data.data(QLatin1String(kClipMime));
    return ReadClip(
        {reinterpret_cast<const uint8_t*>(bytes.constData()), static_cast<size_t>(bytes.size())});
}

void TellPasted(DesignHost& host, const Pasted& pasted) {
    const Language language = host.CurrentLanguage();
    std::u16string line;
    const auto add = [&](TextId id, const ClipCounts& counts) {
        if (counts.All() == 0) return;
        if (!line.empty()) line += u' ';
        line += FormatText(LoadText(id, language), CountsText(counts, language));
    };
    add(TextId::kClipPasted, pasted.placed);
    add(TextId::kClipNoRoom, pasted.lost);
    host.Tell(line);
}

// The clip goes to the clipboard as it is now; `told` says so.
void PutOnClipboard(DesignHost& host, TextId told) {
    const WorkingCopy& copy = host.Session().Copy();
    const DesignClip clip = ClipOfSelection(copy);
    QApplication::clipboard()->setMimeData(MakeClipData(clip, copy));
    const Language language = host.CurrentLanguage();
    host.Tell(FormatText(LoadText(told, language), CountsText(CountsOf(clip), language)));
}

}  // namespace

QMimeData* MakeClipData(const DesignClip& clip, const WorkingCopy& copy) {
    auto data = std::make_unique<QMimeData>();
    data->setData(QLatin1String(kClipMime), ToBytes(StoredClip(clip)));
    const std::vector<uint8_t> png = SurfacePng(ClipPicture(clip, copy));
    // Other programs ask for the file or for the picture; both are there.
    data->setData(QStringLiteral("image/png"), ToBytes(png));
    data->setImageData(QImage::fromData(ToBytes(png), "PNG"));
    return data.release();
}

void CopySelection(DesignHost& host) {
    PutOnClipboard(host, TextId::kClipCopied);
}

void CutSelection(DesignHost& host) {
    host.WhenIdle([&host] {
        // The tile in use is copied without being selected, and stays then.
        const bool cuts = CanDeleteSelection(host.Session().Copy());
        PutOnClipboard(host, cuts ? TextId::kClipCut : TextId::kClipCopied);
        host.Run(DeleteSelection);
    });
}

void PasteSelection(DesignHost& host, const std::function<void(QImage)>& picture) {
    const QMimeData* data = QApplication::clipboard()->mimeData();
    const auto clip = data == nullptr ? std::nullopt : ClipOf(*data);
    if (clip && !clip->Empty()) {
        host.Run([&host, clip = *clip](WorkingCopy& copy) {
            const Pasted pasted = PasteClip(copy, clip);
            TellPasted(host, pasted);
            return pasted.stale;
        });
        return;
    }
    const QImage image =
        data != nullptr && data->hasImage() ? qvariant_cast<QImage>(data->imageData()) : QImage();
    if (!image.isNull()) return picture(image);
    host.Tell(LoadText(TextId::kClipNothing, host.CurrentLanguage()));
}

void MoveByArrow(DesignHost& host, Point direction, bool shift) {
    host.WhenIdle([&host, direction, shift] {
        if (!CanMoveSelection(host.Session().Copy())) {
            return host.RunWithoutStep(
                [direction](WorkingCopy& copy) { return MoveNameCell(copy, direction); });
        }
        host.Run([direction, shift](WorkingCopy& copy) {
            return MoveSelection(copy, direction, shift ? ArrowStep::kCell : ArrowStep::kPixel);
        });
    });
}

void DeleteSelected(DesignHost& host) {
    host.Run(DeleteSelection);
}

}  // namespace bw
