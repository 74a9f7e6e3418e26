// Names in archives.
#pragma once

#include <string>

struct archive;
struct archive_entry;

namespace bw {

// While it lives, the C library takes this thread's names for UTF-8, whatever the user's locale is:
// libarchive converts names by the locale, and would lose them in "C". Windows has no such locale.
class Utf8Names {
  public:
    Utf8Names();
    Utf8Names(const Utf8Names&) = delete;
    Utf8Names& operator=(const Utf8Names&) = delete;
    ~Utf8Names();

    // Before it is opened.
    static void PrepareReader(archive* reader);
    // As UTF-8 where that is known or can be told from the bytes, otherwise the bytes.
    static std::string NameOf(archive_entry* entry);

  private:
    void* before_ = nullptr;
};

}  // namespace bw
