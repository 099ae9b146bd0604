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
  // The words of the query language hold a "Y" too: only the ordering column is searched.
  const bool flips = orderColumn_.contains(column);
  if (!flips) orderColumn_ = column;
  const bool descending = flips && order_.contains(" ASC");
  order_ = " ORDER BY " + orderColumn_ + (descending ? " DESC" : " ASC");
}

}  // namespace qk
