// What is kept of a database while it is read: the part that both of its forms share.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_set>

#include "list/collection/dat_file.h"

namespace bw {

// Elements or lists inside each other; no database has more, and a hostile one takes memory.
inline constexpr size_t kDatDepth = 64;

class DatCollector {
  public:
    explicit DatCollector(const std::unordered_set<uint32_t>& wanted) : wanted_(wanted) {}

    // Of the game that the next files belong to; again where a title follows a name that is but a
    // code. In UTF-8, or ISO 8859-1 where it is none.
    void BeginGame(std::string_view name) { game_.assign(name); }
    // Any text; it needn't be a CRC.
    void AddRom(std::string_view crc);
    // Of the database.
    void SetName(std::string_view name);
    void SetDescription(std::string_view description);

    DatNames Take();

  private:
    const std::unordered_set<uint32_t>& wanted_;
    std::string game_;
    std::u16string name_;
    DatNames names_;
};

// A reader of one of the forms, fed piece by piece.
class DatReader {
  public:
    virtual ~DatReader() = default;
    // `last`: nothing follows. Once it has given a problem it isn't fed any more.
    virtual std::optional<DatProblem> Feed(std::span<const char> bytes, bool last) = 0;
    // Where it is, from 1.
    virtual uint64_t Line() const = 0;
};

std::unique_ptr<DatReader> MakeDatXmlReader(DatCollector& collector);
std::unique_ptr<DatReader> MakeDatTextReader(DatCollector& collector);

}  // namespace bw
