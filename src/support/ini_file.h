// Sections of keys and values: the text form of game lists. Lines end in CR LF, "[name]" starts a
// section, the first "=" of a line ends the key, nothing is quoted or escaped. Sections and keys
// are kept and written in the order of their 16-bit units.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <string_view>

#include "support/file_problem.h"

namespace bw {

class IniFile {
  public:
    // Says of a key whether it is wanted.
    using KeyFilter = bool (*)(std::u16string_view section, std::u16string_view key);

    // A file that can't be read leaves the contents as they are.
    FileResult<> Load(const std::filesystem::path& path, KeyFilter wanted = nullptr);

    // FF FE starts UTF-16 little-endian, EF BB BF starts UTF-8; anything else is UTF-8. An equal
    // key later in a section doesn't replace an earlier one, nor one that was there before the
    // call. Entries before the first section and keys that start with "#" are dropped, as are those
    // that `wanted` doesn't want: a text that may be longer than anybody needs then takes no memory
    // for the rest. Bytes that are no UTF-8 become U+FFFD.
    void LoadFromMemory(std::span<const uint8_t> bytes, KeyFilter wanted = nullptr);

    std::u16string GetString(std::u16string_view section, std::u16string_view key,
                             std::u16string_view fallback = {}) const;
    // Reads decimal digits as C's wcstoul does: leading blanks and a sign are taken, what follows
    // the digits is ignored, no digits give 0, too large a number gives the largest.
    uint32_t GetInt(std::u16string_view section, std::u16string_view key, uint32_t fallback) const;

    void SetString(std::u16string_view section, std::u16string_view key, std::u16string_view value);
    void SetInt(std::u16string_view section, std::u16string_view key, uint32_t value);

    // With an empty key the whole section. False if there was nothing to remove.
    bool Remove(std::u16string_view section, std::u16string_view key = {});

    // UTF-8 without a byte order mark.
    std::string ToText() const;
    // Byte order mark and text, in one safe step.
    FileResult<> Save(const std::filesystem::path& path) const;

  private:
    using Section = std::map<std::u16string, std::u16string, std::less<>>;
    const std::u16string* Find(std::u16string_view section, std::u16string_view key) const;
    std::map<std::u16string, Section, std::less<>> sections_;
};

}  // namespace bw
