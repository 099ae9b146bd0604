// The cashier: works the cash desk's window and notes in the journal what is sold, paid and handed out.
// Nothing is read back from what the program has stored.
#pragma once

#include "tools/driver/driven_program.h"
#include "tools/rundgang/cash_journal.h"

namespace qk {

class Till {
 public:
  /// The desk's window is in sight, for that shooter.
  Till(DrivenProgram& program, CashJournal& journal, const QString& shooter);

  const QString& shooter() const { return shooter_; }
  void picture(const QString& file) { program_.grab(file); }

  // Who stands at the desk. What is in hand stays.
  void changeShooter(const QString& startNumber);
  /// Holds a label such as "BC.107.1.23" under the scanner while the question is up.
  void scanShooter(const QString& label, const QString& startNumber);

  // What is in hand.
  /// A scanner in the field for article numbers.
  void scanArticle(const QString& code, const QString& stake);
  void pick(const QString& stake);
  void pickSeveral(const QString& stake, int count);
  /// A stake without a price: `typed` at the question, which is so many cents.
  void pickPriced(const QString& stake, const QString& typed, qint64 cents);
  /// The desk refuses with this text.
  void pickRefused(const QString& stake, const QString& expected);
  void removeFirst();
  void payLater(bool later);
  /// Money on the table.
  void receive(const QString& typed);
  void expectChange(const QString& shown);
  void donateChange(const QString& stake, qint64 cents);
  void book();

  // What is printed, saved as PDF.
  void saveReceipt(const QString& pdf);
  /// A list of the evening; one that asks for a day gets today.
  void saveList(const QString& name, bool ofToday, const QString& pdf);

  // What is stored.
  void settleOpenItems();
  void deleteFirstPayment(const QString& stake);

  // Clubs and teams, by an entry of "VM-Einlagen".
  void sellInClubCash(const QString& entry, CashAct::Buyer buyer, const QString& name,
                      const QStringList& stakes);
  void settleInClubCash(const QString& entry, CashAct::Buyer buyer, const QString& name);

  // Numbered targets.
  void takeFromStack(const QString& stack, const QString& place = {});
  void takeSeveral(const QString& stack, int count);
  /// Typed where the stacks are looked at: the number of a stack goes where the stack says, another one to
  /// `place`.
  void takeTyped(int number, const QString& stack, const QString& place);
  void takeByHand(int number, const QString& place);
  /// Takes back the last target of the discipline. False where the desk asks first.
  void takeBack(const QString& discipline, int children);
  void putAllBack();

  void close();

 private:
  void show(const QString& tab) { program_.choose("frmFinanz/SSTab1", tab); }
  int rowOf(const QString& list, const QString& text, int column);
  void choosePlace(const QString& place);
  void inClubCash(const QString& entry, CashAct::Kind kind, CashAct::Buyer buyer, const QString& name,
                  const std::function<void(CashAct& act)>& work);
  void waitForNoOpenItem(const QString& list);
  void answerInput(const QString& prompt, const QString& typed);
  void waitForRows(qsizetype rows);
  void note(CashAct::Kind kind, const QDateTime& from, const Target& target = {});

  DrivenProgram& program_;
  CashJournal& journal_;
  QString shooter_;
  QList<Bought> hand_;
  bool later_ = false;
};

}  // namespace qk
