// Numbers taken from stacks, typed, taken back, moved and booked.
#include <QMimeData>
#include <QTest>
#include <memory>

#include "cash/target_numbers.h"
#include "tests/cash/till.h"
#include "tests/support/error_of.h"

using namespace qk;
using namespace qk::test;

namespace {

using Tree = TargetNumbers::Tree;

const QString kChoose = "Bitte wählen Sie eine Disziplin/Kombination!";
const QString kNotLast =
    "Die Nummer ist nicht die letzte vergebene Nummer des Stapels!\r\n"
    "Hinweis: Nehmen Sie die Scheiben nach der ausgegebenen Reihenfolge wieder zurück.\r\n\r\n"
    "Wollen Sie die Scheibe dennoch löschen?\r\n";

}  // namespace

class TestTargetNumbers : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    till = std::make_unique<Till>();
    till->fillStacks();
    desk = std::make_unique<CashDesk>(till->workplace(), till->global);
    desk->OpenDB();
    numbers = std::make_unique<TargetNumbers>(*desk);
    connect(numbers.get(), &TargetNumbers::hinzugefuegt, this,
            [this](Tree which, const QModelIndex& node) { added += textOf(which, node); });
    connect(numbers.get(), &TargetNumbers::zuWaehlen, this,
            [this](Tree which, const QModelIndex& node) { selected = textOf(which, node); });
    load();
    added.clear();
    selected.clear();
    stored = 0;
  }
  void cleanup() {
    numbers.reset();
    desk.reset();
    till.reset();
  }

  void stacksInTheirOrder();
  void stacksByName();
  void stacksOfThisWorkstation();
  void noStackAtAll();
  void theStackDecidesTheDiscipline();
  void withoutAutomaticTheSelectedNodeDecides();
  void aFreeStackNeedsASelection();
  void anEndedStackGoesOn();
  void aStackThatIsGone();
  void aDisciplineThatIsGone();
  void rowsThatAreNone();
  void typedForEach();
  void severalTyped();
  void aStackChangedByAnotherDesk();
  void aStackDeletedBeforeTheBooking();
  void severalAtOnce();
  void severalEndEarly();
  void typedNumberInAStack();
  void typedNumberInAFreeStack();
  void typedNumberOutsideAllStacks();
  void typedNumberWithoutTheCheck();
  void theLargestNumber();
  void typedNothing();
  void typedWhereItCantBeTaken();
  void takingBackTheLast();
  void takingBackAnEarlierOne();
  void takingBackAManualOne();
  void whatCantBeTakenBack();
  void changingANumber();
  void moving();
  void dragging();
  void keysStayUnique();
  void aKeyIsFreeAgain();
  void aStoredTargetIsStoredOnce();
  void tooManyAtOnce();
  void booking();
  void bookingNextNumbers();
  void onTheReceipt();

 private:
  void load() {
    numbers->LoadDisziKombiBaum(ladeDisziKombi(desk->database()));
    numbers->LoadScheibenStapel();
  }
  static QString textOf(Tree which, const QModelIndex& node) {
    return QString(which == Tree::Diszi ? "D " : "K ") + node.data().toString();
  }
  /// "LG Meister: 10   (Zehner), 11   (Zehner)" for each root that holds something.
  QStringList tree(Tree which) const {
    const TargetTree& all = numbers->tree(which);
    QStringList lines;
    for (int row = 0; row < all.rowCount(); ++row) {
      const QModelIndex root = all.index(row, 0);
      QStringList targets;
      for (int child = 0; child < all.rowCount(root); ++child)
        targets += all.index(child, 0, root).data().toString();
      if (!targets.isEmpty()) lines += root.data().toString() + ": " + targets.join(", ");
    }
    return lines;
  }
  QStringList stacks() const {
    QStringList lines;
    for (int row = 1; row < numbers->grdScheiben().rows(); ++row)
      lines += numbers->grdScheiben().text(row, StackColumn::Bezeichnung) + " " +
               numbers->grdScheiben().text(row, StackColumn::AktNr);
    return lines;
  }
  int rowOf(int stack) const { return numbers->grdScheiben().findRow(QString::number(stack)); }
  TargetNumbers::View view(Tree which, int root, int child = -1) const {
    const QModelIndex parent = numbers->tree(which).root(root);
    return {which, child < 0 ? parent : numbers->tree(which).index(child, 0, parent)};
  }
  int storedNext(int stack) const {
    return till->read(QString("Select * from ScheibenNummern where ID = %1").arg(stack), {"AktuelleNummer"})
        .value(0)
        .toInt();
  }

  std::unique_ptr<Till> till;
  std::unique_ptr<CashDesk> desk;
  std::unique_ptr<TargetNumbers> numbers;
  QStringList added;
  int stored = 0;
  QString selected;
};

