// How the program's windows look on the desktop.
#pragma once

namespace bw {

// To be called before the QApplication is made. What the user asks for by Qt's own options and
// variables stays.
void ChooseAppearance();

}  // namespace bw
