#include "app/cash_workstation.h"

#include "app/ground/settings_keys.h"
#include "app/ground/temp_module.h"
#include "app/shell/competition_choice.h"
#include "platform/dialog/dialogs.h"
#include "platform/runtime/files.h"

namespace qk {

CashWorkstation::CashWorkstation(const Workplace& workplace, GlobalVariablen& global,
                                 std::shared_ptr<Storage> storage)
    : workplace_(workplace),
      global_(global),
      opening_(workplace, global),
      papers_(workplace),
      reports_(workplace, {papers_.current, papers_.asking}, keys::BerichtsfensterKasse.toString()),
      window_(workplace, global, reports_),
      watch_(workplace, std::move(storage), {window_, *window_.findChild<QStatusBar*>()}) {
  opening_.onOpenDialog = [this](Steps& step) { openDialog(step); };
  window_.setOhneScheibenNummern(false);
}

bool CashWorkstation::form_load(const QString& sCommandLine) {
  bool opened = false;
  reported(fehlerReport(workplace_.dialogs, "Fehler bei form_load_err!"), [&](Steps& step) {
    step([&] { BenutzerRechteLaden(workplace_, global_); });
    step([&] { OrdnerErmitteln(workplace_, global_); });
    opened = opening_.setWettkampf(sCommandLine);
    if (!opened) return;
    global_.sWettkampf = opening_.sWettkampf();
    window_.setBez1(opening_.bezeichnung());
    window_.setBez2(opening_.bezeichnung2());
    window_.setOrt(opening_.ort());
    watch_.watchCompetition(opening_.sWettkampf());
    opened = window_.oeffneOhneSchuetzen();
  });
  return opened;
}

void CashWorkstation::openDialog(Steps& step) {
  const QString missing = opening_.sWettkampf();
  const QString path = workplace_.files.exists(missing) ? chosenCompetition(workplace_, missing)
                                                        : offeredCompetition(workplace_, global_, missing);
  if (path.isEmpty()) return;
  step([&] { schreibe(workplace_.settings, keys::LetzterWettkampf, path); });
  opening_.setWettkampf(path);
}

}  // namespace qk
