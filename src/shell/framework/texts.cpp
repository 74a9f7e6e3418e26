#include "shell/framework/texts.h"

#include "support/text.h"

namespace bw {

QString ToQt(std::u16string_view text) {
    // Not QString::fromUtf16, which eats a byte order mark.
    return QStringView(text.data(), static_cast<qsizetype>(text.size())).toString();
}

std::u16string FromQt(const QString& text) {
    return text.toStdU16String();
}

QString PathToQt(const std::filesystem::path& path) {
    return ToQt(PathText(path));
}

std::filesystem::path PathFromQt(const QString& text) {
    // Qt parts folders with / on every system.
    return TextPath(FromQt(text)).make_preferred();
}

QString QtText(TextId id, Language language) {
    return ToQt(LoadText(id, language));
}

QString WithoutLetter(const QString& text) {
    const qsizetype letter = text.lastIndexOf(QStringLiteral("(&"));
    return letter < 0 ? text : text.left(letter);
}

QString TitleOfEntry(TextId id, Language language) {
    return WithoutLetter(QtText(id, language)).remove(u'&').remove(QStringLiteral("..."));
}

}  // namespace bw
