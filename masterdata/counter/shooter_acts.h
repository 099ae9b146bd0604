// What is done with a shooter who is there: another number, deleting, erasing the person, results that follow
// him. Each asks first, says what it comes to, and reports what the store refuses.
#pragma once

#include <QString>

#include "platform/dao/changes.h"
#include "platform/dao/database.h"

namespace qk {

class Dialogs;

class ShooterActs {
 public:
  /// Both outlive this.
  ShooterActs(dao::Database& database, Dialogs& dialogs) : database_(database), dialogs_(dialogs) {}

  // What the status line says; empty when nothing was done.

  /// Asks for the new number; results and payments go along.
  QString renumber(qint64 id);
  /// Refused, with what stands against it, where results, payments or registrations name him.
  QString remove(qint64 id);
  /// The personal data go, the results stay.
  QString erase(qint64 id);
  /// Where class, club or team are others than in `before` and results bear the old ones, offers to bring
  /// them in line.
  QString bringInLine(qint64 id, const dao::RowValues& before);
  /// Start numbers that several shooters have, and results of numbers that nobody has.
  void showDoubles();

 private:
  QString whoIs(qint64 id);
  QString nameOf(qint64 id);
  QString otherBearer(qint64 id, const QString& number);

  dao::Database& database_;
  Dialogs& dialogs_;
};

}  // namespace qk
