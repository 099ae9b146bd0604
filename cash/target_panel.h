// Tab "Scheiben: Aktueller Kauf": the stacks, and the numbers taken from them for the purchase in hand.
//
// The window hands over the desk once and calls the steps of its own life; the panel owns its controls and
// its settings, and turns them into calls of TargetNumbers.
#pragma once

#include <QWidget>
#include <functional>
#include <memory>
#include <vector>

#include "cash/target_numbers.h"

class QTreeView;

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
  void setDesk(CashDesk& desk);

  /// The window loads: settings and splitter. Errors pass.
  void Form_Load();
  /// The window is shown, or one of its own windows has closed.
  void Form_Activate();
  void Form_Unload();
  /// The tab has come to the front.
  void focusNumber();

  /// Empties both trees and gives them a root for each entry.
  void LoadDisziKombiBaum(const std::vector<DisziKombi>& entries);
  /// Reads the stacks anew and tells whether there are any. Errors pass.
  void LoadScheibenStapel();

  // Steps of the booking. Errors pass. `gespeichert` counts up with each target that is stored.
  void speichereScheiben(const QString& sStartNr, const QString& Buchungsdatum, int& gespeichert);
  void speichereAktuelleNummern();

  /// The numbers in hand, for a receipt.
  std::vector<ReceiptTarget> belegScheiben() const;

 Q_SIGNALS:
  /// After every reading of the stacks: with one at least, the two target tabs are shown.
  void stapelGeladen(bool sichtbar);
  /// All numbers go back: trees and stacks are to be loaded anew.
  void alleZurueck();
  /// A stack is to be edited; 0 is a new one.
  void stapelBearbeiten(qint32 lStapelID);

 private:
  using Tree = TargetNumbers::Tree;

  void connectControls();
  void connectTree(Tree which);
  void connectNumbers();
  QTreeView* view(Tree which) const;
  TargetNumbers::View shown() const;
  void showNode(Tree which, const QModelIndex& node);
  void stackMenu(const QPoint& position);
  void treeMenu(Tree which, const QPoint& position);
  void pickUp(Tree which);
  void putDown(Tree which);
  /// Runs a routine without a handler of its own: a failure shows one box, and the program goes on.
  void versuche(const std::function<void()>& routine);

  std::unique_ptr<Ui::TargetPanel> ui_;
  CashDesk* desk_ = nullptr;
  std::unique_ptr<TargetNumbers> numbers_;
  QPersistentModelIndex pickedUp_;  ///< to be put down elsewhere
};

}  // namespace qk
