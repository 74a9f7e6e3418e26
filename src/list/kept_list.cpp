#include "list/kept_list.h"

#include <algorithm>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "list/list_file.h"
#include "rom/crc32.h"
#include "support/file_queries.h"
#include "support/flush_file.h"
#include "support/ini_file.h"
#include "support/numbers.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

constexpr int kMostPrograms = 1000;
constexpr uint64_t kLongest = uint64_t{1} << 28;  // bytes; 20,000 games have some 10 MB
constexpr std::u16string_view kSection = u"kept";
constexpr std::u16string_view kOrigin = u"origin";
constexpr size_t kSumLine = 14;  // bytes of the last line, the sum of all before it

std::string SumLine(std::span<const uint8_t> bytes) {
    std::string line = "sum=";
    AppendHex(line, Crc32(bytes), 8);
    return line + "\r\n";
}

std::span<const uint8_t> BytesOf(std::string_view text) {
    return {reinterpret_cast<const uint8_t*>(text.data()), text.size()};
}

fs::path LockOf(fs::path file) {
    return file.replace_extension("lock");
}

FileResult<FileLock> TakeLock(const fs::path& file) {
    const fs::path lock = LockOf(file);
    if (!Exists(lock)) {
        if (const FileResult<File> made = File::Create(lock); !made) return made.Problem();
    }
    return FileLock::TryTake(lock);
}

bool IsHeld(const FileProblem& problem) {
    return problem.system == std::errc::operation_would_block;
}

// The list of a file that is as it was written.
std::optional<BroughtBack> ReadKept(const fs::path& file, const fs::path& base) {
    const FileResult<std::vector<uint8_t>> bytes = ReadFile(file, kLongest);
    if (!bytes || bytes->size() < kSumLine) return std::nullopt;
    const std::span<const uint8_t> text(bytes->data(), bytes->size() - kSumLine);
    if (!std::ranges::equal(BytesOf(SumLine(text)), std::span(*bytes).last(kSumLine)))
        return std::nullopt;
    IniFile kept;
    kept.LoadFromMemory(text, [](std::u16string_view section, std::u16string_view key) {
        return section == kSection ? key == kOrigin : IsListKey(section, key);
    });
    BroughtBack list{.games = {},
                     .origin = kept.GetInt(kSection, kOrigin, 0),
                     .file = file,
                     .time = {},
                     .lock = {}};
    list.time = FileTime(file).ValueOr({});
    AppendListEntries(kept, base, list.games);
    return list;
}

}  // namespace

FileResult<KeptList> KeptList::Begin(const fs::path& folder) {
    if (const FileResult<> made = MakeFolders(folder); !made) return made.Problem();
    for (int number = 1; number <= kMostPrograms; ++number) {
        KeptList kept;
        kept.file_ = folder / ("list_" + std::to_string(number) + ".kept");
        FileResult<FileLock> lock = TakeLock(kept.file_);
        if (!lock && IsHeld(lock.Problem())) continue;
        if (!lock) return lock.Problem();
        if (Exists(kept.file_)) continue;  // of a program that was killed
        kept.lock_ = std::move(*lock);
        RemoveAbandonedReplacements(kept.file_);
        return kept;
    }
    return ProblemOf(folder, std::errc::no_lock_available);
}

FileResult<> KeptList::Keep(const GameList& games, const fs::path& base, uint32_t origin) {
    IniFile list;
    StoreListEntries(games, base, list);
    list.SetInt(kSection, kOrigin, origin);
    std::string text = list.ToText();
    text += SumLine(BytesOf(text));
    FileResult<ReplacementFile> file = ReplacementFile::Begin(file_);
    if (!file) return file.Problem();
    FileResult<> written = file->Contents().WriteAt(0, BytesOf(text));
    // A rename can reach the disk before the bytes do.
    if (written) written = FlushFile(file->Temporary());
    return written ? file->Commit() : written;
}

KeptLists FindKeptLists(const fs::path& folder, const fs::path& base) {
    KeptLists found;
    const auto entries = ListFolder(folder).ValueOr({});
    for (const FolderEntry& entry : entries) {
        const fs::path& file = entry.path;
        if (file.extension() != ".kept") continue;
        FileResult<FileLock> lock = TakeLock(file);
        if (!lock) continue;  // its program runs, or nobody can tell
        if (!Exists(file)) continue;
        if (std::optional<BroughtBack> list = ReadKept(file, base)) {
            list->lock = std::move(*lock);
            found.lists.push_back(std::move(*list));
        } else {
            found.damaged.push_back(file);
        }
    }
    std::ranges::sort(found.lists, [](const BroughtBack& left, const BroughtBack& right) {
        if (left.games.empty() != right.games.empty()) return right.games.empty();
        return left.time > right.time;
    });
    return found;
}

}  // namespace bw
