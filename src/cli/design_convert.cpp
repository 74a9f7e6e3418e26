#include "cli/design_convert.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "builder/resources.h"
#include "cli/design_report.h"
#include "cli/inputs.h"
#include "cli/report.h"
#include "cli/terminal_user.h"
#include "designer/files/design_parts.h"
#include "language/problem_text.h"
#include "support/files.h"
#include "support/text.h"

namespace bw {
namespace {

enum class Ways { kBoth, kLoad, kSave };

struct NamedPart {
    std::string_view name;
    DesignPart part;
    Ways ways = Ways::kBoth;
};
constexpr std::array<NamedPart, 14> kParts = {{
    {"design", DesignPart::kDesign},
    {"screen", DesignPart::kScreen},
    {"texts", DesignPart::kTexts},
    {"background-tiles", DesignPart::kBkgTiles},
    {"sprite-tiles", DesignPart::kSpriteTiles},
    {"name-table", DesignPart::kNameTable},
    {"attributes", DesignPart::kAttributes},
    {"mmc5-attributes", DesignPart::kMmc5Attributes, Ways::kSave},
    {"sprites", DesignPart::kSprites},
    {"background-palette", DesignPart::kBkgPalette},
    {"sprite-palette", DesignPart::kSpritePalette},
    {"characters", DesignPart::kCharMap, Ways::kSave},
    {"video-memory-2000", DesignPart::kVideoMemory2000, Ways::kLoad},
    {"video-memory-2c00", DesignPart::kVideoMemory2C00, Ways::kLoad},
}};

std::vector<std::string> NamesBut(Ways left) {
    std::vector<std::string> names;
    for (const NamedPart& part : kParts) {
        if (part.ways != left) names.emplace_back(part.name);
    }
    return names;
}

// The names are those that the command line was checked against.
DesignPart PartOf(std::string_view name) {
    return std::ranges::find(kParts, name, &NamedPart::name)->part;
}

DesignProblem Load(const PartFile& loaded, WorkingCopy& copy, Language language) {
    const std::filesystem::path file = FromCurrentFolder(loaded.file);
    const auto bytes = ReadFile(file, kLargestDesignFile);
    if (!bytes) return FileDiagnostic(bytes.Problem(), language);
    auto result = LoadPart(PartOf(loaded.part), *bytes, Shift::kUp, copy, language);
    if (auto* problem = std::get_if<Diagnostic>(&result)) {
        problem->place.file = VisibleText(PathText(file));
        return std::move(*problem);
    }
    return std::nullopt;
}

DesignProblem Save(const PartFile& saved, const WorkingCopy& copy, TerminalUser& user) {
    const Language language = user.UiLanguage();
    const DesignPart part = PartOf(saved.part);
    std::filesystem::path file = FromCurrentFolder(saved.file);
    if (WithPartExtension(file, "bin") != file) file = WithPartExtension(file, PartExtension(part));
    DesignProblem problem = SavePart(file, part, Shift::kUp, copy, language);
    if (!problem) user.NoteWritten(file);
    return problem;
}

// A design with the built-in defaults for what its file leaves out.
DesignProblem Open(const std::filesystem::path& file, WorkingCopy& copy, Language language) {
    LoadDesignData(copy.Store(), *MakeMemoryStore(), DefaultTileSet());
    return OpenDesign(FromCurrentFolder(file), copy.document, language);
}

}  // namespace

std::vector<std::string> LoadedPartNames() {
    return NamesBut(Ways::kSave);
}
std::vector<std::string> SavedPartNames() {
    return NamesBut(Ways::kLoad);
}

int DesignInfo(const Arguments& arguments) {
    const Language language = SystemLanguage();
    TerminalUser user(arguments, language);
    WorkingCopy copy;
    if (const auto problem = Open(arguments.design, copy, language))
        return TellProblem(user, problem);
    const std::string text =
        arguments.json ? DesignJson(copy.document) : DesignTable(copy.document, language);
    const FileResult<> printed = PrintOut(text);
    return printed ? 0 : TellProblem(user, FileDiagnostic(printed.Problem(), language));
}

int ConvertDesign(const Arguments& arguments) {
    const Language language = SystemLanguage();
    TerminalUser user(arguments, language);
    WorkingCopy copy;
    LoadDesignData(copy.Store(), *MakeMemoryStore(), DefaultTileSet());
    DesignProblem problem;
    if (!arguments.design.empty()) problem = Open(arguments.design, copy, language);
    for (const PartFile& loaded : arguments.loads) {
        if (!problem) problem = Load(loaded, copy, language);
    }
    for (const PartFile& saved : arguments.saves) {
        if (!problem) problem = Save(saved, copy, user);
    }
    return TellProblem(user, problem);
}

}  // namespace bw
