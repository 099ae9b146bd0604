#include "tools/rundgang/till.h"

#include <QDate>
#include <algorithm>

#include "tools/rundgang/shown_report.h"

namespace qk {

namespace {

const QString kPurchase = "Kasse: Aktueller Kauf";
const QString kStored = "Kasse Gesamt";
const QString kTargets = "Scheiben: Aktueller Kauf";

}  // namespace

Till::Till(DrivenProgram& program, CashJournal& journal, const QString& shooter)
    : program_(program), journal_(journal), shooter_(shooter) {
  program_.waitUntil("cash desk", [&] { return program_.text("frmFinanz/txtStartNr") == shooter_; });
}

void Till::note(CashAct::Kind kind, const QDateTime& from, const Target& target) {
  journal_.push_back({kind, CashAct::Buyer::Shooter, shooter_, hand_, target, from, {}});
  journal_.back().to = QDateTime::currentDateTime();
}

int Till::rowOf(const QString& list, const QString& text, int column) {
  const QJsonArray rows = program_.items(list);
  for (int row = 0; row < rows.size(); ++row)
    if (cellText(rows, row, column) == text) return row;
  throw DriverError(list + " offers no " + text);
}

void Till::waitForRows(qsizetype rows) {
  program_.waitUntil(QString("%1 rows in hand").arg(rows),
                     [&] { return program_.items("frmFinanz/flex").size() == rows; });
}

void Till::answerInput(const QString& prompt, const QString& typed) {
  program_.waitUntil(prompt, [&] { return program_.modal()["text"].toString().contains(prompt); });
  program_.type("inputText", typed);
  program_.answer(prompt, "OK");
}

// ---- who stands at the desk ----

void Till::changeShooter(const QString& startNumber) {
  program_.click("frmFinanz/cmdSchWechsel");
  answerInput("Bitte neue Startnummer eingeben:", startNumber);
  shooter_ = startNumber;
  program_.waitUntil("shooter", [&] { return program_.text("frmFinanz/txtStartNr") == shooter_; });
}

void Till::scanShooter(const QString& label, const QString& startNumber) {
  const QString prompt = "Bitte neue Startnummer eingeben:";
  program_.click("frmFinanz/cmdSchWechsel");
  program_.waitUntil(prompt, [&] { return program_.modal()["text"].toString().contains(prompt); });
  program_.waitUntil("focus", [&] { return program_.get("inputText", "focus").toBool(); });
  program_.typeBlindly(label + "\n");
  shooter_ = startNumber;
  program_.waitUntil("shooter", [&] { return program_.text("frmFinanz/txtStartNr") == shooter_; });
}

// ---- what is in hand ----

void Till::scanArticle(const QString& code, const QString& stake) {
  show(kPurchase);
  program_.type("frmFinanz/txtArtikelnummer", "");
  program_.waitUntil("focus", [&] { return program_.get("frmFinanz/txtArtikelnummer", "focus").toBool(); });
  hand_ << Bought{stake, {}, later_};
  program_.typeBlindly(code + "\n");
  waitForRows(hand_.size());
}

void Till::pick(const QString& stake) {
  show(kPurchase);
  program_.clickCell("frmFinanz/lstAll", rowOf("frmFinanz/lstAll", stake, 0), 0);
  hand_ << Bought{stake, {}, later_};
  program_.click("frmFinanz/cmdAdd");
  waitForRows(hand_.size());
}

void Till::pickSeveral(const QString& stake, int count) {
  show(kPurchase);
  program_.clickCell("frmFinanz/lstAll", rowOf("frmFinanz/lstAll", stake, 0), 0);
  program_.click("frmFinanz/cmdAddAnzahl");
  for (int i = 0; i < count; ++i) hand_ << Bought{stake, {}, later_};
  answerInput("Bitte geben Sie die Anzahl der Käufe ein:", QString::number(count));
  waitForRows(hand_.size());
}

void Till::pickPriced(const QString& stake, const QString& typed, qint64 cents) {
  show(kPurchase);
  program_.doubleClickCell("frmFinanz/lstAll", rowOf("frmFinanz/lstAll", stake, 0), 0);
  hand_ << Bought{stake, cents, later_};
  answerInput("Bitte geben Sie den Betrag ein: ", typed);
  if (cents == 0) program_.answer("Sie haben keinen gültigen Betrag eingegeben!", "Ja");
  waitForRows(hand_.size());
}

void Till::pickRefused(const QString& stake, const QString& expected) {
  show(kPurchase);
  program_.doubleClickCell("frmFinanz/lstAll", rowOf("frmFinanz/lstAll", stake, 0), 0);
  program_.answer(expected, "OK");
  waitForRows(hand_.size());
}

void Till::removeFirst() {
  program_.clickCell("frmFinanz/flex", 0, 1);
  program_.click("frmFinanz/cmdRemove");
  hand_.removeFirst();
  waitForRows(hand_.size());
}

void Till::payLater(bool later) {
  program_.click(later ? "optBetrag_1" : "optBetrag_0");
  later_ = later;
  if (later)
    for (Bought& bought : hand_) bought.open = true;
}

void Till::receive(const QString& typed) {
  program_.type("frmFinanz/cmbWechselGeld", typed);
}

void Till::expectChange(const QString& shown) {
  if (const QString change = program_.text("frmFinanz/txtZurueck"); change != shown)
    throw DriverError("the desk gives back " + change + ", not " + shown);
}

void Till::donateChange(const QString& stake, qint64 cents) {
  hand_ << Bought{stake, cents, false};
  program_.click("frmFinanz/cmdSpende");
  waitForRows(hand_.size());
}

void Till::book() {
  const QDateTime from = QDateTime::currentDateTime();
  program_.click("frmFinanz/cmdVerbuchen");
  program_.waitUntil("booking", [&] {
    return program_.items("frmFinanz/flex").isEmpty() &&
           program_.text("frmFinanz/lblZuletzt").startsWith("Verbucht");
  });
  note(CashAct::Kind::Book, from);
  hand_.clear();
}

// ---- what is printed ----

void Till::saveReceipt(const QString& pdf) {
  program_.click("frmFinanz/mnuDateiVorschau");
  saveShownReport(program_, pdf);
  waitForModal(program_, "frmFinanz");
}

void Till::saveList(const QString& name, bool ofToday, const QString& pdf) {
  program_.click("frmFinanz/mnuDateiAuswertung");
  waitForModal(program_, "frmKasseReports");
  const QString lists = "frmKasseReports/lstAuswahl";
  program_.waitUntil("lists", [&] { return !program_.items(lists).isEmpty(); });
  program_.clickCell(lists, rowOf(lists, name, 0), 0);
  program_.click("frmKasseReports/cmdOK");
  if (ofToday) {
    waitForModal(program_, "frmTageswahl");
    const QString days = "frmTageswahl/lstTage", today = QDate::currentDate().toString("dd.MM.yyyy");
    const QJsonArray rows = program_.items(days);
    for (int row = 0; row < rows.size(); ++row)
      if (cellText(rows, row, 0).contains(today)) program_.clickCell(days, row, 0);
    program_.click("frmTageswahl/cmdOK");
  }
  saveShownReport(program_, pdf);
  waitForModal(program_, "frmKasseReports");
  program_.click("frmKasseReports/cmdCancel");
  waitForModal(program_, "frmFinanz");
}

// ---- what is stored ----

void Till::waitForNoOpenItem(const QString& list) {
  program_.waitUntil("settling", [&] {
    const QJsonArray rows = program_.items(list);
    return std::none_of(rows.begin(), rows.end(),
                        [](const QJsonValue& row) { return row.toArray()[2].toObject()["ticked"].toBool(); });
  });
}

void Till::settleOpenItems() {
  show(kStored);
  const QDateTime from = QDateTime::currentDateTime();
  program_.click("frmFinanz/cmdOPVerbuchen");
  waitForNoOpenItem("frmFinanz/flexAll");
  note(CashAct::Kind::Settle, from);
}

void Till::deleteFirstPayment(const QString& stake) {
  show(kStored);
  const qsizetype before = program_.items("frmFinanz/flexAll").size();
  program_.clickCell("frmFinanz/flexAll", rowOf("frmFinanz/flexAll", stake, 1), 1);
  const QDateTime from = QDateTime::currentDateTime();
  program_.click("frmFinanz/cmdDelete");
  program_.answer("Soll der aktuelle Eingang des Schützen unwiderruflich gelöscht werden?", "Ja");
  program_.waitUntil("deletion", [&] { return program_.items("frmFinanz/flexAll").size() == before - 1; });
  const QList<Bought> hand = std::exchange(hand_, {Bought{stake, {}, false}});
  note(CashAct::Kind::Delete, from);
  hand_ = hand;
}

// ---- clubs and teams ----

void Till::inClubCash(const QString& entry, CashAct::Kind kind, CashAct::Buyer buyer, const QString& name,
                      const std::function<void(CashAct& act)>& work) {
  program_.click("frmFinanz/" + entry);
  waitForModal(program_, "frmVMKasse");
  CashAct act{kind, buyer, name, {}, {}, QDateTime::currentDateTime(), {}};
  work(act);
  act.to = QDateTime::currentDateTime();
  journal_.push_back(act);
  program_.click("frmVMKasse/cmdClose");
  waitForModal(program_, "frmFinanz");
}

void Till::sellInClubCash(const QString& entry, CashAct::Buyer buyer, const QString& name,
                          const QStringList& stakes) {
  inClubCash(entry, CashAct::Kind::Book, buyer, name, [&](CashAct& act) {
    for (const QString& stake : stakes) {
      act.purchase << Bought{stake, {}, false};
      program_.clickCell("frmVMKasse/lstAll", rowOf("frmVMKasse/lstAll", stake, 0), 0);
      program_.click("frmVMKasse/cmdAdd");
      program_.waitUntil("stake in hand",
                         [&] { return program_.items("frmVMKasse/flex").size() == act.purchase.size(); });
    }
    program_.click("frmVMKasse/cmdVerbuchen");
    program_.waitUntil("booking", [&] { return program_.items("frmVMKasse/flex").isEmpty(); });
  });
}

void Till::settleInClubCash(const QString& entry, CashAct::Buyer buyer, const QString& name) {
  inClubCash(entry, CashAct::Kind::Settle, buyer, name, [&](CashAct&) {
    program_.click("frmVMKasse/cmdOPVerbuchen");
    waitForNoOpenItem("frmVMKasse/flexAll");
  });
}

// ---- numbered targets ----

void Till::choosePlace(const QString& place) {
  for (const auto& [tab, tree] :
       {std::pair{"Disziplinen", "frmFinanz/treeDiszi"}, {"Kombinationen", "frmFinanz/treeKombi"}}) {
    program_.choose("frmFinanz/SSTab2", tab);
    const QJsonArray nodes = program_.items(tree);
    int root = -1;
    for (int row = 0; row < nodes.size(); ++row) {
      const QString text = cellText(nodes, row, 0);
      if (text.isEmpty() || !text[0].isDigit()) ++root;  // a target begins with its number
      if (text != place) continue;
      return program_.clickCell(tree, root, 0, true);
    }
  }
  throw DriverError("no place for targets: " + place);
}

void Till::takeFromStack(const QString& stack, const QString& place) {
  show(kTargets);
  if (!place.isEmpty()) choosePlace(place);
  program_.clickCell("frmFinanz/grdScheiben", rowOf("frmFinanz/grdScheiben", stack, 1), 1);
  program_.click("frmFinanz/cmdScheibeAdd");
  note(CashAct::Kind::Take, QDateTime::currentDateTime(), {0, stack, place, false});
}

void Till::takeSeveral(const QString& stack, int count) {
  show(kTargets);
  program_.clickCell("frmFinanz/grdScheiben", rowOf("frmFinanz/grdScheiben", stack, 1), 1);
  program_.click("frmFinanz/cmdScheibeAddAnzahl");
  answerInput("Bitte geben Sie die Anzahl der Scheibennummern ein:", QString::number(count));
  for (int i = 0; i < count; ++i)
    note(CashAct::Kind::Take, QDateTime::currentDateTime(), {0, stack, {}, false});
}

void Till::takeTyped(int number, const QString& stack, const QString& place) {
  show(kTargets);
  if (!place.isEmpty()) choosePlace(place);
  program_.type("frmFinanz/txtScheibenNummer", QString::number(number));
  program_.press("frmFinanz/txtScheibenNummer", "Return");
  program_.waitUntil("typed number", [&] { return program_.text("frmFinanz/txtScheibenNummer").isEmpty(); });
  note(CashAct::Kind::Take, QDateTime::currentDateTime(), {number, stack, place, false});
}

void Till::takeByHand(int number, const QString& place) {
  show(kTargets);
  choosePlace(place);
  program_.click("frmFinanz/chkManuelleNummer");
  program_.clickCell("frmFinanz/grdScheiben", 0, 1);
  program_.click("frmFinanz/cmdScheibeAdd");
  answerInput("Bitte Scheibennummer eingeben:", QString::number(number));
  program_.click("frmFinanz/chkManuelleNummer");
  note(CashAct::Kind::Take, QDateTime::currentDateTime(), {number, {}, place, true});
}

void Till::takeBack(const QString& discipline, int children) {
  show(kTargets);
  choosePlace(discipline);
  for (int i = 0; i < children; ++i) program_.press("frmFinanz/treeDiszi", "Down");
  program_.click("frmFinanz/cmdScheibeRemove");
  note(CashAct::Kind::TakeBack, QDateTime::currentDateTime(), {0, {}, discipline, false});
}

void Till::putAllBack() {
  show(kTargets);
  program_.click("frmFinanz/cmdScheibeRemoveAll");
  note(CashAct::Kind::PutBack, QDateTime::currentDateTime());
}

void Till::close() {
  program_.click("frmFinanz/cmdCancel");
  if (!hand_.isEmpty()) program_.answer("Wollen Sie die aktuellen Beträge verwerfen?", "Ja");
}

}  // namespace qk
