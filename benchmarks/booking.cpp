// What booking a visit costs, 60 shots that count for 40 disciplines: results, picture and marks, against the
// bare inserts and updates of the same rows in one transaction. Everything lies in memory: syncing is off on
// both sides.

#include "benchmarks/bare_store.h"
#include "benchmarks/bench_line.h"
#include "benchmarks/pairs.h"
#include "benchmarks/visit.h"
#include "capture/line_capture.h"

namespace qk::bench {

namespace {

constexpr int kShots = 60;
constexpr int kDisciplines = 40;

/// A line with 60 open shots, ticked and transferred, on a competition of its own.
class TransferredVisit {
 public:
  TransferredVisit() : db_(dao::Database::open(place_.competition())) {
    const Workplace own = place_.workplace();
    capture_ = std::make_unique<LineCapture>(
        Workplace{own.clock, random_, own.waits, own.files, own.settings, own.dialogs});
    capture_->setDatabase(db_.get());
    db_->reserveNumbers("Haering_Daten");
    addDisciplines();
    capture_->fillLists(*LadeListen(*db_));
    capture_->setShooter(std::make_shared<Schuetze>(visitShooter()));
    for (int i = 0; i < capture_->lstDisziTarvex().count(); ++i)
      capture_->lstDisziTarvex().setTicked(i, capture_->lstDisziTarvex().number(i) >= 1000);
    capture_->m_lstDisziTarvex_Click();
    shoot();
  }

  void shoot() {
    for (const auto& shot : visitShots(kShots)) {
      capture_->TransferInGrid(shot);
      capture_->SpeichereHaeringSchuss(*shot);
    }
    capture_->HaeringSchussAnAbwaehlen(true);
  }

  LineCapture& capture() { return *capture_; }
  QString path() const { return place_.competition(); }

 private:
  void addDisciplines() {
    const auto rows = db_->openRecordset("Select * from Disziplin");
    for (const auto& d : visitDisciplines(kDisciplines, kShots)) {
      rows->addNew();
      rows->setValue("ID", d->ID);
      rows->setValue("Name", d->Name);
      rows->setValue("CmdIndex", d->ID);
      rows->setValue("Ringe", d->Ringe != 0);
      rows->setValue("Teiler", d->Teiler != 0);
      rows->setValue("RingSerie", d->RingSerie);
      rows->setValue("RingZentel", d->RingZentel != 0);
      rows->setValue("Ring0XZehntel", d->Ring0XZehntel != 0);
      rows->setValue("RingXXZehntel", d->RingXXZehntel != 0);
      rows->setValue("dblMaxSerieDSB", d->dblMaxSerieDSB);
      rows->update();
    }
  }

  BenchPlace place_;
  CountingRandom random_;
  std::unique_ptr<dao::Database> db_;
  std::unique_ptr<LineCapture> capture_;
};

void house(Rounds& rounds) {
  TransferredVisit visit;
  while (rounds.next()) {
    rounds.pause();
    if (visit.capture().nOffeneSchuss() == 0) visit.shoot();
    rounds.resume();
    visit.capture().m_cmdSaveTarvex_Click();
    if (visit.capture().nOffeneSchuss() != 0) rounds.fail("the visit wasn't booked");
  }
}

/// The statements of one booking, prepared, on a connection of their own.
class BareBooking {
 public:
  explicit BareBooking(const QString& path) : store_(path) {}

  /// In one transaction, which is less than the house does: it commits row by row.
  void book(const PendingResults& results, const Shots& shots) {
    store_.execute("BEGIN IMMEDIATE");
    for (const auto& r : results.m_colTeilerErg.objects())
      store_.run(teiler_, r->Art, r->ergebnis, r->X, r->Y, r->ScheibenNr, r->Startnummer, r->MannId,
                 r->KlassenID, r->DisziID, r->VorMannId, r->SerieXY, r->Datum, r->DSBTeiler, r->DSBRinge,
                 r->WTyp);
    for (const auto& r : results.m_colRingErg.objects())
      store_.run(series_, r->ergebnis, r->Startnummer, r->MannId, r->KlassenID, r->DisziID, r->Anz, r->Folge,
                 r->Einzelfolge, r->Einzelfolge2, r->VorMannId, r->EinzelfolgeTeiler, r->Datum, r->WTyp);
    store_.run(picture_, QString("107"), QString("LG Auflage"), QString("LG"), 1.0, kShots);
    const qint64 id = store_.lastRow();
    for (const auto& shot : shots)
      store_.run(hit_, shot->TrefferNummer - 1, shot->RingMitZehntel, shot->dblTeiler, shot->X, shot->Y, id);
    for (const auto& shot : shots) store_.run(mark_, shot->ID);
    store_.execute("COMMIT");
  }

 private:
  BareStore store_;
  sqlite3_stmt* const teiler_ = store_.prepare(
      "INSERT INTO Schuss (Art, Ergebnis, Ring, x, y, ScheibenNr, Startnummer, MannID, KlassenID, DisziID, "
      "VorMannID, SchussXY, SerieXY, Datum, DSBTeiler, DSBRinge, SPO_ID, ScheibenNummern, bManuell, WTyp, "
      "Betrag) VALUES (?,?,0,?,?,?,?,?,?,?,?,'',?,?,?,?,0,'',0,?,0)");
  sqlite3_stmt* const series_ = store_.prepare(
      "INSERT INTO SchussSerien (Ergebnis, Startnummer, MannID, KlassenID, DisziID, Anz, Folge, "
      "Einzelfolge, Einzelfolge2, VorMannID, EinzelFolgeTeiler, SerieXY, Datum, SPO_ID, ScheibenNummern, "
      "bManuell, WTyp, Betrag) VALUES (?,?,?,?,?,?,?,?,?,?,?,'',?,0,'',0,?,0)");
  sqlite3_stmt* const picture_ = store_.prepare(
      "INSERT INTO Grafik_Scheibe (StartNr, Name, Verein, Wettkampf, ScheibenTyp, AnzScheiben, "
      "Teilerfaktor, AnzEinschuesse, Datum, ringeo, ringem) VALUES (?,'','',?,?,1,?,?,'2026-11-20 "
      "10:00:00',540,560.4)");
  sqlite3_stmt* const hit_ = store_.prepare(
      "INSERT INTO Grafik_Schuss (SchussNr, Ringwert, Teiler, x, Y, ScheibenID) VALUES (?,?,?,?,?,?)");
  sqlite3_stmt* const mark_ = store_.prepare(
      "UPDATE Haering_Daten SET Verbucht = -1, BuchungsZeitpunkt = '2026-11-20 10:00:00' WHERE ID = ?");
};

void bare(Rounds& rounds) {
  TransferredVisit visit;
  const Shots shots = visit.capture().m_colHaeringSchuss().objects();
  BareBooking store(visit.path());
  while (rounds.next()) store.book(visit.capture().pending(), shots);
}

const Registered booking{Pair{"Verbuchen 60 Schuss × 40", 2.65,
                              "gegen bloßes Einfügen und Ändern in einer Transaktion", house, bare, 3}};

}  // namespace

}  // namespace qk::bench
