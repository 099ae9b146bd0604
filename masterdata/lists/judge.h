// Judges a list, row by row, before anything is written: who is new, who is known, what would change, what
// can't be right. A pure function: the same list against the same state gives the same judgement.
//
// Who is meant: by the start number; where the row has none, by the licence number; where it has neither, by
// name and birth date. A number that belongs to somebody else is a fault, not a change of person.
//
// An empty cell says nothing: what stands in the competition stays, for most lists carry less than the
// competition knows. Group memberships and registrations are added and never taken away, for the same reason.
// Clubs, teams and groups go by their names; unknown ones come with the first row that names them.
#pragma once

#include <memory>
#include <vector>

#include "masterdata/lists/csv_text.h"
#include "masterdata/lists/headings.h"
#include "masterdata/lists/plan.h"

namespace qk::lists {

struct StoreState;

enum class Verdict { New, Known, Changed, Faulty };

/// "neu", "bekannt", "geändert", "fehlerhaft".
QString verdictName(Verdict verdict);

struct CellChange {
  QString column;         ///< German heading
  QString before, after;  ///< as a person reads them: names, not keys
};

struct Fault {
  int cell = -1;   ///< column of the file, from 0; -1 concerns the whole row
  QString column;  ///< its German heading; empty with -1
  QString why;     ///< a German sentence
};

struct JudgedRow {
  int row = 0;   ///< in CsvTable::rows
  int line = 0;  ///< in the file, from 1
  Verdict verdict = Verdict::Known;
  QString who;                      ///< "107 Müller Jörg", a club, a team
  std::vector<CellChange> changes;  ///< of a changed row; of a new one everything that will be stored
  std::vector<Fault> faults;        ///< never empty for a faulty row
  QStringList remarks;  ///< German sentences: a club that is made with it, a namesake, no class that fits
};

struct Judgement {
  ListKind kind = ListKind::Shooters;
  std::vector<JudgedRow> rows;  ///< those behind the heading; rows without any text don't count
  Plan plan;                    ///< what the new and the changed rows come to; faulty ones are left out
  bool stopped = false;

  // What it was made of, so that it can be made again.
  std::shared_ptr<const CsvTable> table;
  Assignment assignment;
  std::shared_ptr<const StoreState> state;

  int count(Verdict verdict) const;
};

/// `assignment` has an entry for each cell of the heading, and missingColumns() is content with it.
Judgement judge(ListKind kind, std::shared_ptr<const CsvTable> table, const Assignment& assignment,
                std::shared_ptr<const StoreState> state, const GoesOn& goesOn = {});

}  // namespace qk::lists
