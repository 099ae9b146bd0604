// A small competition for the tests of this room: shooters, clubs, teams, registrations and the stored list.
#pragma once

#include <QString>
#include <QVariantMap>
#include <memory>

#include "platform/dao/database.h"

namespace qk::test {

struct Shooter {
  int id;
  QString startnummer;
  QString name;
  int vereinsID = 0;
  int lMannID = 0;
  QString gebDat = "04.03.1980";
  QString geschlecht = {};
  bool manuell = false;
  int klassenID = 0;
};

/// Makes the file with its tables and the query "Schützenliste" (what it shows stands at 1, 4, 12, 25, 26,
/// 27, 29).
std::unique_ptr<dao::Database> newCompetition(const QString& path);
void addShooter(dao::Database& database, const Shooter& shooter);
/// One row of any table, columns by name.
void addRow(dao::Database& database, const QString& table, const QVariantMap& values);

}  // namespace qk::test
