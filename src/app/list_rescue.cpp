#include "app/list_rescue.h"

#include <string>

#include "list/list_file.h"
#include "support/files.h"
#include "support/ini_file.h"
#include "support/paths.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

std::optional<fs::path> SaveNew(const IniFile& list, const fs::path& folder) {
    constexpr int kMostNames = 1000;
    if (!MakeFolders(folder)) return std::nullopt;
    for (int number = 1; number <= kMostNames; ++number) {
        fs::path file = folder / ("rescued_list_" + std::to_string(number) + ".fcl");
        std::error_code error;
        if (fs::exists(file, error)) continue;
        if (list.Save(file)) return file;
        return std::nullopt;
    }
    return std::nullopt;
}

}  // namespace

std::optional<fs::path> RescueList(GuardedStore& store) {
    store.Flush();
    if (!store.InMemoryOnly(kHistoryKey, kHistoryValue)) return std::nullopt;
    IniFile list;
    list.LoadFromMemory(ReadWholeBinary(store, kHistoryKey, kHistoryValue), &IsListKey);
    list.Remove(u"list_view");  // the widths of the columns, which no list file has
    if (list.GetInt(u"history", u"count", 0) == 0) return std::nullopt;
    std::error_code error;
    const fs::path temporary = fs::temp_directory_path(error);
    for (const fs::path& folder : {UserConfigFolder(), temporary}) {
        if (auto file = SaveNew(list, folder)) return file;
    }
    return std::nullopt;
}

}  // namespace bw
