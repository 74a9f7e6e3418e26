// A program that dies as its argument says, for the test of the crash file.
#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <thread>

#include "crash_ways.h"
#include "support/crash_file.h"

namespace {

// Uses its stack up; the volatile room keeps the calls from becoming a loop.
int Deeper(int depth) {
    volatile char room[4096];
    room[0] = static_cast<char>(depth);
    return depth < 0 ? 0 : Deeper(depth + 1) + room[0];
}

// The compiler mustn't see that nothing is there.
void WriteWhereNothingIs() {
    const volatile uintptr_t address = 64;
    *reinterpret_cast<volatile int*>(address) = 1;  // NOLINT(performance-no-int-to-ptr)
}

}  // namespace

int main(int, char** values) {
    bw::InstallCrashHandler();
    CrashWays ways{{"access", WriteWhereNothingIs},
                   {"stack", [] { Deeper(1); }},
                   {"exception", [] { throw std::runtime_error("words of the exception"); }},
                   {"abort", [] { std::abort(); }},
                   {"thread-stack", [] {
                        std::jthread thread([] {
                            const bw::CrashStack stack;
                            Deeper(1);
                        });
                    }}};
    ways.merge(SystemCrashWays());
    ways.at(values[1])();
}