void TestTargetNumbers::stacksInTheirOrder() {
  QCOMPARE(stacks(), (QStringList{"Frei 310", "Nur B 220", "Pokale 150", "Zehner 10"}));
  const TextTable& grid = numbers->grdScheiben();
  QCOMPARE(grid.text(4, StackColumn::Zuordnung), "LG Meister");
  QCOMPARE(grid.text(3, StackColumn::Zuordnung), "Pokal");
  QCOMPARE(grid.text(1, StackColumn::Zuordnung), "");
  QCOMPARE(grid.text(4, StackColumn::Typ), "LG");
  QCOMPARE(grid.rowData(4), "1");
}

void TestTargetNumbers::stacksByName() {
  till->settings.setValue("Tarvex-40", "Daten", "SortedScheibenNummern", "1");
  load();
  QCOMPARE(stacks(), (QStringList{"Frei 310", "Nur B 220", "Pokale 150", "Zehner 10"}));
  till->execute("UPDATE ScheibenNummern SET Bezeichnung = 'Anfang' WHERE ID = 1");
  load();
  QCOMPARE(stacks().first(), "Anfang 10");
}

void TestTargetNumbers::stacksOfThisWorkstation() {
  till->settings.setValue("Tarvex-40", "Daten", "LokalePCKennung", "B");
  load();
  QVERIFY(stacks().contains("Nur B 220"));  // its list "AB" holds the mark
  till->settings.setValue("Tarvex-40", "Daten", "LokalePCKennung", "C");
  load();
  QCOMPARE(stacks(), (QStringList{"Frei 310", "Pokale 150", "Zehner 10"}));
  till->settings.setValue("Tarvex-40", "Daten", "LokalePCKennung", "O'C");
  load();
  QCOMPARE(stacks().size(), 3);
  till->execute("UPDATE ScheibenNummern SET PCAnzeige = Null WHERE ID = 1");
  load();
  QVERIFY(!stacks().contains("Zehner 10"));
}

void TestTargetNumbers::noStackAtAll() {
  till->execute("UPDATE ScheibenNummern SET Anzeigen = 0");
  QVERIFY(!numbers->LoadScheibenStapel());
  QCOMPARE(numbers->grdScheiben().rows(), 1);
  const QString refusal =
      "Es muss mindestens ein Scheibenstapel angelegt sein.\r\nMenü: Optionen - Verwaltung Scheiben";
  till->dialogs.expect(refusal).titled("Hinweis");
  numbers->cmdScheibeAdd(-1, {});
  till->dialogs.expect(refusal).titled("Hinweis");
  numbers->cmdScheibeAddAnzahl(-1, {});
}

void TestTargetNumbers::theStackDecidesTheDiscipline() {
  numbers->cmdScheibeAdd(rowOf(1), view(Tree::Kombi, 1));
  numbers->cmdScheibeAdd(rowOf(2), {});
  QCOMPARE(tree(Tree::Diszi), QStringList{"LG Meister: 10   (Zehner)"});
  QCOMPARE(tree(Tree::Kombi), QStringList{"Pokal: 150   (Pokale)"});
  QCOMPARE(added, (QStringList{"D 10   (Zehner)", "K 150   (Pokale)"}));
  QCOMPARE(stacks(), (QStringList{"Frei 310", "Nur B 220", "Pokale 151", "Zehner 11"}));
  QCOMPARE(storedNext(1), 10);  // nothing is written before the booking
  const QModelIndex target = view(Tree::Diszi, 1, 0).gewaehlt;
  QCOMPARE(target.data(Qt::ForegroundRole).value<QBrush>().color(), QColor(0, 0, 255));
}

