// Names in the order in which the competition's lists have them: German, whatever the case.
#pragma once

#include <QCollator>
#include <QString>
#include <algorithm>
#include <vector>

namespace qk {

/// What is equal to it stands in one place of a list: "luftgewehr" and "Luftgewehr".
inline QCollator deutscheOrdnung() {
  QCollator german(QLocale(QLocale::German, QLocale::Germany));
  german.setCaseSensitivity(Qt::CaseInsensitive);
  return german;
}

/// Rows of equal names keep their order.
template <class Zeile>
void sortiereNachNamen(std::vector<Zeile>& zeilen, QString Zeile::*name) {
  const QCollator german = deutscheOrdnung();
  std::stable_sort(zeilen.begin(), zeilen.end(), [&](const Zeile& left, const Zeile& right) {
    return german.compare(left.*name, right.*name) < 0;
  });
}

}  // namespace qk
