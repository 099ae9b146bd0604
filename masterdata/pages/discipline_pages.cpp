// What a shot may count for, with which weapon, and what is ticked together.
#include "masterdata/pages/page_parts.h"
#include "masterdata/pages/sample.h"
#include "platform/dao/sql/quote.h"

namespace qk::pages {

namespace {

const QString kRest = "Weitere Spalten";

PageColumn unused(const QString& column, ColumnKind kind) {
  return {.column = column, .label = column, .effect = kUnused, .kind = kind, .group = kRest};
}

std::vector<PageColumn> unusedColumns() {
  std::vector<PageColumn> columns;
  for (const QString flag :
       {"Einzel", "bVerein", "bMaxVerein", "bGewVerein", "bLGewTeiler", "bVMannschaft", "bEMannschaft",
        "bVollMannschaft", "bOhneKlassen", "bMaxWert", "bGewVorBel", "bAktiveSchuetzen", "bSPOMannschaft"})
    columns.push_back(unused(flag, ColumnKind::Flag));
  for (const QString number :
       {"LMaxVerein", "LGewVerein", "LGewTeiler", "nEMannschaft", "dblMaxWert", "nGewVorBel",
        "nAktiveSchuetzenAnzahl", "VortelAnzeige", "DisziSPO_ID", "AwSetupID"})
    columns.push_back(unused(number, ColumnKind::Number));
  return columns;
}

std::vector<PageColumn> disciplineColumns() {
  const QString kind =
      "Ringe allein: Serien. Teiler allein: jeder Schuss ein Teiler. Beides: Ring-Teiler. Keines: "
      "Aus Schüssen wird nichts.";
  const QString ring = "Nur bei Serien, vor »mit Zehnteln«: ";
  std::vector<PageColumn> columns = {
      {.column = "Name",
       .label = "Disziplin",
       .effect = "So steht sie in den Listen. Schickt eine Station diesen Namen, wird die Disziplin von "
                 "selbst gewählt.",
       .inGrid = 28,
       .required = true,
       .unique = true},
      {.column = "CmdIndex",
       .label = "Platz in den Listen",
       .effect = "Die Reihenfolge, wenn der Wettkampf nicht nach Namen sortiert.",
       .kind = ColumnKind::Number,
       .inGrid = 6},
      {.column = "Ringe",
       .label = "Ringe",
       .effect = kind,
       .kind = ColumnKind::Flag,
       .inGrid = 6,
       .group = "Wertung"},
      {.column = "Teiler",
       .label = "Teiler",
       .effect = kind,
       .kind = ColumnKind::Flag,
       .inGrid = 6,
       .group = "Wertung"},
      {.column = "RingSerie",
       .label = "Schuss je Serie",
       .effect =
           "So viele Schüsse hat eine Serie, oder ein Ring-Teiler. Bei 0 kommt nie ein Ergebnis heraus; ein "
           "reiner Teiler braucht die Zahl nicht.",
       .kind = ColumnKind::Number,
       .inGrid = 8,
       .group = "Wertung",
       .smallest = 0},
      {.column = "RingZentel",
       .label = "mit Zehnteln",
       .effect = "Ringe zählen mit Zehnteln, 9,7 also 9,7. Sonst zählt der ganze Ring, 9.",
       .kind = ColumnKind::Flag,
       .inGrid = 8,
       .group = "Wertung"},
      {.column = "Ring0XZehntel",
       .label = "nur das Zehntel",
       .effect = ring + "Von jedem Schuss zählt allein die Ziffer hinter dem Komma, 9,7 also 7.",
       .kind = ColumnKind::Flag,
       .group = "Wertung"},
      {.column = "RingXXZehntel",
       .label = "Ring plus Zehntel",
       .effect = ring + "Von jedem Schuss zählt ganzer Ring plus Ziffer hinter dem Komma, 9,7 also 16. "
                        "»Nur das Zehntel« geht vor.",
       .kind = ColumnKind::Flag,
       .group = "Wertung"},
      {.column = "Ring05Zehntel",
       .label = "halbe Ringe",
       .effect = "Gibt der Liste der Ergebnisse an der Linie eine Spalte mehr; gerechnet wird damit nicht.",
       .kind = ColumnKind::Flag,
       .group = "Wertung"},
      {.column = "ZusatzTeiler",
       .label = "Zusatzschuss",
       .effect = "Nur bei Serien: Der letzte Schuss zählt 0 Ringe und allein als Teiler. Bei 1 gibt ein "
                 "Zusatzschuss, "
                 "der allein übrig ist, keine Serie; bei -1 gibt er eine.",
       .kind = ColumnKind::Choice,
       .group = "Wertung",
       .choices = {{0, "keiner (0)"},
                   {1, "ja, allein keine Serie (1)"},
                   {-1, "ja, auch allein eine Serie (-1)"}}},
      {.column = "dblMaxSerieDSB",
       .label = "Höchste Ringzahl",
       .effect = "Nur bei Ring-Teilern: Ergebnis = diese Zahl − geschossene Ringe + bester Teiler; je "
                 "kleiner, desto "
                 "besser. Fehlende Schüsse zählen so als 0 Ringe.",
       .kind = ColumnKind::Number,
       .group = "Ring-Teiler",
       .smallest = 0},
      {.column = "DSBTeilerGrenze",
       .label = "Teiler begrenzen",
       .effect = "Nur bei Ring-Teilern: Ist der beste Teiler schlechter als die Grenze, zählt die Grenze.",
       .kind = ColumnKind::Flag,
       .group = "Ring-Teiler"},
      {.column = "DSBTeilerGrenzWert",
       .label = "Grenze",
       .effect = "Der Teiler, der höchstens zählt; wirkt nur mit dem Haken davor.",
       .kind = ColumnKind::Number,
       .group = "Ring-Teiler",
       .smallest = 0},
      {.column = "bGewErg",
       .label = "Zahl der Ergebnisse begrenzen",
       .effect = "Die Kurzauswertung nimmt nur die besten; sonst alle, auf der einfachen Liste höchstens 20.",
       .kind = ColumnKind::Flag,
       .group = "Kurzauswertung"},
      {.column = "nGewErg",
       .label = "höchstens",
       .effect = "So viele Ergebnisse je Schütze zeigt und wertet die Kurzauswertung; wirkt nur mit dem "
                 "Haken davor.",
       .kind = ColumnKind::Number,
       .group = "Kurzauswertung",
       .smallest = 0}};
  for (PageColumn& column : unusedColumns()) columns.push_back(std::move(column));
  return columns;
}

}  // namespace

Page disciplines() {
  return {
      .key = "Disziplinen",
      .title = "Disziplinen",
      .table = "Disziplin",
      .named = "Die Disziplin",
      .nameColumn = "Name",
      .fresh = "Neue Disziplin",
      .empty =
          "Noch keine Disziplinen.\n\nStrg+N legt eine an; darunter steht sogleich, was sie aus zehn "
          "Schüssen macht.",
      .firstOrder = "%1.CmdIndex",
      .columns = disciplineColumns(),
      .links = {{.name = "Klassen",
                 .table = "DisziplinKlasse",
                 .owner = "DisziID",
                 .member = "KlasseID",
                 .source = kClass,
                 .effect =
                     "Die zugelassenen Klassen. Die Liste steht im Wettkampf; an der Linie wird niemand "
                     "wegen seiner Klasse abgewiesen.",
                 .empty = "Keine Klassen angelegt"},
                {.name = "Waffen",
                 .table = "DisziplinWaffen",
                 .owner = "DisziID",
                 .member = "WaffenID",
                 .source = kWeapon,
                 .copied = "KZ",
                 .effect =
                     "Für jede Waffe entsteht eine Stationsdatei. Der Ergebniseditor und die Profile prüfen "
                     "an ihrem Kennzeichen, ob ein Ergebnis hierher gehört.",
                 .empty = "Keine Waffen angelegt"}},
      .example = sampleText};
}

Page weapons() {
  return {
      .key = "Waffen",
      .title = "Waffen",
      .table = "Waffen",
      .named = "Die Waffe",
      .nameColumn = "Bezeichnung",
      .fresh = "Neue Waffe",
      .empty =
          "Noch keine Waffen.\n\nStrg+N legt eine an. Disziplinen und Auswerteprofile nennen sie bei ihrem "
          "Kennzeichen.",
      .firstOrder = "%1.KZ",
      .columns = {{.column = "KZ",
                   .label = "Kennzeichen",
                   .effect =
                       "Kurz, wie LG oder LP: Es steht in jedem Ergebnis und im Namen der Stationsdateien. "
                       "Schon gespeicherte Ergebnisse behalten ein altes Kennzeichen.",
                   .inGrid = 10,
                   .required = true,
                   .unique = true},
                  {.column = "Bezeichnung",
                   .label = "Bezeichnung",
                   .effect = "Der volle Name, für die Listen in diesem Programm.",
                   .inGrid = 30,
                   .required = true}},
      .follow = [](qint64 key, const dao::RowValues& values) -> QStringList {
        return {QString("UPDATE DisziplinWaffen SET KZ = %1 WHERE WaffenID = %2")
                    .arg(dao::sql::quoted(values.value("KZ").toString()))
                    .arg(key)};
      }};
}

Page combinations() {
  return {
      .key = "Kombinationen",
      .title = "Kombinationen",
      .table = "Kombination_Name",
      .named = "Die Kombination",
      .nameColumn = "Kombinationsname",
      .fresh = "Neue Kombination",
      .empty =
          "Noch keine Kombinationen.\n\nStrg+N legt eine an: Disziplinen, die an der Linie zusammen gewählt "
          "werden.",
      .firstOrder = "%1.CmdIndex",
      .columns = {{.column = "Kombinationsname",
                   .label = "Kombination",
                   .effect =
                       "So steht sie an der Linie und an der Kasse. Schickt eine Station diesen Namen, wird "
                       "sie von selbst gewählt.",
                   .inGrid = 34,
                   .required = true,
                   .unique = true},
                  {.column = "CmdIndex",
                   .label = "Platz in den Listen",
                   .effect = "Die Reihenfolge, wenn der Wettkampf nicht nach Namen sortiert.",
                   .kind = ColumnKind::Number,
                   .inGrid = 8}},
      .links = {
          {.name = "Disziplinen",
           .table = "Kombination_Diszi",
           .owner = "KombiID",
           .member = "disziID",
           .source = kDiscipline,
           .effect =
               "Diese Disziplinen werden zusammen gewählt. Gespeicherte Ergebnisse wissen davon nichts.",
           .empty = "Keine Disziplinen angelegt"}}};
}

}  // namespace qk::pages
