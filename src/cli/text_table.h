// Tables for people.
#pragma once

#include <string>
#include <vector>

namespace bw {

// Columns of text as wide as their widest cell; the last one is not padded. Control characters show
// as '?'.
class TextTable {
  public:
    void Row(std::vector<std::u16string> cells);
    bool IsEmpty() const { return rows_.empty(); }
    // In UTF-8, a line for each row.
    std::string Text() const;

  private:
    std::vector<std::vector<std::u16string>> rows_;
};

}  // namespace bw
