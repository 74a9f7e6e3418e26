#include "cli/design_import.h"

#include "builder/resources.h"
#include "cli/inputs.h"
#include "cli/json.h"
#include "cli/report.h"
#include "cli/terminal_user.h"
#include "cli/written_files.h"
#include "designer/files/design_file.h"
#include "designer/import/picture_import.h"
#include "language/problem_text.h"
#include "support/files.h"
#include "support/paths.h"
#include "support/text.h"

namespace bw {
namespace {

std::string ReportJson(const ImportResult& result) {
    Json json;
    json.BeginObject();
    json.Number("tiles", result.tiles);
    json.Number("cellsWithLoss", result.lossyBlocks.size());
    json.Decimal("meanError", result.meanError);
    json.EndObject();
    return json.Take();
}

class PictureImporter {
  public:
    explicit PictureImporter(const Arguments& arguments)
        : arguments_(arguments), user_(arguments, language_) {}

    int Run() { return TellProblem(user_, Import()); }

  private:
    DesignProblem Import() {
        if (auto overwritten = FindOverwritten(arguments_, {}, language_)) return overwritten;
        Picture picture;
        if (auto problem = Load(picture)) return problem;
        const std::atomic<bool> stop = false;
        const auto result = ImportPicture(copy_, picture, arguments_.importing, stop);
        ApplyImport(copy_, *result);
        if (result->cut) user_.Warn(LoadText(TextId::kPictureCut, language_));
        if (result->lettersTaken != 0) {
            user_.Warn(
                FormatText(LoadText(TextId::kPictureTookLetters, language_), result->lettersTaken));
        }
        return Write(*result);
    }

    DesignProblem Load(Picture& picture) {
        const std::filesystem::path file = FromCurrentFolder(arguments_.picture);
        const auto bytes = ReadFile(file, kLargestPictureFile);
        if (!bytes) return FileDiagnostic(bytes.Problem(), language_);
        if (const auto fault = DecodeAnyPng(*bytes, kLargestPictureSide, picture)) {
            return Diagnostic{Severity::kError,
                              FaultText(*fault, language_),
                              {.file = VisibleText(PathText(file))}};
        }
        LoadDesignData(copy_.Store(), *MakeMemoryStore(), DefaultTileSet());
        if (arguments_.design.empty()) return std::nullopt;
        return OpenDesign(FromCurrentFolder(arguments_.design), copy_.document, language_);
    }

    DesignProblem Write(const ImportResult& result) {
        const std::filesystem::path file = DesignFileOf(arguments_);
        if (auto problem = SaveDesign(file, copy_.document, language_)) return problem;
        user_.NoteWritten(file);
        if (arguments_.report.empty()) return std::nullopt;
        const std::string report = ReportJson(result);
        const FileResult<> written = arguments_.report == "-"
                                         ? PrintOut(report)
                                         : WriteFile(FromCurrentFolder(arguments_.report), report);
        if (!written) return FileDiagnostic(written.Problem(), language_);
        return std::nullopt;
    }

    const Arguments& arguments_;
    Language language_ = SystemLanguage();
    TerminalUser user_;
    WorkingCopy copy_;
};

}  // namespace

int ImportPictureFile(const Arguments& arguments) {
    return PictureImporter(arguments).Run();
}

}  // namespace bw
