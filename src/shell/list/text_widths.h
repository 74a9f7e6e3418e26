// Whether a cell's text fits, without shaping it: most cells are short and plain, and eliding takes
// as long as drawing.
#pragma once

#include <QFontMetricsF>
#include <array>
#include <cmath>
#include <cstddef>

namespace bw {

class TextWidths {
  public:
    // False also if that can't be told so easily. `width` in pixels.
    bool Fits(const QString& text, const QFont& font, int width) {
        if (!known_ || font != font_) Measure(font);
        qreal sum = kSlack;
        for (const QChar unit : text) {
            if (unit.unicode() >= widths_.size()) return false;
            sum += widths_[unit.unicode()];
        }
        return sum <= width;
    }

  private:
    static constexpr size_t kPlain = 128;  // the codes of ASCII
    static constexpr qreal kSlack = 1;     // for what shaping rounds

    void Measure(const QFont& font) {
        const QFontMetricsF metrics(font);
        for (size_t code = 0; code < kPlain; ++code)
            widths_[code] = metrics.horizontalAdvance(QChar(static_cast<char16_t>(code)));
        font_ = font;
        known_ = true;
    }

    bool known_ = false;
    QFont font_;
    std::array<qreal, kPlain> widths_{};
};

}  // namespace bw
