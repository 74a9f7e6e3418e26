// The house rule: a folder includes only itself and what stands below it.
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>

#include <gtest/gtest.h>

namespace {

using Folders = std::set<std::string>;

// What each folder may include beside itself, a layer standing for all of its subfolders, a file
// for itself alone: one that needs no library to be linked.
// docs/architecture.md draws the same picture.
const Folders kBelowList{"src/support", "src/rom", "src/language"};
const Folders kBelowDesigner{"src/support", "src/language", "src/settings"};
const Folders kBelowBuilder{"src/support",  "src/rom",  "src/language",
                            "src/settings", "src/list", "src/designer/model"};
const Folders kBelowPrograms{"src/support", "src/rom",      "src/language", "src/settings",
                             "src/list",    "src/designer", "src/builder"};

Folders With(Folders folders, const Folders& more) {
    folders.insert(more.begin(), more.end());
    return folders;
}

Folders OfLayer(const std::string& layer, const Folders& names, Folders below) {
    for (const std::string& name : names)
        below.insert(layer + "/" + name);
    return below;
}

Folders Designer(const Folders& names) {
    return OfLayer("src/designer", names, kBelowDesigner);
}

Folders Builder(const Folders& names) {
    return OfLayer("src/builder", names, kBelowBuilder);
}

Folders Shell(const Folders& names) {
    return OfLayer("src/shell", names, kBelowPrograms);
}

const std::map<std::string, Folders> kAllowed{
    {"src/support", {}},
    {"src/assembler", {"src/support/diagnostic.h"}},
    {"src/rom", {"src/support"}},
    {"src/language", {"src/support"}},
    {"src/settings", {"src/support", "src/language"}},
    {"src/list", kBelowList},
    {"src/list/search", With(kBelowList, {"src/list"})},
    {"src/designer/model", kBelowDesigner},
    {"src/designer/pictures", Designer({"model"})},
    {"src/designer/tools", Designer({"model"})},
    {"src/designer/history", Designer({"model"})},
    {"src/designer/files", Designer({"model", "pictures"})},
    {"src/designer/gestures", Designer({"model", "pictures", "tools", "history"})},
    {"src/builder/input", kBelowBuilder},
    {"src/builder/layout", Builder({"input"})},
    {"src/builder/tables", Builder({"input", "layout"})},
    {"src/builder/output", Builder({"input", "layout"})},
    {"src/builder", Builder({"input", "layout", "tables", "output"})},
    {"src/cli", kBelowPrograms},
    {"src/shell/framework", kBelowPrograms},
    {"src/shell/dialogs", Shell({"framework"})},
    {"src/shell/list", Shell({"framework", "dialogs"})},
    {"src/shell/tasks", Shell({"framework", "dialogs", "list"})},
    {"src/shell/main", Shell({"framework", "dialogs", "list", "tasks"})},
    {"src/app", With(kBelowPrograms, {"src/shell"})},
    {"tools/nesasm", {"src/assembler"}},
    {"tools/music", {}},
    {"tools/tiles", {}},
    {"tools/pictures", With(kBelowPrograms, {"tests/common", "tests/console", "tests/session"})},
};

std::string FolderOf(const std::string& path) {
    return path.substr(0, path.rfind('/'));
}

bool MayInclude(const std::string& folder, const std::string& file) {
    const Folders& allowed = kAllowed.at(folder);
    const std::string used = FolderOf(file);
    // The files of a layer that itself has no folder of its own stand for the whole of it.
    return used == folder || allowed.contains(used) || allowed.contains(FolderOf(used)) ||
           allowed.contains(file);
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
            file.starts_with("src/app/")) {
            continue;
        }
        std::ifstream stream(entry.path());
        for (std::string line; std::getline(stream, line);) {
            EXPECT_FALSE(std::regex_search(line, forbidden)) << entry.path() << ": " << line;
        }
    }
}

}  // namespace
