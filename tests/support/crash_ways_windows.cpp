#include <exception>

#include "crash_ways.h"

namespace {

void DivideByZero() {
    // For 1 / zero the compiler makes no division.
    volatile int zero = 0, number = 7;
    number = number / zero;
}

}  // namespace

CrashWays SystemCrashWays() {
    return {{"number", DivideByZero},
            {"instruction", [] { __builtin_trap(); }},
            {"terminate", [] { std::terminate(); }}};
}
