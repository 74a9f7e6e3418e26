// Where the program and the user's files lie, and how paths are cut and joined.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace bw {

// The running program's own file; its folder has no trailing separator.
std::filesystem::path ExecutablePath();
std::filesystem::path ExecutableFolder();

// The last component up to its last point; without a point the whole component. A leading point
// counts like any other, so ".nes" has an empty name. Works on text, since a list may hold paths
// of another platform: both / and \ separate on Windows, / alone elsewhere.
std::u16string NameWithoutExtension(std::u16string_view path);

// What std::filesystem tells of paths as text, with the shares of Windows ("\\\\server\\share"),
// which it takes for folders of a drive.
bool IsAbsolutePath(const std::filesystem::path& path);
// Without "." and ".." and doubled separators.
std::filesystem::path NormalPath(const std::filesystem::path& path);
// From the current folder; not normalised. Empty stays empty.
std::filesystem::path FromCurrentFolder(const std::filesystem::path& path);

// Joins a relative path to `base`; an absolute one comes back normalised only.
std::filesystem::path AbsolutePath(const std::filesystem::path& path,
                                   const std::filesystem::path& base);

// True for a path from the root of the other kind of platform, which must not be joined to a folder
// of this one: with a drive or a share here, with a leading / on Windows.
bool IsAbsoluteElsewhere(std::u16string_view path);

// `path` as seen from the folder `base`; `path` as given where no such form exists.
std::filesystem::path RelativePath(const std::filesystem::path& path,
                                   const std::filesystem::path& base);

// True if the extension is `extension` (without its point), ignoring ASCII case.
bool HasExtension(const std::filesystem::path& path, std::string_view extension);

// The folders of the user's settings, of what the program keeps for the user, and of scratch data.
// The variable BANKWEAVER_HOME moves all of them below the folder that it names; otherwise the XDG
// base directories (Linux) or the known folders (Windows) apply.
std::filesystem::path UserConfigFolder();
std::filesystem::path UserDataFolder();
std::filesystem::path UserScratchFolder();

// The scratch folder of one build in this process: <scratch>/Temp/Bankweaver/<process id>.
std::filesystem::path WorkFolder();

// Removes work folders of builds that were killed: those whose process is gone and that nobody
// holds a FileLock on (a process of another container may use the same folder), and where that
// can't be told, those that nobody has touched for a day.
void RemoveAbandonedWorkFolders();

}  // namespace bw
