#include "link/haeringschuss.h"

#include <QLoggingCategory>
#include <array>

#include "app/ground/temp_module.h"
#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "platform/dao/sql/quote.h"
#include "platform/runtime/error.h"
#include "platform/runtime/named_field.h"
#include "platform/runtime/numbers.h"

namespace qk {

namespace {

Q_LOGGING_CATEGORY(logImport, "qk.link.import", QtInfoMsg)

constexpr QStringView separator = u" ; ";
constexpr size_t recordFields = 21;
using Record = std::array<QStringView, recordFields>;

/// Normalises the line as the import promises and cuts it at the separators; false for fewer than 21 fields.
/// The views point into `line`.
bool cutRecord(QString& line, Record& record) {
  const bool terminated = line.endsWith(separator);
  if (!terminated) line += separator;
  line.remove('"');

  // From the left, each field up to its separator: a terminator that lost its last blank ends the field
  // before it all the same, and what is left of it is none.
  QStringView rest = line;
  // Nor is what a terminator leaves that was hidden behind a closing quote.
  if (const QStringView own = rest.chopped(separator.size()); !terminated && own.endsWith(separator))
    rest = own;
  for (QStringView& field : record) {
    const qsizetype end = rest.indexOf(separator);
    if (end < 0) return false;
    field = rest.first(end);
    rest = rest.sliced(end + separator.size());
  }
  return true;
}

qint16 wholeNumber(const char* name, QStringView field) {
  return readNamed(name, field, [&] { return toInt16(parseStrict(field)); });
}

double realNumber(const char* name, QStringView field) {
  return readNamed(name, field, [&] { return parseStrict(field); });
}

/// The factor is 0 only where its look-up failed and the failure was ignored.
double teilerOf(double radius, double factor) {
  const bool plain = radius == 0 || factor == 1;
  if (!plain && factor == 0) throw Error(errors::kDivisionByZero);
  return Abschneiden(plain ? radius : radius / factor, 1);
}

/// A column of the first row of MeldeDisziplin with this key; invalid when there is no such row.
QVariant lookUp(dao::Database& db, const QString& key, const QString& column) {
  const auto rows = db.openRecordset("Select * from MeldeDisziplin where MeldeKZ = " + dao::sql::quoted(key));
  if (rows->eof()) return {};
  return FeldWert(*rows, column);
}

QString digitsAndDots(const QString& text) {
  QString kept;
  for (const QChar c : text)
    if ((c >= '0' && c <= '9') || c == '.') kept += c;
  return kept;
}

}  // namespace

bool HaeringSchuss::Haering_Import_Zeile(QString& sInput, dao::Database* db, const ErrorReport& report) {
  Record field;
  if (!cutRecord(sInput, field)) return false;
  const QString ring = field[9].toString();

  return reported(report, [&](Steps& step) {
    step([&] { ZeilenCode = field[0].toString(); });
    step([&] { WettbewerbBezeichnung = field[1].toString(); });
    step([&] { KlasseBezeichnung = field[2].toString(); });
    step([&] { OrtStandnummer = wholeNumber("Standnummer", field[3]); });
    step([&] { LinienNummer = wholeNumber("Liniennummer", field[4]); });
    step([&] { SchuetzenName = field[5].toString(); });
    step([&] { ProbeMatch = field[6].toString(); });
    step([&] { Wertung = wholeNumber("Wertung", field[7]); });
    step([&] { TrefferNummer = wholeNumber("Treffernummer", field[8]); });
    step([&] { RingMitZehntel = realNumber("Ringwert", ring); });
    step([&] { RingOhneZehntel = readNamed("Ringwert", ring, [&] { return ringOhneZehntel(ring); }); });
    step([&] { Ring0XZehntel = ring0XZehntel(ring); });
    step([&] { RingXXZehntel = ringXXZehntel(ring); });
    step([&] { LagePfeilzeichen = field[10].toString(); });
    step([&] { X = realNumber("X", field[11]); });
    step([&] { Y = realNumber("Y", field[12]); });
    step([&] { Radius = realNumber("Radius", field[13]); });
    step([&] { PHiPosition = realNumber("Winkel", field[14]); });
    step([&] { AbsoluteZeit = field[15].toString(); });
    step([&] { RelativeZeit = field[16].toString(); });
    step([&] { Datum = field[17].toString(); });
    step([&] { RegelNummerWettbewerb = field[18].toString(); });
    step([&] { RegelNummerKlasse = field[19].toString(); });
    step([&] { SchuetzeStartnummer = field[20].toString(); });
    step([&] { Key = schussKey(LinienNummer, TrefferNummer, Datum, AbsoluteZeit); });
    step([&] { sWaffe = ErmittleWaffe(db, RegelNummerWettbewerb); });
    step([&] { dblTeilerFaktor = ErmittleTeilerFaktor(db, RegelNummerWettbewerb); });
    step([&] { dblTeiler = teilerOf(Radius, dblTeilerFaktor); });
  });
}

QString schussKey(qint16 linie, qint16 treffer, const QString& datum, const QString& zeit) {
  const auto threeDigits = [](qint16 number) { return ("000" + QString::number(number)).right(3); };
  return threeDigits(linie) + '0' + threeDigits(treffer) + '-' + datum + '-' + zeit;
}

qint16 ringOhneZehntel(const QString& ring) {
  return toInt16(parsePrefix(ring));
}

double ring0XZehntel(const QString& ring) {
  return Nachkommaanteil(ring) * 10;
}

double ringXXZehntel(const QString& ring) {
  return parsePrefix(ring) + Nachkommaanteil(ring) * 10;
}

void leiteRingeAb(HaeringSchuss& schuss, const QString& ring) {
  schuss.RingOhneZehntel = ringOhneZehntel(ring);
  schuss.Ring0XZehntel = ring0XZehntel(ring);
  schuss.RingXXZehntel = ringXXZehntel(ring);
}

QString ErmittleWaffe(dao::Database* db, const QString& sKey) {
  if (!db) return "LG";
  QVariant weapon = lookUp(*db, sKey, "ScheibenKZ");
  if (!weapon.isValid()) weapon = lookUp(*db, digitsAndDots(sKey), "ScheibenKZ");
  const QString text = weapon.toString();
  if (text.isEmpty())
    qCDebug(logImport).noquote()
        << "Waffentyp: " + sKey +
               " konnte nicht zugeordnet werden! -> Typ: LG wird gesetzt!\n\n"
               "Prüfung in Tarvex: Menü Optionen - Disziplinen-Schlüssel - Wettkampf...";
  return text;
}

double ErmittleTeilerFaktor(dao::Database* db, const QString& sKey) {
  if (!db) return 1;
  const double factor = lookUp(*db, QString(sKey).remove("DSB").trimmed(), "TeilerFaktorESA").toDouble();
  return factor == 0 ? 1 : factor;
}

}  // namespace qk
