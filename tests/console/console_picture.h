// All that a console shows of a cart's first page, beside a picture that the designer draws or
// shows. Compared by the numbers of colours.
#pragma once

#include <functional>
#include <optional>

#include "designer/model/colour.h"
#include "designer/model/point.h"
#include "designer/model/working_copy.h"
#include "designer/pictures/surface.h"
#include "menu_cart.h"

namespace bw::console {

// Boots the cart and takes the picture of the menu as it stands then.
ScriptRun PictureRun(const std::filesystem::path& rom, const std::string& label);

// The colour at a pixel of a picture of 512 by 480 pixels; nothing for one that doesn't count.
using PixelColour = std::function<std::optional<Colour>(Point)>;
// Fails the test at the first pixel that isn't the console's. Gives how many were compared.
size_t ExpectPicture(const ScriptResult& shown, const PixelColour& drawn);

// The designer's own picture of the screen: as its window shows it, or without its marks and with
// the cursor where the console has it, which for the small one is a line above where the designer
// draws it and for the large one of tall sprites a line below.
enum class Marks { kWithMarks, kWithout };
Surface DrawnScreen(WorkingCopy copy, Marks marks = Marks::kWithout);

}  // namespace bw::console
