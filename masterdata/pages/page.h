// A page of master data as data: a table, what of it is shown and edited, and what each column does.
//
// Every text here is German and shown as it stands. `effect` says in one plain line what a column does to
// results, lists or money; it stands below the form while the column is edited.
#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

#include "platform/dao/changes.h"

namespace qk {

enum class ColumnKind {
  Text,
  Memo,    ///< text of several lines
  Number,  ///< whole or with decimals, as the column's type is
  Flag,
  Choice,     ///< one of a few values
  Reference,  ///< a row of another table, chosen from a list
  LookUp,     ///< a row of a long table, found by typing its code
  Day,        ///< a date
  DayOfYear   ///< a day that comes every year, text: "01.01."
};

struct PageChoice {
  QVariant value;
  QString text;
};

/// The rows that a column or a list refers to.
struct RowSource {
  QString table;
  QString key;
  QString text;       ///< the expression that names a row; %1 stands for the table
  QString code = {};  ///< of a LookUp: the column that is typed
};

struct PageColumn {
  QString column;
  QString label;
  QString effect;
  ColumnKind kind = ColumnKind::Text;
  int inGrid = 0;      ///< characters in the grid; 0 for a column that only the form shows
  QString group = {};  ///< heading in the form above the first column that has it
  bool required = false;
  bool unique = false;  ///< no two rows hold the same
  std::vector<PageChoice> choices = {};
  RowSource reference = {};
  QString order =
      {};  ///< what the grid sorts by instead of the column itself; %1 stands for the page's table
  /// Of a reference: a column of the same row that keeps `kept` of the row referred to, unless somebody types
  /// another value there.
  QString keeper = {}, kept = {};
  double smallest = -1e300;  ///< of a number
};

/// Rows of a table between two others, shown as a list of ticks: the members of a row.
struct LinkedList {
  QString name;  ///< heading; without blanks, for it names the controls as well
  QString table;
  QString owner, member;  ///< its two columns
  RowSource source;       ///< of the members
  QString copied = {};    ///< a column that the link keeps from the member
  QString effect;
  QString empty;  ///< what an empty list says
};

struct Page {
  QString key;    ///< names the page's controls
  QString title;  ///< in the list of pages
  QString table;
  QString keyColumn = "ID";
  QString named;            ///< "Die Disziplin"; with the name behind it in messages
  QString nameColumn;       ///< what tells a row to people
  QString fresh;            ///< "Neue Disziplin"
  QString empty;            ///< what an empty grid says
  QString firstOrder = {};  ///< the grid's order until a title is clicked
  std::vector<PageColumn> columns;
  std::vector<LinkedList> links = {};
  bool single = false;  ///< one row, which is always there
  /// What is wrong with values that are fine one by one; lines for the operator.
  std::function<QStringList(const dao::RowValues&)> check = {};
  /// Action queries that belong to storing a row: what other tables keep of it.
  std::function<QStringList(qint64 key, const dao::RowValues& values)> follow = {};
  /// What the row makes of an example, shown below the form as it is edited.
  std::function<QString(const dao::RowValues&)> example = {};

  const PageColumn* column(const QString& name) const;  ///< nullptr when it isn't on the page
};

/// All pages in the order of the list.
const std::vector<Page>& masterDataPages();
const Page& masterDataPage(const QString& key);  ///< Error 9 for an unknown one

}  // namespace qk
