#include "settings/recent_files.h"

#include <string>
#include <string_view>

#include "support/text.h"

namespace bw {
namespace {

// Between the paths of a value.
constexpr char16_t kEnd = u'\n';

std::string_view NameOf(RecentKind kind) {
    switch (kind) {
        case RecentKind::kLists:
            return "RecentLists";
        case RecentKind::kDesigns:
            return "RecentDesigns";
        default:
            return "RecentCarts";
    }
}

void Store(SettingsStore& store, RecentKind kind, const std::vector<std::filesystem::path>& files) {
    std::u16string text;
    for (const std::filesystem::path& file : files)
        text += PathText(file) + kEnd;
    store.RegWriteString(kMainKey, NameOf(kind), text);
}

}  // namespace

std::vector<std::filesystem::path> RecentFiles(const SettingsStore& store, RecentKind kind) {
    std::u16string text;
    store.RegReadString(kMainKey, NameOf(kind), text);
    std::vector<std::filesystem::path> files;
    std::u16string_view rest = text;
    while (!rest.empty() && files.size() < size_t{kRecentFiles}) {
        const size_t end = rest.find(kEnd);
        if (end != 0) files.push_back(TextPath(rest.substr(0, end)));
        rest = end == rest.npos ? std::u16string_view() : rest.substr(end + 1);
    }
    return files;
}

void AddRecentFile(SettingsStore& store, RecentKind kind, const std::filesystem::path& file) {
    // A name that may hold anything but what parts the names here.
    if (PathText(file).find(kEnd) != std::u16string::npos) return;
    std::vector<std::filesystem::path> files = RecentFiles(store, kind);
    if (!files.empty() && files.front() == file) return;
    std::erase(files, file);
    files.insert(files.begin(), file);
    if (files.size() > size_t{kRecentFiles}) files.resize(kRecentFiles);
    Store(store, kind, files);
}

void ForgetRecentFile(SettingsStore& store, RecentKind kind, const std::filesystem::path& file) {
    std::vector<std::filesystem::path> files = RecentFiles(store, kind);
    if (std::erase(files, file) > 0) Store(store, kind, files);
}

void ForgetRecentFiles(SettingsStore& store, RecentKind kind) {
    Store(store, kind, {});
}

}  // namespace bw
