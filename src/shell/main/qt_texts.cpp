#include "shell/main/qt_texts.h"

#include <QCoreApplication>

namespace bw {

QtTexts::~QtTexts() {
    QCoreApplication::removeTranslator(&chinese_);
}

void QtTexts::SetLanguage(Language language) {
    QCoreApplication::removeTranslator(&chinese_);
    if (language != Language::kChinese) return;
    if (chinese_.isEmpty() && !LoadChinese()) return;
    QCoreApplication::installTranslator(&chinese_);
}

}  // namespace bw
