#include "app/lost_display.h"

#include <cstdlib>
#include <utility>

namespace bw {
namespace {

// A function of atexit() gets nothing handed in.
const std::function<void()>*& Current() {
    static const std::function<void()>* current = nullptr;
    return current;
}

void AtExit() {
    // Taken, so that a failure in the middle of it, which calls exit() again, doesn't come back
    // here.
    const auto* store = std::exchange(Current(), nullptr);
    if (store == nullptr) return;
    (*store)();
    std::_Exit(EXIT_FAILURE);
}

}  // namespace

LostDisplay::LostDisplay(std::function<void()> store) : store_(std::move(store)) {
    Current() = &store_;
    std::atexit(&AtExit);
}

LostDisplay::~LostDisplay() {
    Current() = nullptr;
}

}  // namespace bw
