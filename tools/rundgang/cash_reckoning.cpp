#include "tools/rundgang/cash_reckoning.h"

#include <QRegularExpression>
#include <algorithm>

#include "platform/dao/database.h"
#include "platform/runtime/money.h"
#include "tools/rundgang/shown_report.h"

namespace qk {

namespace {

constexpr int kUnitsOfACent = 100;

struct Price {
  qint64 id = 0, cents = 0;
  bool alwaysOpen = false;
};

struct Payment {
  QString shooter;
  qint64 stake = 0;
  bool open = false;
  qint64 cents = 0;
  QDateTime from, to;  ///< it bears a date between them
  qint64 club = 0, team = 0;
};

struct Stack {
  QString name;
  qint64 id = 0, next = 0, target = 0;
  bool combination = false, shown = false;
};

struct Handed {
  qint64 number = 0, stack = 0, target = 0;
  bool combination = false;
  QString shooter;
  QDateTime from, to;
};

qint64 centsIn(const StoredRow& row, const QString& column) {
  return row[column].value<Money>().units() / kUnitsOfACent;
}

QString euroText(qint64 cents) {
  QString text = centsText(cents);
  for (qsizetype at = text.size() - 6; at > 0 && text[at - 1].isDigit(); at -= 3) text.insert(at, '.');
  return text + " €";
}

/// The amount at the end of the line that begins so.
QString sumBehind(const QString& sheet, const QString& words) {
  const QRegularExpression line("^ *" + QRegularExpression::escape(words) + " +(-?[0-9.,]+ €) *$",
                                QRegularExpression::MultilineOption);
  const auto found = line.match(sheet);
  return found.hasMatch() ? found.captured(1) : "fehlt";
}

int timesIn(const QString& sheet, const QString& word) {
  const QRegularExpression whole("(?<![0-9.,])" + QRegularExpression::escape(word) + "(?![0-9,])");
  int times = 0;
  for (auto found = whole.globalMatch(sheet); found.hasNext(); found.next()) ++times;
  return times;
}

qint64 idOf(dao::Database& store, const QString& table, const QString& column, const QString& name) {
  for (const StoredRow& row : storedRows(store, "Select * from " + table))
    if (row[column].toString() == name) return row["ID"].toLongLong();
  throw DriverError(table + " holds no " + name);
}

class Evening {
 public:
  Evening(dao::Database& store, const CashTables& before) : store_(store) {
    for (const StoredRow& row : storedRows(store, "Select * from Kasse_Verwaltung"))
      prices_[row["Bezeichnung"].toString()] = {row["ID"].toLongLong(), centsIn(row, "Betrag"),
                                                row["VorgabeOffen"].toInt() != 0};
    for (const StoredRow& row : before.payments) {
      const QDateTime date = row["DatumEingang"].toDateTime();
      payments_.push_back({row["Startnummer"].toString(), row["KasseID"].toLongLong(),
                           row["Offen"].toInt() != 0, centsIn(row, "Betrag"), date, date,
                           row["VereinID"].toLongLong(), row["MannID"].toLongLong()});
    }
    for (const StoredRow& row : before.issued) {
      const QDateTime date = row["Kaufdatum"].toDateTime();
      issued_.push_back({row["Scheibennummer"].toLongLong(), row["StapelID"].toLongLong(),
                         row["DisziKombiID"].toLongLong(), row["DisziKombiWahl"].toInt() != 0,
                         row["Startnummer"].toString(), date, date});
    }
    for (const StoredRow& row : before.stacks)
      stored_.push_back({row["Bezeichnung"].toString(), row["ID"].toLongLong(),
                         row["AktuelleNummer"].toLongLong(), row["VorgabeID"].toLongLong(),
                         row["DisziKombi"].toInt() != 0, row["Anzeigen"].toInt() == 1});
    desk_ = stored_;
  }

  void replay(const CashAct& act) {
    using Kind = CashAct::Kind;
    switch (act.kind) {
      case Kind::Take:
        return take(act.target);
      case Kind::TakeBack:
        return takeBack(act.target.place);
      case Kind::PutBack:
        hand_.clear();
        desk_ = stored_;
        return;
      case Kind::Book:
        return book(act);
      case Kind::Settle:
        for (Payment& payment : payments_)
          if (payment.open && belongs(payment, act))
            payment.open = false, payment.from = act.from, payment.to = act.to;
        return;
      case Kind::Delete: {
        const qint64 stake = prices_[act.purchase.first().stake].id;
        const auto gone = std::find_if(payments_.begin(), payments_.end(), [&](const Payment& payment) {
          return payment.stake == stake && belongs(payment, act);
        });
        if (gone != payments_.end()) payments_.erase(gone);
        return;
      }
    }
  }

