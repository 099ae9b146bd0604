// Has the sources looked at again and again, each in a thread of its own: a dead network drive keeps nobody
// from hearing of the others, and the window waits for none. What they find stands in the book.
//
// The window's thread does no more than compare times once a second and take over what was found.
#pragma once

#include <QObject>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>

#include "app/watch/threat_book.h"
#include "app/watch/watch_source.h"
#include "platform/runtime/clock.h"

namespace qk {

class WatchKeeper : public QObject {
  Q_OBJECT

 public:
  /// Whether somebody wants the source looked at just now; asked in the window's thread.
  using Wanted = std::function<bool()>;

  /// The clock outlives it.
  explicit WatchKeeper(const Clock& clock, QObject* parent = nullptr);
  /// Waits a moment for looks that are under way; those that hang are left alone.
  ~WatchKeeper() override;

  /// Looks at it at once when it is wanted. Once it has found something it is looked at until that has ended,
  /// wanted or not.
  void add(std::shared_ptr<WatchSource> source, Wanted wanted = {});
  /// What it found has ended with it.
  void remove(const WatchSource* source);
  /// Doesn't wait for its time. A look that is under way is followed by another one.
  void lookNow(const WatchSource* source);

  const ThreatBook& book() const { return book_; }
  /// Whether a look is under way whose findings weren't taken over yet.
  bool isLooking() const;

 Q_SIGNALS:
  void changed();  ///< what the book says

 private:
  struct Lookout;
  struct WayBack;

  void tick();
  void begin(Lookout& lookout);
  void returned(int number, const std::vector<Threat>& found);
  void gather();
  bool isDue(const Lookout& lookout, const QDateTime& now) const;

  const Clock& clock_;
  QTimer timer_{this};
  std::vector<std::unique_ptr<Lookout>> lookouts_;
  std::shared_ptr<WayBack> wayBack_;
  ThreatBook book_;
  int lastNumber_ = 0;
};

}  // namespace qk
