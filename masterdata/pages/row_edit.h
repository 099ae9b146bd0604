// One row of a page while it is edited: what the store held when it was read, what is typed now, what is
// wrong with it, and the changes that store it. No window.
//
//   RowEdit row(page, database);
//   row.read(7);
//   row.setEntry("Name", "LG Meister");
//   if (row.troubles().isEmpty()) row.store();
//
// Text, numbers and days are entries: what is typed, as it is typed. Flags, choices and references are
// values. A column that nobody touched isn't written.
#pragma once

#include <QHash>
#include <QSet>
#include <variant>
#include <vector>

#include "masterdata/pages/page.h"

namespace qk {

/// What is wrong with a column, or with the row as a whole (then without a column).
struct RowTrouble {
  QString column;
  QString text;
};

class RowEdit {
 public:
  /// Both outlive it.
  RowEdit(const Page& page, dao::Database& database);

  const Page& page() const { return page_; }
  /// The page's columns that this competition has, in their order.
  const std::vector<PageColumn>& columns() const { return columns_; }

  void begin();           ///< a new row, with the table's presets
  bool read(qint64 key);  ///< false when it is gone; nothing is edited then
  void close();
  /// What is typed becomes a new row: the one that was read is gone.
  void becomeNew();

  bool isOpen() const { return open_; }
  bool isNew() const { return open_ && key_ == 0; }
  qint64 key() const { return key_; }

  QString entry(const QString& column) const;
  void setEntry(const QString& column, const QString& text);
  QVariant value(const QString& column) const;
  /// `text`: what a reference was chosen by, for a message.
  void setValue(const QString& column, const QVariant& value, const QString& text = {});
  /// The name of the row that a look-up column's code stands for; empty for none.
  QString lookedUpText(const QString& column) const;

  /// Whether this competition has the list's tables.
  bool hasLink(int link) const { return links_[size_t(link)].present; }
  const QSet<qint64>& members(int link) const { return links_[size_t(link)].now; }
  void setMember(int link, qint64 member, bool on, const QString& text = {});

  bool isChanged() const;
  /// The labels of the columns and lists that differ from the store.
  QStringList changedLabels() const;
  /// Empty for a row that can be stored. Reads the store for what is looked up.
  std::vector<RowTrouble> troubles() const;
  /// As far as they can be read; for an example.
  dao::RowValues values() const;

  /// Writes what was changed, with its lists, by one call; its key. dao::RowChanged when somebody else
  /// changed a column of the page meanwhile, 3167 when the row is gone, ReferenceGone when one that a column
  /// or a list is to name is gone. It stands as stored then.
  qint64 store();
  /// What the store holds now becomes what is compared with: columns that weren't edited show it.
  void takeOver(const dao::RowValues& found);

 private:
  struct Linked {
    bool present = false;
    QSet<qint64> stored, now;
    QHash<qint64, QString> texts;
  };

  const PageColumn& columnOf(const QString& name) const;
  const dao::FieldDef& fieldOf(const PageColumn& column) const;
  QVariant shownOf(const PageColumn& column, const QVariant& stored) const;
  bool isEdited(const PageColumn& column) const;
  /// The value to be stored, or what is wrong with the entry.
  std::variant<QVariant, QString> read(const PageColumn& column) const;
  std::variant<QVariant, QString> readNumber(const PageColumn& column, const QString& text) const;
  bool standsElsewhere(const PageColumn& column, const QString& text) const;
  void readLinks();
  void showStored();
  void keepOfReferences(dao::RowValues& edited) const;
  QVariant valueToStore(const PageColumn& column) const;
  void requireReferences(dao::Changes& changes, const dao::RowValues& edited) const;
  void changeLinks(dao::Changes& changes, qint64 key) const;

  const Page& page_;
  dao::Database& database_;
  dao::TableDef table_;
  std::vector<PageColumn> columns_;
  bool open_ = false;
  qint64 key_ = 0;
  dao::RowValues stored_;           ///< by the columns of the page
  QHash<QString, QVariant> shown_;  ///< entries and values as they are edited
  QHash<QString, QString> texts_;   ///< what references were chosen by
  std::vector<Linked> links_;
};

/// What somebody else changed, column by column, for the second of two: `found` against what is edited.
QString changedMeanwhileText(const RowEdit& row, const dao::RowValues& found, dao::Database& database);

}  // namespace qk
