// The purchase in hand: the rows of `flex`, from the first stake until it is booked or given up. A change of
// shooter doesn't touch it. Needs no window.
#pragma once

#include <QObject>
#include <functional>

#include "cash/cash_rows.h"
#include "cash/cash_store.h"
#include "platform/grid/text_table.h"
#include "platform/workplace.h"

namespace qk {

/// How an added row is to be booked.
enum class Betragsart { Betrag = 0, OffenePosten = 1 };

/// What a purchase has to know of whoever buys.
struct Buyer {
  Payer payer;
  /// False, with its message, for a stake that he may not buy.
  std::function<bool(qint32 lEinlageID)> darf;
  /// How often the stake is stored for him.
  std::function<int(qint32 lEinlageID, const QString& Bezeichnung)> gekauft;
};
/// The shooter that the store's cursor stands on: his class decides, and stored purchases are told by their
/// name among the rows of `flexAll`. All three outlive it.
Buyer schuetzeAlsKaeufer(const Workplace& workplace, CashStore& store, const TextTable& flexAll);

class Purchase : public QObject {
  Q_OBJECT

 public:
  /// The store outlives the purchase.
  Purchase(const Workplace& workplace, CashStore& store, Buyer buyer);

  TextTable& flex() { return flex_; }
  const TextTable& flex() const { return flex_; }
  bool isEmpty() const { return flex_.rows() < 2; }

  /// Adds one row after all checks, with their questions and messages. Errors of the store pass.
  void AddKauf(qint32 lEinlageID);
  /// So many of one stake, each through all checks. What follows the purchase is told once, and before each
  /// box.
  void AddAnzahl(qint32 lEinlageID, int nAnzahl);
  /// Asks how many. What isn't above 0 adds none; Error 6 beyond 16 bits.
  void AddAnzahlFragen(qint32 lEinlageID);
  /// The stake of an article number, typed or scanned; an unknown number adds nothing, without a word.
  void AddArtikel(const QString& text);
  /// The change as a donation. Nothing where it is 0.
  void AddSpende(const Money& betrag);

  void entferne(int row);  ///< nothing for the header or outside
  void entferneAlle();

  Betragsart betragsart() const { return betragsart_; }
  /// Open items mark all present rows; going back doesn't reset them.
  void setBetragsart(Betragsart art);

  /// To be called after the operator changed a cell: an amount beyond what money holds becomes 0, and a box
  /// says so.
  void nachEingabe(int row, int column);

  Money zuBezahlen() const { return qk::zuBezahlen(flex_); }

  /// Marks a row that a failed booking has stored, so that it can be taken out before booking again.
  void markiereGespeichert(int row);
  bool istGespeichert(int row) const;
  /// Tells whoever shows the sum that something else than a row decides it now.
  void UpdateAktGesamt() { Q_EMIT changed(); }

 Q_SIGNALS:
  /// After every change of the rows: the sum, the change and the labels follow.
  void changed();

 private:
  /// The same, without telling anybody of the new row.
  void nimmAuf(qint32 lEinlageID);
  void meldeAufgeschobenes();
  void addRow(const QString& Bezeichnung, bool offen, const Money& betrag, qint32 lEinlageID);
  /// How often the stake is in hand or was stored.
  int anzahlKaeufe(qint32 lEinlageID, const QString& Bezeichnung) const;
  /// Nothing when the operator gives the purchase up.
  std::optional<Money> fragtBetrag();

  Workplace workplace_;
  CashStore& store_;
  Buyer buyer_;
  TextTable flex_;
  Betragsart betragsart_ = Betragsart::Betrag;
  bool aufgeschoben_ = false;  // a row was added, and nobody was told yet
};

}  // namespace qk
