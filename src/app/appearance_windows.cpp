#include <QApplication>
#include <QProxyStyle>
#include <QStyleOption>

#include "app/appearance.h"

namespace bw {
namespace {

// With dark colours Qt fills boxes and rings with blue, the unmarked ones too.
class PlainMarks : public QProxyStyle {
  public:
    PlainMarks() : QProxyStyle(QStringLiteral("Fusion")) {}

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
        const bool mark = element == PE_IndicatorCheckBox || element == PE_IndicatorRadioButton;
        if (!mark || button == nullptr)
            return QProxyStyle::drawPrimitive(element, option, painter, widget);
        QStyleOptionButton plain(*button);
        plain.palette = QApplication::palette();
        plain.palette.setCurrentColorGroup(button->palette.currentColorGroup());
        QProxyStyle::drawPrimitive(element, &plain, painter, widget);
    }
};

}  // namespace

// The style that follows the system knows neither dark colours nor buttons with a colour of their
// own. With darkmode=2 Qt has title bars and palette follow the user's choice of dark or light
// apps, while the program runs too.
void ChooseAppearance() {
    if (qEnvironmentVariableIsEmpty("QT_STYLE_OVERRIDE")) QApplication::setStyle(new PlainMarks);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "windows:darkmode=2");
}

}  // namespace bw
