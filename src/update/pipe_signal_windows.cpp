// Windows has no such signal.
#include "update/pipe_signal.h"

namespace bw {

struct NoPipeSignal::Before {};

NoPipeSignal::NoPipeSignal() = default;
NoPipeSignal::~NoPipeSignal() = default;

}  // namespace bw
