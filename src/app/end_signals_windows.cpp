#include <QAbstractNativeEventFilter>
#include <QCoreApplication>
#include <csignal>
#include <utility>

#include "app/end_signals.h"
#include "support/windows_api.h"

namespace bw {

// Qt would ask the windows to close now, and their questions would hold up everybody's shutdown.
class EndSignals::State : public QAbstractNativeEventFilter {
  public:
    explicit State(std::function<void(int)> end) : end_(std::move(end)) {
        QCoreApplication::instance()->installNativeEventFilter(this);
    }

    bool nativeEventFilter(const QByteArray&, void* message, qintptr* result) override {
        const MSG& told = *static_cast<const MSG*>(message);
        if (told.message != WM_ENDSESSION || told.wParam == FALSE) return false;
        // Each window of the program gets the message.
        if (const auto end = std::exchange(end_, nullptr)) end(SIGTERM);
        *result = 0;
        return true;
    }

  private:
    std::function<void(int)> end_;
};

EndSignals::EndSignals(std::function<void(int)> end)
    : state_(std::make_unique<State>(std::move(end))) {}

EndSignals::~EndSignals() = default;

}  // namespace bw
