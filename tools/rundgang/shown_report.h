// A report in its preview, and what stands on its pages.
#pragma once

#include "tools/driver/driven_program.h"

namespace qk {

void waitForModal(DrivenProgram& program, const QString& name);
/// Waits for the preview and all its pages, saves them and a picture of the window beside, and closes it. The
/// file stands in the folder of the walk.
void saveShownReport(DrivenProgram& program, const QString& pdf);
/// The text of a sheet, as another program reads it.
QString printedText(const QString& pdf);

}  // namespace qk
