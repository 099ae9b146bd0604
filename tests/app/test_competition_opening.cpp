// Opening a competition: own tables and column, reported failures, what is open after a failure. No window.
#include <sqlite3.h>

#include <QDir>
#include <QFile>
#include <QTest>

#include "app/competition_opening.h"
#include "app/ground/unfinished_move.h"
#include "app/shell/password_question.h"
#include "masterdata/making/competition.h"
#include "platform/schema/schema_build.h"
#include "platform/settings/settings.h"
#include "tests/support/test_store.h"
#include "tests/support/test_workplace.h"

using namespace qk;
using namespace qk::test;

namespace {

const QStringList kOwnTables = {"Haering_Daten", "Haering_Gruppen", "Haering_Gruppen_Disziplinen"};

/// While it lives, no connection that is opened may read the table of groups of a template.
class TemplateNobodyMayRead {
 public:
  TemplateNobodyMayRead() {
    asked = false;
    sqlite3_auto_extension(reinterpret_cast<void (*)()>(&onConnection));
  }
  ~TemplateNobodyMayRead() { sqlite3_cancel_auto_extension(reinterpret_cast<void (*)()>(&onConnection)); }
  bool wasAsked() const { return asked; }

 private:
  static int onConnection(sqlite3* connection, char**, const void*) {
    return sqlite3_set_authorizer(connection, &mayRead, nullptr);
  }
  static int mayRead(void*, int action, const char* table, const char*, const char*, const char*) {
    if (action != SQLITE_READ || qstrcmp(table, "Haering_Gruppen") != 0) return SQLITE_OK;
    asked = true;
    return SQLITE_DENY;
  }
  inline static bool asked = false;
};

}  // namespace

