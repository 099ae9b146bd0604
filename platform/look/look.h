// One look for every window: style, font, language, colours and distances, set once at the start.
#pragma once

#include <QPalette>

class QApplication;

namespace qk::look {

enum class Scheme { Light, Dark };

/// What the system's palette says: dark where its text is lighter than its window.
Scheme systemScheme();

/// Colours with a text contrast of at least 4.5 : 1, disabled text of 3 : 1.
QPalette palette(Scheme scheme);

/// Style, font (Liberation Sans, else DejaVu Sans, 9 pt), German number and date forms, German texts of the
/// toolkit's own boxes, the colours, and a place inside the screen for every window. Translator and placing
/// belong to the application.
void apply(QApplication& application, Scheme scheme = systemScheme());

}  // namespace qk::look