void TestTargetNumbers::withoutAutomaticTheSelectedNodeDecides() {
  numbers->autoZuordnung = false;
  QVERIFY(numbers->ScheibeUebergeben(rowOf(1), view(Tree::Diszi, 2)));
  QVERIFY(numbers->ScheibeUebergeben(rowOf(1), view(Tree::Diszi, 2, 0)));  // below the target's parent
  QCOMPARE(tree(Tree::Diszi), QStringList{"LG Glück: 10   (Zehner), 11   (Zehner)"});
}

void TestTargetNumbers::aFreeStackNeedsASelection() {
  till->dialogs.expect(kChoose).titled("Hinweis");
  QVERIFY(!numbers->ScheibeUebergeben(rowOf(4), {Tree::Kombi, {}}));
  QVERIFY(numbers->ScheibeUebergeben(rowOf(4), view(Tree::Kombi, 1)));
  QCOMPARE(tree(Tree::Kombi), QStringList{"Pokal: 310   (Frei)"});
}

void TestTargetNumbers::anEndedStackGoesOn() {
  till->execute("UPDATE ScheibenNummern SET AktuelleNummer = 100 WHERE ID = 1");
  load();
  numbers->ScheibeUebergeben(rowOf(1), {});
  numbers->ScheibeUebergeben(rowOf(1), {});
  QCOMPARE(tree(Tree::Diszi), QStringList{"LG Meister: 100   (Zehner), 101   (Zehner)"});
}

void TestTargetNumbers::aStackThatIsGone() {
  till->execute("DELETE * FROM ScheibenNummern WHERE ID = 1");
  QVERIFY(!numbers->ScheibeUebergeben(rowOf(1), {}));
  QVERIFY(added.isEmpty());
}

void TestTargetNumbers::aDisciplineThatIsGone() {
  till->execute("UPDATE ScheibenNummern SET VorgabeID = 99 WHERE ID = 1");
  load();
  till->dialogs
      .expect(
          "Fehler: 35601 - Die Disziplin oder Kombination steht nicht im Baum.\n"
          "Fehler bei der Übergeben der Scheiben!",
          BoxAnswer::Abort)
      .with(BoxButtons::AbortRetryIgnore);
  QVERIFY(!numbers->ScheibeUebergeben(rowOf(1), {}));
  QCOMPARE(stacks().last(), "Zehner 10");
}

void TestTargetNumbers::rowsThatAreNone() {
  QVERIFY(!numbers->ScheibeUebergeben(-1, {}));
  QVERIFY(!numbers->ScheibeUebergeben(0, {}));  // the header carries no stack
}

void TestTargetNumbers::typedForEach() {
  numbers->manuelleNummer = true;
  till->dialogs.expectInput("Bitte Scheibennummer eingeben:", "77");
  QVERIFY(numbers->ScheibeUebergeben(rowOf(1), {}));
  QCOMPARE(tree(Tree::Diszi), QStringList{"LG Meister: 77"});
  QCOMPARE(stacks().last(), "Zehner 10");
  QVERIFY(stapelIdOf(view(Tree::Diszi, 1, 0).gewaehlt) < 1);
  for (const QString& answer : QStringList{"0", "x", ""}) {
    till->dialogs.expectInput("Bitte Scheibennummer eingeben:", answer);
    QVERIFY(!numbers->ScheibeUebergeben(rowOf(1), {}));
  }
}

/// Each number may take its time: the stack is looked at again, and what is typed is seen at once.
void TestTargetNumbers::severalTyped() {
  numbers->manuelleNummer = true;
  till->dialogs.expectInput("Bitte geben Sie die Anzahl der Scheibennummern ein:", "2");
  till->dialogs.expectInput("Bitte Scheibennummer eingeben:", "77").during([this] {
    till->execute("UPDATE ScheibenNummern SET VorgabeID = 2 WHERE ID = 1");
  });
  till->dialogs.expectInput("Bitte Scheibennummer eingeben:", "78").during([this] {
    QCOMPARE(added, QStringList("D 77"));
  });
  numbers->cmdScheibeAddAnzahl(rowOf(1), {});
  QCOMPARE(added, (QStringList{"D 77", "D 78"}));
  QCOMPARE(tree(Tree::Diszi), (QStringList{"LG Glück: 78", "LG Meister: 77"}));
}

