// The shooters of a competition by what a list may know them by.
#pragma once

#include <QHash>
#include <vector>

#include "masterdata/lists/store_state.h"

namespace qk::lists {

/// Positions in StoreState::shooters.rows.
using Positions = std::vector<int>;

class ShooterIndex {
 public:
  /// The state outlives this.
  explicit ShooterIndex(const StoreState& state);

  const Positions& byNumber(const QString& number) const;
  const Positions& byLicence(const QString& licence) const;
  /// By name and birth date; an unknown date is one, too.
  const Positions& byPerson(const QString& name, const QString& birthDate) const;
  const Positions& byName(const QString& name) const;

  /// One text for a birth date in whatever form; empty for an unknown one.
  QString birthKey(const QString& birthDate) const;
  /// One text for a person.
  QString personKey(const QString& name, const QString& birthDate) const;

  const QVariantList& row(int position) const { return state_.shooters.rows[static_cast<size_t>(position)]; }
  QString text(int position, int column) const { return row(position)[column].toString(); }
  /// "Müller Jörg (Startnummer 107, geb. 01.02.1980)".
  QString describe(int position) const;

  const int number, name, firstName, birthDate, sex, licence, club, team, classId, byHand;  ///< columns

 private:
  const StoreState& state_;
  QHash<QString, Positions> numbers_, licences_, persons_, names_;
};

}  // namespace qk::lists
