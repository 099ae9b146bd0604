// Evaluation profiles. Only what the quick evaluation reads is offered; all other columns stay as they are.
#include "masterdata/pages/page_parts.h"

namespace qk::pages {

namespace {

enum Typ { Summe = 0, Vorgabe = 2 };

std::vector<PageColumn> profileColumns() {
  return {
      {.column = "Name",
       .label = "Profil",
       .effect = "So heißt die Wertung auf der Kurzauswertung; Profile gleichen Typs stehen nach Namen.",
       .inGrid = 28,
       .required = true},
      {.column = "nShowKurzAuswertung",
       .label = "auf der Kurzauswertung",
       .effect = "Nur mit Haken wertet die Kurzauswertung nach Profilen dieses Profil. Die einfache Liste "
                 "druckt ihre Prämien für alle Profile.",
       .kind = ColumnKind::Choice,
       .inGrid = 10,
       .choices = {{0, "nein"}, {-1, "ja"}, {1, "ja (1)"}}},
      {.column = "Typ",
       .label = "Typ",
       .effect = "0 zählt die besten Ergebnisse zusammen; 2 stellt voran, was der Vorgabe am nächsten liegt. "
                 "Gedruckt wird in der Folge 7, 8, 0, 1, 2, 6; die übrigen Typen bestimmen nur diesen Platz.",
       .kind = ColumnKind::Choice,
       .inGrid = 12,
       .choices = {{Summe, "0 – Summe"}, {1, "1"}, {Vorgabe, "2 – Vorgabe"}, {6, "6"}, {7, "7"}, {8, "8"}}},
      {.column = "Anzahl",
       .label = "Anzahl",
       .effect =
           "So viele Ergebnisse zählt Typ 0 zusammen, über alle Disziplinen des Profils. Auf der einfachen "
           "Liste so viele für die Prämie.",
       .kind = ColumnKind::Number,
       .inGrid = 8,
       .smallest = 0},
      {.column = "Teiler",
       .label = "Teiler",
       .effect = "Für die Prämie der einfachen Liste: Gewählt zählen die kleinsten Teiler, sonst die "
                 "höchsten Serien.",
       .kind = ColumnKind::Flag,
       .inGrid = 8},
      {.column = "Vorgabe",
       .label = "Vorgabe",
       .effect = "Nur bei Typ 2: das Ziel, mit Komma (150,5). Ein Punkt fiele weg: 9.5 gilt als 95.",
       .inGrid = 10},
      {.column = "nMinAnzahlErgAktiv",
       .label = "Mindestzahl verlangen",
       .effect = "Wer weniger Ergebnisse hat als die Mindestzahl, erscheint mit diesem Profil nicht; auf der "
                 "einfachen Liste »ohne Wertung«.",
       .kind = ColumnKind::Choice,
       .group = "Mindestzahl",
       .choices = {{0, "nein"}, {-1, "ja"}, {1, "ja (1)"}}},
      {.column = "nMinAnzahlErg",
       .label = "Mindestzahl",
       .effect = "Wirkt nur, wenn sie verlangt wird.",
       .kind = ColumnKind::Number,
       .group = "Mindestzahl",
       .smallest = 0},
      {.column = "OptKlassen",
       .label = "nur diese Klassen",
       .effect = "Es zählen nur Ergebnisse der Klassen, die daneben einen Haken haben. Ohne einen Haken "
                 "zählen alle.",
       .kind = ColumnKind::Choice,
       .group = "Auswahl",
       .choices = {{0, "nein"}, {-1, "ja"}, {1, "ja (1)"}}},
      {.column = "OptWaffen",
       .label = "nur diese Waffen",
       .effect = "Es zählen nur Ergebnisse der Waffen, die daneben einen Haken haben. Ohne einen Haken "
                 "zählen alle.",
       .kind = ColumnKind::Choice,
       .group = "Auswahl",
       .choices = {{0, "nein"}, {-1, "ja"}, {1, "ja (1)"}}},
      {.column = "OptTage",
       .label = "nur der letzte Schießtag",
       .effect =
           "Es zählen nur Ergebnisse vom letzten Tag, an dem irgendjemand die Disziplin geschossen hat. Eine "
           "Liste von Tagen liest die Kurzauswertung nicht.",
       .kind = ColumnKind::Choice,
       .group = "Auswahl",
       .choices = {{0, "nein"}, {-1, "ja"}, {1, "ja (1)"}}},
      {.column = "Tageswertung",
       .label = "je Tag",
       .effect = "Von jedem Tag zählen nur die besten Ergebnisse.",
       .kind = ColumnKind::Flag,
       .group = "Tag und Monat"},
      {.column = "Monatswertung",
       .label = "je Monat",
       .effect = "Von jedem Monat zählen nur die besten Ergebnisse; geht dem Tag vor.",
       .kind = ColumnKind::Flag,
       .group = "Tag und Monat"},
      {.column = "nBestTageswertung",
       .label = "davon die besten",
       .effect = "So viele Ergebnisse je Tag oder Monat; bei 0 bleibt doch eines.",
       .kind = ColumnKind::Number,
       .group = "Tag und Monat",
       .smallest = 0}};
}

}  // namespace

Page profiles() {
  return {
      .key = "Profile",
      .title = "Auswerteprofile",
      .table = "AuswertProfil",
      .named = "Das Profil",
      .nameColumn = "Name",
      .fresh = "Neues Auswerteprofil",
      .empty = "Noch keine Auswerteprofile.\n\nStrg+N legt eines an: eine Wertung auf der Kurzauswertung.",
      .firstOrder = "%1.Name",
      .columns = profileColumns(),
      .links =
          {{.name = "Disziplinen",
            .table = "AwProfilDiszi",
            .owner = "AwProfilID",
            .member = "DisziID",
            .source = kDiscipline,
            .effect =
                "Ergebnisse dieser Disziplinen wertet das Profil. Ohne eine steht es nicht auf dem Blatt.",
            .empty = "Keine Disziplinen angelegt"},
           {.name = "Klassen",
            .table = "Auswert_Klassen",
            .owner = "AuswertID",
            .member = "KlassenID",
            .source = kClass,
            .effect = "Wirkt mit »nur diese Klassen«; die Prämien der einfachen Liste fragen immer danach.",
            .empty = "Keine Klassen angelegt"},
           {.name = "Waffen",
            .table = "Auswert_Waffen",
            .owner = "AuswertID",
            .member = "WaffenID",
            .source = kWeapon,
            .effect = "Wirkt mit »nur diese Waffen«. Die Prämien der einfachen Liste zählen nur Ergebnisse "
                      "der Waffen, die hier einen Haken haben.",
            .empty = "Keine Waffen angelegt"}},
      .check = [](const dao::RowValues& values) -> QStringList {
        if (whole(values, "Typ") != Vorgabe || !values.value("Vorgabe").toString().trimmed().isEmpty())
          return {};
        return {"Vorgabe: fehlt. Typ 2 sucht das Ergebnis, das ihr am nächsten liegt."};
      }};
}

}  // namespace qk::pages
