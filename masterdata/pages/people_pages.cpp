// Who shoots, and for whom.
#include "masterdata/pages/page_parts.h"

namespace qk::pages {

namespace {

PageColumn address(const QString& column, const QString& label, int inGrid = 0) {
  return {.column = column,
          .label = label,
          .effect = "Steht auf der Kurzauswertung bei der Anschrift.",
          .inGrid = inGrid,
          .group = "Anschrift"};
}

PageColumn bank(const QString& column, const QString& label) {
  return {.column = column,
          .label = label,
          .effect = "Steht auf der Kurzauswertung, für die Auszahlung von Preisen.",
          .group = "Bank"};
}

PageColumn unused(const QString& column, ColumnKind kind = ColumnKind::Text) {
  return {.column = column, .label = column, .effect = kUnused, .kind = kind, .group = "Weitere Spalten"};
}

std::vector<PageColumn> shooterColumns() {
  return {
      {.column = "Startnummer",
       .label = "Startnummer",
       .effect =
           "Unter ihr stehen Ergebnisse, Zahlungen und Scheiben. Zwei Schützen mit derselben Nummer mischen "
           "ihre Ergebnisse.",
       .inGrid = 10,
       .required = true,
       .unique = true,
       .order = "val(%1.Startnummer)"},
      {.column = "Name",
       .label = "Name",
       .effect = "So steht der Schütze an der Linie, auf Etiketten und Listen: Nachname Vorname.",
       .inGrid = 24,
       .required = true},
      {.column = "Vorname",
       .label = "Vorname",
       .effect = "Allein für Listen, die ihn einzeln brauchen.",
       .inGrid = 12},
      {.column = "Gebdat",
       .label = "Geburtsdatum",
       .effect = "TT.MM.JJJJ; aus ihm und dem Stichtag folgt die Klasse. Unbekannt ist 00.00.0000.",
       .inGrid = 10},
      {.column = "Geschlecht",
       .label = "Geschlecht",
       .effect = "M oder W; mit dem Geburtsdatum bestimmt es die Klasse.",
       .kind = ColumnKind::Choice,
       .inGrid = 6,
       .choices = {{QString(), "–"}, {"M", "M"}, {"W", "W"}}},
      {.column = "VereinsID",
       .label = "Verein",
       .effect = "Wird mit jedem Ergebnis gespeichert; die Kasse führt darunter die Rechnung des Vereins.",
       .kind = ColumnKind::Reference,
       .inGrid = 20,
       .reference = kClub},
      {.column = "lMannID",
       .label = "Mannschaft",
       .effect = "Wird mit jedem Ergebnis gespeichert.",
       .kind = ColumnKind::Reference,
       .inGrid = 14,
       .reference = kTeam},
      {.column = "KlassenID",
       .label = "Klasse",
       .effect = "Wird mit jedem Ergebnis gespeichert; Auswerteprofile und Einlagen fragen danach.",
       .kind = ColumnKind::Reference,
       .inGrid = 16,
       .reference = kClass},
      {.column = "bGebKlasseManuell",
       .label = "Klasse von Hand",
       .effect =
           "Gewählt: Die Klasse bleibt, wie sie hier steht. Sonst folgt sie aus Geburtsdatum und Geschlecht.",
       .kind = ColumnKind::Flag},
      {.column = "AusweisNr",
       .label = "Ausweisnummer",
       .effect = "Steht auf der Kurzauswertung; beim Einlesen von Listen erkennt sie einen Schützen wieder.",
       .inGrid = 10},
      address("Anrede", "Anrede"),
      address("Strasse", "Straße"),
      address("PLZ", "PLZ"),
      address("Ort", "Ort"),
      address("Telefon", "Telefon"),
      {.column = "email", .label = "E-Mail", .effect = kUnused, .group = "Anschrift"},
      {.column = "homepage", .label = "Internetseite", .effect = kUnused, .group = "Anschrift"},
      bank("Bank", "Bank"),
      bank("BLZ", "BLZ"),
      bank("Kto", "Konto"),
      bank("BIC", "BIC"),
      bank("IBAN", "IBAN"),
      bank("KtoInhaber", "Kontoinhaber"),
      bank("Mandatsreferenz", "Mandatsreferenz"),
      {.column = "Bemerkungen",
       .label = "Bemerkungen",
       .effect = "Steht in der Schützenliste.",
       .kind = ColumnKind::Memo,
       .group = "Bemerkungen"},
      unused("SPOKey"),
      unused("MeldeDisziID", ColumnKind::Number),
      unused("bVerein", ColumnKind::Flag),
      unused("bGebDat", ColumnKind::Number),
      unused("StartnummerEinzel"),
      unused("nStartnummerEinzel", ColumnKind::Number),
      unused("AmateurSchuetze", ColumnKind::Number)};
}

}  // namespace

Page shooters() {
  return {
      .key = "Schuetzen",
      .title = "Schützen",
      .table = "Schützen",
      .named = "Der Schütze",
      .nameColumn = "Name",
      .fresh = "Neuer Schütze",
      .empty = "Noch keine Schützen.\n\nStrg+N nimmt einen auf; eine Liste kommt über das Menü Datei herein.",
      .firstOrder = "val(%1.Startnummer)",
      .columns = shooterColumns()};
}

Page clubs() {
  return {
      .key = "Vereine",
      .title = "Vereine",
      .table = "Verein",
      .named = "Der Verein",
      .nameColumn = "Name",
      .fresh = "Neuer Verein",
      .empty = "Noch keine Vereine.\n\nStrg+N legt einen an; beim Schützen genügt es, den Namen zu tippen.",
      .firstOrder = "%1.Name",
      .columns = {{.column = "Name",
                   .label = "Name",
                   .effect = "Der volle Name: auf Listen und der Kurzauswertung.",
                   .inGrid = 34,
                   .required = true},
                  {.column = "Kurzname",
                   .label = "Kurzname",
                   .effect = "Steht an der Linie und an der Kasse. Ist er leer, steht dort der volle Name.",
                   .inGrid = 18}}};
}

Page teams() {
  return {
      .key = "Mannschaften",
      .title = "Mannschaften",
      .table = "Mannschaften",
      .named = "Die Mannschaft",
      .nameColumn = "MannName",
      .fresh = "Neue Mannschaft",
      .empty = "Noch keine Mannschaften.\n\nStrg+N legt eine an.",
      .firstOrder = "%1.MannName",
      .columns = {{.column = "MannName",
                   .label = "Mannschaft",
                   .effect = "So steht sie an der Linie, an der Kasse und auf Listen.",
                   .inGrid = 24,
                   .required = true},
                  {.column = "VereinID",
                   .label = "Verein",
                   .effect = "Was die Kasse für die Mannschaft bucht, steht in der Rechnung dieses Vereins.",
                   .kind = ColumnKind::Reference,
                   .inGrid = 24,
                   .reference = kClub},
                  {.column = "GruppenID",
                   .label = "Gruppe",
                   .effect = "Die Mannschaftsgruppe; steht auf der Quittung bei der Mannschaft.",
                   .kind = ColumnKind::Reference,
                   .inGrid = 18,
                   .reference = {"MannschaftsGruppen", "MannGrpID", "%1.Bezeichnung"}}}};
}

Page teamGroups() {
  return {.key = "Mannschaftsgruppen",
          .title = "Mannschaftsgruppen",
          .table = "MannschaftsGruppen",
          .keyColumn = "MannGrpID",
          .named = "Die Gruppe",
          .nameColumn = "Bezeichnung",
          .fresh = "Neue Mannschaftsgruppe",
          .empty = "Noch keine Mannschaftsgruppen.\n\nStrg+N legt eine an.",
          .firstOrder = "%1.Bezeichnung",
          .columns = {{.column = "Bezeichnung",
                       .label = "Bezeichnung",
                       .effect = "Der Name der Gruppe, wie er auf der Quittung steht.",
                       .inGrid = 34,
                       .required = true}}};
}

Page shooterGroups() {
  return {
      .key = "Schuetzengruppen",
      .title = "Schützengruppen",
      .table = "SchuetzenGruppen",
      .keyColumn = "SchGrpID",
      .named = "Die Gruppe",
      .nameColumn = "Bezeichnung",
      .fresh = "Neue Schützengruppe",
      .empty =
          "Noch keine Schützengruppen.\n\nStrg+N legt eine an; wer dazugehört, bekommt daneben seinen Haken.",
      .firstOrder = "%1.Bezeichnung",
      .columns = {{.column = "Bezeichnung",
                   .label = "Bezeichnung",
                   .effect = "Steht auf der Quittung der Kasse, bei jedem Schützen der Gruppe.",
                   .inGrid = 34,
                   .required = true}},
      .links = {{.name = "Schützen",
                 .table = "SchuetzenGruppenZuordnung",
                 .owner = "GruppenID",
                 .member = "SchuetzeID",
                 .source = kShooter,
                 .effect = "Wer zur Gruppe gehört. Ein Schütze darf in mehreren sein.",
                 .empty = "Keine Schützen"}}};
}

Page registrations() {
  return {.key = "Anmeldungen",
          .title = "Anmeldungen",
          .table = "Schuetzen_SPO_Anmeldungen",
          .named = "Die Anmeldung",
          .nameColumn = "SPOKey",
          .fresh = "Neue Anmeldung",
          .empty = "Noch keine Anmeldungen.\n\nStrg+N meldet einen Schützen zu einer Disziplin an.",
          .firstOrder = "%1.SchuetzeID",
          .columns = {
              {.column = "SchuetzeID",
               .label = "Schütze",
               .effect = "Die Startnummer. Die Anmeldungen eines Schützen stehen auf seiner Kurzauswertung.",
               .kind = ColumnKind::LookUp,
               .inGrid = 26,
               .required = true,
               .reference = kShooter},
              {.column = "SPOID",
               .label = "Disziplinschlüssel",
               .effect = "Wozu er angemeldet ist.",
               .kind = ColumnKind::Reference,
               .inGrid = 28,
               .required = true,
               .reference = kDisciplineKey,
               .keeper = "SPOKey",
               .kept = "MeldeKZ"},
              {.column = "MannID",
               .label = "Mannschaft",
               .effect = "Für diese Mannschaft startet er hier. Die Kasse zeigt darunter den Stand der "
                         "Mannschaft.",
               .kind = ColumnKind::Reference,
               .inGrid = 20,
               .reference = kTeam},
              {.column = "SPOKey",
               .label = "SPO-Schlüssel",
               .effect = "Folgt beim Speichern dem Disziplinschlüssel. " + kUnused,
               .inGrid = 10}}};
}

}  // namespace qk::pages
