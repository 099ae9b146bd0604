// What was handed out of numbered targets, counted by stack, discipline, shooter or day. Needs no window.
#pragma once

#include <QDate>
#include <QString>
#include <vector>

#include "platform/dao/database.h"
#include "platform/grid/text_table.h"

namespace qk {

/// One target that a shooter holds or has handed in.
struct IssuedTarget {
  qint32 nummer = 0;
  QString Startnummer, Name;
  qint32 StapelID = 0;  ///< 0 for a number of no stack
  QString Stapel;       ///< empty for a stack that is gone
  QString Typ;
  int DisziKombiWahl = 0;
  qint32 DisziKombiID = 0;
  QString Zuordnung;  ///< empty for a discipline that is gone
  QDate Ausgabe;
  bool abgegeben = false;
};

/// All of the competition. A start number that two shooters bear counts once. Errors of the store pass.
std::vector<IssuedTarget> ladeAusgaben(dao::Database& database);
/// The days on which something was handed out, the latest first.
QList<QDate> ausgabeTage(const std::vector<IssuedTarget>& all);

enum class Gruppierung { Stapel, Disziplin, Schuetze, Tag };

struct IssuedSum {
  QString Bezeichnung;
  int ausgegeben = 0, abgegeben = 0;
  qint32 von = 0, bis = 0;  ///< lowest and highest number

  int draussen() const { return ausgegeben - abgegeben; }
};
/// In the order of their names, numbers in names as numbers; days in the order of time, targets of no stack
/// last. `tag`: of that day only, unless it isn't valid.
std::vector<IssuedSum> gruppiere(const std::vector<IssuedTarget>& all, Gruppierung nach, const QDate& tag);
IssuedSum summe(const std::vector<IssuedSum>& sums);

struct IssuedSumColumn {
  enum : int { Bezeichnung = 0, Ausgegeben = 1, Abgegeben = 2, Draussen = 3, Von = 4, Bis = 5, Anzahl = 6 };
};
void fuelle(TextTable& table, Gruppierung nach, const std::vector<IssuedSum>& sums);

}  // namespace qk
