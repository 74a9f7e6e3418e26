#include <QApplication>

#include "app/appearance.h"

namespace bw {

// The style that follows the system knows neither dark colours nor buttons with a colour of their
// own. With darkmode=2 Qt has title bars and palette follow the user's choice of dark or light
// apps, while the program runs too.
void ChooseAppearance() {
    if (qEnvironmentVariableIsEmpty("QT_STYLE_OVERRIDE"))
        QApplication::setStyle(QStringLiteral("Fusion"));
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "windows:darkmode=2");
}

}  // namespace bw
