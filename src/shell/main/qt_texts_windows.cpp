#include "shell/main/qt_texts.h"

extern "C" {
extern const unsigned char embedded_qt_chinese_begin[], embedded_qt_chinese_end[];
}

namespace bw {

bool QtTexts::LoadChinese() {
    return chinese_.load(embedded_qt_chinese_begin,
                         static_cast<int>(embedded_qt_chinese_end - embedded_qt_chinese_begin));
}

}  // namespace bw
