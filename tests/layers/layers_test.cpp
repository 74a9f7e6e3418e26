// The house rule: a folder includes only itself and what stands below it.
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

namespace {

// What each folder may include beside itself, a layer standing for all of its subfolders, a file
// for itself alone: one that needs no library to be linked.
// docs/architecture.md draws the same picture.
const std::string kBelowDesigner = "src/support src/language src/settings ";
const std::string kBelowBuilder = kBelowDesigner + "src/rom src/list src/designer/model ";
const std::string kBelowConsole = kBelowBuilder + "src/designer src/builder ";
const std::string kBelowPrograms = kBelowConsole + "src/console ";
const std::map<std::string, std::string> kAllowed{
    {"src/support", ""},
    {"src/assembler",
     "src/support/diagnostic.h src/support/windows_api.h src/support/windows_path.h"},
    {"src/rom", "src/support"},
    {"src/language", "src/support"},
    {"src/settings", "src/support src/language"},
    {"src/list", "src/support src/language src/rom"},
    {"src/list/collection", "src/support src/language src/rom src/list"},
    {"src/list/search", "src/support src/language src/rom src/list"},
    {"src/designer/model", kBelowDesigner},
    {"src/designer/pictures", kBelowDesigner + "src/designer/model"},
    {"src/designer/tools", kBelowDesigner + "src/designer/model"},
    {"src/designer/history", kBelowDesigner + "src/designer/model src/rom/crc32.h"},
    {"src/designer/clipboard",
     kBelowDesigner + "src/designer/model src/designer/pictures src/designer/tools"},
    {"src/designer/files", kBelowDesigner + "src/designer/model src/designer/pictures"},
    {"src/designer/import", kBelowDesigner + "src/designer/model src/designer/pictures "
                                             "src/designer/tools src/designer/files"},
    {"src/designer/gestures", kBelowDesigner + "src/designer/model src/designer/pictures "
                                               "src/designer/tools src/designer/history"},
    {"src/builder/input", kBelowBuilder},
    {"src/builder/layout", kBelowBuilder + "src/builder/input"},
    {"src/builder/tables", kBelowBuilder + "src/builder/input src/builder/layout"},
    {"src/builder/output", kBelowBuilder + "src/builder/input src/builder/layout"},
    {"src/builder/carts",
     kBelowBuilder + "src/builder/input src/builder/layout src/builder/tables"},
    {"src/builder/design_check",
     kBelowBuilder + "src/designer/gestures src/designer/pictures src/designer/tools "
                     "src/builder/input src/builder/layout src/builder/tables"},
    {"src/builder", kBelowBuilder + "src/builder/input src/builder/layout src/builder/tables "
                                    "src/builder/output src/builder/carts"},
    {"src/console", kBelowConsole},
    {"src/update", kBelowDesigner},
    {"src/cli", kBelowPrograms},
    {"src/shell/framework", kBelowPrograms},
    {"src/shell/dialogs", kBelowPrograms + "src/update src/shell/framework"},
    {"src/designer/window", kBelowPrograms + "src/shell/framework src/shell/dialogs"},
    {"src/shell/list", kBelowPrograms + "src/shell/framework src/shell/dialogs"},
    {"src/shell/tasks", kBelowPrograms + "src/shell/framework src/shell/dialogs src/shell/list"},
    {"src/shell/main", kBelowPrograms + "src/update src/shell src/designer/window"},
    {"src/app", kBelowPrograms + "src/update src/shell"},
    {"tools/nesasm", "src/assembler src/support/program_words.h src/support/windows_path.h"},
    {"tools/music", ""},
    {"tools/tiles", ""},
    {"tools/release", kBelowDesigner + "src/update src/cli/json.h"},
    {"tools/pictures", kBelowPrograms + "tests/common tests/console tests/session"},
};

std::string FolderOf(const std::string& path) {
    return path.substr(0, path.rfind('/'));
}

bool MayInclude(const std::string& folder, const std::string& file) {
    std::istringstream words(kAllowed.at(folder));
    const std::set<std::string> allowed{std::istream_iterator<std::string>(words), {}};
    const std::string used = FolderOf(file);
    // The toolkit's part of a layer isn't one of its rooms.
    const bool room = used != "src/designer/window" && allowed.contains(FolderOf(used));
    return used == folder || allowed.contains(used) || room || allowed.contains(file);
}

// The file of the tree that an include names, relative to the tree; empty for one from outside.
std::string Resolve(const std::filesystem::path& tree, const std::filesystem::path& from,
                    const std::string& include) {
    for (const std::filesystem::path& base :
         {from.parent_path(), tree / "src", tree / "tools", tree / "tests", tree / "tests/console",
          tree / "tests/session"}) {
        if (std::filesystem::exists(base / include)) {
            return std::filesystem::relative(base / include, tree).generic_string();
        }
    }
    return {};
}

bool IsSource(const std::filesystem::path& path) {
    return path.extension() == ".h" || path.extension() == ".cpp";
}

TEST(Layers, IncludesPointDownward) {
    const std::filesystem::path tree = BANKWEAVER_SOURCE;
    const std::regex include("^\\s*#\\s*include\\s*\"([^\"]+)\"");
    size_t checked = 0;
    for (const char* root : {"src", "tools"}) {
        for (const auto& entry : std::filesystem::recursive_directory_iterator(tree / root)) {
            if (!IsSource(entry.path())) {
                continue;
            }
            const std::string file = std::filesystem::relative(entry.path(), tree).generic_string();
            const std::string folder = FolderOf(file);
            ASSERT_TRUE(kAllowed.contains(folder)) << file << " is in no folder this test knows";
            std::ifstream stream(entry.path());
            for (std::string line; std::getline(stream, line);) {
                std::smatch match;
                if (!std::regex_search(line, match, include)) {
                    continue;
                }
                const std::string target = Resolve(tree, entry.path(), match[1]);
                ASSERT_FALSE(target.empty()) << file << " includes " << match[1] << ", not found";
                EXPECT_TRUE(MayInclude(folder, target)) << file << " must not include " << target;
                ++checked;
            }
        }
    }
    EXPECT_GT(checked, 100u);
}

TEST(Layers, TheCoreKnowsNoToolkitAndNoPlatformSwitches) {
    const std::filesystem::path tree = BANKWEAVER_SOURCE;
    const std::regex forbidden("^\\s*#\\s*(include\\s*<(Q|qt)|(if|ifdef|ifndef|elif)\\b)");
    for (const auto& entry : std::filesystem::recursive_directory_iterator(tree / "src")) {
        const std::string file = std::filesystem::relative(entry.path(), tree).generic_string();
        if (!IsSource(entry.path()) || file.starts_with("src/shell/") ||
            file.starts_with("src/designer/window/") || file.starts_with("src/app/")) {
            continue;
        }
        std::ifstream stream(entry.path());
        for (std::string line; std::getline(stream, line);) {
            EXPECT_FALSE(std::regex_search(line, forbidden)) << entry.path() << ": " << line;
        }
    }
}

// Its functions know no long paths, no links and no devices on Windows.
TEST(Layers, TheCoreAsksTheDiskThroughSupport) {
    const std::filesystem::path tree = BANKWEAVER_SOURCE;
    const std::regex forbidden(
        "(fs|filesystem)::(absolute|canonical|weakly_canonical|copy|copy_file|create_director\\w+|"
        "directory_iterator|equivalent|exists|file_size|is_\\w+|last_write_time|read_symlink|"
        "recursive_directory_iterator|remove|remove_all|rename|status|symlink_status)\\b");
    for (const char* layer :
         {"rom", "language", "settings", "list", "designer", "builder", "cli"}) {
        for (const auto& entry :
             std::filesystem::recursive_directory_iterator(tree / "src" / layer)) {
            const bool ours = entry.path().stem().string().ends_with("_posix");
            if (!IsSource(entry.path()) || ours) continue;
            std::ifstream stream(entry.path());
            for (std::string line; std::getline(stream, line);)
                EXPECT_FALSE(std::regex_search(line, forbidden)) << entry.path() << ": " << line;
        }
    }
}

}  // namespace
