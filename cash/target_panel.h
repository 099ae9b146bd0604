// Tab "Scheiben: Aktueller Kauf": the stacks, and the numbers taken from them for the purchase in hand.
//
// The window hands over the desk once and calls the steps of its own life; the panel owns its controls, its
// stack cursor and its settings.
#pragma once

#include <QWidget>
#include <memory>
#include <vector>

#include "cash/cash_desk.h"
#include "cash/diszi_kombi.h"
#include "cash/receipt.h"

namespace Ui {
class TargetPanel;
}

namespace qk {

class TargetPanel : public QWidget {
  Q_OBJECT

 public:
  explicit TargetPanel(QWidget* parent = nullptr);
  ~TargetPanel() override;

  /// Once, before anything else; the desk outlives the panel.
  void setDesk(CashDesk& desk) { desk_ = &desk; }

  /// The window loads: settings and splitter. Errors pass.
  void Form_Load();
  /// The window is shown, or one of its own windows has closed.
  void Form_Activate();
  void Form_Unload();

  /// Empties both trees and gives them a root for each entry.
  void LoadDisziKombiBaum(const std::vector<DisziKombi>& entries);
  /// Reads the stacks anew and tells whether there are any. Errors pass.
  void LoadScheibenStapel();

  // Steps of the booking. Errors pass.
  void speichereScheiben(const QString& sStartNr, const QString& Buchungsdatum);
  void speichereAktuelleNummern();

  /// The numbers in hand, for a receipt.
  std::vector<ReceiptTarget> belegScheiben() const;

 Q_SIGNALS:
  /// After every reading of the stacks: with one at least, the two target tabs are shown.
  void stapelGeladen(bool sichtbar);

 private:
  std::unique_ptr<Ui::TargetPanel> ui_;
  CashDesk* desk_ = nullptr;
};

}  // namespace qk
