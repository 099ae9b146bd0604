// What still stands in the editor of a cell counts: keys and buttons that leave the keyboard where it is
// (short cuts, mnemonics, tool bars, menus) find it taken over before they act.
//
// The grids of this folder ask for it themselves. It watches the whole program, so that it also holds for
// windows that know nothing of the grid they work on.
#pragma once

namespace qk {

/// From now on, for every grid of the program. The first call counts; wants a QApplication.
void takeOverEditsBeforeActions();

/// Takes over what stands in the editor that has the keyboard, and closes it. Nothing without one.
void takeOverOpenEdit();

}  // namespace qk
