#include "app/competition_choice.h"

#include <QFileInfo>

#include "app/demo_competition.h"
#include "app/frmStart.h"
#include "platform/dialog/dialogs.h"

namespace qk {

QString chosenCompetition(const Workplace& workplace, const QString& current) {
  return workplace.dialogs.openFile("Wettkampf (*.qkk)|*.qkk|Alle Dateien (*.*)|*.*",
                                    current.isEmpty() ? QString() : QFileInfo(current).path());
}

QString offeredCompetition(const Workplace& workplace, const GlobalVariablen& global,
                           const QString& missing) {
  frmStart start(missing, demoFolder(global));
  start.exec();
  if (start.choice() == frmStart::Choice::Open) return chosenCompetition(workplace, missing);
  if (start.choice() == frmStart::Choice::Demo) return demoCompetition(workplace, global);
  return {};
}

}  // namespace qk
