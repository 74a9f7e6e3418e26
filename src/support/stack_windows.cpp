#include "support/stack.h"
#include "support/windows_api.h"

namespace bw {

uintptr_t StackEnd() {
    ULONG_PTR lowest = 0;
    ULONG_PTR highest = 0;
    GetCurrentThreadStackLimits(&lowest, &highest);
    return lowest;
}

}  // namespace bw
