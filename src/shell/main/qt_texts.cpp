#include "shell/main/qt_texts.h"

#include <QCoreApplication>
#include <QLibraryInfo>

namespace bw {

QtTexts::~QtTexts() {
    QCoreApplication::removeTranslator(&chinese_);
}

void QtTexts::SetLanguage(Language language) {
    QCoreApplication::removeTranslator(&chinese_);
    if (language != Language::kChinese) return;
    const QString folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
    if (chinese_.isEmpty() && !chinese_.load(QStringLiteral("qtbase_zh_CN"), folder)) return;
    QCoreApplication::installTranslator(&chinese_);
}

}  // namespace bw
