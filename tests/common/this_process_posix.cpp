#include <filesystem>
#include <iterator>

#include <malloc.h>
#include <unistd.h>

#include "common/this_process.h"

namespace bw::test {

void KeepLineEnds() {}

void CloseOutputs() {
    close(STDOUT_FILENO);
    close(STDERR_FILENO);
}

uint32_t OwnProcessId() {
    return static_cast<uint32_t>(getpid());
}

uint32_t CountOpenHandles() {
    return static_cast<uint32_t>(
        std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {}));
}

size_t HeldBytes() {
    return mallinfo2().uordblks;
}

}  // namespace bw::test
