#include "list/list_file.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>

#include "language/problem_text.h"
#include "rom/image_files.h"
#include "support/file_queries.h"
#include "support/numbers.h"
#include "support/parallel.h"
#include "support/paths.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr std::u16string_view kSection = u"history";
constexpr std::u16string_view kCount = u"count";

constexpr size_t kSumDigits = 16;

constexpr size_t kLoaderThreads = 8;
constexpr size_t kPiece = 64;

// "00012_path"
std::u16string Key(size_t number, std::u16string_view field) {
    std::u16string key(6, u'0');
    key[5] = u'_';
    for (size_t i = 5; i > 0; --i, number /= 10)
        key[i - 1] = static_cast<char16_t>(u'0' + number % 10);
    return key.append(field);
}

// The last two are for the program alone: PRG's and CHR's sums as 16 hexadecimal digits, bytes of
// the file. Programs that don't know them leave them out.
constexpr std::u16string_view kFields[] = {u"path",  u"path_relative", u"name", u"remark",
                                           u"check", u"crc",           u"size"};

// Whether Key makes it for a number below kListLimit.
bool IsEntryKey(std::u16string_view key) {
    constexpr size_t kDigits = 5;
    if (key.size() <= kDigits || key[kDigits] != u'_') return false;
    size_t number = 0;
    for (const char16_t digit : key.substr(0, kDigits)) {
        if (digit < u'0' || digit > u'9') return false;
        number = number * 10 + static_cast<size_t>(digit - u'0');
    }
    return number < kListLimit &&
           std::ranges::find(kFields, key.substr(kDigits + 1)) != std::end(kFields);
}

// Of a place in an archive the archive has to do: what it holds shows when it is read.
bool NamesFile(const std::filesystem::path& path) {
    return IsFile(path) || ContainerOf(path) != path;
}

// The path below `base` as written, or where that names no file, with the separators of a list
// that was written on Windows turned round.
std::filesystem::path Locate(const std::u16string& path, const std::filesystem::path& base) {
    std::filesystem::path asWritten = AbsolutePath(TextPath(path), base);
    if (path.find(u'\\') == std::u16string::npos || NamesFile(asWritten)) return asWritten;
    std::u16string turned = path;
    std::ranges::replace(turned, u'\\', u'/');
    return AbsolutePath(TextPath(turned), base);
}

struct StoredEntry {
    std::u16string path;
    std::u16string relativePath;
    std::u16string name;
    std::u16string remark;
    bool checked = false;
    uint64_t size = 0;
    std::optional<DataCrcs> crcs;
};

// All of a text as a number; nothing for any other text.
std::optional<uint64_t> WholeNumber(std::u16string_view text, int base) {
    const std::string digits = ToUtf8(text);
    uint64_t number = 0;
    const char* const end = digits.data() + digits.size();
    const auto [rest, error] = std::from_chars(digits.data(), end, number, base);
    return error == std::errc() && rest == end ? std::optional(number) : std::nullopt;
}

// What was known of the file when the list was written. The sums of a file that has another size
// now aren't its own any more.
void ApplyKnown(GameEntry& entry, const StoredEntry& stored) {
    const bool sameFile = entry.size == 0 || stored.size == 0 || entry.size == stored.size;
    if (sameFile) entry.crcs = stored.crcs;
    if (entry.size == 0) entry.size = stored.size;
}

// The text that the list keeps of a missing file: where the path can't be made absolute here, as
// it stands, so that saving the list again doesn't lose it.
std::u16string MissingPath(const std::u16string& path, const std::filesystem::path& located) {
    return IsAbsoluteElsewhere(path) ? path : PathText(located);
}

// Where the entry's file is to be read; empty for an entry without any path.
struct LocatedFile {
    std::filesystem::path file;
    bool byRelativePath = false;
};

LocatedFile LocateEntry(const StoredEntry& stored, const std::filesystem::path& base,
                        const std::filesystem::path& otherBase) {
    std::filesystem::path file = Locate(stored.relativePath, base);
    if (!otherBase.empty() && !NamesFile(file)) file = Locate(stored.relativePath, otherBase);
    if (NamesFile(file)) return {std::move(file), true};
    return {stored.path.empty() ? std::filesystem::path() : Locate(stored.path, base)};
}

// `entry` is what was read from the file.
void CompleteEntry(GameEntry& entry, StoredEntry stored, const LocatedFile& located) {
    if (located.file.empty()) {
        entry = GameEntry();
    } else if (!located.byRelativePath && !entry.headerRead) {
        entry.path = MissingPath(stored.path, located.file);
    }
    ApplyKnown(entry, stored);
    entry.checked = stored.checked;
    entry.name = std::move(stored.name);
    entry.remark = std::move(stored.remark);
}

StoredEntry ReadStored(const IniFile& text, size_t number) {
    StoredEntry stored;
    stored.path = text.GetString(kSection, Key(number, u"path"));
    stored.relativePath = text.GetString(kSection, Key(number, u"path_relative"));
    stored.name = text.GetString(kSection, Key(number, u"name"));
    stored.remark = text.GetString(kSection, Key(number, u"remark"));
    stored.checked = text.GetInt(kSection, Key(number, u"check"), 0) != 0;
    stored.size =
        WholeNumber(text.GetString(kSection, Key(number, u"size")), 10).value_or(stored.size);
    const std::u16string sums = text.GetString(kSection, Key(number, u"crc"));
    if (const auto both = WholeNumber(sums, 16); both && sums.size() == kSumDigits) {
        stored.crcs = {static_cast<uint32_t>(*both >> 32), static_cast<uint32_t>(*both)};
    }
    return stored;
}

