// "Kassenverwaltung - Einlagen": the stakes for shooters, those for clubs and teams, what each pays for, and
// which shooter classes it is released for. Rows of the two grids are stored as they are left.
#pragma once

#include <QDialog>
#include <memory>
#include <vector>

#include "cash/stake_links.h"
#include "platform/dao/database.h"
#include "platform/runtime/retry.h"
#include "platform/workplace.h"

class QListWidget;

namespace Ui {
class frmArtikel;
}

namespace qk {

class BoundGrid;
class BoundRows;
struct GlobalVariablen;

class frmArtikel : public QDialog {
  Q_OBJECT

 public:
  frmArtikel(const Workplace& workplace, const GlobalVariablen& global, QWidget* parent = nullptr);
  ~frmArtikel() override;

  void setVisible(bool visible) override;
  /// Stays open while something typed can't be stored, or isn't meant to be lost.
  void reject() override;

 private:
  void connectControls();
  void Form_Load();
  bool vorSpeichern(int row);
  QString gespeicherteBezeichnung(int row) const;
  void cmdDelete(BoundGrid& grid, bool schuetzt);
  void cmdDelEinlage(BoundGrid& grid);
  void cmdDelAll();
  void cmdRefresh();
  void fuelleEinlagen();
  void zeigeDisziplinen();
  void zeigeKlassen();
  void cmdSaveDisziKombi();
  void cmdSaveEinlagenKlassen();
  void cmdKlassenSetzen();
  /// What was changed on the two last tabs and isn't saved is asked for before it goes. False: stay.
  bool verlassen();
  /// The list stands on that stake again.
  void bleibe(QListWidget& list, qint32 einlage);
  void waehleKlassen(const QSet<qint32>& klassen);
  std::vector<qint32> gewaehlteKlassen() const;
  ErrorReport report(const QString& text) const;
  void versuche(const std::function<void()>& routine);

  Workplace workplace_;
  const GlobalVariablen& global_;
  std::unique_ptr<Ui::frmArtikel> ui_;
  std::unique_ptr<dao::Database> database_;
  std::unique_ptr<BoundRows> data1_, data2_;  // read from database_
  StakeTargets targets_;
  qint32 disziEinlage_ = 0, klassenEinlage_ = 0;  // stakes that are shown
  bool disziGeaendert_ = false, klassenGeaendert_ = false;
};

}  // namespace qk
