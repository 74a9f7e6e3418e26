// Turns the design into the files that the menu source includes.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "designer/model/design_store.h"
#include "support/file_problem.h"

namespace bw {

// One file of the menu's screen.
struct DesignFile {
    const char* name;
    std::string contents;
};

// The files in the order in which they are written: twelve, or eleven where the caption is empty,
// since its file then isn't written at all.
std::vector<DesignFile> CompileDesign(const DesignStore& store, bool custom);

// Writes the files of the menu's screen into `folder`, which exists. `checkedCount` is the
// number of games; `captionSetting` is the caption as the user stored it, if he did: it replaces
// the caption that the count gives. `custom` is whether the custom menu is on; only
// char_mapping.bin differs by it. Sets the store's CaptionText on the way.
//
// Ends at the first file that can't be written; earlier files stay.
FileResult<> WriteDesignFiles(DesignStore& store, size_t checkedCount,
                              const std::optional<std::u16string>& captionSetting,
                              const std::filesystem::path& folder, bool custom);

}  // namespace bw