  Reckoning compare(const CashJournal& journal, const EveningPrints& prints) {
    Comparison sides;
    const auto payments = storedRows(store_, "Select * from Kasse_Eingang");
    sides.claim("Kasse_Eingang", paymentRows(), payments);
    for (const bool open : {false, true}) {
      qint64 expected = 0, stored = 0;
      for (const Payment& payment : payments_) expected += payment.open == open ? payment.cents : 0;
      for (const StoredRow& row : payments)
        stored += (row["Offen"].toInt() != 0) == open ? centsIn(row, "Betrag") : 0;
      sides.add(open ? "  noch offen" : "  in der Kasse", centsText(expected), centsText(stored));
    }
    sides.claim("Schuetzen_ScheibenNummern", issuedRows(),
                storedRows(store_, "Select * from Schuetzen_ScheibenNummern"));
    sides.claim("ScheibenNummern", stackRows(), storedRows(store_, "Select * from ScheibenNummern"));
    compareReceipt(sides, journal, printedText(prints.receipt));
    compareDay(sides, printedText(prints.dayJournal));
    compareStakes(sides, printedText(prints.stakes));
    return sides.result;
  }

 private:
  /// What was in hand: paid and open apart, and every target of it.
  void compareReceipt(Comparison& sides, const CashJournal& journal, const QString& sheet) {
    const auto last = std::find_if(journal.rbegin(), journal.rend(),
                                   [](const CashAct& act) { return act.kind == CashAct::Kind::Book; });
    qint64 paid = 0, open = 0;
    for (const Bought& bought : last->purchase) {
      const Price price = prices_.value(bought.stake);
      (bought.open || price.alwaysOpen ? open : paid) += bought.cents.value_or(price.cents);
    }
    sides.add("Beleg, bezahlt", euroText(paid), sumBehind(sheet, "Bezahlt"));
    sides.add("Beleg, noch offen", euroText(open), sumBehind(sheet, "noch offen"));
    for (const Handed& handed : issued_)
      if (handed.from == last->from)
        sides.add(QString("Beleg, Scheibe %1").arg(handed.number), 1,
                  timesIn(sheet, QString::number(handed.number)));
  }

  void compareStakes(Comparison& sides, const QString& sheet) {
    qint64 count[2] = {}, sum[2] = {};
    for (const Payment& payment : payments_) {
      ++count[payment.open];
      sum[payment.open] += payment.cents;
    }
    const QString expected =
        QString("%1 %2 %3 %4").arg(count[0]).arg(euroText(sum[0])).arg(count[1]).arg(euroText(sum[1]));
    static const QRegularExpression total("^ *Alle Einlagen +(.*)$", QRegularExpression::MultilineOption);
    sides.add("Alle Einlagen", expected, total.match(sheet).captured(1).simplified());
  }

  void compareDay(Comparison& sides, const QString& sheet) {
    qint64 till = 0, open = 0, openCount = 0;
    for (const Payment& payment : payments_) {
      if (payment.to.date() != QDate::currentDate()) continue;
      (payment.open ? open : till) += payment.cents;
      openCount += payment.open;
    }
    sides.add("Journal, Einnahmen", euroText(till), sumBehind(sheet, "Einnahmen des Tages"));
    sides.add("Journal, offen", euroText(open),
              sumBehind(sheet, QString("Offen (%1 Buchungen)").arg(openCount)));
  }

  bool belongs(const Payment& payment, const CashAct& act) const {
    if (act.buyer == CashAct::Buyer::Shooter) return payment.shooter == act.name;
    return (act.buyer == CashAct::Buyer::Club ? payment.club : payment.team) == buyerId(act);
  }

  qint64 buyerId(const CashAct& act) const {
    return act.buyer == CashAct::Buyer::Club ? idOf(store_, "Verein", "Name", act.name)
                                             : idOf(store_, "Mannschaften", "MannName", act.name);
  }

  void book(const CashAct& act) {
    for (const Bought& bought : act.purchase) {
      const Price price = prices_.value(bought.stake);
      Payment payment{
          {}, price.id, bought.open || price.alwaysOpen, bought.cents.value_or(price.cents), act.from, act.to,
          0,  0};
      if (act.buyer == CashAct::Buyer::Shooter) payment.shooter = act.name;
      if (act.buyer == CashAct::Buyer::Club) payment.club = buyerId(act);
      if (act.buyer == CashAct::Buyer::Team) payment.team = buyerId(act);
      // A row bears the moment in which it came into the purchase.
      payment.from = bought.at;
      payments_.push_back(payment);
    }
    if (act.buyer != CashAct::Buyer::Shooter) return;
    for (Handed handed : hand_) {
      handed.shooter = act.name, handed.from = act.from, handed.to = act.to;
      issued_.push_back(handed);
    }
    hand_.clear();
    stored_ = desk_;
  }

