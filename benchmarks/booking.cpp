// What booking a visit costs, 60 shots that count for 40 disciplines: results, picture and marks, against the
// bare inserts and updates of the same rows in one transaction. Everything lies in memory: syncing is off on
// both sides.
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

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
    capture_->fillLists();
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

void house(benchmark::State& state) {
  TransferredVisit visit;
  for (auto _ : state) {
    state.PauseTiming();
    if (visit.capture().nOffeneSchuss() == 0) visit.shoot();
    state.ResumeTiming();
    visit.capture().m_cmdSaveTarvex_Click();
    if (visit.capture().nOffeneSchuss() != 0) state.SkipWithError("the visit wasn't booked");
  }
}

/// The statements of one booking, prepared, on a connection of their own.
class BareStore {
 public:
  explicit BareStore(const QString& path) : store_(QSqlDatabase::addDatabase("QSQLITE", kName)) {
    store_.setDatabaseName(path);
    store_.open();
    QSqlQuery(store_).exec("PRAGMA journal_mode = WAL");
    teiler_ = prepared(
        "INSERT INTO Schuss (Art, Ergebnis, Ring, x, y, ScheibenNr, Startnummer, MannID, KlassenID, DisziID, "
        "VorMannID, SchussXY, SerieXY, Datum, DSBTeiler, DSBRinge, SPO_ID, ScheibenNummern, bManuell, WTyp, "
        "Betrag) VALUES (?,?,0,?,?,?,?,?,?,?,?,'',?,?,?,?,0,'',0,?,0)");
    series_ = prepared(
        "INSERT INTO SchussSerien (Ergebnis, Startnummer, MannID, KlassenID, DisziID, Anz, Folge, "
        "Einzelfolge, Einzelfolge2, VorMannID, EinzelFolgeTeiler, SerieXY, Datum, SPO_ID, ScheibenNummern, "
        "bManuell, WTyp, Betrag) VALUES (?,?,?,?,?,?,?,?,?,?,?,'',?,0,'',0,?,0)");
    picture_ = prepared(
        "INSERT INTO Grafik_Scheibe (StartNr, Name, Verein, Wettkampf, ScheibenTyp, AnzScheiben, "
        "Teilerfaktor, AnzEinschuesse, Datum, ringeo, ringem) VALUES (?,'','',?,?,1,?,?,'2026-11-20 "
        "10:00:00',540,560.4)");
    hit_ = prepared(
        "INSERT INTO Grafik_Schuss (SchussNr, Ringwert, Teiler, x, Y, ScheibenID) VALUES (?,?,?,?,?,?)");
    mark_ = prepared(
        "UPDATE Haering_Daten SET Verbucht = -1, BuchungsZeitpunkt = '2026-11-20 10:00:00' WHERE ID = ?");
  }
  ~BareStore() {
    for (QSqlQuery* query : {&teiler_, &series_, &picture_, &hit_, &mark_}) *query = QSqlQuery();
    store_ = {};
    QSqlDatabase::removeDatabase(kName);
  }

  /// In one transaction, which is less than the house does: it commits row by row.
  void book(const PendingResults& results, const Shots& shots) {
    store_.transaction();
    for (const auto& r : results.m_colTeilerErg.objects())
      run(teiler_, {r->Art, r->ergebnis, r->X, r->Y, r->ScheibenNr, r->Startnummer, r->MannId, r->KlassenID,
                    r->DisziID, r->VorMannId, r->SerieXY, r->Datum, r->DSBTeiler, r->DSBRinge, r->WTyp});
    for (const auto& r : results.m_colRingErg.objects())
      run(series_, {r->ergebnis, r->Startnummer, r->MannId, r->KlassenID, r->DisziID, r->Anz, r->Folge,
                    r->Einzelfolge, r->Einzelfolge2, r->VorMannId, r->EinzelfolgeTeiler, r->Datum, r->WTyp});
    run(picture_, {"107", "LG Auflage", "LG", 1.0, kShots});
    const QVariant id = picture_.lastInsertId();
    for (const auto& shot : shots)
      run(hit_, {shot->TrefferNummer - 1, shot->RingMitZehntel, shot->dblTeiler, shot->X, shot->Y, id});
    for (const auto& shot : shots) run(mark_, {shot->ID});
    store_.commit();
  }
  const QString& problem() const { return problem_; }

 private:
  QSqlQuery prepared(const QString& text) {
    QSqlQuery query(store_);
    if (!query.prepare(text)) problem_ = query.lastError().text();
    return query;
  }
  void run(QSqlQuery& query, const QVariantList& values) {
    for (int i = 0; i < values.size(); ++i) query.bindValue(i, values[i]);
    if (!query.exec()) problem_ = query.lastError().text();
  }

  inline static const QString kName = "bare booking";
  QSqlDatabase store_;
  QSqlQuery teiler_, series_, picture_, hit_, mark_;
  QString problem_;
};

void bare(benchmark::State& state) {
  TransferredVisit visit;
  const Shots shots = visit.capture().m_colHaeringSchuss().objects();
  BareStore store(visit.path());
  for (auto _ : state) store.book(visit.capture().pending(), shots);
  if (!store.problem().isEmpty()) state.SkipWithError(store.problem().toUtf8().constData());
}

const Registered booking{Pair{"Verbuchen 60 Schuss × 40", 5.0,
                              "gegen bloßes Einfügen und Ändern in einer Transaktion", house, bare}};

}  // namespace

}  // namespace qk::bench
