#include "rom/utf8_names.h"

namespace bw {

// Names are asked for as UTF-8, and the system's own are 16-bit text.
Utf8Names::Utf8Names() = default;
Utf8Names::~Utf8Names() = default;

}  // namespace bw
