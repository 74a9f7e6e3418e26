// The lines of a design's text, taken apart into words.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace bw {

struct DesignWord {
    std::string_view text;  // in the whole text; of a quoted word what stands between the quotes
    bool quoted = false;
};

// Words are separated by blanks and tabs. A word in double quotes may hold blanks; in it a
// backslash makes the quote, itself, and with \uXXXX any 16-bit unit. # begins a comment where a
// word could begin. Lines end in LF or CR LF.
class DesignLines {
  public:
    explicit DesignLines(std::string_view text);

    // The next line that has words. Empty at the text's end, and at a line with a problem.
    std::optional<std::vector<DesignWord>> Next();
    size_t Number() const { return number_; }  // of the line given last, from 1
    const std::string& Problem() const { return problem_; }

  private:
    bool Split(std::string_view line, std::vector<DesignWord>& words);

    std::string_view rest_;
    size_t number_ = 0;
    std::string problem_;
};

// What a quoted word stands for; nothing if an escape is wrong or the text is no UTF-8.
std::optional<std::u16string> Unquoted(std::string_view text);
// The word in quotes that stands for the text.
std::string Quoted(std::u16string_view text);

}  // namespace bw
