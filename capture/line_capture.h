// The result capture of one firing line: open shots, ticks, transfer, storing and their views.
//
// The line control owns one, shows its tables and lists, and forwards the events of its controls to the
// routines of the same name. Failures are reported in boxes by the routine that met them; no Error leaves a
// routine.
//
//   flex  ---- one row per open shot ---->  m_colHaeringSchuss
//   tick, transfer:  ticked shots --> ffErg, m_colGewaehlt --> pending results --> lists of best results
//   storing:         pending results --> Schuss, SchussSerien; ticked shots --> picture, booked
#pragma once

#include <QObject>
#include <QString>
#include <functional>
#include <memory>
#include <vector>

#include "capture/check_list.h"
#include "capture/discipline_loader.h"
#include "capture/open_shots.h"
#include "capture/records.h"
#include "capture/result_grid.h"
#include "capture/storing.h"
#include "capture/transfer.h"
#include "capture/views.h"
#include "platform/dao/database.h"
#include "platform/grid/text_table.h"
#include "platform/workplace.h"

namespace qk {

class LineCapture : public QObject {
  Q_OBJECT

 public:
  /// Lays out both grids and reads the look of the result grid.
  explicit LineCapture(const Workplace& workplace, QObject* parent = nullptr);

  /// The line's own connection to the competition; outlives its use here. nullptr ends it.
  void setDatabase(dao::Database* db) { db_ = db; }
  /// Refills the check lists of disciplines and combinations.
  void fillLists(const CompetitionLists& lists);
  /// The line's shooter, nullptr for none. Checks the transfer button.
  void setShooter(std::shared_ptr<const Schuetze> shooter);
  const Schuetze* shooter() const { return shooter_.get(); }

  // The data of the controls; each outlives the views on it only as a member of this object.
  TextTable& flex() { return flex_; }
  TextTable& ffErg() { return ffErg_; }
  CheckList& lstDisziTarvex() { return lstDisziTarvex_; }
  CheckList& lstKombiTarvex() { return lstKombiTarvex_; }
  const BestResults& bestResults() const { return best_; }

  // Open shots.
  const ShotCollection& m_colHaeringSchuss() const { return m_colHaeringSchuss_; }
  int nOffeneSchuss() const { return m_colHaeringSchuss_.count(); }
  /// Reception: TransferInGrid, then SpeichereHaeringSchuss. The object stays shared with the collection.
  void TransferInGrid(const std::shared_ptr<HaeringSchuss>& schuss);
  bool SpeichereHaeringSchuss(HaeringSchuss& schuss);
  /// The same two for a shot entered by hand; one that comes ticked shows its tick. False when the operator
  /// gave it up, as for a key that the line has already.
  bool uebernehmeManuellenSchuss(const std::shared_ptr<HaeringSchuss>& schuss);
  std::int16_t AnzahlOffeneSchuesse(std::int16_t nLinie);
  QString StartnummerOffeneSchuesse(std::int16_t nLinie);
  void LadeOffeneSchuesse(std::int16_t nLinie);
  /// Writes the number of the shooter who was chosen into every open shot and its row. What was transferred
  /// must be transferred again.
  void assignOpenShots(const QString& sStartnummer);
  void HaeringSchussVerwerfenAlle();
  void HaeringSchussVerwerfenGewaehlte();

  // Ticking. Rows count with the header.
  void flex_click(int row, int column);
  void HaeringSchussAnAbwaehlen(bool bWahl);
  /// Ticks the series of the competition around `currentRow`; `show` is called with each row ticked, which is
  /// to become current and visible.
  void HaeringSchussWettbewerbAnwaehlen(int currentRow, const std::function<void(int row)>& show);
  /// Ticks as many shots as the first marked row of the discipline grid says ("Serie wählen (DEF)").
  void HaeringSchussSerieAnwaehlen(const TextTable& flexHaeringDiszi);

  // Disciplines: the operator's clicks in the two lists.
  void m_lstDisziTarvex_Click();
  void m_lstKombiTarvex_Click();

  // Transfer and storing.
  void m_cmdUebertragenTarvex_Click();
  void m_cmdSaveTarvex_Click();
  void cmd_SaveOnlyTarvex_Click();
  void SpeichernInDatenbank(bool bUndVerbuchen);
  /// What storing writes on the picture, asked at that moment.
  void setPictureCaption(std::function<PictureCaption()> caption) { caption_ = std::move(caption); }

  /// True when a shot and a discipline are ticked and a shooter is on the line. Emits transferStateChanged.
  bool PruefeUebertragenSchaltflaecheEnabled();

  const KeyedCollection<Disziplin>& m_colDisziplinen() const { return m_colDisziplinen_; }
  const ShotCollection& m_colGewaehlt() const { return m_colGewaehlt_; }
  const PendingResults& pending() const { return pending_; }

 Q_SIGNALS:
  /// Button state, and the text of `lblSchusszahl`; an empty text leaves the label as it is.
  void transferStateChanged(bool enabled, const QString& lblSchusszahl);
  void bestResultsChanged();
  /// Results were stored; what and how many, as a sentence.
  void stored(const QString& text);

 private:
  void Select_Disziplinen();
  std::vector<std::shared_ptr<HaeringSchuss>> tickedShots() const;
  void tickAll(bool bWahl);
  /// Chooses the competition's disciplines where the lists know it; how many shots its series holds.
  int seriesLength(const QString& sWettbewerb);
  void UebertragenInDisziplinen();
  void forgetTransfer();
  void storeAfterTransfer(const QString& missing, bool bUndVerbuchen);

  Workplace workplace_;
  dao::Database* db_ = nullptr;
  std::shared_ptr<const Schuetze> shooter_;
  std::function<PictureCaption()> caption_;
  ResultLook look_;
  TextTable flex_;
  TextTable ffErg_;
  CheckList lstDisziTarvex_;
  CheckList lstKombiTarvex_;
  BestResults best_;
  ShotCollection m_colHaeringSchuss_;
  ShotCollection m_colGewaehlt_;
  KeyedCollection<Disziplin> m_colDisziplinen_;
  PendingResults pending_;
};

}  // namespace qk
