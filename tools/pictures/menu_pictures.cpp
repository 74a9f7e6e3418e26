// Takes the pictures of the menu that the pages show: menu_pictures FOLDER. docs/images/README.md
// tells more.
#include <algorithm>
#include <iostream>

#include <fmt/format.h>

#include "designer/files/png_file.h"
#include "menu_cart.h"
#include "samples.h"

namespace bw::console {
namespace {

constexpr size_t kScale = 2;
constexpr size_t kColours = 64;
constexpr size_t kWidth = 256;  // pixels of the console's picture
constexpr size_t kHeight = 240;

struct Shot {
    std::string name;
    std::string design = "";  // of the samples; empty for a default look
    uint32_t style = 0;
    bool insertRow = false;
    size_t selected = 2;
};

std::vector<Shot> Shots() {
    return {{.name = "menu_default", .insertRow = true},
            {.name = "menu_white", .style = 1, .insertRow = true},
            {.name = "design_night_sea", .design = "night_sea", .selected = 3},
            {.name = "design_loom", .design = "loom", .insertRow = true, .selected = 4}};
}

// Our samples, and games that nobody has written yet.
std::vector<std::u16string> Names() {
    return {u"Star Catcher",     u"Paper Kingdom",     u"Moonlight Courier", u"Tide Runner",
            u"Clockmaker's Cat", u"Deep Blue Express", u"Lantern Keeper II", u"Harbour Patrol '88",
            u"Crystal Foundry",  u"Voltage Zero",      u"Gearbox Gully",     u"Maze of Wires",
            u"Foxglove",         u"Quiz Junction 3",   u"Sky Garden",        u"The Last Beekeeper",
            u"Rocket Orchard",   u"Marble Alley",      u"Snow Line",         u"Dr. Dynamo",
            u"NROM bank check",  u"MMC3 bank check",   u"Tin Robot Tennis",  u"Owl Mail"};
}

// The file "picture" gets the numbers of the colours, "colours" what the emulator makes of them.
std::string Script(size_t selected) {
    return MenuScript(fmt::format(R"lua(
        boot()
        for _ = 1, {} do move("down") end
        local picture, colours = {{}}, {{}}
        for number = 0, 63 do colours[number] = "\0\0\0" end
        for y = 0, 239 do
            for x = 0, 255 do
                local r, g, b, number = emu.getscreenpixel(x, y, true)
                picture[#picture + 1] = string.char(number)
                colours[number] = string.char(r, g, b)
            end
        end
        local file = io.open("picture", "wb")
        file:write(table.concat(picture))
        file:close()
        file = io.open("colours", "wb")
        file:write(table.concat(colours, "", 0, 63))
        file:close()
    )lua",
                                  selected));
}

std::string Png(const std::string& picture, const std::string& colours) {
    std::vector<uint32_t> palette;
    std::array<uint8_t, kColours> entry{};
    std::string inUse = picture;
    std::ranges::sort(inUse);
    for (size_t i = 0; i < kColours; ++i) {
        if (inUse.find(static_cast<char>(i)) == std::string::npos) continue;
        entry[i] = static_cast<uint8_t>(palette.size());
        const auto part = [&](size_t at) {
            return uint32_t{static_cast<uint8_t>(colours[i * 3 + at])};
        };
        palette.push_back(part(0) << 16 | part(1) << 8 | part(2));
    }
    std::vector<uint8_t> indices;
    for (size_t y = 0; y < kHeight * kScale; ++y) {
        for (size_t x = 0; x < kWidth * kScale; ++x) {
            const char number = picture[y / kScale * kWidth + x / kScale];
            indices.push_back(entry[static_cast<uint8_t>(number) % kColours]);
        }
    }
    const std::vector<uint8_t> bytes =
        EncodePng(kWidth * kScale, kHeight * kScale, palette, indices);
    return {bytes.begin(), bytes.end()};
}

void Take(const Shot& shot, const std::filesystem::path& folder) {
    const TemporaryFolder work;
    CartPlan plan{.names = Names()};
    plan.settings.PageNumber = true;
    plan.settings.ShowStyle = shot.style;
    plan.settings.NameInsertRow = shot.insertRow;
    if (!shot.design.empty()) UseDesign(plan, SampleDesign(shot.design));
    const ScriptResult result = RunOnConsole({.rom = BuildCart(plan, work.Path(), shot.name).rom,
                                              .script = Script(shot.selected),
                                              .label = shot.name,
                                              .wantedFiles = {"picture", "colours"}});
    WriteText(folder / (shot.name + ".png"),
              Png(result.files.at("picture"), result.files.at("colours")));
    std::cout << (folder / (shot.name + ".png")).string() << '\n';
}

}  // namespace
}  // namespace bw::console

int main(int count, char** words) {
    if (count != 2) {
        std::cerr << "usage: menu_pictures FOLDER\n";
        return 2;
    }
    try {
        for (const bw::console::Shot& shot : bw::console::Shots())
            bw::console::Take(shot, words[1]);
    } catch (const bw::console::ConsoleFailure& failure) {
        std::cerr << failure.what() << '\n';
        return 1;
    }
    return 0;
}
