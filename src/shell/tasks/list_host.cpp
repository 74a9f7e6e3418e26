#include "shell/tasks/list_host.h"

namespace bw {

BackgroundTasks::Turn BeginListTask(ListHost& host) {
    return RefusesWhileBusy(host) ? nullptr : host.Tasks().TryBegin();
}

bool RefusesWhileBusy(ListHost& host) {
    if (!host.Tasks().TaskBusy()) return false;
    Warn(host, LoadText(TextId::kTaskBusy, host.CurrentLanguage()));
    return true;
}

void Warn(ListHost& host, std::u16string_view text) {
    host.Dialogs().Message(text, LoadText(TextId::kWarnTitle, host.CurrentLanguage()),
                           MessageButtons::kConfirm);
}

}  // namespace bw
