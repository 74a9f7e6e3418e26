// The designer on a full screen: drawing it, checking it, and the cost of a step of its history.
// The bare sides are the plain copy of the same pixels or bytes.
#include <algorithm>
#include <cstdlib>
#include <cstring>

#include <malloc.h>

#include "builder/design_check/design_check.h"
#include "common/temporary_folder.h"
#include "designer/gestures/pointer_text.h"
#include "designer/history/designer_settings.h"
#include "designer/history/edit_session.h"
#include "designer/history/step_names.h"
#include "designer/history/work_state.h"
#include "designer/pictures/name_table_picture.h"
#include "designer/tools/pointer_edits.h"
#include "designer/tools/tile_tools.h"
#include "full_screen.h"
#include "measure.h"

namespace {

constexpr int kRounds = 201;
constexpr int kSteps = 10'000;

void Report(const char* what, const bench::Pair& times) {
    std::printf("%s\n    median  ours %.3f ms  bare %.3f ms   least %.3f and %.3f ms\n", what,
                bench::Median(times.ours), bench::Median(times.bare), bench::Least(times.ours),
                bench::Least(times.bare));
}

template <typename Pixels>
auto BareCopy(const Pixels& pixels, std::vector<uint32_t>& target) {
    return [&] {
        target.resize(pixels.size());
        std::memcpy(target.data(), pixels.data(), pixels.size_bytes());
        if (target.back() == 0x12345678) std::abort();  // keeps the copy
    };
}

void MeasureDrawing(const bw::WorkingCopy& copy) {
    const auto nothing = [] {};
    const bw::DesignStore& store = copy.Store();
    bw::TileImage tiles;
    bw::NameTablePicture screen;
    std::vector<uint32_t> target;
    const auto image = tiles.Picture().Pixels();
    Report("tile image, 512 by 256",
           bench::InTurn(
               kRounds,
               [&] { tiles.Redraw(store.ChrData, store.BkgPalette, store.SpritePalette, {}, {}); },
               BareCopy(image, target), nothing));
    const auto picture = screen.Picture().Pixels();
    Report(
        "picture of a full screen, 512 by 480",
        bench::InTurn(
            kRounds, [&] { screen.Compose(copy, tiles, {}); }, BareCopy(picture, target), nothing));
}

void MeasureHistory(const bw::WorkingCopy& copy) {
    bw::EditSession session(copy);
    const bw::WorkState state = bw::BuildWorkState(copy);
    std::vector<double> steps;
    std::vector<double> bare;
    bw::WorkState target;
    steps.reserve(kSteps);
    bare.reserve(kSteps);
    target = state;
    const size_t held = mallinfo2().uordblks;
    for (int step = 0; step < kSteps; ++step) {
        steps.push_back(bench::Time([&] {
            session.Run([&](bw::WorkingCopy& edited) {
                edited.BkgTilePos = {step % 16, step / 16 % 16};
                edited.BkgPalettePos.X = 1 + (step / 256 + step) % 3;
                return bw::PaintPixel(edited, bw::PatternTable::kBackground,
                                      {step / 4096 % 8, step / 512 % 8});
            });
        }));
        bare.push_back(bench::Time([&] { target = state; }));
    }
    const auto bytes = static_cast<double>(mallinfo2().uordblks - held);
    const auto count = static_cast<double>(session.Steps().Count());
    Report("a step that paints a pixel", {steps, bare});
    std::printf(
        "history of %.0f such steps\n    ours %.2f MB, %.0f bytes a step; whole states "
        "would take %.0f MB\n",
        count, bytes / 1e6, bytes / count, count * static_cast<double>(state.size()) / 1e6);
}

// A step of a kind: a sprite dragged, 64 selected tiles bent by a tool, a tile placed.
bw::Views DragSprite(bw::WorkingCopy& edited, int step) {
    std::vector<bw::TileItem>& sprites = edited.Store().SpriteTileList;
    const auto dragged = sprites.begin() + step * 13 % 64;
    std::rotate(dragged, dragged + 1, sprites.end());
    sprites.back().X = step * 7 % 256;
    return bw::Views::All();
}
bw::Views BendTiles(bw::WorkingCopy& edited, int) {
    std::fill_n(edited.Store().BkgTileSelected.begin(), 64, 1);
    return bw::ApplyTileTool(edited, bw::TileTool::kColoursRight);
}
bw::Views LayTile(bw::WorkingCopy& edited, int step) {
    if (step % 960 == 0) edited.Store().BkgTileList.clear();
    edited.BkgTilePos = {step % 16, step / 16 % 16};
    return bw::PlaceTile(edited, bw::PatternTable::kBackground);
}

// Closing and opening a window with 10,000 steps behind it, settings and all; then the names of 30
// rows at the history's other end.
void MeasureKeeping(const bw::WorkingCopy& copy, const char* what,
                    bw::Views (*command)(bw::WorkingCopy&, int)) {
    const TemporaryFolder folder;
    const auto settings = bw::MakeSqliteStore(folder / "settings.sqlite3");
    const std::filesystem::path file = folder / "history";
    bw::EditSession session(copy);
    for (int step = 0; step < kSteps; ++step)
        session.Run([&](bw::WorkingCopy& edited) { return command(edited, step); });
    std::vector<double> closing, opening, names, jumps;
    for (int round = 0; round < 11; ++round) {
        closing.push_back(bench::Time([&] { bw::CloseDesigner(session, *settings, file); }));
        bw::EditSession next;
        opening.push_back(bench::Time([&] { bw::OpenDesigner(next, *settings, file); }));
        if (next.Steps().Count() != session.Steps().Count()) std::abort();
        bw::StepNames rows(next.Steps());
        names.push_back(bench::Time([&] {
            for (size_t row = 1; row <= 30; ++row)
                if (rows.Of(row, bw::Language::kEnglish).empty()) std::abort();
        }));
        jumps.push_back(bench::Time([&] { next.GoTo(0); }));
    }
    const auto report = [](const char* name, const std::vector<double>& times) {
        std::printf("    %-20s  median %.2f ms   least %.2f ms\n", name, bench::Median(times),
                    bench::Least(times));
    };
    std::printf("10,000 steps: %s, a file of %.2f MB\n", what,
                static_cast<double>(std::filesystem::file_size(file)) / 1e6);
    report("closing", closing);
    report("opening", opening);
    report("names of 30 far rows", names);
    report("to the first state", jumps);
}

// What the status line says of each pixel that the pointer comes by.
void MeasurePointer(const bw::WorkingCopy& screen) {
    bw::EditSession session(screen);
    session.RunWithoutStep([](bw::WorkingCopy& copy) {
        copy.DragText = true;
        copy.AllItemTextList.assign(1024, u"A NAME OF TWENTY CHARS");
    });
    const bw::DesignerLayout layout;
    const bw::GestureMachine mouse(session, layout);
    bw::WorkingCopy target;
    std::vector<double> words;
    std::vector<double> bare;
    for (int i = 0; i < 4000; ++i) {
        const bw::Point at{i * 37 % 1088, i * 53 % 864};
        words.push_back(bench::Time([&] {
            const bw::PointerEvent event{.at = at};
            const auto text =
                bw::PointerText(session.Copy(), layout, mouse, event, bw::Language::kEnglish);
            if (text.size() > 1000) std::abort();  // keeps the text
        }));
        bare.push_back(bench::Time([&] { target = session.Copy(); }));
    }
    Report("words for the pointer; bare: a copy of the working copy", {words, bare});
    std::sort(words.begin(), words.end());
    std::printf("    99 of 100 below %.3f ms\n", words[words.size() * 99 / 100]);
}

// With 20 texts and 1,024 names: once as a user's design is, with little to tell, and once with all
// that the random one has.
void MeasureCheck(bw::WorkingCopy copy) {
    const auto measure = [&](const char* what) {
        size_t found = 0;
        const std::vector<std::u16string> source = copy.AllItemTextList;
        std::vector<std::u16string> target;
        Report(what,
               bench::InTurn(
                   kRounds, [&] { found = bw::CheckDesign(copy, bw::Language::kEnglish).size(); },
                   [&] { target = source; }, [] {}));
        std::printf("    findings: %zu\n", found);
    };
    bench::AddNamesAndTexts(copy);
    measure("check of a full screen, 1,024 names");
    bench::LessenFaults(copy);
    measure("the same, a design with fewer faults");
}

}  // namespace

int main() {
    const bw::WorkingCopy copy = bench::FullScreen();
    MeasureDrawing(copy);
    MeasureCheck(copy);
    MeasureHistory(copy);
    MeasureKeeping(copy, "sprites dragged", &DragSprite);
    MeasureKeeping(copy, "tiles placed", &LayTile);
    MeasureKeeping(copy, "64 tiles changed", &BendTiles);
    MeasurePointer(copy);
    return 0;
}
