// Fetches an address into a file.
#pragma once

namespace bw {}  // namespace bw
