// One request to a host.
#pragma once

namespace bw {}  // namespace bw
