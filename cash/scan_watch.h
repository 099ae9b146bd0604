// Sees to it that a scan arrives where it is meant, whatever happens on the screen meanwhile.
//
// Keys that come at a scanner's speed are one scan until Enter (scan.h). What of it a box catches that has
// come up in between goes to the field where the scan began, Enter too, once the box is closed. A scan that
// begins in a field for amounts is taken out of it again; one that begins where nothing is typed is handed
// over. It listens to every key of the program while it lives.
#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

#include "cash/scan.h"
#include "platform/workplace.h"

namespace qk {

class ScanWatch : public QObject {
  Q_OBJECT

 public:
  /// `window`: the cash desk's. Both outlive the watch.
  ScanWatch(const Workplace& workplace, QWidget& window);
  ~ScanWatch() override;

  /// Marks a field that takes amounts only, of this window or of another one above it.
  static void markAmountField(QWidget& field);

  /// While it lives an input box may take a scan; any other is for amounts and numbers.
  class Allowed {
   public:
    explicit Allowed(ScanWatch& watch) : watch_(watch) { ++watch_.allowed_; }
    ~Allowed() { --watch_.allowed_; }
    Allowed(const Allowed&) = delete;
    Allowed& operator=(const Allowed&) = delete;

   private:
    ScanWatch& watch_;
  };

 Q_SIGNALS:
  /// A scan began in a field for amounts; what stood there before stands there again.
  void refused(const QString& text);
  /// A scan began in the window where nothing is typed.
  void homeless(const QString& text);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool keyPressed(QWidget& receiver, const class QKeyEvent& event);
  bool entered(QWidget& receiver);
  bool refuses(const QWidget& field) const;
  bool elsewhere(const QWidget& receiver) const;
  void handBack();

  Workplace workplace_;
  QWidget& window_;
  ScanRun run_;
  QPointer<QWidget> origin_;
  QString before_;         // what stood in the origin
  bool handedOn_ = false;  // the next key may be the one that a grid got
  bool enterDue_ = false;  // of a scan whose end a box has caught
  int allowed_ = 0;
};

}  // namespace qk
