#include "masterdata/lists/columns.h"

namespace qk::lists {

namespace {

// A column whose meaning nobody here knows goes by its name in the table: it travels with its shooter, and is
// offered under no word of ours.
const std::vector<ListColumn> ShooterColumns = {
    {heading::StartNumber, "Startnummer", {"startnr", "stnr", "startnum", "schuetzennummer", "schuetzennr"}},
    {"Anrede", "Anrede", {"titelanrede"}},
    {heading::Surname, {}, {"familienname", "zuname", "nachnamen", "lastname"}},
    {heading::FirstName, "Vorname", {"rufname", "vornamen", "firstname"}},
    {heading::Name, "Name", {"schuetze", "schuetzin", "namevorname", "nachnamevorname", "teilnehmer"}},
    {heading::BirthDate,
     "Gebdat",
     {"gebdat", "gebdatum", "geb", "geboren", "geborenam", "gebam", "geburtstag", "dateofbirth"}},
    {heading::Sex, "Geschlecht", {"mw", "mwd", "wm", "geschl", "sex"}},
    {heading::Class,
     {},
     {"schuetzenklasse", "altersklasse", "kz", "klassenkz", "klassekz", "wettkampfklasse"}},
    {heading::ClassByHand, "bGebKlasseManuell", {"klassemanuell"}},
    {heading::Club, {}, {"vereinsname", "klub", "club", "gesellschaft", "schuetzenverein"}},
    {heading::ClubShort, {}, {"vereinskurzname", "kurzname", "vereinkurzname", "vereinskuerzel"}},
    {heading::Team, {}, {"mannschaftsname", "mannname", "team"}},
    {heading::TeamClub, {}, {"mannschaftsverein"}},
    {heading::TeamGroup, {}, {"gruppedermannschaft"}},
    {heading::Licence,
     "AusweisNr",
     {"ausweis", "ausweisnr", "lizenz", "lizenznr", "lizenznummer", "passnr", "passnummer", "pass",
      "schuetzenausweis", "schuetzenpass", "schuetzenausweisnummer", "schuetzenpassnr", "wettkampfpass"}},
    {"Straße",
     "Strasse",
     {"strasseundhausnummer", "strassehausnr", "strassenr", "anschrift", "adresse", "str"}},
    {"PLZ", "PLZ", {"postleitzahl"}},
    {"Ort", "Ort", {"wohnort", "stadt", "gemeinde"}},
    {"Telefon", "Telefon", {"tel", "telefonnummer", "telefonnr", "telnr", "handy", "mobil", "rufnummer"}},
    {"E-Mail", "email", {"mail", "emailadresse", "mailadresse"}},
    {"Homepage", "homepage", {"webseite", "website", "internet"}},
    {"Bank", "Bank", {"kreditinstitut", "bankname"}},
    {"BLZ", "BLZ", {"bankleitzahl"}},
    {"Kontonummer", "Kto", {"kto", "ktonr", "konto", "kontonr"}},
    {"Kontoinhaber", "KtoInhaber", {"ktoinhaber"}},
    {"IBAN", "IBAN", {}},
    {"BIC", "BIC", {"swift", "bicswift"}},
    {"Mandatsreferenz", "Mandatsreferenz", {"mandat", "sepamandat", "mandatsnummer"}},
    {heading::Groups, {}, {"schuetzengruppe"}},
    {heading::Registrations, {}, {"anmeldung", "meldungen"}},
    {"Bemerkungen", "Bemerkungen", {"bemerkung", "notiz", "anmerkung"}},
    {"SPOKey", "SPOKey", {}},
    {"bVerein", "bVerein", {}},
    {"bGebDat", "bGebDat", {}},
    {"StartnummerEinzel", "StartnummerEinzel", {}},
    {"nStartnummerEinzel", "nStartnummerEinzel", {}},
    {"AmateurSchuetze", "AmateurSchuetze", {}}};

const std::vector<ListColumn> ClubColumns = {
    {heading::Club, "Name", {"vereinsname", "name", "klub", "club", "gesellschaft", "schuetzenverein"}},
    {heading::ClubShort, "Kurzname", {"kurzname", "vereinskurzname", "vereinkurzname", "kuerzel"}}};

const std::vector<ListColumn> TeamColumns = {
    {heading::Team, "MannName", {"mannschaftsname", "mannname", "name", "team"}},
    {heading::TeamClub, {}, {"verein", "vereinsname", "mannschaftsverein"}},
    {heading::TeamGroup, {}, {"gruppe", "gruppedermannschaft"}}};

}  // namespace

QString kindName(ListKind kind) {
  switch (kind) {
    case ListKind::Shooters:
      return "Schützen";
    case ListKind::Clubs:
      return "Vereine";
    case ListKind::Teams:
      return "Mannschaften";
  }
  return {};
}

const std::vector<ListColumn>& columnsOf(ListKind kind) {
  switch (kind) {
    case ListKind::Clubs:
      return ClubColumns;
    case ListKind::Teams:
      return TeamColumns;
    case ListKind::Shooters:
      break;
  }
  return ShooterColumns;
}

QString asStored(const QString& heading) {
  return heading + " (wie gespeichert)";
}

QString headingKey(const QString& heading) {
  QString key;
  for (const QChar c : heading.toLower()) {
    if (c == u'ä')
      key += "ae";
    else if (c == u'ö')
      key += "oe";
    else if (c == u'ü')
      key += "ue";
    else if (c == u'ß')
      key += "ss";
    else if (c.isLetterOrNumber())
      key += c;
  }
  return key;
}

}  // namespace qk::lists
