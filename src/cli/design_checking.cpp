#include "cli/design_checking.h"

#include <algorithm>
#include <array>
#include <string>
#include <variant>

#include "builder/design_check/design_check.h"
#include "cli/design_screen.h"
#include "cli/json.h"
#include "cli/report.h"
#include "cli/terminal_user.h"
#include "language/problem_text.h"
#include "support/text.h"

namespace bw {
namespace {

// For programs, in the order of FindingSeverity.
constexpr std::array kSeverities{"error", "warning", "note"};

// A place for programs: its kind, and what tells it from others of the kind. Numbers of sprites
// and texts count from 1, as in the findings' sentences.
class PlaceWriter {
  public:
    explicit PlaceWriter(Json& json) : json_(json) {}

    void operator()(ScreenObject object) {
        switch (object) {
            case ScreenObject::kCaption:
                return Kind("caption");
            case ScreenObject::kList:
                return Kind("list");
            case ScreenObject::kPageNumber:
                return Kind("page-number");
            case ScreenObject::kCursor:
                return Kind("cursor");
        }
    }
    void operator()(const ScreenCell& cell) {
        Kind("cell");
        json_.Signed("column", cell.column);
        json_.Signed("row", cell.row);
    }
    void operator()(const TableTile& tile) {
        Kind(IsBackground(tile.table) ? "background-tile" : "sprite-tile");
        json_.Number("number", tile.number);
    }
    void operator()(const PaletteEntry& colour) {
        Kind(IsBackground(colour.side) ? "background-palette" : "sprite-palette");
        json_.Number("entry", colour.entry);
    }
    void operator()(const StripCharacter& character) {
        Kind("character");
        json_.Number("code", character.code);
    }
    void operator()(const PlacedSprite& sprite) {
        Kind("sprite");
        json_.Number("number", sprite.index + 1);
    }
    void operator()(const PlacedText& text) {
        Kind("text");
        json_.Number("number", text.index + 1);
    }

  private:
    static bool IsBackground(PatternTable table) { return table == PatternTable::kBackground; }
    void Kind(const char* kind) { json_.Utf8("kind", kind); }

    Json& json_;
};

std::string FindingsJson(const std::vector<DesignFinding>& findings) {
    Json json;
    json.BeginObject();
    json.BeginArray("problems");
    for (const DesignFinding& finding : findings) {
        json.BeginObject();
        json.Utf8("severity", kSeverities[static_cast<size_t>(finding.severity)]);
        json.String("text", finding.text);
        json.Key("place");
        json.BeginObject();
        std::visit(PlaceWriter(json), finding.place);
        json.EndObject();
        json.EndObject();
    }
    json.EndArray();
    json.EndObject();
    return json.Take();
}

std::string FindingLines(const std::vector<DesignFinding>& findings, Language language) {
    std::u16string lines;
    for (const DesignFinding& finding : findings)
        lines += SeverityText(finding.severity, language) + u": " + finding.text + u"\n";
    return ToUtf8(lines);
}

}  // namespace

int CheckDesignFile(const Arguments& arguments) {
    const Language language = SystemLanguage();
    TerminalUser user(arguments, language);
    const GatheredGames gathered = GatherGames(arguments.inputs, {}, language);
    if (const Diagnostic* error = gathered.FirstError()) return TellProblem(user, *error);
    WorkingCopy copy;
    // As a ROM has the names: with a point behind their numbers.
    if (const auto problem =
            OpenScreen(arguments, gathered, NameRules::kRomBuild, language, copy)) {
        return TellProblem(user, problem);
    }
    const std::vector<DesignFinding> findings = CheckDesign(copy, language);
    const FileResult<> printed =
        PrintOut(arguments.json ? FindingsJson(findings) : FindingLines(findings, language));
    if (!printed) return TellProblem(user, FileDiagnostic(printed.Problem(), language));
    if (findings.empty()) user.Note(LoadText(TextId::kNoProblems, language));
    const bool refused = std::ranges::find(findings, FindingSeverity::kError,
                                           &DesignFinding::severity) != findings.end();
    return refused ? 1 : 0;
}

}  // namespace bw
