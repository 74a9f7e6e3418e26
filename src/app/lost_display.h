// The end that Qt brings about by exit() when the X server goes away.
#pragma once

#include <functional>

namespace bw {

// While it lives, an exit() anywhere in the program calls `store` first and then ends the process
// at once with the status 1: destroying the program's objects around a running event loop and its
// threads could hang or crash. One at a time.
class LostDisplay {
  public:
    explicit LostDisplay(std::function<void()> store);
    LostDisplay(const LostDisplay&) = delete;
    LostDisplay& operator=(const LostDisplay&) = delete;
    ~LostDisplay();

  private:
    std::function<void()> store_;
};

}  // namespace bw
