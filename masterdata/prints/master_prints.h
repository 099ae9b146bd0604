// The printed lists of the master data: who starts, who belongs to which club, what a discipline counts, and
// a card for each shooter to take to his line.
#pragma once

#include <QList>
#include <QString>

#include "app/ground/report_door.h"
#include "platform/workplace.h"

namespace qk {

namespace dao {
class Database;
}

enum class MasterList { Startliste, Vereinsliste, Disziplinblatt };

class MasterPrints {
 public:
  /// `sWettkampf`: path of the competition. The door outlives this.
  MasterPrints(const Workplace& workplace, ReportDoor& reports, QString sWettkampf)
      : workplace_(workplace), reports_(reports), sWettkampf_(std::move(sWettkampf)) {}

  /// Shows the list; failures are reported.
  void show(MasterList list);
  /// A start card with bar code for each of these shooters (keys of `Schützen`), four a sheet, in the order
  /// of their numbers. A box where there are none.
  void showStartCards(const QList<qint64>& shooters);

 private:
  void fillCards(dao::Database& file, const QList<qint64>& shooters) const;

  Workplace workplace_;
  ReportDoor& reports_;
  QString sWettkampf_;
};

}  // namespace qk
