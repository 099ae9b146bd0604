// The selection table of the labels: a row for each discipline and combination, and how many labels of it are
// printed. It follows the purchase, unless the operator selects by hand. Needs no window.
#pragma once

#include <vector>

#include "cash/cash_desk.h"
#include "cash/diszi_kombi.h"
#include "cash/label_run.h"
#include "platform/grid/text_table.h"

namespace qk {

struct LabelColumn {
  enum : int { Merkmal = 0, Gewaehlt = 1, Art = 2, Name = 3, Anz = 4, Hinweis = 5, Anzahl = 6 };
};

class LabelSelection {
 public:
  explicit LabelSelection(CashDesk& desk);

  TextTable& flexBarcode() { return table_; }
  const TextTable& flexBarcode() const { return table_; }

  /// By hand the table can be edited, and the purchase leaves it alone.
  void setManuell(bool manuell);
  bool manuell() const { return manuell_; }

  /// Rebuilds the table, all rows ticked with one label each. Errors pass.
  void LoadDisziKombiBaum(const std::vector<DisziKombi>& entries);
  /// Ticks what a row of the purchase pays for, or all rows for -1. Failures are reported.
  void UpdateBarcodeAnzeige(int nRow);
  /// What is ticked. Error 6 for a count beyond all range.
  std::vector<LabelRow> gewaehlt() const;
  /// A label to be shown where none is ticked.
  LabelRow muster() const;

 private:
  void fuegeHinzu(qint32 stake, int times);
  void markiereUnbezahlte();

  CashDesk& desk_;
  TextTable table_;
  bool manuell_ = false;
};

}  // namespace qk
