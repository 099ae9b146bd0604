// What a row of a list comes to for a shooter: new values, rows of other tables, and how a person reads it.
#pragma once

#include <optional>

#include "masterdata/lists/named_rows.h"
#include "masterdata/lists/shooter_match.h"
#include "masterdata/people/start_numbers.h"

namespace qk::lists {

class ShooterPlanning {
 public:
  /// All of it outlives this.
  ShooterPlanning(const StoreState& state, const ShooterReader& reader, const ShooterIndex& index, Plan& plan,
                  StartNumbers numbers);

  /// Gives the row its verdict, and the plan what follows from it; nothing of a faulty row.
  JudgedRow plan(SaidOfShooter said, int match);

 private:
  struct Work;
  struct Registration {
    qint64 discipline = 0;
    RowRef team;
    friend bool operator==(const Registration&, const Registration&) = default;
  };

  struct ClassChoice {
    qint32 id = 0;
    bool byHand = false;
  };

  const dao::FieldDef& fieldAt(int column) const {
    return state_.shooters.def.fields[static_cast<size_t>(column)];
  }
  bool saysNothingNew(const SaidOfShooter& said, int column, const QVariant& before,
                      const QVariant& value) const;
  void planName(Work& work) const;
  void planStartNumber(Work& work);
  void planValues(Work& work) const;
  void planClub(Work& work);
  std::optional<ClassChoice> chosenClass(Work& work, const ClassChoice& before) const;
  void planClass(Work& work) const;
  void planGroups(Work& work);
  void planRegistrations(Work& work);
  void commit(Work& work);

  const StoreState& state_;
  const ShooterReader& reader_;
  const ShooterIndex& index_;
  Plan& plan_;
  NamedRows names_;
  StartNumbers numbers_;
  QHash<int, QString> headings_;  ///< by column of the table
  QHash<qint64, std::vector<qint64>> groupsOf_;
  QHash<qint64, std::vector<Registration>> registrationsOf_;
  QHash<qint64, QString> groupNames_;
};

}  // namespace qk::lists