void TestTargetNumbers::aStackChangedByAnotherDesk() {
  till->execute("UPDATE ScheibenNummern SET VorgabeID = 2 WHERE ID = 1");
  QVERIFY(numbers->ScheibeUebergeben(rowOf(1), {}));
  QCOMPARE(tree(Tree::Diszi), QStringList{"LG Glück: 10   (Zehner)"});
}

void TestTargetNumbers::aStackDeletedBeforeTheBooking() {
  QVERIFY(numbers->ScheibeUebergeben(rowOf(2), {}));
  till->execute("DELETE * FROM ScheibenNummern WHERE ID = 1");
  numbers->speichereAktuelleNummern();
  QCOMPARE(storedNext(2), 151);
}

void TestTargetNumbers::severalAtOnce() {
  till->dialogs.expectInput("Bitte geben Sie die Anzahl der Scheibennummern ein:", "3")
      .titled("Scheibennummern");
  numbers->cmdScheibeAddAnzahl(rowOf(1), {});
  QCOMPARE(tree(Tree::Diszi), QStringList{"LG Meister: 10   (Zehner), 11   (Zehner), 12   (Zehner)"});
  for (const QString& answer : QStringList{"0", "-2", "", "viele"}) {
    till->dialogs.expectInput("Bitte geben Sie die Anzahl der Scheibennummern ein:", answer);
    numbers->cmdScheibeAddAnzahl(rowOf(1), {});
  }
  QCOMPARE(stacks().last(), "Zehner 13");
}

/// A booking failed behind the targets: the next one brings those that are new.
void TestTargetNumbers::aStoredTargetIsStoredOnce() {
  numbers->nummerEingegeben("4711", view(Tree::Diszi, 2));
  numbers->speichereScheiben("107", "20.11.2026 10:00:00", stored);
  numbers->nummerEingegeben("4712", view(Tree::Diszi, 2));
  numbers->speichereScheiben("107", "20.11.2026 10:00:00", stored);
  QCOMPARE(stored, 2);
  const QStringList both{"4711", "4712"};
  QCOMPARE(till->read("Select * from Schuetzen_ScheibenNummern order by ID", {"Scheibennummer"}), both);
  till->dialogs.expect(
      "Diese Scheibe ist schon gespeichert; löschen lässt sie sich unter \"Scheiben Gesamt\".");
  numbers->cmdScheibeRemove(view(Tree::Diszi, 2, 0));
  QCOMPARE(tree(Tree::Diszi), QStringList{"LG Glück: 4711, 4712"});
}

void TestTargetNumbers::tooManyAtOnce() {
  till->dialogs.expectInput("Bitte geben Sie die Anzahl der Scheibennummern ein:", "40000");
  QCOMPARE(errorOf([&] { numbers->cmdScheibeAddAnzahl(rowOf(4), view(Tree::Diszi, 2)); }), 6);
  QVERIFY(added.isEmpty());
}

void TestTargetNumbers::severalEndEarly() {
  till->dialogs.expectInput("Bitte geben Sie die Anzahl der Scheibennummern ein:", "3");
  till->dialogs.expect(kChoose);  // once, not three times
  numbers->cmdScheibeAddAnzahl(rowOf(4), {});
}

void TestTargetNumbers::typedNumberInAStack() {
  numbers->nummerEingegeben("42", {});
  QCOMPARE(tree(Tree::Diszi), QStringList{"LG Meister: 42   (Zehner)"});
  QCOMPARE(storedNext(1), 42);  // at once, and the number itself
  QCOMPARE(stacks().last(), "Zehner 42");
  numbers->nummerEingegeben("200", {});  // the last one of its stack
  numbers->nummerEingegeben("101", {});  // and the first
  QCOMPARE(tree(Tree::Kombi), QStringList{"Pokal: 200   (Pokale), 101   (Pokale)"});
  QVERIFY(numbers->ScheibeUebergeben(rowOf(1), {}));
  QCOMPARE(tree(Tree::Diszi), QStringList{"LG Meister: 42   (Zehner), 42   (Zehner)"});
}

