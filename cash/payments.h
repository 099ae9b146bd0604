// The stored payments of the shown shooter (or club, or team): the rows of `flexAll`, their correction,
// settling and deletion. Needs no window. An open item is a row that is wholly unpaid.
#pragma once

#include <QObject>

#include "cash/cash_rows.h"
#include "cash/cash_store.h"
#include "platform/workplace.h"

namespace qk {

class Payments : public QObject {
  Q_OBJECT

 public:
  /// Both outlive the payments.
  Payments(const Workplace& workplace, CashStore& store);

  TextTable& flexAll() { return flexAll_; }
  const TextTable& flexAll() const { return flexAll_; }

  /// Opens the payment cursor and fills `flexAll`. Errors of the store pass; the rows of whoever was shown
  /// before are gone then.
  void lade(const Payer& payer);
  /// No row is shown, until the next lade().
  void leere();
  CashSums summen() const { return qk::summen(flexAll_); }

  /// What became of the operator's edit.
  struct Eingabe {
    bool unlesbar = false;
    QString text;  ///< what couldn't be read; the cell shows the stored value again
  };
  /// Writes the edited row back, asking about the date where the open mark changed. What wasn't typed is
  /// taken from the record first, which another desk may have changed since it was shown; a box says so then.
  Eingabe nachEingabe(int row, int column);
  /// Settles all rows that are open in the store, as of today and with the amount of the store. A row that
  /// can't be is asked about once more before it stays open. All rows that are there show what is stored
  /// then; those that are gone stay as they are. One box says what another desk has done to either.
  void cmdOPVerbuchen();
  void cmdDelete(int row);  ///< asks; nothing without a selected row
  void cmdDeleteAll();      ///< asks

 Q_SIGNALS:
  /// After every change of the rows: the totals follow.
  void changed();

 private:
  /// Positions the payment cursor on the row's record.
  bool finde(int row);
  /// Error 13 or 6 for a cell that can't be written; then, and when the store refuses, nothing is.
  void schreibe(int row);
  void zeigeGespeichertes(int row);
  QString stakeName(qint32 KasseID);
  QString bleibtOffen(int row, bool alleWeiteren) const;

  Workplace workplace_;
  CashStore& store_;
  Payer payer_{QString()};
  TextTable flexAll_;
};

}  // namespace qk
