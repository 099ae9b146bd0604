// What the cells of a row say of a shooter, before anybody asks who that is.
#pragma once

#include <QDate>
#include <optional>

#include "masterdata/lists/cells.h"
#include "masterdata/lists/judge.h"
#include "masterdata/lists/named_rows.h"

namespace qk::lists {

struct StoreState;
struct TableRows;

struct SaidOfShooter {
  JudgedRow judged;  ///< row, line and the faults of single cells

  /// Values for columns of the table of shooters, by position, as they are stored. Name and class aren't
  /// among them unless the file gives them as stored.
  std::vector<std::pair<int, QVariant>> values;
  QVector<int> exact;  ///< positions whose value is given as stored

  // Texts, Null where nothing is said.
  QString surname, firstName, fullName;
  QString className;
  QString club, clubShort;
  TeamWords team;
  QString groups, registrations;
  bool sexSaid = false;  ///< "d" is said, "?" isn't

  const QVariant* value(int position) const;
  QString text(int position) const;  ///< empty where nothing is said
};

class ShooterReader {
 public:
  ShooterReader(const CsvTable& table, const Assignment& assignment, const StoreState& state);

  /// Nothing for a row without any text.
  std::optional<SaidOfShooter> read(int row) const;
  /// The column of the file that carries that heading; -1 for none.
  int cellOf(const QString& heading) const { return static_cast<int>(assignment_.indexOf(heading)); }
  /// The file gives the column as it was stored somewhere: then nothing there is Null, and not unknown.
  bool hasExact(const QString& heading) const { return assignment_.contains(asStored(heading)); }
  const Assignment& assignment() const { return assignment_; }

 private:
  struct Column {
    enum class Role { Ignored, Plain, Exact, BirthDate, Sex, Word, Lines } role = Role::Ignored;
    QString heading;
    int position = -1;  ///< in the table of shooters
    QString* (*word)(SaidOfShooter&) = nullptr;
  };
  Column columnFor(const QString& assigned) const;
  void readInto(SaidOfShooter& said, int cell, const QString& text) const;
  CellValue valueOf(const Column& column, const QString& text, SaidOfShooter& said) const;

  const CsvTable& table_;
  Assignment assignment_;
  const TableRows& shooters_;
  QDate refDatum_;
  std::vector<Column> columns_;
};

}  // namespace qk::lists
