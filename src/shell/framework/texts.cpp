#include "shell/framework/texts.h"

#include <QFile>

#include "support/text.h"

namespace bw {

QString ToQt(std::u16string_view text) {
    return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}

std::u16string FromQt(const QString& text) {
    return text.toStdU16String();
}

QString PathToQt(const std::filesystem::path& path) {
    return QFile::decodeName(QByteArray::fromStdString(path.string()));
}

std::filesystem::path PathFromQt(const QString& text) {
    return QFile::encodeName(text).toStdString();
}

QString QtText(int id, Language language) {
    return ToQt(LoadText(id, language));
}

QString QtOwnText(Language language, std::u16string_view chinese, std::u16string_view english) {
    return ToQt(OwnText(language, chinese, english));
}

}  // namespace bw