  Stack* stackNamed(std::vector<Stack>& stacks, const QString& name) {
    const auto found =
        std::find_if(stacks.begin(), stacks.end(), [&](const Stack& stack) { return stack.name == name; });
    return found == stacks.end() ? nullptr : &*found;
  }

  Handed at(const QString& place, qint64 number) {
    const auto combinations = storedRows(store_, "Select * from Kombination_Name");
    for (const StoredRow& row : combinations)
      if (row["Kombinationsname"].toString() == place)
        return {number, 0, row["ID"].toLongLong(), true, {}, {}, {}};
    return {number, 0, idOf(store_, "Disziplin", "Name", place), false, {}, {}, {}};
  }

  void take(const Target& target) {
    Stack* stack = stackNamed(desk_, target.stack);
    if (target.byHand || !stack) {
      hand_.push_back(at(target.place, target.number));
      return;
    }
    const qint64 number = target.number > 0 ? target.number : stack->next;
    if (target.number > 0) {
      // What was typed is written at once, and is what the stack gives out next.
      stack->next = number;
      stackNamed(stored_, target.stack)->next = number;
      if (stack->target == 0) return hand_.push_back(at(target.place, number));
    } else {
      ++stack->next;
    }
    Handed handed = stack->target > 0 ? Handed{number, 0, stack->target, stack->combination, {}, {}, {}}
                                      : at(target.place, number);
    handed.stack = stack->id;
    hand_.push_back(handed);
  }

  void takeBack(const QString& place) {
    const Handed where = at(place, 0);
    const auto last = std::find_if(hand_.rbegin(), hand_.rend(), [&](const Handed& handed) {
      return handed.target == where.target && handed.combination == where.combination;
    });
    if (last == hand_.rend()) throw DriverError("nothing to take back at " + place);
    for (Stack& stack : desk_)
      if (stack.id == last->stack && stack.next - 1 == last->number) --stack.next;
    hand_.erase(std::next(last).base());
  }

  std::vector<ExpectedRow> paymentRows() const {
    std::vector<ExpectedRow> rows;
    for (const Payment& payment : payments_)
      rows.push_back({{text("Startnummer", payment.shooter), number("KasseID", payment.stake),
                       number("Offen", payment.open ? -1 : 0), cents("Betrag", payment.cents),
                       moment("DatumEingang", payment.from, payment.to), text("Gruppe", ""),
                       number("VereinID", payment.club), number("MannID", payment.team)},
                      {}});
    return rows;
  }

  std::vector<ExpectedRow> issuedRows() const {
    std::vector<ExpectedRow> rows;
    for (const Handed& handed : issued_)
      rows.push_back(
          {{text("Startnummer", handed.shooter), number("Scheibennummer", handed.number),
            moment("Kaufdatum", handed.from, handed.to), number("DisziKombiWahl", handed.combination ? 1 : 0),
            number("DisziKombiID", handed.target), number("StapelID", handed.stack)},
           {}});
    return rows;
  }

  std::vector<ExpectedRow> stackRows() const {
    std::vector<ExpectedRow> rows;
    for (const Stack& stack : stored_)
      rows.push_back({{text("Bezeichnung", stack.name), number("AktuelleNummer", stack.next)}, {}});
    return rows;
  }

  dao::Database& store_;
  QHash<QString, Price> prices_;
  std::vector<Payment> payments_;
  std::vector<Handed> issued_, hand_;
  std::vector<Stack> stored_, desk_;  ///< stacks in the competition, and as the desk counts them on
};

}  // namespace

CashTables readCashTables(const QString& competition) {
  const auto store = dao::Database::open(competition);
  return {storedRows(*store, "Select * from Kasse_Eingang order by ID"),
          storedRows(*store, "Select * from Schuetzen_ScheibenNummern order by ID"),
          storedRows(*store, "Select * from ScheibenNummern order by ID")};
}

Reckoning reckonCash(const QString& competition, const CashTables& before, const CashJournal& journal,
                     const EveningPrints& prints) {
  const auto store = dao::Database::open(competition);
  Evening evening(*store, before);
  for (const CashAct& act : journal) evening.replay(act);
  return evening.compare(journal, prints);
}

}  // namespace qk
