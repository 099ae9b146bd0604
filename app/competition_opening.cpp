#include "app/competition_opening.h"

#include <QDir>
#include <QFileInfo>

#include "app/ground/feld_wert.h"
#include "app/ground/right_to_change.h"
#include "app/ground/settings_keys.h"
#include "app/ground/unfinished_move.h"
#include "platform/dao/sql/quote.h"
#include "platform/dialog/dialogs.h"
#include "platform/runtime/datetext.h"
#include "platform/runtime/files.h"

namespace qk {

namespace {

QString numberAndDescription(const Error& error) {
  return "Fehler: " + QString::number(error.number()) + " - " + error.description();
}

void createFromTemplate(const QString& sVorlage, const QString& sTabelle, const QString& sWettkampf) {
  const auto vorlage = dao::Database::open(sVorlage, true);
  if (hasDotBeforeExtension(sWettkampf) && !dao::Database::open(sWettkampf)->hasTable(sTabelle))
    throw Error(errors::kBadBrackets);
  vorlage->execute("SELECT " + sTabelle + ".* INTO " + sTabelle + " IN " + dao::sql::quoted(sWettkampf) +
                   " FROM " + sTabelle);
}

/// What is to be done after a failed creation: true to run the statement again.
bool askAgain(const Workplace& workplace, const Error& error, const QString& sWettkampf) {
  if (error.number() == errors::kTableExists || error.number() == errors::kNoReadPermission) return false;
  if (error.number() == errors::kBadBrackets) {
    workplace.dialogs.note(
        "Fehler beim Anlegen der Tabelle!\r\nHINWEIS: Der Pfad- und Dateiname des Wettkampfs darf keine "
        "Sonderzeichen (z.B. Punkt) enthalten.\r\n\r\n" +
            sWettkampf,
        BoxIcon::Critical, "Fehler");
    return false;
  }
  return workplace.dialogs.show({numberAndDescription(error), "Fehler", BoxIcon::None,
                                 BoxButtons::RetryCancel}) == BoxAnswer::Retry;
}

QDate referenceDate(const dao::Recordset& head) {
  const QVariant value = FeldWert(head, "RefDatum");
  const QDateTime date = value.typeId() == QMetaType::QDateTime ? value.toDateTime() : dateZero();
  return parseDate(date.toString("dd.MM.yyyy")).date();
}

template <class Step>
bool passes(Step&& step) {
  try {
    step();
    return true;
  } catch (const Error&) {
    return false;
  }
}

}  // namespace

bool hasDotBeforeExtension(const QString& path) {
  const QFileInfo file(QDir::cleanPath(QFileInfo(path).absoluteFilePath()));
  return file.path().contains('.') || file.completeBaseName().contains('.');
}

bool TabelleAnlegen(const Workplace& workplace, const QString& sVorlage, const QString& sTabelle,
                    const QString& sWettkampf) {
  for (;;) {
    try {
      createFromTemplate(sVorlage, sTabelle, sWettkampf);
      break;
    } catch (const Error& error) {
      if (!askAgain(workplace, error, sWettkampf)) return false;
    }
  }
  IndizesUebertragen(sVorlage, sTabelle, sWettkampf);
  return true;
}

void IndizesUebertragen(const QString& sVorlage, const QString& sTabelle, const QString& sWettkampf) {
  passes([&] {
    const auto vorlage = dao::Database::open(sVorlage, true);
    const auto wettkampf = dao::Database::open(sWettkampf);
    for (const dao::IndexDef& index : vorlage->tableDef(sTabelle).indexes)
      passes([&] { wettkampf->appendIndex(sTabelle, index); });
  });
}

void FeldAnlegen(const Workplace& workplace, const QString& sWettkampf, const QString& sTabelle,
                 const QString& sFeld, dao::FieldType typ, int nGroesse, int& nErgebnis) {
  reported(fehlerReport(workplace.dialogs, "Fehler bei FeldAnlegen_err!"), [&](Steps&) {
    const auto db = dao::Database::open(sWettkampf);
    if (db->tableDef(sTabelle).field(sFeld)) {
      nErgebnis = 2;
      return;
    }
    dao::FieldDef field{sFeld, typ};
    field.allowZeroLength = typ == dao::FieldType::Text || typ == dao::FieldType::Memo;
    if (nGroesse > 0) field.size = nGroesse;
    db->appendField(sTabelle, field);
    nErgebnis = 0;
  });
}

CompetitionOpening::CompetitionOpening(const Workplace& workplace, GlobalVariablen& global)
    : workplace_(workplace), global_(global) {}

bool CompetitionOpening::setWettkampf(const QString& path) {
  sWettkampf_ = path;
  bool opened = false;
  reported(report(), [&](Steps& step) { opened = open(step); });
  if (!opened && !opened_.isEmpty() && opened_ != sWettkampf_) backToWhatIsOpen();
  return opened;
}

bool CompetitionOpening::open(Steps& step) {
  if (!fileChosen(step)) return false;
  step([&] { showCaption(); });
  if (!isWithinReach()) return false;
  makeOwnTables();
  return openMain();
}

/// The lines still work on what was open before: title and path say so.
void CompetitionOpening::backToWhatIsOpen() {
  sWettkampf_ = opened_;
  reported(report(), [&](Steps& step) { step([&] { showCaption(); }); });
}

ErrorReport CompetitionOpening::report() const {
  return fehlerReport(workplace_.dialogs, "Fehler bei sWettkampf_err!");
}

/// True when there is a file to open, chosen in the dialog if need be.
bool CompetitionOpening::fileChosen(Steps& step) {
  if (sWettkampf_.isEmpty()) sWettkampf_ = liesText(workplace_.settings, keys::LetzterWettkampf);
  if (workplace_.files.exists(sWettkampf_) && sWettkampf_.right(3).toLower() == "qkk") return true;
  if (onOpenDialog) onOpenDialog(step);
  return workplace_.files.exists(sWettkampf_);
}

void CompetitionOpening::showCaption() {
  const QString caption = "QK-Intarso " + sWettkampf_;
  if (onCaption) onCaption(caption);
  // What stands there already needn't be stored, and can't fail.
  if (liesText(workplace_.settings, keys::Caption) != caption)
    schreibe(workplace_.settings, keys::Caption, caption);
}

/// What stands in the way of every further step (no store, a damaged one, no server, no right) is reported
/// once, and nothing is made. What another program has locked may be free a moment later: the steps ask
/// again.
bool CompetitionOpening::isWithinReach() const {
  try {
    const auto store = dao::Database::open(sWettkampf_);
    refuseUnfinishedMove(*store);
    refuseReadOnly(*store, sWettkampf_);
    return true;
  } catch (const Error& error) {
    if (error.number() == errors::kLocked) return true;
    refuse(error);
    return false;
  }
}

void CompetitionOpening::refuse(const Error& error) const {
  workplace_.dialogs.note(numberAndDescription(error) + "\r\nBitte anderen Wettkampf wählen!!!",
                          BoxIcon::Exclamation, "Fehler");
}

void CompetitionOpening::makeOwnTables() {
  const QString vorlage = global_.SystemVerzeichnis + "LeerSA.mdb";
  for (const char* table : {"Haering_Daten", "Haering_Gruppen", "Haering_Gruppen_Disziplinen"})
    TabelleAnlegen(workplace_, vorlage, table, sWettkampf_);
  int nErgebnis = 0;
  FeldAnlegen(workplace_, sWettkampf_, "MeldeDisziplin", "TeilerfaktorESA", dao::FieldType::Double, 0,
              nErgebnis);
}

bool CompetitionOpening::openMain() {
  try {
    auto db = dao::Database::open(sWettkampf_);
    auto shots = db->openRecordset("Select * from Haering_Daten order by Datum, ZeitAbsolut");
    const auto head = db->openRecordset("Wettkampf");
    const QDate refDatum = referenceDate(*head);
    bezeichnung_ = FeldWert(*head, "Bezeichnung").toString();
    bezeichnung2_ = FeldWert(*head, "Bezeichnung2").toString();
    ort_ = FeldWert(*head, "Ort").toString();
    // A recordset lives no longer than its database.
    openShots_ = std::move(shots);
    global_.Datenbank = std::move(db);
    global_.RefDatum = refDatum;
    opened_ = sWettkampf_;
    return true;
  } catch (const Error& error) {
    refuse(error);
    return false;
  }
}

void CompetitionOpening::close() {
  openShots_.reset();
  global_.Datenbank.reset();
}

}  // namespace qk
