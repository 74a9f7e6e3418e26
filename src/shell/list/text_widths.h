// What of a cell's text fits into it, from the widths of its letters: the text is shaped when it is
// drawn, and shaping it for the elision before takes longer than all the rest of the cell.
#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QHash>
#include <array>
#include <cstddef>

namespace bw {

class TextWidths {
  public:
    // The text, shortened to `width` pixels where it is wider. Letters that change their form or
    // place beside others are left to Qt.
    QString Fitted(const QString& text, const QFont& font, Qt::TextElideMode mode, int width);

  private:
    static constexpr size_t kLatin = 0x250;  // the codes up to here stand for themselves

    void Measure(const QFont& font);
    // Negative for a letter that isn't told so easily.
    qreal WidthOf(QChar unit);
    // The letters at the beginning, or the end, that go into `width` and what is left of it.
    qsizetype Take(const QString& text, bool fromEnd, qreal& width);

    bool known_ = false;
    QFont font_;
    QFontMetricsF metrics_{QFont()};
    std::array<qreal, kLatin> latin_{};
    QHash<char16_t, qreal> wide_;  // of Chinese and Japanese letters, as they come
    qreal ellipsis_ = 0;
};

}  // namespace bw
