#include "app/shell/competition_choice.h"

#include <QFileInfo>

#include "app/shell/demo_competition.h"
#include "app/shell/frmStart.h"
#include "platform/dialog/dialogs.h"

namespace qk {

QString chosenCompetition(const Workplace& workplace, const QString& current) {
  return workplace.dialogs.openFile("Wettkampf (*.qkk)|*.qkk|Alle Dateien (*.*)|*.*",
                                    current.isEmpty() ? QString() : QFileInfo(current).path());
}

QString offeredCompetition(const Workplace& workplace, const GlobalVariablen& global, const QString& missing,
                           const std::function<QString()>& makeNew) {
  frmStart start(missing, demoFolder(global), bool(makeNew));
  start.exec();
  if (start.choice() == frmStart::Choice::Open) return chosenCompetition(workplace, missing);
  if (start.choice() == frmStart::Choice::New) return makeNew();
  if (start.choice() == frmStart::Choice::Demo) return demoCompetition(workplace, global);
  return {};
}

}  // namespace qk
