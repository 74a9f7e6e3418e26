// Names as the standard library's expressions take them: one wchar_t for each character, so that
// "." never takes half of a pair of surrogates and a range may have such pairs at its ends.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace bw {

// Where wchar_t is as wide as a character the characters stand for themselves. Where it has 16
// bits, those that take two, and halves without a partner, are stood for by the units of halves,
// which no other character is: in the order of the expression's own, which ranges go by.
class NameCharacters {
  public:
    // For an expression.
    explicit NameCharacters(std::u16string_view pattern);

    std::wstring From(std::u16string_view text);
    // Appends what a character that came from From() stands for.
    void Append(wchar_t character, std::u16string& text) const;

  private:
    struct Standin {
        char32_t point;
        wchar_t unit;
    };
    // With 2,048 units there is one for each of that many; further ones share.
    wchar_t UnitOf(char32_t point);

    std::vector<char32_t> own_;  // of the expression, in order
    std::vector<Standin> standins_;
};

}  // namespace bw
