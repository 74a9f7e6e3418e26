// The ways into the dialog, and out of it into the design.
#include <algorithm>
#include <variant>

#include "designer/window/import_dialog.h"
#include "language/problem_text.h"
#include "support/files.h"
#include "support/text.h"

namespace bw {
namespace {

struct ReadJob {
    std::u16string problem;
    Picture picture;
};

void ReadPicture(const std::filesystem::path& file, Language language, ReadJob& job) {
    const auto bytes = ReadFile(file, kLargestPictureFile);
    if (!bytes) {
        job.problem = FullText(FileDiagnostic(bytes.Problem(), language));
    } else if (const auto fault = DecodeAnyPng(*bytes, kLargestPictureSide, job.picture)) {
        job.problem = VisibleText(PathText(file)) + u": " + FaultText(*fault, language);
    }
}

void TellError(DesignHost& host, std::u16string_view text) {
    host.Dialogs().Message(text, LoadText(TextId::kErrorTitle, host.CurrentLanguage()),
                           MessageButtons::kConfirm);
}

}  // namespace

Picture PictureOf(const QImage& image) {
    const QImage pixels = image.convertToFormat(QImage::Format_ARGB32);
    Picture picture{.width = static_cast<uint32_t>(pixels.width()),
                    .height = static_cast<uint32_t>(pixels.height()),
                    .pixels = {}};
    picture.pixels.reserve(size_t{picture.width} * picture.height);
    for (int y = 0; y < pixels.height(); ++y)
        for (int x = 0; x < pixels.width(); ++x) {
            const QRgb pixel = pixels.pixel(x, y);
            picture.pixels.push_back((pixel & 0xFFFFFF) |
                                     (qAlpha(pixel) < 128 ? kTransparentPixel : 0));
        }
    return picture;
}

void ImportPicture(DesignHost& host, const std::filesystem::path& file, Pos at) {
    const auto job = std::make_shared<ReadJob>();
    host.Tasks().StartFreeTask([job, file, language = host.CurrentLanguage()](
                                   TaskControl&) { ReadPicture(file, language, *job); },
                               [&host, job, at] {
                                   host.WhenIdle([&host, job, at] {
                                       if (job->problem.empty()) {
                                           ImportPicture(host, std::move(job->picture), at);
                                       } else {
                                           TellError(host, job->problem);
                                       }
                                   });
                               });
}

void ImportPicture(DesignHost& host, Picture picture, Pos at) {
    const uint32_t side = std::max(picture.width, picture.height);
    if (picture.pixels.empty() || side > kLargestPictureSide) {
        TellError(host, FaultText({.kind = PictureFault::Kind::kTooLarge,
                                   .width = picture.width,
                                   .height = picture.height,
                                   .limit = kLargestPictureSide,
                                   .details = {}},
                                  host.CurrentLanguage()));
        return;
    }
    const Pos onScreen{std::clamp(at.X, 0, kScreenColumns - 1),
                       std::clamp(at.Y, 0, kScreenRows - 1)};
    CImportDialog dialog(std::move(picture), host.Session().Copy(), onScreen,
                         host.CurrentLanguage(), &host.Window());
    if (auto result = dialog.Ask()) {
        host.Run(
            [result = std::move(*result)](WorkingCopy& copy) { return ApplyImport(copy, result); });
    }
}

}  // namespace bw
