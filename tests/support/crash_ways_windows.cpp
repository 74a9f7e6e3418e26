#include <exception>

#include "crash_ways.h"

namespace {

void DivideBy(volatile int number) {
    volatile int quotient = 1;
    quotient = quotient / number;
}

}  // namespace

CrashWays SystemCrashWays() {
    return {{"number", [] { DivideBy(0); }},
            {"instruction", [] { __builtin_trap(); }},
            {"terminate", [] { std::terminate(); }}};
}
