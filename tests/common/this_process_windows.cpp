#include <fcntl.h>
#include <io.h>
#include <malloc.h>

#include "common/this_process.h"
#include "support/windows_api.h"

namespace bw::test {

void KeepLineEnds() {
    _setmode(1, _O_BINARY);
    _setmode(2, _O_BINARY);
}

void CloseOutputs() {
    _close(1);
    _close(2);
}

uint32_t OwnProcessId() {
    return GetCurrentProcessId();
}

uint32_t CountOpenHandles() {
    DWORD count = 0;
    GetProcessHandleCount(GetCurrentProcess(), &count);
    return count;
}

size_t HeldBytes() {
    size_t bytes = 0;
    _HEAPINFO entry{};
    while (_heapwalk(&entry) == _HEAPOK)
        bytes += entry._useflag == _USEDENTRY ? entry._size : 0;
    return bytes;
}

}  // namespace bw::test
