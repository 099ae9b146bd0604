// Stored results for tests of the editor, as a schema text: shooter 107 with five teilers and three series,
// shooter 108 with one of each, and a teiler whose discipline is gone.
#pragma once

namespace qk::test {

inline const char* const kResultRows = R"(
Zeilen Verein
  ID | Name
  4  | Schützenlust Äußere Au
Zeilen Mannschaften
  ID | MannName
  5  | Äußere Au I
Zeilen Schützenklassen
  ID | Klasse
  7  | Herren I
Zeilen Schützen
  ID | Startnummer | Name        | Gebdat     | VereinsID | lMannID | KlassenID
  71 | 107         | Müller Jörg | 14.05.1998 | 4         | 5       | 7
  72 | 108         | Süß Benno   | ""         | 0         | 0       | 0
Zeilen Disziplin
  ID | Name           | Ringe | RingZentel | Teiler | RingSerie | dblMaxSerieDSB
  1  | LG Meister     | ja    | nein       | nein   | 40        | 0
  2  | LG Zehntel     | ja    | ja         | nein   | 10        | 0
  3  | LG Teiler      | nein  | nein       | ja     | 0         | 0
  4  | LP Teiler      | nein  | nein       | ja     | 0         | 0
  5  | LG Ring-Teiler | ja    | nein       | ja     | 10        | 100
  6  | Ehrenscheibe   | nein  | nein       | nein   | 10        | 0
Zeilen DisziplinWaffen
  DisziID | WaffenID | KZ
  1       | 1        | LG
  3       | 1        | LG
  3       | 2        | LP
Zeilen Schuss
  ID | Art | Ergebnis | Startnummer | DisziID | Datum               | WTyp | ScheibenNr | KlassenID
  1  | T   | 123,4    | 107         | 3       | 20.11.2026 10:41:07 | LG   | 11         | 7
  2  | T   | 23,5     | 107         | 3       | 20.11.2026 10:42:00 | LG   | 12         | 7
  3  | T   | 300,1    | 107         | 4       | 21.11.2026 09:00:00 | LP   | 13         | 7
  4  | RT  | 50,5     | 107         | 5       | 02.12.2025 09:00:00 | LG   | 0          | 7
  5  | T   | 11       | 108         | 3       | 20.11.2026 11:00:00 | LG   | 1          | 0
  6  | T   | 99       | 107         | 777     | 20.11.2026 11:00:00 | LG   | 1          | 7
  7  | T   | 7,5      | 107         | 3       | 03.12.2025 10:00:00 | LP   | 14         | 7
Zeilen SchussSerien
  ID | Ergebnis | Startnummer | DisziID | Datum               | WTyp | Anz  | Einzelfolge
  1  | 380      | 107         | 1       | 20.11.2026 10:00:00 | LG   | 40er | 9 10 -
  2  | 391      | 107         | 1       | 21.11.2026 10:00:00 | LG   | 40er | 10 10 -
  3  | 101,5    | 107         | 2       | 21.11.2026 11:00:00 | LG   | 10er | 10,1 -
  4  | 99       | 108         | 1       | 20.11.2026 12:00:00 | LG   | 40er | 9 -
)";

}  // namespace qk::test