void TestTargetNumbers::typedNumberInAFreeStack() {
  numbers->nummerEingegeben("333", view(Tree::Diszi, 2));
  QCOMPARE(tree(Tree::Diszi), QStringList{"LG Glück: 333"});
  QCOMPARE(storedNext(4), 333);
  QVERIFY(stapelIdOf(view(Tree::Diszi, 2, 0).gewaehlt) < 1);
}

void TestTargetNumbers::typedNumberOutsideAllStacks() {
  numbers->nummerEingegeben("4711", view(Tree::Diszi, 2));
  QCOMPARE(tree(Tree::Diszi), QStringList{"LG Glück: 4711"});
  QCOMPARE(TargetTree::keyOf(view(Tree::Diszi, 2, 0).gewaehlt), "Stapel-416666-4711-416666");
  numbers->speichereScheiben("107", "20.11.2026 10:00:00", stored);
  QCOMPARE(till->read("Select * from Schuetzen_ScheibenNummern", {"Scheibennummer", "StapelID"}),
           QStringList{"4711|Null"});
}

void TestTargetNumbers::typedNumberWithoutTheCheck() {
  numbers->stapelPruefung = false;
  till->dialogs.expect(kChoose);
  numbers->nummerEingegeben("42", {});
  numbers->nummerEingegeben("42", view(Tree::Diszi, 2));
  QCOMPARE(tree(Tree::Diszi), QStringList{"LG Glück: 42"});
  QCOMPARE(storedNext(1), 10);
}

void TestTargetNumbers::theLargestNumber() {
  numbers->nummerEingegeben("2147483647", view(Tree::Diszi, 2));
  QCOMPARE(tree(Tree::Diszi), QStringList{"LG Glück: 2147483647"});
  till->dialogs.expect("»2147483648« ist keine Scheibennummer.").showing(BoxIcon::Exclamation);
  numbers->nummerEingegeben("2147483648", view(Tree::Diszi, 2));
}

void TestTargetNumbers::typedNothing() {
  for (const QString& text : QStringList{"", "0", "abc"})
    numbers->nummerEingegeben(text, view(Tree::Diszi, 2));
  QVERIFY(added.isEmpty());
}

void TestTargetNumbers::typedWhereItCantBeTaken() {
  const QString gone = "Fehler: 35601 - Die Disziplin oder Kombination steht nicht im Baum.\n";
  till->execute("UPDATE ScheibenNummern SET VorgabeID = 99 WHERE ID = 1");
  load();
  till->dialogs.expect(gone + "Fehler Aufnehmen der Scheiben über Stapel!", BoxAnswer::Ignore)
      .with(BoxButtons::AbortRetryIgnore);
  till->dialogs.expect(kChoose);
  numbers->nummerEingegeben("42", {});
  QCOMPARE(storedNext(1), 42);
  till->dialogs.expect(gone + "Fehler Aufnehmen der Scheiben manuell!", BoxAnswer::Abort)
      .with(BoxButtons::AbortRetryIgnore);
  numbers->nummerEingegeben("5000", {Tree::Kombi, view(Tree::Diszi, 2).gewaehlt});
  QVERIFY(added.isEmpty());
}

void TestTargetNumbers::takingBackTheLast() {
  numbers->ScheibeUebergeben(rowOf(1), {});
  numbers->ScheibeUebergeben(rowOf(1), {});
  numbers->cmdScheibeRemove(view(Tree::Diszi, 1, 1));
  QCOMPARE(stacks().last(), "Zehner 11");
  QCOMPARE(selected, "D 10   (Zehner)");
  numbers->cmdScheibeRemove(view(Tree::Diszi, 1, 0));
  QCOMPARE(stacks().last(), "Zehner 10");
  QCOMPARE(selected, "D LG Meister");
  QVERIFY(tree(Tree::Diszi).isEmpty());
}

