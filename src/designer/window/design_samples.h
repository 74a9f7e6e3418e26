// The designs that come with the program: part of it, so that they are there wherever it is copied.
#pragma once

#include <cstdint>
#include <span>

#include "designer/model/working_copy.h"
#include "designer/pictures/surface.h"
#include "language/language.h"

namespace bw {

struct DesignSample {
    TextId name;
    TextId hint;                     // what it has to show, in a line
    std::span<const uint8_t> bytes;  // of a whole design's file
};

std::span<const DesignSample> DesignSamples();

// The screen of the sample with the names and the page of `copy`, without marks: 512 by 480 pixels,
// each pixel of the console 2 by 2 of them.
Surface PictureOf(const DesignSample& sample, WorkingCopy copy, Language language);

}  // namespace bw
