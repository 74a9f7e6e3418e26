// Opening the desktop's file manager.
#pragma once

#include <filesystem>

class QObject;

namespace bw {

// On a folder, or on a file's folder with the file selected where the desktop can do that. Returns
// at once. `owner` holds what waits for the file manager's answer.
void ShowInFileManager(const std::filesystem::path& path, QObject& owner);

}  // namespace bw
