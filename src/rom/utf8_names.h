// Names in archives.
#pragma once

namespace bw {

// While it lives, the C library takes this thread's names for UTF-8, whatever the user's locale is:
// libarchive converts names by the locale, and would lose them in "C".
class Utf8Names {
  public:
    Utf8Names();
    Utf8Names(const Utf8Names&) = delete;
    Utf8Names& operator=(const Utf8Names&) = delete;
    ~Utf8Names();

  private:
    void* before_ = nullptr;
};

}  // namespace bw
