#include "cash/target_numbers.h"

#include <limits>

#include "app/ground/temp_module.h"
#include "cash/target_stacks.h"
#include "platform/dialog/dialogs.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/datetext.h"
#include "platform/runtime/error.h"
#include "platform/runtime/numbers.h"

namespace qk {
namespace {

constexpr int kMost = 32767;  // targets at once, as of stakes: more is a typing error
constexpr double kMillisecondsOfADay = 24.0 * 60 * 60 * 1000;
constexpr double kStampsOfADay = 1000000;
const char* const kChooseFirst = "Bitte wählen Sie eine Disziplin/Kombination!";

QString zusatzOf(const QString& Bezeichnung) {
  return "   (" + Bezeichnung + u')';
}

qint32 wholeNumber(const QString& text) {
  return toInt32(ZahlAusText(text));
}

TargetNumbers::Tree treeOf(int DisziKombi) {
  return DisziKombi == 0 ? TargetNumbers::Tree::Diszi : TargetNumbers::Tree::Kombi;
}

}  // namespace

TargetNumbers::TargetNumbers(CashDesk& desk) : desk_(desk), stacks_(StackColumn::Anzahl) {
  stacks_.setText(0, StackColumn::Bezeichnung, "Bezeichnung");
  stacks_.setText(0, StackColumn::Typ, "Typ");
  stacks_.setText(0, StackColumn::AktNr, "Akt.Nr.");
  stacks_.setText(0, StackColumn::Zuordnung, "Zuordnung");
  stacks_.setColumnWidth(StackColumn::Merkmal, 0);
  stacks_.setRightAligned(StackColumn::AktNr, true);
}

TargetNumbers::~TargetNumbers() = default;

void TargetNumbers::close() {
  cursor_.reset();
}

void TargetNumbers::LoadDisziKombiBaum(const std::vector<DisziKombi>& entries) {
  std::vector<DisziKombi> of[2];
  for (const DisziKombi& entry : entries) of[entry.kombi ? 1 : 0].push_back(entry);
  for (Tree which : {Tree::Diszi, Tree::Kombi}) tree(which).setRoots(of[static_cast<int>(which)]);
}

/// What is in hand counts in the list only: a list that is read anew would hand it out a second time.
QHash<QString, qint32> TargetNumbers::naechsteInDerHand() const {
  QHash<QString, qint32> next;
  for (const TargetTree& tree : trees_)
    tree.forEachTarget([&](const QModelIndex& target) {
      const QString stack = QString::number(stapelIdOf(target));
      if (const int row = stacks_.findRow(stack); row > 0)
        next[stack] = wholeNumber(stacks_.text(row, StackColumn::AktNr));
    });
  return next;
}

bool TargetNumbers::LoadScheibenStapel() {
  const QHash<QString, qint32> inHand = naechsteInDerHand();
  cursor_ = desk_.database().openRecordset(angeboteneStapel(desk_.workplace().settings));
  stacks_.setRows(1);
  for (; !cursor_->eof(); cursor_->moveNext()) {
    const QString id = QString::number(FeldWert(*cursor_, "ID").toInt());
    const QString stored = FeldWert(*cursor_, "AktuelleNummer").toString();
    const qint32 next = qMax(inHand.value(id), wholeNumber(stored));
    stacks_.addRow(
        {QString(), FeldWert(*cursor_, "Bezeichnung").toString(),
         FeldWert(*cursor_, "Scheibentyp").toString(), inHand.contains(id) ? QString::number(next) : stored,
         FeldWert(*cursor_, "Vorgabe").toString()},
        id);
  }
  return hatStapel();
}

bool TargetNumbers::hatStapel() const {
  return stacks_.rows() > 1;
}

/// The present time of day as a fraction of a day, in millionths.
qint32 TargetNumbers::stempel() const {
  const double fraction = desk_.workplace().clock.now().time().msecsSinceStartOfDay() / kMillisecondsOfADay;
  return static_cast<qint32>(fraction * kStampsOfADay);
}

bool TargetNumbers::waehlbar(const View& view) const {
  if (!view.gewaehlt.isValid()) desk_.workplace().dialogs.note(kChooseFirst);
  return view.gewaehlt.isValid();
}

TargetNumbers::Placed TargetNumbers::nimmAuf(Tree which, const QModelIndex& root, const Taken& taken) {
  return {which, tree(which).add(root, taken.stapelId, taken.nummer, taken.zusatz, stempel())};
}

bool TargetNumbers::ScheibeUebergeben(int nRow, const View& view) {
  return ScheibenUebergeben(nRow, 1, view);
}

bool TargetNumbers::ScheibenUebergeben(int nRow, int count, const View& view) {
  const QPersistentModelIndex selected = view.gewaehlt;
  std::optional<Placed> last;
  int taken = 0;
  for (; taken < count; ++taken) {
    std::optional<Placed> placed;
    // Each number that is asked for may take its time: the stacks are another desk's, too.
    const bool fresh = taken == 0 || manuelleNummer;
    reported(fehlerReport(desk_.workplace().dialogs, "Fehler bei der Übergeben der Scheiben!"), [&](Steps&) {
      placed = uebergeben(nRow, {view.vorn, selected}, fresh);
    });
    if (!placed) break;
    last = placed;
    if (manuelleNummer) Q_EMIT hinzugefuegt(last->which, last->node);
  }
  if (last && !manuelleNummer) Q_EMIT hinzugefuegt(last->which, last->node);
  return taken == count;
}

std::optional<TargetNumbers::Placed> TargetNumbers::uebergeben(int nRow, const View& view, bool frisch) {
  if (nRow < 0) return {};
  const qint32 id = wholeNumber(stacks_.rowData(nRow));
  if (id < 1 || !cursor_) return {};
  if (frisch) cursor_->requery();  // a stack that was written meanwhile is another row by then
  cursor_->findFirst(QString("ID = %1").arg(id));
  if (cursor_->noMatch()) return {};

  Tree which = view.vorn;
  QModelIndex root = TargetTree::rootOf(view.gewaehlt);
  if (const qint32 vorgabe = FeldWert(*cursor_, "VorgabeID").toInt(); autoZuordnung && vorgabe > 0) {
    which = treeOf(FeldWert(*cursor_, "DisziKombi").toInt());
    root = tree(which).root(vorgabe);
  } else if (!waehlbar(view)) {
    return {};
  }
  const QPersistentModelIndex below = root;  // the input box may run anything

  Taken taken{id, 0, {}};
  if (manuelleNummer) {
    taken = {0, wholeNumber(desk_.workplace().dialogs.input("Bitte Scheibennummer eingeben:")), {}};
    if (taken.nummer == 0) return {};
  } else {
    taken.nummer = wholeNumber(stacks_.text(nRow, StackColumn::AktNr));
    if (nRow >= 1) taken.zusatz = zusatzOf(stacks_.text(nRow, StackColumn::Bezeichnung));
  }
  const Placed placed = nimmAuf(which, below, taken);
  if (!manuelleNummer) stacks_.setText(nRow, StackColumn::AktNr, QString::number(taken.nummer + 1));
  return placed;
}

void TargetNumbers::cmdScheibeAdd(int nRow, const View& view) {
  if (!hatStapel())
    return desk_.workplace().dialogs.note(
        "Es muss mindestens ein Scheibenstapel angelegt sein.\r\nMenü: Optionen - Verwaltung Scheiben");
  ScheibeUebergeben(nRow, view);
}

void TargetNumbers::cmdScheibeAddAnzahl(int nRow, const View& view) {
  if (!hatStapel()) return cmdScheibeAdd(nRow, view);
  const double count = ZahlAusText(desk_.workplace().dialogs.input(
      "Bitte geben Sie die Anzahl der Scheibennummern ein:", "Scheibennummern"));
  if (count > kMost) throw Error(errors::kOverflow);
  ScheibenUebergeben(nRow, static_cast<int>(count), view);
}

void TargetNumbers::nummerEingegeben(const QString& sNummer, const View& view) {
  if (qAbs(ZahlAusText(sNummer)) > std::numeric_limits<qint32>::max())  // a bar code of something else
    return desk_.workplace().dialogs.note("»" + sNummer + "« ist keine Scheibennummer.",
                                          BoxIcon::Exclamation);
  if (stapelPruefung && ScheibeAufnehmenStapel(sNummer)) return;
  ScheibeAufnehmenManuell(sNummer, view);
}

bool TargetNumbers::ScheibeAufnehmenStapel(const QString& sNummer) {
  bool done = false;
  reported(fehlerReport(desk_.workplace().dialogs, "Fehler Aufnehmen der Scheiben über Stapel!"),
           [&](Steps&) {
             const qint32 nummer = wholeNumber(sNummer);
             if (nummer == 0 || !cursor_ || !hatStapel()) return;
             cursor_->requery();
             while (!cursor_->eof() && !(FeldWert(*cursor_, "Startnummer").toDouble() <= nummer &&
                                         FeldWert(*cursor_, "Endnummer").toDouble() >= nummer))
               cursor_->moveNext();
             if (cursor_->eof()) return;
             const qint32 id = FeldWert(*cursor_, "ID").toInt();
             const qint32 vorgabe = FeldWert(*cursor_, "VorgabeID").toInt();
             const Tree which = treeOf(FeldWert(*cursor_, "DisziKombi").toInt());
             const QString zusatz = zusatzOf(FeldWert(*cursor_, "Bezeichnung").toString());
             // The number itself, not the next one: the stack hands it out again.
             schreibeNaechste(id, nummer);
             if (const int row = stacks_.findRow(QString::number(id)); row > 0)
               stacks_.setText(row, StackColumn::AktNr, QString::number(nummer));
             if (vorgabe <= 0) return;
             const Placed placed = nimmAuf(which, tree(which).root(vorgabe), {id, nummer, zusatz});
             Q_EMIT hinzugefuegt(placed.which, placed.node);
             done = true;
           });
  return done;
}

bool TargetNumbers::ScheibeAufnehmenManuell(const QString& sNummer, const View& view) {
  bool done = false;
  reported(fehlerReport(desk_.workplace().dialogs, "Fehler Aufnehmen der Scheiben manuell!"), [&](Steps&) {
    const qint32 nummer = wholeNumber(sNummer);
    if (nummer == 0 || !waehlbar(view)) return;
    const Placed placed = nimmAuf(view.vorn, TargetTree::rootOf(view.gewaehlt), {0, nummer, {}});
    Q_EMIT hinzugefuegt(placed.which, placed.node);
    done = true;
  });
  return done;
}

void TargetNumbers::schreibeNaechste(qint32 stapelId, qint32 nummer) {
  const auto stacks = desk_.database().openRecordset("Select * from Scheibennummern");
  stacks->findFirst(QString("ID = %1").arg(stapelId));
  if (stacks->noMatch()) return;
  stacks->edit();
  stacks->setValue("AktuelleNummer", nummer);
  stacks->update();
}

void TargetNumbers::cmdScheibeRemove(const View& view) {
  if (!TargetTree::isTarget(view.gewaehlt)) return;
  if (TargetTree::isStored(view.gewaehlt))
    return desk_.workplace().dialogs.note(
        "Diese Scheibe ist schon gespeichert; löschen lässt sie sich unter \"Scheiben Gesamt\".");
  const qint32 id = stapelIdOf(view.gewaehlt);
  if (id < 1) return entferne(view.vorn, view.gewaehlt);
  const int row = stacks_.findRow(QString::number(id));
  if (row < 1) return;
  const qint32 last = wholeNumber(stacks_.text(row, StackColumn::AktNr)) - 1;
  if (nummerOf(view.gewaehlt) == last) {
    stacks_.setText(row, StackColumn::AktNr, QString::number(last));
    return entferne(view.vorn, view.gewaehlt);
  }
  const QPersistentModelIndex target = view.gewaehlt;
  if (desk_.workplace().dialogs.confirm(
          "Die Nummer ist nicht die letzte vergebene Nummer des Stapels!\r\n"
          "Hinweis: Nehmen Sie die Scheiben nach der ausgegebenen Reihenfolge wieder zurück.\r\n\r\n"
          "Wollen Sie die Scheibe dennoch löschen?\r\n",
          BoxIcon::Question, BoxAnswer::No) &&
      target.isValid())
    entferne(view.vorn, target);
}

void TargetNumbers::entferne(Tree which, const QModelIndex& target) {
  const QPersistentModelIndex next =
      target.row() > 0 ? target.siblingAtRow(target.row() - 1) : target.parent();
  tree(which).removeTarget(target);
  Q_EMIT zuWaehlen(which, next);
}

void TargetNumbers::nummerAendern(const QModelIndex& target) {
  if (!TargetTree::isTarget(target)) return;
  const QPersistentModelIndex node = target;
  const QString text = target.data(Qt::DisplayRole).toString();
  const QString number = text.section(u' ', 0, 0);
  const QString answer =
      desk_.workplace().dialogs.input("Bitte Scheibennummer eingeben:", "Änderung", number);
  const double changed = ZahlAusText(answer);
  if (changed < 1 || !node.isValid()) return;
  const_cast<QAbstractItemModel*>(node.model())
      ->setData(node, QString::number(toInt32(changed)) + text.mid(number.size()), Qt::DisplayRole);
}

void TargetNumbers::speichereScheiben(const QString& sStartNr, const QString& Buchungsdatum,
                                      int& gespeichert) {
  for (Tree which : {Tree::Diszi, Tree::Kombi}) {
    std::unique_ptr<dao::Recordset> issued;
    tree(which).forEachTarget([&](const QModelIndex& target) {
      if (TargetTree::isStored(target)) return;  // by a booking that failed afterwards: none is issued twice
      if (!issued) issued = desk_.database().openRecordset("Select * from Schuetzen_ScheibenNummern");
      issued->addNew();
      issued->setValue("Startnummer", sStartNr);
      issued->setValue("Scheibennummer", nummerOf(target));
      issued->setValue("Kaufdatum", parseDate(Buchungsdatum));
      issued->setValue("DisziKombiWahl", static_cast<int>(which));
      issued->setValue("DisziKombiID", diszikombiIdOf(target));
      if (const qint32 stapel = stapelIdOf(target); stapel > 0) issued->setValue("StapelID", stapel);
      issued->update();
      tree(which).markStored(target);
      ++gespeichert;
    });
  }
}

void TargetNumbers::speichereAktuelleNummern() {
  for (int row = 1; row < stacks_.rows(); ++row)
    if (const qint32 id = wholeNumber(stacks_.rowData(row)); id > 0)
      schreibeNaechste(id, wholeNumber(stacks_.text(row, StackColumn::AktNr)));
}

std::vector<ReceiptTarget> TargetNumbers::belegScheiben() const {
  std::vector<ReceiptTarget> all;
  const QString today = Buchungsdatum(desk_.workplace());
  for (Tree which : {Tree::Diszi, Tree::Kombi})
    tree(which).forEachTarget([&](const QModelIndex& target) {
      ReceiptTarget on;
      on.Scheibennr = QString::number(nummerOf(target));
      on.Ausgabe = today;
      on.Zuordnung = target.parent().data(Qt::DisplayRole).toString();
      if (const qint32 stapel = stapelIdOf(target); stapel > 0)
        if (const int row = stacks_.findRow(QString::number(stapel)); row > 0) {
          on.Bezeichnung = stacks_.text(row, StackColumn::Bezeichnung);
          on.Typ = stacks_.text(row, StackColumn::Typ);
        }
      all.push_back(on);
    });
  return all;
}

}  // namespace qk
