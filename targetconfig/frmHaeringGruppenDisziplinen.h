// Edits the discipline groups: named selections of what the stations offer. Ticks are stored by Neu and
// Speichern only.
#pragma once

#include <QDialog>
#include <memory>

#include "platform/workplace.h"
#include "targetconfig/discipline_groups.h"

class QListWidgetItem;
namespace Ui {
class frmHaeringGruppenDisziplinen;
}

namespace qk {

class frmHaeringGruppenDisziplinen : public QDialog {
  Q_OBJECT

 public:
  /// The database of the open competition; outlives the window.
  frmHaeringGruppenDisziplinen(const Workplace& workplace, dao::Database& db, QWidget* parent = nullptr);
  ~frmHaeringGruppenDisziplinen() override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  ErrorReport report(const QString& text) const;
  ErrorReport reportOf(const QString& routine) const { return report("Fehler bei " + routine + "_err!"); }
  void fillGroups();
  void fillDisciplines();
  void lstHaeringGruppen_Click();
  void cmdNewKombi_Click();
  void cmdSave_Click();
  void cmdDelete_Click();
  void tickAll(bool ticked);
  QListWidgetItem* chosenEntry() const;
  int chosenId() const;  ///< 0 when no group is chosen
  QStringList tickedTitles() const;
  void keepAsStored();
  void showState();

  Workplace workplace_;
  DisciplineGroups groups_;
  std::unique_ptr<Ui::frmHaeringGruppenDisziplinen> ui_;
  QStringList stored_;  // titles ticked when the chosen group was read or stored
  bool filled_ = false;
  bool changedByPress_ = false;
};

}  // namespace qk
