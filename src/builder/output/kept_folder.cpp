#include "builder/output/kept_folder.h"

#include <map>
#include <string>
#include <vector>

#include "rom/crc32.h"
#include "support/file_queries.h"
#include "support/files.h"
#include "support/numbers.h"
#include "support/text.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

constexpr size_t kCrcDigits = 8;

using CrcByPath = std::map<std::string, std::string>;  // in hexadecimal; paths below the folder

std::string Hex(uint32_t crc) {
    std::string text;
    AppendHex(text, crc, kCrcDigits);
    return text;
}

std::string PathBelow(const fs::path& file, const fs::path& folder) {
    return WideToBytes(PathText(file.lexically_relative(folder).generic_string()));
}

fs::path PathOf(const std::string& pathBelow) {
    return TextPath(BytesToWide(pathBelow));
}

FileResult<std::string> CrcOf(const fs::path& file) {
    const auto bytes = ReadFile(file);
    if (!bytes) return bytes.Problem();
    return Hex(Crc32(*bytes));
}

CrcByPath ReadList(const fs::path& folder) {
    CrcByPath list;
    const auto bytes = ReadFile(folder / kKeptListName);
    if (!bytes) return list;
    std::string_view rest(reinterpret_cast<const char*>(bytes->data()), bytes->size());
    while (!rest.empty()) {
        const size_t end = std::min(rest.find('\n'), rest.size());
        const std::string_view line = rest.substr(0, end);
        if (line.size() > kCrcDigits + 1)
            list.emplace(line.substr(kCrcDigits + 1), line.substr(0, kCrcDigits));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return list;
}

// Calls visit(item) for all but folders in the tree until it gives a problem back. Links are items.
template <typename Visit>
FileResult<> ForFiles(const fs::path& folder, const Visit& visit) {
    const auto items = ListFolder(folder);
    if (!items) return items.Problem();
    for (const FolderEntry& item : *items) {
        FileResult<> visited =
            item.kind == FileKind::kFolder ? ForFiles(item.path, visit) : visit(item);
        if (!visited) return visited;
    }
    return {};
}

FileResult<CrcByPath> CrcsOf(const fs::path& folder) {
    CrcByPath files;
    const FileResult<> read = ForFiles(folder, [&](const FolderEntry& item) {
        const FileResult<std::string> crc = CrcOf(item.path);
        if (crc) files.emplace(PathBelow(item.path, folder), *crc);
        return crc ? FileResult<>() : FileResult<>(crc.Problem());
    });
    if (!read) return read.Problem();
    return files;
}

FileResult<> RemoveFiles(const fs::path& folder) {
    std::vector<fs::path> files;
    FileResult<> done = ForFiles(folder, [&](const FolderEntry& item) {
        files.push_back(item.path);
        return FileResult<>();
    });
    for (const fs::path& file : files) {
        if (done) done = DeleteFile(file);
    }
    return done;
}

FileResult<> CopyInto(const fs::path& from, const fs::path& to) {
    const auto bytes = ReadFile(from);
    if (!bytes) return bytes.Problem();
    const FileResult<> made = MakeFolders(to.parent_path());
    return made ? WriteFile(to, *bytes) : made;
}

// An item that the list doesn't have, or has otherwise.
bool IsForeign(const FolderEntry& item, const fs::path& folder, const CrcByPath& list) {
    if (item.kind != FileKind::kFile) return true;
    if (item.path == folder / kKeptListName) return list.empty();
    const auto row = list.find(PathBelow(item.path, folder));
    if (row == list.end()) return true;
    const FileResult<std::string> crc = CrcOf(item.path);
    return !crc || *crc != row->second;
}

}  // namespace

FileResult<std::optional<fs::path>> FindForeignFile(const fs::path& folder) {
    std::optional<fs::path> foreign;
    if (EntryKind(folder) == FileKind::kNone) return foreign;
    const CrcByPath list = ReadList(folder);
    const FileResult<> visited = ForFiles(folder, [&](const FolderEntry& item) {
        if (!IsForeign(item, folder, list)) return FileResult<>();
        foreign = item.path;
        return FileResult<>(ProblemOf(item.path, std::errc::file_exists));
    });
    if (!visited && !foreign) return visited.Problem();
    return foreign;
}

FileResult<> KeepFiles(const fs::path& from, const fs::path& folder) {
    const auto foreign = FindForeignFile(folder);
    if (!foreign) return foreign.Problem();
    if (*foreign) return ProblemOf(**foreign, std::errc::file_exists);
    const FileResult<CrcByPath> files = CrcsOf(from);
    if (!files) return files.Problem();
    FileResult<> done = MakeFolders(folder);
    if (done) done = RemoveFiles(folder);
    // The list first: whatever of the files a kill lets stand is then known as a build's.
    std::string list;
    for (const auto& [path, crc] : *files)
        list += crc + " " + path + "\n";
    if (done) done = WriteFile(folder / kKeptListName, list);
    for (const auto& [path, crc] : *files) {
        if (done) done = CopyInto(from / PathOf(path), folder / PathOf(path));
    }
    return done;
}

}  // namespace bw
