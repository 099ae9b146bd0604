// The numbered targets that shooters hold, as stored. Needs no window.
//
// The list is opened for the first shooter that is shown and stays with him until the window closes, while
// deleting all goes by the shooter that is shown then. No deletion gives a number back to its stack.
#pragma once

#include <memory>
#include <vector>

#include "cash/cash_desk.h"
#include "cash/receipt.h"
#include "platform/grid/text_table.h"

namespace qk {

struct IssuedColumn {
  enum : int { Nummer = 0, Ausgabe = 1, Abgabe = 2, Stapel = 3, Zuordnung = 4, Typ = 5, Anzahl = 6 };
};

class IssuedTargets {
 public:
  explicit IssuedTargets(CashDesk& desk);

  TextTable& grdScheibenAlle() { return table_; }
  const TextTable& grdScheibenAlle() const { return table_; }
  /// Whose targets are listed.
  const QString& sStartNr() const { return sStartNr_; }

  // Errors of the store pass.
  void LoadScheibenGesamt();
  void cmdScheibenGesamtDelete(int row);
  void cmdScheibenGesamtDeleteAll();
  /// All issued targets of the competition.
  void loescheAlleAusgaben();
  void close() { cursor_.reset(); }

  std::vector<ReceiptTarget> belegScheiben() const;

 private:
  void frageUndLoesche(const QString& question, const QString& statement);

  CashDesk& desk_;
  TextTable table_;
  QString sStartNr_;
  std::unique_ptr<dao::Recordset> cursor_;
};

}  // namespace qk
