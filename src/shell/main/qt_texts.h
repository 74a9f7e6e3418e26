// The texts that Qt brings along: file dialogs, the menus of edit boxes.
#pragma once

#include <QTranslator>

#include "language/language.h"

namespace bw {

// Has them in the program's language instead of the system's. Where Qt's translations aren't
// installed they are English.
class QtTexts {
  public:
    QtTexts() = default;
    QtTexts(const QtTexts&) = delete;
    QtTexts& operator=(const QtTexts&) = delete;
    ~QtTexts();

    void SetLanguage(Language language);

  private:
    // False where there are none.
    bool LoadChinese();

    QTranslator chinese_;
};

}  // namespace bw
