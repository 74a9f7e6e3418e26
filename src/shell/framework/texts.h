// Between the program's wide text and Qt's.
#pragma once

#include <QString>
#include <filesystem>
#include <string>
#include <string_view>

#include "language/language.h"

namespace bw {

// Unit by unit, halves of surrogate pairs as well.
QString ToQt(std::u16string_view text);
std::u16string FromQt(const QString& text);
// As PathText and TextPath: a path comes back byte for byte, whatever the encoding of its names.
QString PathToQt(const std::filesystem::path& path);
std::filesystem::path PathFromQt(const QString& text);

QString QtText(TextId id, Language language);

// A menu's text without its letter, "(&B)", for places where that means nothing.
QString WithoutLetter(const QString& text);
// A menu entry's words as the title of what it opens: without letter and points.
QString TitleOfEntry(TextId id, Language language);

}  // namespace bw
