#include "designer/window/last_design_file.h"

#include <string>
#include <string_view>

#include "support/text.h"

namespace bw {
namespace {

constexpr std::string_view kLastDesignFile = "LastDesignFile";  // a path

}  // namespace

std::filesystem::path LastDesignFolder(const SettingsStore& store) {
    std::u16string last;
    store.RegReadString(kDesignKey, kLastDesignFile, last);
    return TextPath(last).parent_path();
}

void KeepLastDesignFile(SettingsStore& store, const std::filesystem::path& file) {
    store.RegWriteString(kDesignKey, kLastDesignFile, PathText(file));
}

}  // namespace bw
