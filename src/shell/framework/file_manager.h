// Opening the desktop's file manager.
#pragma once

#include <filesystem>
#include <functional>

class QObject;

namespace bw {

// On a folder, or on a file's folder with the file selected where the desktop can do that. Returns
// at once. `owner` holds what waits for the file manager's answer, and `failed` is told the folder
// that couldn't be shown, at once or later.
void ShowInFileManager(const std::filesystem::path& path, QObject& owner,
                       const std::function<void(const std::filesystem::path& folder)>& failed);

}  // namespace bw
