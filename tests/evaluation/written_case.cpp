#include "tests/evaluation/written_case.h"

#include <QHash>
#include <QRegularExpression>
#include <algorithm>
#include <functional>

#include "platform/runtime/datetext.h"
#include "platform/runtime/error.h"
#include "platform/runtime/numbers.h"

namespace qk::test {

namespace {

struct Disziplinart {
  qint32 ID;
  QString Name;
  bool Teiler, Ringe;
};

const std::vector<Disziplinart>& disziplinarten() {
  static const std::vector<Disziplinart> alle{
      {1, "LG Teiler", true, false}, {2, "LG Serie", false, true}, {3, "LG Ringteiler", true, true},
      {4, "LP Serie", false, true},  {5, "Auflage", false, true},  {6, "LP Teiler", true, false},
  };
  return alle;
}

[[noreturn]] void unbekannt(const QString& word) {
  throw Error(5, "unknown in a written case: " + word);
}

const Disziplinart& disziplinart(const QString& name) {
  for (const Disziplinart& art : disziplinarten())
    if (art.Name == name.trimmed()) return art;
  unbekannt(name);
}

const QHash<QString, qint32>& waffen() {
  static const QHash<QString, qint32> alle{{"LG", 1}, {"LP", 2}, {"LGA", 3}, {"KK", 4}};
  return alle;
}

qint32 waffenID(const QString& KZ) {
  if (!waffen().contains(KZ)) unbekannt(KZ);
  return waffen().value(KZ);
}

QStringList lines(const QString& text) {
  QStringList found;
  for (const QString& line : text.split('\n'))
    if (!line.trimmed().isEmpty()) found << line.trimmed();
  return found;
}

int zahl(const QString& text) {
  return toInt32(parseStrict(text));
}

bool jaNein(const QString& text) {
  if (text != "ja" && text != "nein") unbekannt(text);
  return text == "ja";
}

template <class Record>
using Setters = QHash<QString, std::function<void(Record&, const QString&)>>;

template <class Record>
auto setting(int Record::*member) {
  return [member](Record& record, const QString& text) { record.*member = zahl(text); };
}
template <class Record>
auto setting(bool Record::*member) {
  return [member](Record& record, const QString& text) { record.*member = jaNein(text); };
}
template <class Record>
auto setting(QString Record::*member) {
  return [member](Record& record, const QString& text) { record.*member = text; };
}

const Setters<ProfilDisziplin>& profilSetters() {
  using P = ProfilDisziplin;
  static const Setters<P> setters{
      {"Typ", setting(&P::Typ)},
      {"Anzahl", setting(&P::Anzahl)},
      {"Vorgabe", setting(&P::Vorgabe)},
      {"OptKlassen", setting(&P::OptKlassen)},
      {"OptTage", setting(&P::OptTage)},
      {"OptWaffen", setting(&P::OptWaffen)},
      {"Tageswertung", setting(&P::Tageswertung)},
      {"Monatswertung", setting(&P::Monatswertung)},
      {"nBestTageswertung", setting(&P::nBestTageswertung)},
      {"nMinAnzahlErgAktiv", setting(&P::nMinAnzahlErgAktiv)},
      {"nMinAnzahlErg", setting(&P::nMinAnzahlErg)},
      {"bGewErg", setting(&P::bGewErg)},
      {"nGewErg", setting(&P::nGewErg)},
  };
  return setters;
}

const Setters<ListenProfil>& listenSetters() {
  using P = ListenProfil;
  static const Setters<P> setters{
      {"Teiler", setting(&P::Teiler)},
      {"Anzahl", setting(&P::Anzahl)},
      {"nMinAnzahlErgAktiv", setting(&P::nMinAnzahlErgAktiv)},
      {"nMinAnzahlErg", setting(&P::nMinAnzahlErg)},
  };
  return setters;
}

struct ProfilText {
  qint32 ID;  ///< profiles are numbered as they come
  QString Name, Disziplin;
  QStringList worte;
};

std::vector<ProfilText> profilTexte(const QString& text) {
  std::vector<ProfilText> found;
  QStringList names;
  for (const QString& line : lines(text)) {
    const QStringList parts = line.split('|');
    if (parts.size() != 3) unbekannt(line);
    const QString name = parts[0].trimmed();
    if (!names.contains(name)) names << name;
    found.push_back({static_cast<qint32>(names.indexOf(name)) + 1, name, parts[1].trimmed(),
                     parts[2].split(' ', Qt::SkipEmptyParts)});
  }
  return found;
}

/// Weapons and classes are the admission's, all other words the record's.
bool istZulassung(const QString& wort) {
  return wort.startsWith("Waffen=") || wort.startsWith("Klassen=");
}

template <class Record>
void setze(Record& record, const QStringList& worte, const Setters<Record>& setters) {
  for (const QString& wort : worte) {
    if (istZulassung(wort)) continue;
    const auto setter = setters.find(wort.section('=', 0, 0));
    if (setter == setters.end()) unbekannt(wort);
    setter.value()(record, wort.section('=', 1));
  }
}

EinzelErgebnis ergebnisAus(const QString& text, const Disziplinart& art, qint32 naechste) {
  static const QRegularExpression tag("^\\d\\d\\.\\d\\d\\.\\d{4}$"), klasse("^K\\d+$");
  EinzelErgebnis ergebnis{.Startnummer = "107",
                          .DisziId = art.ID,
                          .WTyp = "LG",
                          .Art = {},
                          .Ergebnis = 0,
                          .KlassenID = 1,
                          .ErgID = naechste,
                          .Tabelle = art.Teiler ? Quelle::Schuss : Quelle::SchussSerien,
                          .WkID = 0,
                          .Datum = "20.11.2026 10:00:00"};
  QStringList worte = text.split(' ', Qt::SkipEmptyParts);
  ergebnis.Ergebnis = parseStrict(worte.takeFirst());
  for (const QString& wort : worte) {
    if (wort.startsWith("am="))
      ergebnis.Datum = wort.mid(3);
    else if (wort.startsWith('#'))
      ergebnis.ErgID = zahl(wort.mid(1));
    else if (wort == "@Schuss" || wort == "@SchussSerien")
      ergebnis.Tabelle = wort == "@Schuss" ? Quelle::Schuss : Quelle::SchussSerien;
    else if (tag.match(wort).hasMatch())
      ergebnis.Datum = wort;
    else if (klasse.match(wort).hasMatch())
      ergebnis.KlassenID = zahl(wort.mid(1));
    else if (waffen().contains(wort.toUpper()))
      ergebnis.WTyp = wort;
    else
      unbekannt(wort);
  }
  return ergebnis;
}

QString zahlen(const std::vector<double>& values) {
  QStringList texts;
  for (const double value : values) texts << numberText(value);
  return texts.join(' ');
}

}  // namespace

std::vector<ProfilDisziplin> profileAus(const QString& text) {
  std::vector<ProfilDisziplin> profile;
  for (const ProfilText& geschrieben : profilTexte(text)) {
    const Disziplinart& art = disziplinart(geschrieben.Disziplin);
    ProfilDisziplin& zeile = profile.emplace_back();
    zeile.AwProfilID = geschrieben.ID;
    zeile.AuswertProfil_Name = geschrieben.Name;
    zeile.DisziID = art.ID;
    zeile.Disziplin_Name = art.Name;
    zeile.Disziplin_Teiler = art.Teiler;
    zeile.Ringe = art.Ringe;
    setze(zeile, geschrieben.worte, profilSetters());
  }
  return profile;
}

Zulassung zulassungAus(const QString& text) {
  Zulassung zulassung;
  zulassung.disziplinWaffen = {{1, 1, "LG"}, {2, 1, "LG"},  {2, 3, "LGA"}, {3, 1, "LG"},
                               {4, 2, "LP"}, {4, 3, "LGA"}, {6, 2, "LP"}};
  for (const ProfilText& geschrieben : profilTexte(text))
    for (const QString& wort : geschrieben.worte) {
      if (!istZulassung(wort)) continue;
      for (const QString& eines : wort.section('=', 1).split(','))
        if (wort.startsWith("Waffen="))
          zulassung.auswertWaffen.push_back({geschrieben.ID, waffenID(eines)});
        else
          zulassung.auswertKlassen.push_back({geschrieben.ID, zahl(eines)});
    }
  return zulassung;
}

std::vector<EinzelErgebnis> ergebnisseAus(const QString& text) {
  std::vector<EinzelErgebnis> ergebnisse;
  for (const QString& line : lines(text)) {
    const Disziplinart& art = disziplinart(line.section(':', 0, 0));
    for (const QString& eines : line.section(':', 1).split(';', Qt::SkipEmptyParts))
      ergebnisse.push_back(ergebnisAus(eines, art, static_cast<qint32>(ergebnisse.size()) + 1));
  }
  return ergebnisse;
}

LetzteSchiesstage tageAus(const QString& text) {
  LetzteSchiesstage tage;
  for (const QString& line : lines(text)) {
    const Disziplinart& art = disziplinart(line.section(':', 0, 0));
    tage[{art.Teiler ? Quelle::Schuss : Quelle::SchussSerien, art.ID}] =
        parseDate(line.section(':', 1).trimmed()).date();
  }
  return tage;
}

Listenregeln regelnAus(const QString& profile, const QString& disziplinen) {
  Listenregeln regeln;
  regeln.zulassung = zulassungAus(profile);
  for (const Disziplinart& art : disziplinarten()) regeln.disziplinen.push_back({art.ID, art.Name});
  for (const QString& line : lines(disziplinen)) {
    ListenDisziplin& disziplin =
        regeln.disziplinen.at(static_cast<std::size_t>(disziplinart(line.section(':', 0, 0)).ID) - 1);
    disziplin.bGewErg = true;
    disziplin.nGewErg = zahl(line.section(':', 1).trimmed());
  }
  for (const ProfilText& geschrieben : profilTexte(profile)) {
    ListenProfil& profil = regeln.profile.emplace_back();
    profil.ID = geschrieben.ID;
    profil.Name = geschrieben.Name;
    setze(profil, geschrieben.worte, listenSetters());
    for (const QString& name : geschrieben.Disziplin.split(',', Qt::SkipEmptyParts))
      regeln.profilDisziplinen.push_back({geschrieben.ID, disziplinart(name).ID});
  }
  return regeln;
}

Profilauswertung werteProfileAus(const std::vector<ProfilDisziplin>& profile,
                                 const std::vector<EinzelErgebnis>& ergebnisse, const Zulassung& zulassung,
                                 const LetzteSchiesstage& letzteTage) {
  EinzelErgebnisse einzel = kopiereErgebnisse(profile, ergebnisse);
  pruefeMaxErgebnisse(profile, einzel);
  pruefeWaffen(profile, zulassung, einzel);
  pruefeKlassen(profile, zulassung, einzel);
  pruefeTage(profile, letzteTage, einzel);
  ermittleTagesMonatswertung(profile, einzel);

  Profilauswertung auswertung;
  for (const auto& [schluessel, rows] : einzel)
    auswertung.einzelErgebnisse.insert(auswertung.einzelErgebnisse.end(), rows.begin(), rows.end());
  auswertung.ergebnisse = ergebnisZeilen(profile, einzel);
  return auswertung;
}

QString profilZeilen(const std::vector<ErgebnisZeile>& zeilen) {
  QStringList rows;
  for (const ErgebnisZeile& zeile : zeilen)
    rows << QStringList{zeile.Wettkampf, zeile.Disziplin, numberText(zeile.DisziErgebnis.value_or(-1)),
                        zahlen(zeile.E)}
                .join(" | ");
  return rows.join('\n');
}

QString listenZeilenText(const std::vector<ErgebnisZeile>& zeilen) {
  QStringList rows;
  for (const ErgebnisZeile& zeile : zeilen)
    rows << QStringList{zeile.Gruppe, zeile.Disziplin, zeile.WTyp, zahlen(zeile.E)}.join(" | ").trimmed();
  return rows.join('\n');
}

QString werte(std::vector<EinzelErgebnis> ergebnisse) {
  std::stable_sort(
      ergebnisse.begin(), ergebnisse.end(),
      [](const EinzelErgebnis& left, const EinzelErgebnis& right) { return left.ErgID < right.ErgID; });
  std::vector<double> values;
  for (const EinzelErgebnis& ergebnis : ergebnisse) values.push_back(ergebnis.Ergebnis);
  return zahlen(values);
}

QString zeilenVon(const QString& text) {
  return lines(text).join('\n');
}

}  // namespace qk::test
