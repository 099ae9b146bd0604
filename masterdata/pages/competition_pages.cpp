// The competition itself, the classes and the keys that everything else refers to.
#include "masterdata/pages/page_parts.h"

namespace qk::pages {

Page competition() {
  const QString sorted =
      "Gewählt: nach Namen. Sonst: nach der Spalte »Platz in den Listen«. Gilt für die Listen "
      "an den Linien, an der Kasse und beim Erzeugen der Stationsdateien.";
  return {
      .key = "Wettkampf",
      .title = "Wettkampf",
      .table = "Wettkampf",
      .named = "Der Wettkampf",
      .nameColumn = "Bezeichnung",
      .fresh = "Neuer Wettkampf",
      .empty = "Der Wettkampf hat noch keine Titelzeile.",
      .columns =
          {{.column = "Bezeichnung",
            .label = "Titel",
            .effect = "Die erste Zeile auf Quittungen, Listen, Etiketten und der Kurzauswertung.",
            .required = true},
           {.column = "Bezeichnung2",
            .label = "Zweite Zeile",
            .effect = "Steht unter dem Titel; darf leer bleiben."},
           {.column = "Ort", .label = "Ort", .effect = "Steht bei den Titelzeilen auf allem Gedruckten."},
           {.column = "RefDatum",
            .label = "Stichtag",
            .effect = "Alter und Klasse werden gegen das Jahr dieses Tages gerechnet, nie gegen heute. "
                      "Ein offenes Büro liest ihn erst beim nächsten Öffnen des Wettkampfs.",
            .kind = ColumnKind::Day,
            .required = true},
           {.column = "SortedDiszi",
            .label = "Disziplinen nach Namen",
            .effect = sorted,
            .kind = ColumnKind::Flag,
            .group = "Listen"},
           {.column = "SortedKombi",
            .label = "Kombinationen nach Namen",
            .effect = sorted,
            .kind = ColumnKind::Flag,
            .group = "Listen"},
           {.column = "KurzauswertungDiszi",
            .label = "Kurzauswertung nach Profilen",
            .effect = "Gewählt: Die Kurzauswertung wertet nach den Auswerteprofilen. Sonst druckt sie die "
                      "einfache Liste der besten Ergebnisse mit den Prämien.",
            .kind = ColumnKind::Flag,
            .group = "Kurzauswertung"}},
      .single = true};
}

Page classYear() {
  return {
      .key = "Klassenwechsel",
      .title = "Klassenwechsel",
      .table = "Klassenwechsel",
      .named = "Der Klassenwechsel",
      .nameColumn = "wechseldatumneu",
      .fresh = "Neuer Klassenwechsel",
      .empty = "Ohne diesen Tag lässt sich keine Klasse bestimmen.",
      .columns = {{.column = "wechseldatumneu",
                   .label = "Das Klassenjahr beginnt am",
                   .effect =
                       "Tag und Monat mit Punkt am Ende, meist 01.01.: Wer vor diesem Tag Geburtstag hat, "
                       "zählt zum Jahrgang davor.",
                   .kind = ColumnKind::DayOfYear,
                   .required = true}},
      .single = true};
}

Page classes() {
  return {
      .key = "Klassen",
      .title = "Klassen",
      .table = "Schützenklassen",
      .named = "Die Klasse",
      .nameColumn = "Klasse",
      .fresh = "Neue Klasse",
      .empty = "Noch keine Klassen.\n\nStrg+N legt eine an: mit Namen, Kürzel und den Grenzen des Alters.",
      .firstOrder = "%1.[Alter von]",
      .columns =
          {{.column = "Klasse",
            .label = "Klasse",
            .effect = "Der volle Name: auf Listen, Startkarten und der Kurzauswertung.",
            .inGrid = 26,
            .required = true,
            .unique = true},
           {.column = "KZ",
            .label = "Kürzel",
            .effect = "Der kurze Name, wo wenig Platz ist: an der Linie und auf Etiketten.",
            .inGrid = 8,
            .required = true},
           {.column = "Alter von",
            .label = "Alter von",
            .effect =
                "Das Alter, das im Jahr des Stichtags erreicht wird. Passen mehrere Klassen, gilt die mit "
                "dem kleineren »Alter von«.",
            .kind = ColumnKind::Number,
            .inGrid = 8,
            .smallest = 0},
           {.column = "Alter bis",
            .label = "Alter bis",
            .effect = "Das höchste Alter der Klasse, einschließlich.",
            .kind = ColumnKind::Number,
            .inGrid = 8,
            .smallest = 0},
           {.column = "Geschlecht",
            .label = "Geschlecht",
            .effect = "Wer kein Geschlecht eingetragen hat, kommt nur in eine Klasse für alle.",
            .kind = ColumnKind::Choice,
            .inGrid = 10,
            .choices = {{0, "alle"}, {1, "männlich"}, {2, "weiblich"}}},
           {.column = "Auflage",
            .label = "Auflage",
            .effect = "Trennt in der Verwaltung der Einlagen die Klassen mit Auflage von denen freihand; die "
                      "Klasse eines Schützen ändert es nicht.",
            .kind = ColumnKind::Flag,
            .inGrid = 8}},
      .check = [](const dao::RowValues& values) -> QStringList {
        if (whole(values, "Alter von") <= whole(values, "Alter bis")) return {};
        return {"Alter von: ist größer als »Alter bis«. In diese Klasse käme niemand."};
      }};
}

Page disciplineKeys() {
  return {
      .key = "Schluessel",
      .title = "Disziplinschlüssel",
      .table = "MeldeDisziplin",
      .named = "Der Schlüssel",
      .nameColumn = "MeldeKZ",
      .fresh = "Neuer Disziplinschlüssel",
      .empty =
          "Noch keine Disziplinschlüssel.\n\nOhne sie bekommen Schüsse keine Waffe und keinen Teilerfaktor.",
      .firstOrder = "%1.MeldeKZ",
      .columns = {
          {.column = "MeldeKZ",
           .label = "Schlüssel",
           .effect = "Die Regelnummer, mit der die Station ihre Schüsse meldet. An ihr erkennt das Büro "
                     "Waffe und Teilerfaktor.",
           .inGrid = 10,
           .required = true},
          {.column = "MeldeDisziplin",
           .label = "Bezeichnung",
           .effect = "Der Name; steht bei den Anmeldungen eines Schützen und auf der Kurzauswertung.",
           .inGrid = 28,
           .required = true},
          {.column = "ScheibenKZ",
           .label = "Kennzeichen der Waffe",
           .effect = "Wird mit dem Ergebnis gespeichert. Auswerteprofile vergleichen es mit den "
                     "Kennzeichen der Waffen.",
           .inGrid = 10},
          {.column = "TeilerfaktorESA",
           .label = "Teilerfaktor",
           .effect = "Teiler = Abstand der Station geteilt durch diesen Faktor, auf eine Stelle "
                     "abgeschnitten. 0 oder leer zählt wie 1.",
           .kind = ColumnKind::Number,
           .inGrid = 10,
           .smallest = 0},
          {.column = "Waffe", .label = "Waffe", .effect = kUnused},
          {.column = "Anzeigen",
           .label = "Anzeigen",
           .effect = "Steht im Fenster der Disziplinschlüssel als Haken; gerechnet wird damit nicht.",
           .kind = ColumnKind::Flag},
          {.column = "Vorbelegen",
           .label = "Vorbelegen",
           .effect = "Steht im Fenster der Disziplinschlüssel als Haken; gerechnet wird damit nicht.",
           .kind = ColumnKind::Flag}}};
}

}  // namespace qk::pages
