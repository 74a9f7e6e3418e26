#include "app/end_signals.h"

namespace bw {

// A program with windows hears nothing of a console's Ctrl+C. Task Manager and taskkill close the
// window as the user does, and the end of a session is QGuiApplication's commitDataRequest.
class EndSignals::State {};
EndSignals::EndSignals(std::function<void(int)>) {}
EndSignals::~EndSignals() = default;

}  // namespace bw