void TestTargetNumbers::takingBackAnEarlierOne() {
  for (int i = 0; i < 3; ++i) numbers->ScheibeUebergeben(rowOf(1), {});
  till->dialogs.expect(kNotLast, BoxAnswer::No).titled("Hinweis").with(BoxButtons::YesNo);
  numbers->cmdScheibeRemove(view(Tree::Diszi, 1, 1));
  QCOMPARE(tree(Tree::Diszi).first().count(','), 2);
  till->dialogs.expect(kNotLast, BoxAnswer::Yes);
  numbers->cmdScheibeRemove(view(Tree::Diszi, 1, 1));
  QCOMPARE(tree(Tree::Diszi), QStringList{"LG Meister: 10   (Zehner), 12   (Zehner)"});
  QCOMPARE(stacks().last(), "Zehner 13");
}

void TestTargetNumbers::takingBackAManualOne() {
  numbers->nummerEingegeben("4711", view(Tree::Diszi, 2));
  numbers->cmdScheibeRemove(view(Tree::Diszi, 2, 0));
  QVERIFY(tree(Tree::Diszi).isEmpty());
}

void TestTargetNumbers::whatCantBeTakenBack() {
  numbers->cmdScheibeRemove({});
  numbers->cmdScheibeRemove(view(Tree::Diszi, 1));
  QCOMPARE(numbers->tree(Tree::Diszi).rowCount(), 2);
  numbers->ScheibeUebergeben(rowOf(1), {});
  till->execute("UPDATE ScheibenNummern SET Anzeigen = 0 WHERE ID = 1");
  numbers->LoadScheibenStapel();
  numbers->cmdScheibeRemove(view(Tree::Diszi, 1, 0));  // its stack isn't shown any more
  QCOMPARE(tree(Tree::Diszi).size(), 1);
}

void TestTargetNumbers::changingANumber() {
  numbers->ScheibeUebergeben(rowOf(1), {});
  const QModelIndex target = view(Tree::Diszi, 1, 0).gewaehlt;
  const QString key = TargetTree::keyOf(target);
  till->dialogs.expectInput("Bitte Scheibennummer eingeben:", "55").titled("Änderung");
  numbers->nummerAendern(target);
  QCOMPARE(target.data().toString(), "55   (Zehner)");
  QCOMPARE(TargetTree::keyOf(target), key);
  till->dialogs.expectInput("Bitte Scheibennummer eingeben:", "1");
  numbers->nummerAendern(target);
  QCOMPARE(target.data().toString(), "1   (Zehner)");
  till->dialogs.expectInput("Bitte Scheibennummer eingeben:", "55");
  numbers->nummerAendern(target);
  QCOMPARE(stacks().last(), "Zehner 11");
  for (const QString& answer : QStringList{"0", "", "x"}) {
    till->dialogs.expectInput("Bitte Scheibennummer eingeben:", answer);
    numbers->nummerAendern(target);
  }
  QCOMPARE(target.data().toString(), "55   (Zehner)");
  numbers->nummerAendern(target.parent());  // a discipline has no number
}

void TestTargetNumbers::moving() {
  numbers->ScheibeUebergeben(rowOf(1), {});
  numbers->nummerEingegeben("4711", view(Tree::Diszi, 2));
  TargetTree& all = numbers->tree(Tree::Diszi);
  QVERIFY(all.move(view(Tree::Diszi, 1, 0).gewaehlt, view(Tree::Diszi, 2, 0).gewaehlt));
  QCOMPARE(tree(Tree::Diszi), QStringList{"LG Glück: 4711, 10   (Zehner)"});
  QVERIFY(all.move(view(Tree::Diszi, 2, 0).gewaehlt, all.root(1)));
  QCOMPARE(tree(Tree::Diszi), (QStringList{"LG Glück: 10   (Zehner)", "LG Meister: 4711"}));
  QVERIFY(!all.move(all.root(1), all.root(2)));
  QVERIFY(!all.move(view(Tree::Diszi, 2, 0).gewaehlt, {}));
  QVERIFY(!all.move(view(Tree::Diszi, 2, 0).gewaehlt, numbers->tree(Tree::Kombi).root(1)));
}

