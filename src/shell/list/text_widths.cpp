#include "shell/list/text_widths.h"

namespace bw {
namespace {

constexpr qreal kSlack = 1;  // pixel, for what shaping rounds
constexpr char16_t kEllipsis = 0x2026;

bool IsWide(char16_t unit) {
    return (unit >= 0x3041 && unit <= 0x30FF && unit != 0x3099 && unit != 0x309A) ||
           (unit >= 0x4E00 && unit <= 0x9FFF);
}

}  // namespace

void TextWidths::Measure(const QFont& font) {
    metrics_ = QFontMetricsF(font);
    for (size_t code = 0; code < kLatin; ++code)
        latin_[code] = metrics_.horizontalAdvance(QChar(static_cast<char16_t>(code)));
    wide_.clear();
    ellipsis_ = metrics_.horizontalAdvance(QChar(kEllipsis));
    font_ = font;
    known_ = true;
}

qreal TextWidths::WidthOf(QChar unit) {
    const char16_t code = unit.unicode();
    if (code < kLatin) return latin_[code];
    if (!IsWide(code)) return -1;
    const auto known = wide_.constFind(code);
    return known != wide_.constEnd() ? *known
                                     : *wide_.insert(code, metrics_.horizontalAdvance(unit));
}

qsizetype TextWidths::Take(const QString& text, bool fromEnd, qreal& width) {
    qsizetype count = 0;
    for (; count < text.size(); ++count) {
        const qreal next = WidthOf(text[fromEnd ? text.size() - 1 - count : count]);
        if (next > width) break;
        width -= next;
    }
    return count;
}

QString TextWidths::Fitted(const QString& text, const QFont& font, Qt::TextElideMode mode,
                           int width) {
    if (!known_ || font != font_) Measure(font);
    qreal whole = kSlack;
    for (const QChar unit : text) {
        const qreal next = WidthOf(unit);
        if (next < 0) return metrics_.elidedText(text, mode, width);
        whole += next;
    }
    if (whole <= width) return text;
    qreal room = width - kSlack - ellipsis_;
    if (room <= 0) return metrics_.elidedText(text, mode, width);
    qreal first = mode == Qt::ElideMiddle ? room / 2 : room;
    room -= first;
    const qsizetype begin = Take(text, false, first);
    room += first;  // what the beginning has left
    const qsizetype end = mode == Qt::ElideMiddle ? Take(text, true, room) : 0;
    return text.first(begin) + QChar(kEllipsis) + text.last(end);
}

}  // namespace bw
