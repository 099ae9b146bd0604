#include "tools/rundgang/cash_evening.h"

#include "tools/rundgang/till.h"
#include "tools/rundgang/walk.h"

namespace qk {

namespace {

const QString kLimit = "Der Schütze hat die max. Nachkaufmöglichkeit bereits erreicht!";
const QString kNotReleased = "Die Einlage ist für die Klasse des Schützen nicht freigegeben!";

/// Paid at once, with everything that a desk refuses or asks, and the change given away.
void sellForCash(Till& till, const QString& picture) {
  till.scanArticle("4000000001007", "Startgeld");
  till.pickRefused("Startgeld", kLimit);
  till.pickRefused("Jugendpaket", kNotReleased);
  till.pickSeveral("Nachkauf Serie", 3);
  till.pickPriced("Verzehr", "7,50", 750);
  till.pickPriced("Verzehr", "nichts", 0);
  till.receive("40");
  till.expectChange("7,00 €");
  till.picture(picture);
  till.donateChange("Spende", 700);
  till.expectChange("0,00 €");
  till.book();
}

void sellOnCredit(Till& till) {
  till.scanArticle("500", "Jugendpaket");
  till.pick("Festabend");
  till.payLater(true);
  till.pick("Teiler 10 Schuss");
  till.book();
  till.payLater(false);
}

/// What is in hand goes with whoever is scanned next.
void sellAcrossAChange(Till& till, const QString& label, const QString& next) {
  till.scanArticle("400000000017", "Großes Paket");
  till.scanShooter(label, next);
  till.book();
}

/// From stacks that decide where a target belongs, from one that doesn't, typed and by hand; some come back.
void handTargetsOut(Till& till) {
  till.takeFromStack("Stapel Meister");
  till.takeSeveral("Stapel Meister", 2);
  till.takeFromStack("Stapel frei", "LG Auflage");
  till.takeFromStack("Stapel Paket");
  till.takeTyped(1100, "Stapel Teiler", {});
  till.takeTyped(8888, {}, "LG Auflage");
  till.takeByHand(7777, "LG Meister");
  till.takeBack("LG Meister", 4);
  till.takeBack("LG Meister", 3);
}

}  // namespace

EveningPrints sellAtTheCashDesk(Range& range, CashJournal& journal) {
  const auto program = range.startCashDesk();
  Till till(*program, journal, {});
  till.changeShooter("116");
  till.scanArticle("200", "Nachkauf Serie");
  handTargetsOut(till);
  till.picture(range.picture("7-scheiben"));
  till.book();
  till.changeShooter("103");
  till.settleInClubCash("mnuVM_0", CashAct::Buyer::Club, "Königlich priv. FSG Würzbrunn");
  till.sellInClubCash("mnuVM_1", CashAct::Buyer::Team, "Würzbrunn I", {"Mannschaftsgeld", "Mannschaftsgeld"});
  till.changeShooter("116");
  till.takeFromStack("Stapel Teiler");
  till.putAllBack();
  till.takeFromStack("Stapel Teiler");
  till.pickPriced("Verzehr", "1.234,50", 123450);
  till.pick("Festabend");
  const EveningPrints prints{range.file("beleg.pdf"), range.file("journal.pdf"), range.file("einlagen.pdf")};
  till.saveReceipt(prints.receipt);
  till.book();
  till.saveList("Kassenjournal eines Tages", true, prints.dayJournal);
  till.saveList("Kasseneingänge nach Einlagen", false, prints.stakes);
  till.close();
  if (const int status = program->waitForEnd(); status != 0)
    throw DriverError(QString("the cash desk ended with status %1").arg(status));
  return prints;
}

void sellInTheOffice(Range& range, CashJournal& journal) {
  const auto program = range.startProgram();
  Walk walk(*program);
  walk.waitForMainWindow();
  walk.selectLine(1);
  walk.chooseShooter(1, "103");
  program->click("mnuEditKasse");
  Till till(*program, journal, "103");
  sellForCash(till, range.picture("5-kasse"));
  till.changeShooter("110");
  sellOnCredit(till);
  sellAcrossAChange(till, "BC.107.1.23", "107");
  till.settleOpenItems();
  till.deleteFirstPayment("Startgeld");
  till.picture(range.picture("6-kasse-gesamt"));
  till.pick("Nachkauf Serie");
  till.pick("Teiler 10 Schuss");
  till.removeFirst();
  till.close();
  walk.signOffAndLeavePriceMode(1);
  walk.close(false);
}

}  // namespace qk
