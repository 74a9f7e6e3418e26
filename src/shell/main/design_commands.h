// The design of the menu's screen, as far as the main window handles it: files, and the switch.
#pragma once

#include <filesystem>

#include "shell/tasks/list_host.h"

namespace bw {

class DesignCommands {
  public:
    // `design` is the process's one, which `host` hands out.
    DesignCommands(ListHost& host, DesignStore& design) : host_(host), design_(design) {}

    // Asks for a design file and brings its design in, for this window and for the settings. False
    // if the user gave up or the file can't be read, which is told.
    bool Open() { return Open(IsEnabled()); }
    void Save();
    // Whether the screen is to be switched on; asks while nothing was designed, and may bring in a
    // design.
    bool MayEnable();

  private:
    bool Open(bool shows);
    bool IsEnabled() const;
    std::filesystem::path StartFolder() const;
    void StorePath(const std::filesystem::path& file);

    ListHost& host_;
    DesignStore& design_;
};

}  // namespace bw
