// Tab "Scheibendruck": which labels a purchase pays for, and how they are printed.
#pragma once

#include <QWidget>
#include <memory>
#include <vector>

#include "cash/cash_desk.h"
#include "cash/diszi_kombi.h"

namespace Ui {
class LabelPanel;
}

namespace qk {

class LabelPanel : public QWidget {
  Q_OBJECT

 public:
  explicit LabelPanel(QWidget* parent = nullptr);
  ~LabelPanel() override;

  /// Once, before anything else; the desk outlives the panel.
  void setDesk(CashDesk& desk) { desk_ = &desk; }

  /// The window loads: printers, fonts and the label settings. Errors pass.
  void Form_Load();
  void Set_PrintScheibenFont();
  void Set_BarcodeFont();

  /// Rebuilds the selection table, all rows ticked.
  void LoadDisziKombiBaum(const std::vector<DisziKombi>& entries);
  /// The table follows a row of the purchase, or all of them for -1.
  void UpdateBarcodeAnzeige(int nRow);
  /// Prints the labels. Errors pass.
  void cmdPrint();

 private:
  std::unique_ptr<Ui::LabelPanel> ui_;
  CashDesk* desk_ = nullptr;
};

}  // namespace qk
