// What is kept of a database while it is read: the part that both of its forms share.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "list/collection/dat_file.h"

namespace bw {

// Elements or lists inside each other; no database has more, and a hostile one takes memory.
inline constexpr size_t kDatDepth = 64;

class DatCollector {
  public:
    explicit DatCollector(const std::unordered_set<uint32_t>& wanted);

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
    // Whether any that is wanted begins with these bits: most of a large database is not, and this
    // stays in the processor's cache.
    std::vector<bool> begins_;
    std::string game_;
    std::u16string name_;
    DatNames names_;
};

// A reader of one of the forms, fed piece by piece.
class DatReader {
  public:
    virtual ~DatReader() = default;
    // Where the next bytes go; empty if there is no memory.
    virtual std::span<char> Room(size_t size) = 0;
    // Of those, so many have come. `last`: nothing follows. Once it has given a problem it isn't
    // fed any more.
    virtual std::optional<DatProblem> Feed(size_t count, bool last) = 0;
    // Where it is, from 1.
    virtual uint64_t Line() const = 0;
};

std::unique_ptr<DatReader> MakeDatXmlReader(DatCollector& collector);
std::unique_ptr<DatReader> MakeDatTextReader(DatCollector& collector);

}  // namespace bw
