// The house rule: a layer includes only itself and what stands below it.
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>

#include <gtest/gtest.h>

namespace {

using Layers = std::set<std::string>;

// What each folder may include beside itself. docs/architecture.md draws the same picture.
const std::map<std::string, Layers> kAllowed{
    {"src/support", {}},
    {"src/rom", {"src/support"}},
    {"src/assembler", {}},
    {"src/designer/document", {"src/support", "src/rom"}},
    {"src/builder", {"src/support", "src/rom", "src/designer/document"}},
    {"src/cli", {"src/support", "src/rom", "src/designer/document", "src/builder"}},
    {"src/shell", {"src/support", "src/rom", "src/designer/document", "src/builder"}},
    {"src/app", {"src/support", "src/rom", "src/shell"}},
    {"tools/nesasm", {"src/assembler"}},
    {"tools/music", {}},
    {"tools/tiles", {}},
};

std::string LayerOf(const std::string& path) {
    std::string longest;
    for (const auto& [layer, unused] : kAllowed) {
        if (path.starts_with(layer + "/") && layer.size() > longest.size()) {
            longest = layer;
        }
    }
    return longest;
}

// The file of the tree that an include names, relative to the tree; empty for one from outside.
std::string Resolve(const std::filesystem::path& tree, const std::filesystem::path& from,
                    const std::string& include) {
    for (const std::filesystem::path& base : {from.parent_path(), tree / "src", tree / "tools"}) {
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
            const std::string layer = LayerOf(file);
            ASSERT_FALSE(layer.empty()) << file << " is in no layer that this test knows";
            std::ifstream stream(entry.path());
            for (std::string line; std::getline(stream, line);) {
                std::smatch match;
                if (!std::regex_search(line, match, include)) {
                    continue;
                }
                const std::string target = Resolve(tree, entry.path(), match[1]);
                ASSERT_FALSE(target.empty()) << file << " includes " << match[1] << ", not found";
                const std::string used = LayerOf(target);
                EXPECT_TRUE(used == layer || kAllowed.at(layer).contains(used))
                    << file << " must not include " << target;
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
        const std::string layer =
            LayerOf(std::filesystem::relative(entry.path(), tree).generic_string());
        if (!IsSource(entry.path()) || layer == "src/shell" || layer == "src/app") {
            continue;
        }
        std::ifstream stream(entry.path());
        for (std::string line; std::getline(stream, line);) {
            EXPECT_FALSE(std::regex_search(line, forbidden)) << entry.path() << ": " << line;
        }
    }
}

}  // namespace
