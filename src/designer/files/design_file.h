// The whole design as a file (.fcm).
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <vector>

#include "designer/model/design_document.h"
#include "language/language.h"
#include "support/diagnostic.h"
#include "support/file_problem.h"

namespace bw {

// A larger file is no design: a screen of tiles and all the rest takes some 50 KB.
inline constexpr uint64_t kLargestDesignFile = uint64_t{1} << 24;

// What is wrong with a design, or with its file; nothing if all is well.
using DesignProblem = std::optional<Diagnostic>;

// How much of a design a file holds: everything (.fcm); the screen's tiles and colours with the
// caption and the texts on them (.fcc); or the caption and the texts alone (.fct).
enum class DesignScope { kWhole, kScreen, kTexts };

// Reads a design into the document. Those of CustomText and the three tile lists that the scope
// has are emptied first, so that the file's are the only ones; the large cursor stays empty where
// a whole design has none. What else the file doesn't hold stays as it is, and so does what the
// scope doesn't take. A whole design clears the marks on tiles. A file that is damaged, empty or
// without a chunk of its scope is refused, and the document stays as it was.
DesignProblem ReadDesign(std::span<const uint8_t> bytes, DesignDocument& document,
                         Language language, DesignScope scope = DesignScope::kWhole);

// The texts are cut to the 260 units that a reader takes.
std::vector<uint8_t> WriteDesign(const DesignDocument& document,
                                 DesignScope scope = DesignScope::kWhole);

// The same with a file, which is the place of any problem.
DesignProblem LoadDesign(const std::filesystem::path& file, DesignDocument& document,
                         Language language);
// Gives the file's bytes as well.
DesignProblem LoadDesign(const std::filesystem::path& file, DesignDocument& document,
                         std::vector<uint8_t>& bytes, Language language);
// Loads a design that is to be shown: a cursor that the file leaves out stands beside its list.
DesignProblem OpenDesign(const std::filesystem::path& file, DesignDocument& document,
                         Language language);
// Replaces the file in one safe step.
DesignProblem SaveDesign(const std::filesystem::path& file, const DesignDocument& document,
                         Language language);
DesignProblem SaveDesign(const std::filesystem::path& file, std::span<const uint8_t> bytes,
                         Language language);

}  // namespace bw
