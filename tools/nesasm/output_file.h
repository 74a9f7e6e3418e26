#pragma once

#include <cstddef>
#include <string>

namespace bw::nesasm {

// Writes a temporary file beside `path` and renames it over `path`, so that a failure leaves what
// was there. False if that didn't work; nothing is left behind then.
bool ReplaceFile(const std::string& path, const void* bytes, size_t size);

}  // namespace bw::nesasm
