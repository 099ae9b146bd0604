#include "capture/shot_browser_query.h"

namespace qk {

const QStringList& shotBrowserColumns() {
  static const QStringList names{"WettbewerbBezeichnung",
                                 "KlasseBezeichnung",
                                 "StandnummerOrt",
                                 "Liniennummer",
                                 "Schütze",
                                 "ProbeMatch",
                                 "Wertung",
                                 "Treffernummer",
                                 "RingwertmitZehntel",
                                 "Lagepfeil",
                                 "X",
                                 "Y",
                                 "Radius",
                                 "Winkel",
                                 "ZeitAbsolut",
                                 "ZeitRelativ",
                                 "Datum",
                                 "Wettbewerb",
                                 "Klasse",
                                 "Startnummer",
                                 "Waffe",
                                 "Teiler",
                                 "Teilerfaktor",
                                 "Verbucht",
                                 "Verworfen",
                                 "BuchungsZeitpunkt",
                                 "Key"};
  return names;
}

FilteredQuery shotBrowserQuery() {
  FilteredQuery::Shape shape{.base = "Select * from Haering_Daten ", .joint = " WHERE "};
  for (const QString& column : shotBrowserColumns()) shape.columns.push_back({.filter = column});
  shape.quote = FilteredQuery::Quote::Breaks;
  return FilteredQuery(std::move(shape));
}

}  // namespace qk
