#include "capture/manual_shot.h"

#include <QRegularExpression>
#include <algorithm>

#include "app/ground/temp_module.h"
#include "platform/runtime/named_field.h"
#include "platform/runtime/numbers.h"

namespace qk {

namespace {

/// The strict reading; thousands points are taken where they stand right, since the teiler is shown with
/// them.
double typedNumber(const QString& text) {
  static const QRegularExpression grouped(R"(^\s*[+-]?\d{1,3}(\.\d{3})+(,\d*)?\s*$)");
  return parseStrict(grouped.match(text).hasMatch() ? QString(text).remove('.') : text);
}

/// What can't be read names its field; a decimal point is what people type who think in another language.
template <class Reading>
auto typedField(const QString& name, const QString& text, Reading&& reading) {
  try {
    return readNamed(name, text, reading);
  } catch (const Error& error) {
    if (!text.contains('.')) throw;
    throw Error(error.number(), error.description() + " (Dezimalstellen stehen hinter einem Komma: " +
                                    QString(text).replace('.', ',') + ")");
  }
}

double typedNumber(const QString& name, const QString& text) {
  return typedField(name, text, [&] { return typedNumber(text); });
}

qint16 typedWhole(const QString& name, const QString& text) {
  return typedField(name, text, [&] { return toInt16(typedNumber(text)); });
}

QString textUnlessZero(double value) {
  return value == 0 ? QString() : numberText(value);
}

}  // namespace

HaeringSchuss manualShot(const HaeringSchuss* last, const ManualShotLine& line, const QDateTime& now) {
  HaeringSchuss next;
  next.AbsoluteZeit = now.toString("HH:mm:ss");
  if (last) {
    next.Datum = last->Datum;
    next.dblTeilerFaktor = last->dblTeilerFaktor;
    next.Wertung = last->Wertung;
    next.SchuetzenName = last->SchuetzenName;
    next.SchuetzeStartnummer = last->SchuetzeStartnummer;
    next.KlasseBezeichnung = last->KlasseBezeichnung;
    next.LinienNummer = last->LinienNummer;
    next.OrtStandnummer = last->OrtStandnummer;
    next.ProbeMatch = last->ProbeMatch;
    next.sWaffe = last->sWaffe;
    next.WettbewerbBezeichnung = last->WettbewerbBezeichnung;
    next.RegelNummerKlasse = last->RegelNummerKlasse;
    next.RegelNummerWettbewerb = last->RegelNummerWettbewerb;
    next.bAngewaehlt = last->bAngewaehlt;
    next.TrefferNummer = toInt16(last->TrefferNummer + 1.0);
    return next;
  }
  next.SchuetzeStartnummer = line.sStartnummer;
  next.KlasseBezeichnung = line.KlassenName;
  next.RegelNummerKlasse = "frei";
  next.TrefferNummer = 1;
  next.Datum = now.toString("dd.MM.yyyy");
  next.sWaffe = "LG";
  next.RegelNummerWettbewerb = "DSB 1.10";
  next.OrtStandnummer = 1;
  next.LinienNummer = line.nLinie;
  next.SchuetzenName = line.SchuetzenName;
  return next;
}

QString wettbewerbeText(const TextTable& flexHaeringDiszi) {
  QString names;
  for (int row = 1; row < flexHaeringDiszi.rows(); ++row) names += flexHaeringDiszi.text(row, 1) + '|';
  return names;
}

QStringList wettbewerbeListe(const QString& sWettbewerbe) {
  QStringList names = sWettbewerbe.split('|');
  names.removeLast();
  return names;
}

SchussFormular formOf(const HaeringSchuss& schuss) {
  const auto* wertung = std::find_if(kWertungen.begin(), kWertungen.end(),
                                     [&](const Wertungsart& art) { return art.value == schuss.Wertung; });
  SchussFormular form;
  form.standort = numberText(qint64(schuss.OrtStandnummer));
  form.linie = numberText(qint64(schuss.LinienNummer));
  form.schuetze = schuss.SchuetzenName;
  form.startnummer = schuss.SchuetzeStartnummer;
  form.klassebezeichnung = schuss.KlasseBezeichnung;
  form.datum = schuss.Datum;
  form.zeit = schuss.AbsoluteZeit;
  form.wettbewerb = schuss.RegelNummerWettbewerb;
  form.klasse = schuss.RegelNummerKlasse;
  form.wettbewerbbezeichnung = schuss.WettbewerbBezeichnung;
  form.waffe = schuss.sWaffe;
  form.trefferNummer = numberText(qint64(schuss.TrefferNummer));
  form.wertung = wertung == kWertungen.end() ? -1 : int(wertung - kWertungen.begin());
  form.ringwert = textUnlessZero(schuss.RingMitZehntel);
  form.radius = textUnlessZero(schuss.Radius);
  form.teilerfaktor = numberText(schuss.dblTeilerFaktor);
  form.teiler = textUnlessZero(schuss.dblTeiler);
  return form;
}

void fillShot(HaeringSchuss& schuss, const SchussFormular& form, Steps& step) {
  step([&] { schuss.OrtStandnummer = typedWhole("Standort", form.standort); });
  step([&] { schuss.LinienNummer = typedWhole("Linie", form.linie); });
  schuss.SchuetzenName = form.schuetze;
  schuss.SchuetzeStartnummer = form.startnummer;
  schuss.KlasseBezeichnung = form.klassebezeichnung;
  schuss.Datum = form.datum;
  schuss.AbsoluteZeit = form.zeit;
  schuss.RegelNummerWettbewerb = form.wettbewerb;
  schuss.RegelNummerKlasse = form.klasse;
  schuss.WettbewerbBezeichnung = form.wettbewerbbezeichnung;
  schuss.sWaffe = form.waffe;
  step([&] { schuss.TrefferNummer = typedWhole("Treffernummer", form.trefferNummer); });
  if (form.wertung >= 0) schuss.Wertung = kWertungen.at(size_t(form.wertung)).value;
  step([&] { schuss.RingMitZehntel = typedNumber("Ringwert", form.ringwert); });
  step([&] { schuss.Radius = typedNumber("Radius", form.radius); });
  step([&] { schuss.dblTeilerFaktor = typedNumber("Teilerfaktor", form.teilerfaktor); });
  step([&] { schuss.dblTeiler = typedNumber("Teiler", form.teiler); });
  step([&] { leiteRingeAb(schuss, numberText(schuss.RingMitZehntel)); });
  schuss.Key = schussKey(schuss.LinienNummer, schuss.TrefferNummer, schuss.Datum, schuss.AbsoluteZeit);
}

std::optional<QString> teilerText(const QString& radius, const QString& teilerfaktor) {
  const double factor = ZahlAusText(teilerfaktor);
  if (factor == 0) return std::nullopt;
  return formatNumber(ZahlAusText(radius) / factor, 1, true);
}

QString formFaults(const SchussFormular& form) {
  QString faults;
  const auto check = [&](bool fault, const char* text) {
    if (fault) faults += QString(text) + "\r\n";
  };
  check(form.waffe.isEmpty(), "Waffenkennzeichen fehlt!");
  check(ZahlAusText(form.ringwert) == 0, "Keine gültige Ringzahl!");
  check(ZahlAusText(form.radius) == 0, "Keine gültiger Radius!");
  check(ZahlAusText(form.teiler) == 0, "Keine gültiger Teiler!");
  return faults;
}

}  // namespace qk
