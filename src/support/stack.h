// How far the running thread's stack may still grow: for recursion whose depth the input decides.
#pragma once

#include <cstdint>

namespace bw {

// The lowest address of the running thread's stack; 0 if the system doesn't tell. Stacks grow
// downward on every system that we build for.
uintptr_t StackEnd();

// The address of the frame at hand. Not that of a local variable: sanitizers move these elsewhere.
inline uintptr_t StackPosition() {
    return reinterpret_cast<uintptr_t>(__builtin_frame_address(0));
}

}  // namespace bw
