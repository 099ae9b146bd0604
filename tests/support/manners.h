// What every window of the house owes its users, checked on the real window. Each complaint is a line of
// text.
#pragma once

#include <QStringList>

class QWidget;

namespace qk::test {

/// Mnemonics unique; cmdOK is what Enter presses and stands left of cmdCancel; no combo box completes what is
/// typed; every control that takes the focus has a name for a screen reader; nothing has a size fixed in
/// pixels; with a font twice as large all texts of labels and buttons still fit. The window is left as it
/// was.
QStringList badManners(QWidget& window);

}  // namespace qk::test
