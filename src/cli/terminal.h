#pragma once

namespace bw {

// Whether a person watches standard error.
bool StandardErrorIsTerminal();

}  // namespace bw
