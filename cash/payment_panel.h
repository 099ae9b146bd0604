// What is to be paid, what was received and the change, large, beside a purchase; and the last booking, until
// the next purchase begins. Of a desk for shooters and of one for clubs.
#pragma once

#include <QWidget>
#include <memory>

#include "cash/purchase.h"

namespace Ui {
class PaymentPanel;
}

namespace qk {

class PaymentPanel : public QWidget {
  Q_OBJECT

 public:
  explicit PaymentPanel(QWidget* parent = nullptr);
  ~PaymentPanel() override;

  /// Once, before anything else; the purchase outlives the panel. Without `spende` there are no donations.
  void setPurchase(const Workplace& workplace, Purchase& purchase, bool spende);
  /// The window loads: nothing received, open items preset or not.
  void Form_Load(bool offenePosten);

  /// The text of what was received; empty where it isn't asked for.
  QString erhalten() const;
  /// It belonged to a booking that is done.
  void leereErhalten();
  void focusErhalten();
  /// Presses the button for donations, if it is there.
  void drueckeSpende();
  void zeigeZuletzt(const QString& text);
  /// Tab comes here from `before` and goes on to `after`.
  void setTabBetween(QWidget* before, QWidget* after);

 Q_SIGNALS:
  /// Enter behind the amount received.
  void bereit();

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void UpdateAktGesamt();
  void UpdateZurueck();
  void optBetrag(int index);
  void followFont();

  std::unique_ptr<Ui::PaymentPanel> ui_;
  const Workplace* workplace_ = nullptr;
  Purchase* purchase_ = nullptr;
  bool spende_ = false;
};

}  // namespace qk