std::u16string SumsText(const DataCrcs& crcs) {
    std::string digits;
    AppendHex(digits, crcs.prg, kSumDigits / 2);
    AppendHex(digits, crcs.chr, kSumDigits / 2);
    return ToWide(digits);
}

// The format has no way to write a line break.
std::u16string OneLine(std::u16string_view value) {
    std::u16string line;
    line.reserve(value.size());
    for (size_t i = 0; i < value.size(); ++i) {
        const bool pair = value.substr(i, 2) == u"\r\n";
        line += value[i] == u'\r' || value[i] == u'\n' ? u' ' : value[i];
        if (pair) ++i;
    }
    return line;
}

}  // namespace

bool IsListKey(std::u16string_view section, std::u16string_view key) {
    if (section == kSection) return key == kCount || IsEntryKey(key);
    return section == u"list_view" && key.starts_with(u"list_view_col_000");
}

ListLoadResult AppendListEntries(const IniFile& text, const std::filesystem::path& base,
                                 GameList& list, const std::filesystem::path& otherBase) {
    ListLoadResult result;
    result.announced = text.GetInt(kSection, kCount, 0);
    result.overLimit = list.size() + uint64_t{result.announced} > kListLimit;
    const size_t room = kListLimit - std::min(list.size(), kListLimit);
    result.added = std::min<size_t>(result.announced, room);

    std::vector<StoredEntry> stored(result.added);
    std::vector<LocatedFile> located(result.added);
    std::vector<std::filesystem::path> files(result.added);
    ForPieces(result.added, kPiece, kLoaderThreads, [&](size_t begin, size_t end) {
        for (size_t n = begin; n < end; ++n) {
            stored[n] = ReadStored(text, n);
            located[n] = LocateEntry(stored[n], base, otherBase);
            files[n] = located[n].file;
        }
    });
    // Together, so that each archive is read but once.
    std::vector<GameEntry> entries = ReadGameEntries(files);
    for (size_t n = 0; n < entries.size(); ++n)
        CompleteEntry(entries[n], std::move(stored[n]), located[n]);
    list.insert(list.end(), std::make_move_iterator(entries.begin()),
                std::make_move_iterator(entries.end()));
    return result;
}

void StoreListEntries(const GameList& list, const std::filesystem::path& base, IniFile& text) {
    text.Remove(kSection);
    text.SetInt(kSection, kCount, static_cast<uint32_t>(list.size()));
    for (size_t n = 0; n < list.size(); ++n) {
        const GameEntry& entry = list[n];
        std::u16string path = entry.path;
        std::u16string relativePath = entry.path;
        if (!path.empty() && !IsAbsoluteElsewhere(path)) {
            const std::filesystem::path absolute = AbsolutePath(TextPath(path), base);
            path = PathText(absolute);
            relativePath = PathText(RelativePath(absolute, base));
        }
        text.SetString(kSection, Key(n, u"path"), OneLine(path));
        text.SetString(kSection, Key(n, u"path_relative"), OneLine(relativePath));
        text.SetString(kSection, Key(n, u"name"), OneLine(entry.name));
        text.SetInt(kSection, Key(n, u"check"), entry.checked ? 1 : 0);
        text.SetString(kSection, Key(n, u"remark"), OneLine(entry.remark));
        if (entry.crcs) text.SetString(kSection, Key(n, u"crc"), SumsText(*entry.crcs));
        if (entry.size != 0) {
            text.SetString(kSection, Key(n, u"size"), ToWide(std::to_string(entry.size)));
        }
    }
}

FileResult<ListLoadResult> LoadListFile(const std::filesystem::path& file,
                                        const std::filesystem::path& base, GameList& list,
                                        const std::filesystem::path& otherBase) {
    IniFile text;
    if (const FileResult<> loaded = text.Load(file, IsListKey); !loaded) return loaded.Problem();
    if (text.GetString(kSection, kCount).empty()) {
        return FileProblem{.file = file, .kind = FileProblem::Kind::kWrongKind};
    }
    return AppendListEntries(text, base, list, otherBase);
}

FileResult<> SaveListFile(const std::filesystem::path& file, const GameList& list,
                          const std::filesystem::path& base) {
    IniFile text;
    StoreListEntries(list, base, text);
    return text.Save(file);
}

Diagnostic ListDiagnostic(const FileProblem& problem, Language language) {
    Diagnostic diagnostic = FileDiagnostic(problem, language);
    if (problem.kind == FileProblem::Kind::kWrongKind) {
        diagnostic.text = LoadText(TextId::kHoldsNoList, language);
    }
    return diagnostic;
}

std::filesystem::path WithListExtension(std::filesystem::path file) {
    if (!HasExtension(file, "fcl")) file += ".fcl";
    return file;
}

}  // namespace bw
