#include "shell/dialogs/check_report.h"

#include <algorithm>
#include <cstring>

#include "shell/framework/texts.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr int kFastest = 1;  // of zlib's levels; the screens of games pack well with any

}  // namespace

PackedPicture::PackedPicture(const ConsolePicture& picture) {
    if (picture.pixels.size() != size_t{ConsolePicture::kWidth} * ConsolePicture::kHeight) return;
    bytes_ = qCompress(reinterpret_cast<const uchar*>(picture.pixels.data()),
                       static_cast<qsizetype>(picture.pixels.size() * sizeof(uint32_t)), kFastest);
}

ConsolePicture PackedPicture::Unpacked() const {
    ConsolePicture picture;
    const QByteArray bytes = qUncompress(bytes_);
    picture.pixels.resize(static_cast<size_t>(bytes.size()) / sizeof(uint32_t));
    std::memcpy(picture.pixels.data(), bytes.constData(), picture.pixels.size() * sizeof(uint32_t));
    return picture;
}

QImage PackedPicture::Image() const {
    if (IsEmpty()) return {};
    const QByteArray bytes = qUncompress(bytes_);
    return QImage(reinterpret_cast<const uchar*>(bytes.constData()), ConsolePicture::kWidth,
                  ConsolePicture::kHeight, QImage::Format_RGB32)
        .copy();
}

std::optional<FindingSeverity> WorstOf(const std::vector<CheckFinding>& findings) {
    const auto worst = std::ranges::max_element(findings, {}, &CheckFinding::severity);
    return worst == findings.end() ? std::nullopt : std::optional(worst->severity);
}

QString FindingLines(const std::vector<CheckFinding>& findings, Language language) {
    QStringList lines;
    for (const CheckFinding& finding : findings) {
        const bool error = finding.severity == FindingSeverity::kError;
        lines << QtText(error ? TextId::kGameWithError : TextId::kGameWithNote, language)
                     .arg(ToQt(finding.text));
    }
    return lines.join(QStringLiteral("\n\n"));
}

QString GameText(const ReportGame& one, Language language) {
    if (!one.done) return QtText(TextId::kGameNotCheckedYet, language);
    if (!one.game.notRun.empty()) return ToQt(one.game.notRun);
    if (one.game.findings.empty()) return QtText(TextId::kGameWithoutFindings, language);
    return FindingLines(one.game.findings, language);
}

size_t CheckReport::Count(FindingSeverity severity) const {
    size_t count = 0;
    for (const ReportGame& one : games)
        count += static_cast<size_t>(
            std::ranges::count(one.game.findings, severity, &CheckFinding::severity));
    return count;
}

std::u16string TimeText(std::chrono::seconds time) {
    return FormatText(u"%d:%02d", time.count() / 60, time.count() % 60);
}

std::u16string StateLine(const CheckReport& report, Language language) {
    using enum CheckReport::State;
    const auto part = [language](TextId id, const auto&... values) {
        return FormatText(LoadText(id, language), values...);
    };
    if (report.state == kNone) return {};
    std::u16string line = part(report.state == kRunning ? TextId::kCheckRunning
                               : report.state == kDone  ? TextId::kCheckDone
                                                        : TextId::kCheckEndedEarly,
                               report.done, report.games.size());
    if (report.left) line += part(TextId::kCheckTimeLeft, TimeText(*report.left));
    line += part(TextId::kCheckErrors, report.Count(FindingSeverity::kError));
    line += part(TextId::kCheckNotes, report.Count(FindingSeverity::kNote));
    if (!report.problem.empty()) line += u". " + report.problem;
    return line;
}

}  // namespace bw