class TestCompetitionOpening : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() {
    createDatabase(originals_.filePath("vorlage"),
                   [](dao::Database& db) { buildSchema(db, embeddedSchema("LeerSA.txt")); });
    original_ = std::make_unique<StoreOriginal>([](const QString& path) {
      makeCompetition(path, {"Abendschießen", "Grünau", QDate(2026, 7, 1)});
    });
  }
  void init() {
    place_ = std::make_unique<TestWorkplace>();
    global_ = std::make_unique<GlobalVariablen>();
    global_->SystemVerzeichnis = place_->path("System") + "/";
    QDir(place_->path()).mkdir("System");
    QVERIFY(QFile::copy(originals_.filePath("vorlage"), vorlage()));
    opening_ = std::make_unique<CompetitionOpening>(place_->workplace(), *global_);
    opening_->onCaption = [this](const QString& caption) { caption_ = caption; };
    path_ = place_->path("Abend.qkk");
    original_->copyTo(path_);
  }
  void cleanup() {
    opening_.reset();
    global_.reset();
    place_.reset();
  }

  void firstOpeningMakesWhatIsMissing() {
    QVERIFY(opening_->setWettkampf(path_));
    const auto db = dao::Database::open(path_);
    for (const QString& table : kOwnTables) QVERIFY2(db->hasTable(table), qPrintable(table));
    QVERIFY(db->tableDef("MeldeDisziplin").field("TeilerfaktorESA"));
    const auto vorlage = dao::Database::open(this->vorlage());
    for (const QString& table : kOwnTables) {
      QCOMPARE(indexesOf(*db, table), indexesOf(*vorlage, table));
    }
    QVERIFY(db->tableDef("Haering_Daten").field("ID")->autoNumber);
  }

  void indexesKeepTheirFlags() {
    dao::Database::open(vorlage())->appendIndex("Haering_Gruppen",
                                                {"Einmal", {"GruppenName"}, false, true, true});
    QVERIFY(opening_->setWettkampf(path_));
    const QStringList made = indexesOf(*dao::Database::open(path_), "Haering_Gruppen");
    QVERIFY2(made.contains("Einmal=GruppenName unique required"), qPrintable(made.join('|')));
    QVERIFY2(made.join('|').contains("=ID primary"), qPrintable(made.join('|')));
  }

  void anIndexThatCannotBeMadeIsPassedOver() {
    {
      const auto db = dao::Database::open(vorlage());
      const auto rs = db->openRecordset("Haering_Gruppen");
      for (int i = 0; i < 2; ++i) {
        rs->addNew();
        rs->setValue("GruppenName", "doppelt");
        rs->update();
      }
      prepareStore(place_->path("Ziel.qkk"));
      makeCompetition(place_->path("Ziel.qkk"), {"", "", QDate(2026, 7, 1)});
      QVERIFY(TabelleAnlegen(place_->workplace(), vorlage(), "Haering_Gruppen", place_->path("Ziel.qkk")));
      db->execute("Delete * from Haering_Gruppen");
      db->appendIndex("Haering_Gruppen", {"Einmal", {"GruppenName"}, false, true, false});
      db->appendIndex("Haering_Gruppen", {"Nochmal", {"GruppenName"}, false, false, false});
    }
    IndizesUebertragen(vorlage(), "Haering_Gruppen", place_->path("Ziel.qkk"));
    const QStringList made = indexesOf(*dao::Database::open(place_->path("Ziel.qkk")), "Haering_Gruppen");
    QVERIFY2(!made.contains("Einmal=GruppenName unique"), qPrintable(made.join('|')));
    QVERIFY2(made.contains("Nochmal=GruppenName"), qPrintable(made.join('|')));
  }

  void headDataAndTitle() {
    dao::Database::open(path_)->execute("UPDATE Wettkampf SET Bezeichnung2 = 'Runde 2'");
    QVERIFY(opening_->setWettkampf(path_));
    QCOMPARE(opening_->bezeichnung(), QString("Abendschießen"));
    QCOMPARE(opening_->bezeichnung2(), QString("Runde 2"));
    QCOMPARE(opening_->ort(), QString("Grünau"));
    QCOMPARE(global_->RefDatum, QDate(2026, 7, 1));
    QVERIFY(global_->Datenbank != nullptr);
    QCOMPARE(caption_, "QK-Intarso " + path_);
    QCOMPARE(place_->settings.value("Tarvex-40", "Häring", "Caption"), caption_);
  }

  void secondOpeningCreatesNothingAndSaysNothing() {
    QVERIFY(opening_->setWettkampf(path_));
    {
      const auto rs = global_->Datenbank->openRecordset("Haering_Gruppen");
      rs->addNew();
      rs->setValue("GruppenName", "Abend");
      rs->update();
    }
    QVERIFY(opening_->setWettkampf(path_));
    QCOMPARE(global_->Datenbank->openRecordset("Haering_Gruppen")->value("GruppenName").toString(),
             QString("Abend"));
    QVERIFY(place_->dialogs.asked().isEmpty());
  }

  void rowsOfTheTemplateTravelWithTheirTable() {
    {
      const auto db = dao::Database::open(vorlage());
      const auto rs = db->openRecordset("Haering_Gruppen");
      rs->addNew();
      rs->setValue("GruppenName", "aus der Vorlage");
      rs->update();
    }
    QVERIFY(opening_->setWettkampf(path_));
    QCOMPARE(global_->Datenbank->openRecordset("Haering_Gruppen")->value("GruppenName").toString(),
             QString("aus der Vorlage"));
  }

  void aDotInThePathIsToldPerTable() {
    QDir(place_->path()).mkdir("alt.neu");
    const QString dotted = place_->path("alt.neu/Abend.qkk");
    QVERIFY(QFile::copy(path_, dotted));
    for (int i = 0; i < kOwnTables.size(); ++i)
      place_->dialogs
          .expect(
              "Fehler beim Anlegen der Tabelle!\r\nHINWEIS: Der Pfad- und Dateiname des Wettkampfs darf "
              "keine "
              "Sonderzeichen (z.B. Punkt) enthalten.\r\n\r\n" +
              dotted)
          .titled("Fehler")
          .showing(BoxIcon::Critical);
    place_->dialogs.expect("Fehler: 3078 - " + messageOf(dotted) + "\r\nBitte anderen Wettkampf wählen!!!")
        .titled("Fehler");
    QVERIFY(!opening_->setWettkampf(dotted));
  }

  void dotsAreLookedForBeforeTheExtension() {
    QVERIFY(!hasDotBeforeExtension("/a/b/c.qkk"));
    QVERIFY(!hasDotBeforeExtension("/a/./b/../c.qkk"));
    QVERIFY(hasDotBeforeExtension("/a.b/c.qkk"));
    QVERIFY(hasDotBeforeExtension("/a/b.c.qkk"));
  }

  void aTableThatExistsWinsOverTheDot() {
    QVERIFY(opening_->setWettkampf(path_));
    opening_->close();
    QDir(place_->path()).mkdir("alt.neu");
    const QString dotted = place_->path("alt.neu/Abend.qkk");
    QVERIFY(QFile::copy(path_, dotted));
    QVERIFY(opening_->setWettkampf(dotted));
  }

  void aMissingTemplateAsksToRetry() {
    QFile::rename(vorlage(), vorlage() + "x");
    place_->dialogs.expect("Fehler: 3024 - " + messageOfOpening(vorlage()), BoxAnswer::Retry)
        .titled("Fehler")
        .with(BoxButtons::RetryCancel)
        .during([this] { QFile::rename(vorlage() + "x", vorlage()); });
    QVERIFY(opening_->setWettkampf(path_));
    QVERIFY(global_->Datenbank->hasTable("Haering_Daten"));
  }

  void cancelledTemplateGoesOn() {
    QFile::remove(vorlage());
    for (int i = 0; i < kOwnTables.size(); ++i)
      place_->dialogs.expect("Fehler: 3024 - " + messageOfOpening(vorlage()), BoxAnswer::Cancel);
    QVERIFY(!TabelleAnlegen(place_->workplace(), vorlage(), kOwnTables.at(0), path_));
    QVERIFY(!TabelleAnlegen(place_->workplace(), vorlage(), kOwnTables.at(1), path_));
    QVERIFY(!TabelleAnlegen(place_->workplace(), vorlage(), kOwnTables.at(2), path_));
  }

  void tabelleAnlegenTellsWhetherItCreated() {
    QVERIFY(TabelleAnlegen(place_->workplace(), vorlage(), "Haering_Gruppen", path_));
    QVERIFY(!TabelleAnlegen(place_->workplace(), vorlage(), "Haering_Gruppen", path_));
  }

  void feldAnlegenTellsWhetherItWasThere() {
    int result = -1;
    FeldAnlegen(place_->workplace(), path_, "MeldeDisziplin", "TeilerfaktorESA", dao::FieldType::Double, 0,
                result);
    QCOMPARE(result, 0);
    FeldAnlegen(place_->workplace(), path_, "MeldeDisziplin", "TEILERFAKTORESA", dao::FieldType::Double, 0,
                result);
    QCOMPARE(result, 2);
    FeldAnlegen(place_->workplace(), path_, "MeldeDisziplin", "Zusatz", dao::FieldType::Text, 12, result);
    QCOMPARE(result, 0);
    const auto def = dao::Database::open(path_)->tableDef("MeldeDisziplin");
    QCOMPARE(def.field("Zusatz")->size, 12);
    QVERIFY(def.field("Zusatz")->allowZeroLength);
  }

  void anEmptyPathTakesTheLastCompetition() {
    place_->settings.setValue("Tarvex", "Häring", "Letzter Wettkampf", path_);
    QVERIFY(opening_->setWettkampf(""));
    QCOMPARE(opening_->sWettkampf(), path_);
  }

  void aMissingPathRunsTheDialog() {
    int asked = 0;
    opening_->onOpenDialog = [&](Steps&) {
      ++asked;
      QVERIFY(opening_->setWettkampf(path_));
    };
    QVERIFY(opening_->setWettkampf(place_->path("fort.qkk")));
    QCOMPARE(asked, 1);
    QCOMPARE(opening_->sWettkampf(), path_);
  }

  void aCancelledDialogFails() {
    opening_->onOpenDialog = [](Steps&) {};
    QVERIFY(!opening_->setWettkampf(place_->path("fort.qkk")));
    QVERIFY(!global_->Datenbank);
  }

  void anotherExtensionGoesToTheDialogAndOpensAllTheSame() {
    const QString other = place_->path("Abend.mdb");
    QVERIFY(QFile::copy(path_, other));
    int asked = 0;
    opening_->onOpenDialog = [&](Steps&) { ++asked; };
    QVERIFY(opening_->setWettkampf(other));
    QCOMPARE(asked, 1);
    QCOMPARE(opening_->sWettkampf(), other);
  }

  void upperCaseExtensionNeedsNoDialog() {
    const QString upper = place_->path("Abend.QKK");
    QVERIFY(QFile::rename(path_, upper));
    opening_->onOpenDialog = [](Steps&) { QFAIL("the dialog came"); };
    QVERIFY(opening_->setWettkampf(upper));
  }

  void theLastThreeLettersDecide_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("dialogs");
    QTest::newRow("a longer extension that ends so") << "Abend.xqkk" << 0;
    QTest::newRow("no extension at all") << "Abendqkk" << 0;
    QTest::newRow("mixed case") << "Abend.qKk" << 0;
    QTest::newRow("one letter more") << "Abend.qkkx" << 1;
    QTest::newRow("two letters") << "Abend.kk" << 1;
  }
  void theLastThreeLettersDecide() {
    QFETCH(QString, name);
    const QString other = place_->path(name);
    QVERIFY(QFile::rename(path_, other));
    int asked = 0;
    opening_->onOpenDialog = [&](Steps&) { ++asked; };
    QVERIFY(opening_->setWettkampf(other));
    QTEST(asked, "dialogs");
  }

  /// Without the right to read the template a table is left out in silence.
  void aTableThatMayNotBeReadIsPassedOver() {
    const TemplateNobodyMayRead denied;
    QVERIFY(!TabelleAnlegen(place_->workplace(), vorlage(), "Haering_Gruppen", path_));
    QVERIFY(place_->dialogs.asked().isEmpty());
    QVERIFY(denied.wasAsked());
    QVERIFY(!dao::Database::open(path_)->hasTable("Haering_Gruppen"));
  }

  /// The main form holds the shots in their order while the competition is open.
  void allShotsAreHeldWhileItIsOpen() {
    QVERIFY(!opening_->shots());
    QVERIFY(opening_->setWettkampf(path_));
    const dao::Recordset* held = opening_->shots();
    QVERIFY(held && held->eof());
    QVERIFY(held->fieldCount() > 20);
    opening_->onOpenDialog = [](Steps&) {};
    QVERIFY(!opening_->setWettkampf(place_->path("fort.qkk")));
    QCOMPARE(opening_->shots(), held);
    opening_->close();
    QVERIFY(!opening_->shots() && !global_->Datenbank);
  }

  void shotsWithoutTheirOrderDontOpen() {
    dao::Database::open(path_)->createTable(
        {"Haering_Daten",
         {{"ID", dao::FieldType::Long}, {"Datum", dao::FieldType::Text, 10}},
         {{"PrimaryKey", {"ID"}, true, true, true}}});
    QString message;
    try {
      dao::Database::open(path_)->openRecordset("Select * from Haering_Daten order by Datum, ZeitAbsolut");
    } catch (const Error& error) {
      message = error.description();
    }
    place_->dialogs.expect("Fehler: 3061 - " + message + "\r\nBitte anderen Wettkampf wählen!!!");
    QVERIFY(!opening_->setWettkampf(path_));
    QVERIFY(!global_->Datenbank);
  }

  void aFailureLeavesOpenWhatWasOpen() {
    QVERIFY(opening_->setWettkampf(path_));
    const QString other = place_->path("leer.qkk");
    prepareStore(other);
    dao::Database::create(other);
    for (int i = 0; i < kOwnTables.size(); ++i)
      TabelleAnlegen(place_->workplace(), vorlage(), kOwnTables.at(i), other);
    place_->dialogs.expect(
        "Fehler: 3078 - " + messageOf(other, "MeldeDisziplin") + "\nFehler bei FeldAnlegen_err!",
        BoxAnswer::Abort);
    place_->dialogs.expect("Fehler: 3078 - " + messageOf(other, "Wettkampf") +
                           "\r\nBitte anderen Wettkampf wählen!!!");
    QVERIFY(!opening_->setWettkampf(other));
    QCOMPARE(opening_->sWettkampf(), path_);
    QCOMPARE(caption_, "QK-Intarso " + path_);
    QCOMPARE(global_->Datenbank->path(), path_);
  }

  void aCaptionThatCannotBeKeptKeepsNobodyOut() {
    const QString store = place_->settings.filePath();
    QVERIFY(QDir().mkpath(store));
    const QString why =
        "Fehler: 75 - " + errorDescription(75) + ": " + store + "\nFehler bei sWettkampf_err!";
    place_->dialogs.expect(why, BoxAnswer::Ignore).titled("Fehler").with(BoxButtons::AbortRetryIgnore);
    QVERIFY(opening_->setWettkampf(path_));
    QCOMPARE(caption_, "QK-Intarso " + path_);
    // Without an answer that goes on, title and path are those of what is open.
    const QString other = place_->path("Anderer.qkk");
    original_->copyTo(other);
    place_->dialogs.expect(why, BoxAnswer::Abort);
    place_->dialogs.expect(why, BoxAnswer::Abort);
    QVERIFY(!opening_->setWettkampf(other));
    QCOMPARE(opening_->sWettkampf(), path_);
    QCOMPARE(caption_, "QK-Intarso " + path_);
    QCOMPARE(global_->Datenbank->path(), path_);
  }

  void aCancelledDialogLeavesPathAndTitleAlone() {
    QVERIFY(opening_->setWettkampf(path_));
    opening_->onOpenDialog = [](Steps&) {};
    QVERIFY(!opening_->setWettkampf(place_->path("fort.qkk")));
    QCOMPARE(opening_->sWettkampf(), path_);
    QCOMPARE(caption_, "QK-Intarso " + path_);
  }

  void aCompetitionWithoutReferenceDateOpensWithDayZero() {
    dao::Database::open(path_)->execute("UPDATE Wettkampf SET RefDatum = Null");
    QVERIFY(opening_->setWettkampf(path_));
    QCOMPARE(global_->RefDatum, QDate(1899, 12, 30));
  }

  void aReadOnlyCompetitionIsToldOnceWithItsName() {
    QVERIFY(opening_->setWettkampf(path_));
    const QString other = place_->path("Nurlesen.qkk");
    original_->copyTo(other);
    forbidWriting(other);
    place_->dialogs
        .expect("Fehler: 3027 - In den Wettkampf darf hier nicht geschrieben werden, nur gelesen: " + other +
                "\r\nBitte anderen Wettkampf wählen!!!")
        .titled("Fehler")
        .showing(BoxIcon::Exclamation);
    QVERIFY(!opening_->setWettkampf(other));
    QCOMPARE(opening_->sWettkampf(), path_);
    QCOMPARE(caption_, "QK-Intarso " + path_);
  }

  void anotherKindOfFileIsToldAndLeftAlone() {
    const QString text = place_->path("Text.qkk");
    const QByteArray content = "Das ist kein Wettkampf.\r\n" + QByteArray(4096, 'x');
    place_->files.write(text, content);
    const QString why = "Fehler: 3343 - " + messageOfOpening(text);
    place_->dialogs.expect(why + "\r\nBitte anderen Wettkampf wählen!!!").titled("Fehler");
    QVERIFY(!opening_->setWettkampf(text));
    QCOMPARE(place_->files.read(text), content);
  }

  void aDamagedCompetitionIsReportedAndLeftAlone() {
    QVERIFY(opening_->setWettkampf(path_));
    const QString torn = place_->path("Riss.qkk");
    const QByteArray half = QByteArray("SQLite format 3", 16) + QByteArray(8000, '\xff');
    place_->files.write(torn, half);
    const Error error = errorOfOpening(torn);
    const QString why = "Fehler: " + QString::number(error.number()) + " - " + error.description();
    place_->dialogs.expect(why + "\r\nBitte anderen Wettkampf wählen!!!").titled("Fehler");
    QVERIFY(!opening_->setWettkampf(torn));
    QCOMPARE(place_->files.read(torn), half);
    QCOMPARE(opening_->sWettkampf(), path_);
  }

  /// One box, and the tables of the program aren't put into what is to be thrown away.
  void anUnfinishedMoveIsToldAndLeftAlone() {
    dao::Database::open(path_)->createTable({kUnfinishedMove, {{"Quelle", dao::FieldType::Memo}}, {}});
    place_->dialogs
        .expect(
            "Fehler: 3356 - Der Umzug dieses Wettkampfs ist nicht fertig geworden, er ist unvollständig. "
            "Arbeiten Sie mit dem ursprünglichen Wettkampf weiter, oder wiederholen Sie den Umzug mit "
            "\"qk-wettkampf umziehen ... --von-vorn\".\r\nBitte anderen Wettkampf wählen!!!")
        .titled("Fehler")
        .showing(BoxIcon::Exclamation);
    QVERIFY(!opening_->setWettkampf(path_));
    QVERIFY(!dao::Database::open(path_)->hasTable("Haering_Daten"));
    QVERIFY(!global_->Datenbank);
  }

  void thePasswordQuestionNamesServerAndUser() {
    QStringList asked;
    QString answer = "geheim";
    const auto ask = passwordQuestion([&](const QString& prompt, const QString& title) {
      asked << title + ": " + prompt;
      return answer;
    });
    const dao::ServerAddress address{{{"standserver"}}, "pokal", "buero"};
    QCOMPARE(ask(address, false), QString("geheim"));
    QCOMPARE(ask(address, true), QString("geheim"));
    answer.clear();
    QCOMPARE(ask(address, false), std::nullopt);
    const QString text = "Passwort von buero für den Wettkampf pokal auf standserver:";
    const QString title = "Anmeldung am Datenbankserver: ";
    QCOMPARE(asked, (QStringList{title + text, title + "Das Passwort war falsch.\n\n" + text, title + text}));
  }

  void anotherKindOfFileAsTemplateIsReportedAndLeftAlone() {
    const QByteArray content(5000, 'x');
    place_->files.write(vorlage(), content);
    const QString why = "Fehler: 3343 - " + messageOfOpening(vorlage());
    for (int i = 0; i < kOwnTables.size(); ++i)
      place_->dialogs.expect(why, BoxAnswer::Cancel).titled("Fehler").with(BoxButtons::RetryCancel);
    place_->dialogs.expect("Fehler: 3078 - " + messageOf(path_) + "\r\nBitte anderen Wettkampf wählen!!!");
    QVERIFY(!opening_->setWettkampf(path_));
    QCOMPARE(place_->files.read(vorlage()), content);
    QVERIFY(dao::Database::open(path_)->hasTable("Schützen"));
  }

 private:
  QString vorlage() const { return place_->path("System/LeerSA.mdb"); }
  /// "name=fields flags", sorted by name.
  static QStringList indexesOf(dao::Database& db, const QString& table) {
    QStringList all;
    for (const auto& index : db.tableDef(table).indexes)
      all << index.name + "=" + index.fields.join("+") + (index.primary ? " primary" : "") +
                 (index.unique ? " unique" : "") + (index.required ? " required" : "");
    all.sort();
    return all;
  }
  static Error errorOfOpening(const QString& path) {
    try {
      dao::Database::open(path);
    } catch (const Error& error) {
      return error;
    }
    return Error(0);
  }
  static QString messageOfOpening(const QString& path) { return errorOfOpening(path).description(); }
  static QString messageOf(const QString& path, const QString& table = "Haering_Daten") {
    try {
      const QString source = table == "Haering_Daten" ? "Select * from " + table : table;
      dao::Database::open(path)->openRecordset(source);
    } catch (const Error& error) {
      return error.description();
    }
    return "opens";
  }

  QTemporaryDir originals_{QDir::tempPath() + "/qkXXXXXX"};
  std::unique_ptr<StoreOriginal> original_;
  std::unique_ptr<TestWorkplace> place_;
  std::unique_ptr<GlobalVariablen> global_;
  std::unique_ptr<CompetitionOpening> opening_;
  QString path_, caption_;
};

QTEST_GUILESS_MAIN(TestCompetitionOpening)
#include "test_competition_opening.moc"
