// Numbered paper targets of the purchase in hand: numbers are taken from stacks, or typed, and wait below
// their discipline or combination until they are booked. Needs no window.
//
// The next number of a stack stands in column 3 of `grdScheiben`; it reaches the competition with the
// booking. Only a typed number that falls in a stack is written there at once.
#pragma once

#include <QObject>
#include <memory>
#include <optional>
#include <vector>

#include "cash/cash_desk.h"
#include "cash/receipt.h"
#include "cash/target_tree.h"
#include "platform/grid/text_table.h"

namespace qk {

struct StackColumn {
  enum : int { Merkmal = 0, Bezeichnung = 1, Typ = 2, AktNr = 3, Zuordnung = 4, Anzahl = 5 };
};

class TargetNumbers : public QObject {
  Q_OBJECT

 public:
  enum class Tree { Diszi = 0, Kombi = 1 };  ///< as the tabs of `SSTab2` count

  /// What the window shows: the tree that is in front, and its selected node.
  struct View {
    Tree vorn = Tree::Diszi;
    QModelIndex gewaehlt = {};
  };

  explicit TargetNumbers(CashDesk& desk);
  ~TargetNumbers() override;

  TextTable& grdScheiben() { return stacks_; }
  const TextTable& grdScheiben() const { return stacks_; }
  TargetTree& tree(Tree which) { return trees_[static_cast<size_t>(which)]; }
  const TargetTree& tree(Tree which) const { return trees_[static_cast<size_t>(which)]; }

  // What the boxes of the tab say.
  bool autoZuordnung = true;    ///< a stack's own discipline decides
  bool manuelleNummer = false;  ///< each number is asked for
  bool stapelPruefung = true;   ///< a typed number is looked for in the stacks

  /// Empties both trees and gives them a root for each entry.
  void LoadDisziKombiBaum(const std::vector<DisziKombi>& entries);
  /// Reads the stacks that this workstation shows; false when there is none. A stack with numbers in hand
  /// goes on behind them, whatever is stored. Errors pass.
  bool LoadScheibenStapel();
  void close();

  /// One number from the stack in that row; false when it ended early. Failures are reported.
  bool ScheibeUebergeben(int nRow, const View& view);
  /// So many, or until one ends early.
  bool ScheibenUebergeben(int nRow, int count, const View& view);
  void cmdScheibeAdd(int nRow, const View& view);
  void cmdScheibeAddAnzahl(int nRow, const View& view);
  /// A typed or scanned number.
  void nummerEingegeben(const QString& sNummer, const View& view);
  void cmdScheibeRemove(const View& view);
  void nummerAendern(const QModelIndex& target);

  // Steps of the booking. Errors pass. `gespeichert` counts up with each target that is stored.
  void speichereScheiben(const QString& sStartNr, const QString& Buchungsdatum, int& gespeichert);
  void speichereAktuelleNummern();

  /// The numbers in hand, for a receipt.
  std::vector<ReceiptTarget> belegScheiben() const;

 Q_SIGNALS:
  /// The tree comes to the front, and the node into sight.
  void hinzugefuegt(qk::TargetNumbers::Tree which, const QModelIndex& node);
  /// The node to select after a removal.
  void zuWaehlen(qk::TargetNumbers::Tree which, const QModelIndex& node);

 private:
  struct Taken {
    qint32 stapelId = 0;  ///< 0 for a number of no stack
    qint32 nummer = 0;
    QString zusatz;
  };
  struct Placed {
    Tree which;
    QPersistentModelIndex node;
  };
  /// Nothing where it ends early; nothing is told to the window yet. `frisch`: the stacks are read anew
  /// before.
  std::optional<Placed> uebergeben(int nRow, const View& view, bool frisch);
  bool ScheibeAufnehmenStapel(const QString& sNummer);
  bool ScheibeAufnehmenManuell(const QString& sNummer, const View& view);
  bool hatStapel() const;
  bool waehlbar(const View& view) const;
  Placed nimmAuf(Tree which, const QModelIndex& root, const Taken& taken);
  /// The next numbers of the stacks that have targets in the trees.
  QHash<QString, qint32> naechsteInDerHand() const;
  void entferne(Tree which, const QModelIndex& target);
  qint32 stempel() const;
  void schreibeNaechste(qint32 stapelId, qint32 nummer);

  CashDesk& desk_;
  TextTable stacks_;
  std::array<TargetTree, 2> trees_;
  std::unique_ptr<dao::Recordset> cursor_;  ///< the stacks that are shown
};

}  // namespace qk