void TestTargetNumbers::dragging() {
  numbers->ScheibeUebergeben(rowOf(1), {});
  TargetTree& all = numbers->tree(Tree::Diszi);
  const QModelIndex target = view(Tree::Diszi, 1, 0).gewaehlt;
  QVERIFY(all.flags(target).testFlag(Qt::ItemIsDragEnabled));
  QVERIFY(!all.flags(all.root(1)).testFlag(Qt::ItemIsDragEnabled));
  const std::unique_ptr<QMimeData> data(all.mimeData({target}));
  QCOMPARE(QString::fromUtf8(data->data(data->formats().first())), TargetTree::keyOf(target));
  QVERIFY(!all.canDropMimeData(data.get(), Qt::MoveAction, -1, -1, {}));  // dropped nowhere
  all.dropMimeData(data.get(), Qt::MoveAction, -1, -1, all.root(2));
  QCOMPARE(tree(Tree::Diszi), QStringList{"LG Glück: 10   (Zehner)"});
}

void TestTargetNumbers::keysStayUnique() {
  for (int i = 0; i < 3; ++i) numbers->nummerEingegeben("4711", view(Tree::Diszi, 2));
  QSet<QString> keys;
  numbers->tree(Tree::Diszi).forEachTarget([&](const QModelIndex& each) { keys += TargetTree::keyOf(each); });
  QCOMPARE(keys.size(), 3);
}

/// What was taken back, or went with its tree, is free again.
void TestTargetNumbers::aKeyIsFreeAgain() {
  const auto take = [this] {
    numbers->ScheibeUebergeben(rowOf(1), {});
    return TargetTree::keyOf(view(Tree::Diszi, 1, 0).gewaehlt);
  };
  const QString key = take();
  QCOMPARE(key, "Stapel1-10-416666");
  numbers->cmdScheibeRemove(view(Tree::Diszi, 1, 0));
  QCOMPARE(take(), key);
  load();
  numbers->LoadScheibenStapel();
  QCOMPARE(take(), key);
}

void TestTargetNumbers::booking() {
  numbers->ScheibeUebergeben(rowOf(1), {});
  numbers->ScheibeUebergeben(rowOf(2), {});
  numbers->nummerEingegeben("4711", view(Tree::Diszi, 2));
  numbers->speichereScheiben("107", "20.11.2026 10:00:00", stored);
  QCOMPARE(till->read(
               "Select * from Schuetzen_ScheibenNummern order by ID",
               {"Startnummer", "Scheibennummer", "Kaufdatum", "DisziKombiWahl", "DisziKombiID", "StapelID"}),
           (QStringList{"107|4711|20.11.2026 10:00:00|0|2|Null", "107|10|20.11.2026 10:00:00|0|1|1",
                        "107|150|20.11.2026 10:00:00|1|1|2"}));
}

void TestTargetNumbers::bookingNextNumbers() {
  numbers->ScheibeUebergeben(rowOf(1), {});
  // The grid's number wins over what another desk has written meanwhile.
  till->execute("UPDATE ScheibenNummern SET AktuelleNummer = 90 WHERE ID = 1");
  numbers->speichereAktuelleNummern();
  QCOMPARE(storedNext(1), 11);
  QCOMPARE(storedNext(2), 150);
}

void TestTargetNumbers::onTheReceipt() {
  numbers->ScheibeUebergeben(rowOf(2), {});
  numbers->nummerEingegeben("4711", view(Tree::Diszi, 2));
  QStringList lines;
  for (const ReceiptTarget& on : numbers->belegScheiben())
    lines += QStringList{on.Scheibennr, on.Bezeichnung, on.Zuordnung, on.Typ, on.Ausgabe}.join('|');
  QCOMPARE(lines,
           (QStringList{"4711||LG Glück||20.11.2026 10:00:00", "150|Pokale|Pokal|LG|20.11.2026 10:00:00"}));
}

QTEST_GUILESS_MAIN(TestTargetNumbers)
#include "test_target_numbers.moc"
