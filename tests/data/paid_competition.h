// A competition with many shooters and payments, and the same facts as plain values, so that a test can
// reckon every sum without the store.
#pragma once

#include <QDate>
#include <QMap>
#include <QString>
#include <vector>

#include "platform/runtime/money.h"

namespace qk::test {

struct PaidShooter {
  int id = 0;
  QString startnummer, name;
  int club = 0, team = 0;  ///< 0: none
};

struct PaidTeam {
  int id = 0;
  QString name;
  int club = 0;
};

struct PaidStake {
  int id = 0;
  QString name;
  Money price;
  bool clubs = false, alwaysOpen = false;
};

struct Payment {
  int id = 0;
  QString startnummer;  ///< empty: of a club or team
  int stake = 0;        ///< may be one that is gone
  bool open = false;
  Money amount;
  QDate day;
  int club = 0, team = 0;          ///< of a club's or team's own payment
  int baseClub = 0, baseTeam = 0;  ///< whose it is in the end
};

struct IssuedTarget {
  int number = 0;
  QString startnummer;
  int stack = 0;
  bool back = false;
};

struct PaidCompetition {
  QMap<int, QString> clubs, stacks;
  QMap<int, PaidTeam> teams;
  QMap<int, PaidStake> stakes;
  QMap<QString, PaidShooter> shooters;
  std::vector<Payment> payments;
  std::vector<IssuedTarget> targets;

  QString stakeName(int stake, const QString& gone) const {
    return stakes.contains(stake) ? stakes[stake].name : gone;
  }
};

/// Makes the competition at the path; the same for the same numbers.
PaidCompetition makePaidCompetition(const QString& path, int shooters, int payments);

}  // namespace qk::test
