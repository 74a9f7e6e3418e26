// What the environment tells of files and programs.
#pragma once

#include <filesystem>
#include <optional>
#include <string_view>
#include <vector>

namespace bw {

// The path that a variable holds; nothing if it isn't set.
std::optional<std::filesystem::path> EnvironmentPath(const char* name);
// The folders of PATH in their order, without empty ones.
std::vector<std::filesystem::path> ProgramFolders();

// Whether the file is there and the system would run it.
bool IsProgram(const std::filesystem::path& file);
// The first program of this name in the folders. What Windows puts behind names of programs isn't
// part of `name`.
std::optional<std::filesystem::path> FindProgram(std::string_view name,
                                                 const std::vector<std::filesystem::path>& folders);

}  // namespace bw
