#include <QLibraryInfo>

#include "shell/main/qt_texts.h"

namespace bw {

bool QtTexts::LoadChinese() {
    return chinese_.load(QStringLiteral("qtbase_zh_CN"),
                         QLibraryInfo::path(QLibraryInfo::TranslationsPath));
}

}  // namespace bw
