// X displays without a screen, for tests: of the emulator, of the window.
#pragma once

#include <optional>
#include <string>

#include "common/child_process.h"
#include "common/temporary_folder.h"

namespace bw::test {

// A display of its own on a free number. Ends with the object, or with the thread that made it.
class VirtualDisplay {
  public:
    // `size` as in "800x600": pixels of 24 bits.
    explicit VirtualDisplay(const std::string& size);

    // Such as ":99"; empty if there is none.
    const std::string& Name() const { return name_; }
    // Why there is none, with the package to install.
    const std::string& Problem() const { return problem_; }
    // As when the X server crashes: its clients lose their connection.
    void Kill() { server_.reset(); }

  private:
    TemporaryFolder folder_;
    std::optional<ChildProcess> server_;
    std::string name_;
    std::string problem_;
};

}  // namespace bw::test
