// Signatures as minisign makes them (its format: https://jedisct1.github.io/minisign/, chapter
// "Signature format").
#pragma once

namespace bw {}  // namespace bw
