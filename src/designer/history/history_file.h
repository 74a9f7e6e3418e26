// The undo history in a file of its own: the present state whole, then the differences that lead
// away from it, the nearest first. docs/formats.md has the bytes.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <vector>

#include "designer/history/undo_history.h"
#include "support/files.h"

namespace bw {

// Bytes that are written and read. A longer history is kept up to here in the file; the steps that
// are furthest from the present state are left out.
inline constexpr size_t kLargestHistoryFile = 256u << 20;

// The user's own, beside the settings.
std::filesystem::path DesignHistoryFile();

// The history isn't empty.
std::vector<uint8_t> StoredHistory(const UndoHistory& history, size_t limit = kLargestHistoryFile);
// As many of the states around the present one as are undamaged; nothing if that one isn't.
std::optional<UndoHistory> HistoryIn(std::span<const uint8_t> stored);

// Nothing if there is no file, or none that can be read.
std::optional<UndoHistory> ReadHistoryFile(const std::filesystem::path& file);
// Makes the folder as needed, and replaces the file in one step. A file there that is no history of
// this form (a later version's, one over the limit, another program's) is kept under its name with
// ".kept" behind it.
FileResult<> WriteHistoryFile(const std::filesystem::path& file, const UndoHistory& history);

}  // namespace bw
