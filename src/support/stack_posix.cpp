#include <pthread.h>

#include "support/stack.h"

namespace bw {
namespace {

uintptr_t AskStackEnd() {
    pthread_attr_t attributes;
    if (pthread_getattr_np(pthread_self(), &attributes) != 0) return 0;
    void* lowest = nullptr;
    size_t size = 0;
    const int failure = pthread_attr_getstack(&attributes, &lowest, &size);
    pthread_attr_destroy(&attributes);
    return failure == 0 ? reinterpret_cast<uintptr_t>(lowest) : 0;
}

}  // namespace

uintptr_t StackEnd() {
    // Asking reads a file on the main thread and allocates on the others.
    thread_local const uintptr_t end = AskStackEnd();
    return end;
}

}  // namespace bw
