// What a command is about to write over.
#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include "cli/arguments.h"
#include "cli/inputs.h"
#include "support/diagnostic.h"

namespace bw {

// The file of the user's that building, exporting, saving a list, checking, drawing or importing
// would replace or change: one that the same command reads, by whatever name or link it came, or
// another of its outputs, or a file in the folder of --keep-work. Nothing if there is none.
// `gathered` are the games of the inputs.
std::optional<Diagnostic> FindOverwritten(const Arguments& arguments, const GatheredGames& gathered,
                                          Language language);

// The files that commands write, as absolute paths with the extensions that they get.
std::filesystem::path RomFile(const Arguments& arguments);
std::filesystem::path ListFile(const Arguments& arguments);
std::filesystem::path PictureFile(const Arguments& arguments);
std::filesystem::path SheetFile(const Arguments& arguments);
std::filesystem::path DesignFileOf(const Arguments& arguments);

}  // namespace bw
