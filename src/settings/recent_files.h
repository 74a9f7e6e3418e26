// The files that the user had to do with last, the newest first.
#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

#include "settings/settings_store.h"

namespace bw {

enum class RecentKind : uint8_t { kLists, kDesigns, kCarts };
inline constexpr int kRecentFiles = 8;  // of each kind

// Absolute paths; whether the files are still there nobody has looked.
std::vector<std::filesystem::path> RecentFiles(const SettingsStore& store, RecentKind kind);
// Puts an absolute path in front.
void AddRecentFile(SettingsStore& store, RecentKind kind, const std::filesystem::path& file);
void ForgetRecentFile(SettingsStore& store, RecentKind kind, const std::filesystem::path& file);
void ForgetRecentFiles(SettingsStore& store, RecentKind kind);

}  // namespace bw
