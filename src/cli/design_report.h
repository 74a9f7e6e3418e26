// What the commands print of designs.
#pragma once

#include <string>

#include "designer/model/design_document.h"
#include "language/language.h"

namespace bw {

// Its texts and where they stand, how many tiles and sprites, which cursor.
std::string DesignTable(const DesignDocument& design, Language language);
std::string DesignJson(const DesignDocument& design);

}  // namespace bw
