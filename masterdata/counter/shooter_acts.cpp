#include "masterdata/counter/shooter_acts.h"

#include "app/ground/feld_wert.h"
#include "masterdata/rows/bring_in_line.h"
#include "masterdata/rows/double_numbers.h"
#include "masterdata/rows/erase_person.h"
#include "masterdata/rows/references.h"
#include "masterdata/rows/renumber.h"
#include "platform/dao/sql/quote.h"
#include "platform/dialog/dialogs.h"

namespace qk {

namespace {

constexpr int kRefused = errors::kInvalidCall;
constexpr int kMostLines = 15;
const QString kTitle = "Schützen";

std::unique_ptr<dao::Recordset> shooterRow(dao::Database& database, qint64 id) {
  auto row =
      database.openRecordset("Select Startnummer, Name from Schützen where ID = " + QString::number(id));
  if (row->eof()) throw Error(errors::kRecordDeleted);
  return row;
}

QString startnummerOf(dao::Database& database, qint64 id) {
  return FeldWert(*shooterRow(database, id), "Startnummer").toString();
}

std::vector<Uses::Count> countsOf(const LostNumber& number) {
  std::vector<Uses::Count> counts;
  if (number.results > 0) counts.push_back({"Ergebnis", "Ergebnisse", number.results});
  if (number.payments > 0) counts.push_back({"Zahlung", "Zahlungen", number.payments});
  return counts;
}

/// At most so many lines, and how many more there are.
QString shortened(const QStringList& lines) {
  QStringList shown = lines.mid(0, kMostLines);
  if (lines.size() > kMostLines) shown << QString("… und %1 weitere").arg(lines.size() - kMostLines);
  return shown.join('\n');
}

}  // namespace

QString ShooterActs::whoIs(qint64 id) {
  const auto row = shooterRow(database_, id);
  return FeldWert(*row, "Startnummer").toString() + "  " + FeldWert(*row, "Name").toString();
}

QString ShooterActs::nameOf(qint64 id) {
  return FeldWert(*shooterRow(database_, id), "Name").toString();
}

/// Somebody else of the same number; empty for nobody.
QString ShooterActs::otherBearer(qint64 id, const QString& number) {
  const auto rows =
      database_.openRecordset("Select Name from Schützen where Startnummer = " + dao::sql::quoted(number) +
                              " and ID <> " + QString::number(id));
  return rows->eof() ? QString() : FeldWert(*rows, "Name").toString();
}

QString ShooterActs::renumber(qint64 id) {
  QString done;
  reported(fehlerReport(dialogs_, "Die Startnummer konnte nicht geändert werden."), [&](Steps&) {
    const QString present = startnummerOf(database_, id);
    const QString number =
        dialogs_.input("Neue Startnummer für " + whoIs(id) + ":", "Nummer ändern", present).trimmed();
    if (number.isEmpty() || number == present) return;
    Renumbering kind = Renumbering::WithResults;
    if (const QString other = otherBearer(id, present); !other.isEmpty()) {
      if (!dialogs_.confirm(
              QString("Die Startnummer %1 hat auch %2.\nErgebnisse und Zahlungen der %1 bleiben "
                      "bei ihm. Soll nur %3 die %4 bekommen?")
                  .arg(present, other, nameOf(id), number),
              BoxIcon::Exclamation, BoxAnswer::No))
        return;
      kind = Renumbering::ShooterOnly;
    }
    try {
      qk::renumber(database_, id, number, kind);
      done = QString("Neue Startnummer: %1").arg(whoIs(id));
    } catch (const Error& error) {
      if (error.number() != kRefused) throw;
      dialogs_.note(error.description(), BoxIcon::Exclamation, kTitle);
    }
  });
  return done;
}

QString ShooterActs::remove(qint64 id) {
  QString done;
  reported(fehlerReport(dialogs_, "Der Schütze konnte nicht gelöscht werden."), [&](Steps&) {
    if (const QString refusal = refusalOf(database_, "Schützen", id); !refusal.isEmpty())
      return dialogs_.note(refusal, BoxIcon::Exclamation, kTitle);
    const QString who = whoIs(id);
    const QString parts = countsText(usesOf(database_, "Schützen", id).parts);
    const QString with = parts.isEmpty() ? QString() : "\nMit ihm gehen: " + parts + ".";
    if (!dialogs_.confirm(QString("Soll der Schütze %1 gelöscht werden?").arg(who) + with, BoxIcon::Question,
                          BoxAnswer::No))
      return;
    try {
      dao::Changes changes(database_);
      removeRow(database_, changes, "Schützen", id);
      changes.write();
      done = "Gelöscht: " + who;
    } catch (const Error& error) {
      if (error.number() != errors::kReferredTo) throw;
      dialogs_.note(error.description(), BoxIcon::Exclamation, kTitle);
    }
  });
  return done;
}

QString ShooterActs::erase(qint64 id) {
  QString done;
  reported(fehlerReport(dialogs_, "Die Angaben konnten nicht gelöscht werden."), [&](Steps&) {
    const QString who = whoIs(id);
    if (!dialogs_.confirm(
            QString(
                "Sollen alle persönlichen Angaben von %1 gelöscht werden?\n\nName, Geburtsdatum, "
                "Anschrift, Bank und Ausweis gehen endgültig verloren, auch auf Scheibenbildern und in "
                "den Schussdaten. Startnummer, Klasse, Verein, Ergebnisse und Zahlungen bleiben. Der letzte "
                "Import lässt sich danach nicht mehr zurücknehmen.")
                .arg(who),
            BoxIcon::Exclamation, BoxAnswer::No))
      return;
    try {
      const Erasure erased = erasePerson(database_, id);
      done = QString("Unkenntlich gemacht: %1").arg(whoIs(id));
      if (!erased.unknown.isEmpty())
        dialogs_.note("Diese Spalten stammen aus einem anderen Programm und sind geblieben:\n" +
                          erased.unknown.join(", "),
                      BoxIcon::Information, kTitle);
    } catch (const Error& error) {
      if (error.number() != kRefused) throw;
      dialogs_.note(error.description(), BoxIcon::Exclamation, kTitle);
    }
  });
  return done;
}

QString ShooterActs::bringInLine(qint64 id, const dao::RowValues& before) {
  QString done;
  reported(fehlerReport(dialogs_, "Die Ergebnisse konnten nicht angeglichen werden."), [&](Steps&) {
    const Standing standing = standingOf(database_, id);
    const Standing former{before.value("KlassenID").toInt(), before.value("VereinsID").toInt(),
                          before.value("lMannID").toInt()};
    if (standing == former) return;
    const QString number = startnummerOf(database_, id);
    const qint64 count = resultsOutOfLine(database_, number, standing);
    if (count == 0) return;
    QStringList what;
    if (standing.shooterClass != former.shooterClass) what << "Klasse";
    if (standing.club != former.club) what << "Verein";
    if (standing.team != former.team) what << "Mannschaft";
    const QString bearing =
        count == 1 ? "1 Ergebnis von %1 trägt" : QString::number(count) + " Ergebnisse von %1 tragen";
    if (!dialogs_.confirm(bearing.arg(whoIs(id)) + " noch, was vorher galt (" + what.join(", ") +
                              ").\nSoll das angeglichen werden?\n\nZahlungen bleiben, wie sie sind.",
                          BoxIcon::Question))
      return;
    dao::Changes changes(database_);
    qk::bringInLine(changes, number, standing);
    changes.write();
    done = count == 1 ? QString("1 Ergebnis angeglichen.") : QString("%1 Ergebnisse angeglichen.").arg(count);
  });
  return done;
}

void ShooterActs::showDoubles() {
  reported(fehlerReport(dialogs_, "Die Startnummern konnten nicht geprüft werden."), [&](Steps&) {
    QStringList doubles, lost;
    for (const Double& one : doubleNumbers(database_)) {
      QStringList names;
      for (const qint64 key : one.keys) names << nameOf(key);
      doubles << one.value + ": " + names.join(", ");
    }
    for (const LostNumber& one : lostNumbers(database_))
      lost << one.number + ": " + countsText(countsOf(one));
    QStringList parts;
    if (!doubles.isEmpty()) parts << "Mehrfach vergebene Startnummern:\n" + shortened(doubles);
    if (!lost.isEmpty()) parts << "Ergebnisse und Zahlungen ohne Schützen:\n" + shortened(lost);
    dialogs_.note(parts.isEmpty() ? "Jede Startnummer ist nur einmal vergeben." : parts.join("\n\n"),
                  parts.isEmpty() ? BoxIcon::Information : BoxIcon::Exclamation, kTitle);
  });
}

}  // namespace qk
