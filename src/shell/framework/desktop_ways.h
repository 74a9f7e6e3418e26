// What each system's desktop does in a way of its own.
#pragma once

#include <filesystem>
#include <functional>

class QObject;

namespace bw {

// Opens the file manager on the file's folder with the file selected. Returns at once. `owner`
// holds what waits for the file manager's answer; `end` is told whether it does that, at once or
// later.
void SelectInFileManager(const std::filesystem::path& file, QObject& owner,
                         const std::function<void(bool selected)>& end);

// Whether file dialogs tell extensions in capital letters from those in small ones.
bool FileDialogsTellCase();

}  // namespace bw
