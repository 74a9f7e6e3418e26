#include <exception>

#include "crash_ways.h"

namespace {

void DivideByZero() {
    volatile int number = 0;
    number = 1 / number;
}

}  // namespace

CrashWays SystemCrashWays() {
    return {{"number", DivideByZero},
            {"instruction", [] { __builtin_trap(); }},
            {"terminate", [] { std::terminate(); }}};
}
