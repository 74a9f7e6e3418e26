// The program's own colours, as a light theme shows them, and their likeness for a dark one.
#pragma once

#include <QColor>

namespace bw {

// Of the main window and the dialogs that tell or ask something.
inline constexpr QRgb kPaleBlue = 0xFFC8E1FF;
// Of the dialogs with settings.
inline constexpr QRgb kWhiteGround = 0xFFFFFFFF;

// True if the desktop's theme is dark: its text is lighter than its background. It may change while
// the program runs: ask anew at each painting.
bool DarkTheme();

// The colour itself, or with a dark theme one of the same hue that light text can be read on.
QColor ThemedColor(const QColor& light);

// `text` paled towards its ground: its own share of the colour, from 0 to 1, the rest the ground's.
QColor Paled(const QColor& text, const QColor& ground, float share);

// The one colour of what stands out: the marks of checked rows, the buttons that build. As a ground
// it takes the text colour below; texts of its own would be too pale on coloured grounds.
QColor AccentColor();
QColor TextOnAccent();
// What can't work: a text that can be read on the rows' colours, and a ground of its own.
QColor WarningText();
QColor WarningGround();

}  // namespace bw
