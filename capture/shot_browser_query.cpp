#include "capture/shot_browser_query.h"

namespace qk {

const QStringList& ShotBrowserQuery::columns() {
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

void ShotBrowserQuery::setFilter(const QStringList& texts) {
  QStringList conditions;
  for (qsizetype i = 0; i < texts.size(); ++i)
    if (!texts[i].trimmed().isEmpty()) conditions.append(columns()[i] + " LIKE '" + texts[i] + "*'");
  filter_ = conditions.isEmpty() ? QString() : " WHERE " + conditions.join(" AND ");
}

void ShotBrowserQuery::clickTitle(const QString& column) {
  // A plain search in the text, as operators know it: "Klasse" is found in KlasseBezeichnung, "Y" in "BY".
  const bool flips = order_.contains(column);
  if (!flips) orderColumn_ = column;
  const bool descending = flips && order_.contains(" ASC");
  order_ = " ORDER BY " + orderColumn_ + (descending ? " DESC" : " ASC");
}

}  // namespace qk
