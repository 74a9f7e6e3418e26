#include "cli/design_render.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "cli/design_screen.h"
#include "cli/inputs.h"
#include "cli/terminal_user.h"
#include "cli/written_files.h"
#include "designer/files/surface_png.h"
#include "designer/pictures/name_table_picture.h"
#include "designer/pictures/small_views.h"
#include "language/problem_text.h"
#include "support/files.h"
#include "support/paths.h"
#include "support/text.h"

namespace bw {
namespace {

// The layers by the names that users give them.
struct Layer {
    std::string_view name;
    bool WorkingCopy::*shown;
};
constexpr std::array<Layer, 9> kLayers = {{{"background", &WorkingCopy::Show_Bg_Tile},
                                           {"sprites", &WorkingCopy::Show_Sp_Tile},
                                           {"texts", &WorkingCopy::Show_Custom_Text},
                                           {"list", &WorkingCopy::Show_List},
                                           {"page-number", &WorkingCopy::ShowPageNumber},
                                           {"caption", &WorkingCopy::Show_Caption},
                                           {"cursor", &WorkingCopy::Show_Cursor},
                                           {"colours", &WorkingCopy::FillColor},
                                           {"grid", &WorkingCopy::DrawLine}}};

class Renderer {
  public:
    explicit Renderer(const Arguments& arguments)
        : arguments_(arguments), user_(arguments, language_) {}

    int Run() { return TellProblem(user_, Render()); }

  private:
    DesignProblem Render() {
        if (auto problem = Load()) return problem;
        const std::vector<uint8_t> png = SurfacePng(Picture());
        const std::filesystem::path file = PictureFile(arguments_);
        const FileResult<> written =
            png.empty() ? ProblemOf(file, std::errc::not_enough_memory) : WriteFile(file, png);
        if (!written) return FileDiagnostic(written.Problem(), language_);
        user_.NoteWritten(file);
        return std::nullopt;
    }

    // The design as a designer that has just been opened shows it.
    DesignProblem Load() {
        const GatheredGames gathered = GatherGames(arguments_.inputs, {}, language_);
        if (const Diagnostic* error = gathered.FirstError()) return *error;
        if (auto overwritten = FindOverwritten(arguments_, gathered, language_)) return overwritten;
        if (auto problem =
                OpenScreen(arguments_, gathered, NameRules::kDesignerAndExport, language_, copy_)) {
            return problem;
        }
        for (const Layer& layer : kLayers) {
            const bool named =
                std::ranges::find(arguments_.layers, layer.name) != arguments_.layers.end();
            copy_.*layer.shown = arguments_.layers.empty() ? copy_.*layer.shown : named;
        }
        copy_.markPlaces = false;
        return std::nullopt;
    }

    Surface Picture() const {
        const DesignStore& store = copy_.Store();
        TileImage tiles;
        tiles.Redraw(store.ChrData, store.BkgPalette, store.SpritePalette, {}, {});
        if (arguments_.view == "tiles") return Scaled(tiles.Picture(), 1);
        NameTablePicture screen;
        screen.Compose(copy_, tiles, {});
        return Scaled(screen.Picture(), kScreenScale);
    }

    // The picture at the wanted scale, from one that is drawn at `drawn`.
    Surface Scaled(const Surface& picture, int drawn) const {
        const int width = picture.Width() / drawn;
        const int height = picture.Height() / drawn;
        const int scale = static_cast<int>(arguments_.scale);
        if (scale == drawn) return picture;
        Surface single(width, height);
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                single.At({x, y}) = picture.At({x * drawn, y * drawn});
        Surface scaled(width * scale, height * scale);
        Copy(scaled, {0, 0}, {single, {0, 0}, width, height}, {.scale = scale});
        return scaled;
    }

    const Arguments& arguments_;
    Language language_ = SystemLanguage();
    TerminalUser user_;
    WorkingCopy copy_;
};

}  // namespace

std::vector<std::string> LayerNames() {
    std::vector<std::string> names;
    names.reserve(kLayers.size());
    for (const Layer& layer : kLayers)
        names.emplace_back(layer.name);
    return names;
}

int RenderDesign(const Arguments& arguments) {
    return Renderer(arguments).Run();
}

}  // namespace bw
