// Find next, replace and replace all in the names. An expression can take any time, so all three
// run beside the window and can be stopped.
#pragma once

#include "list/search/name_search.h"
#include "shell/tasks/list_host.h"

namespace bw {

class FindCommands {
  public:
    explicit FindCommands(ListHost& host) : host_(host) {}

    void FindNext(const FindRecord& record);
    // Replaces in FindRow alone, then finds the next.
    void Replace(const FindRecord& record);
    void ReplaceAll(const FindRecord& record);

  private:
    ListHost& host_;
};

}  // namespace bw
