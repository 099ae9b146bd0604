// The locks of this process on files, as the system tells them: what a standing connection to a database must
// never lose.
#pragma once

#include <QObject>
#include <QString>

namespace qk::test {

/// Whether the process itself has a lock for reading on the file, taken through the engine.
bool hasReadLock(const QString& file);
/// Whether one stands there that no close of another descriptor can drop.
bool hasStandingLock(const QString& file);

/// Looks at every event of the application whether a connection to the database still has its locks. A lock
/// once lost never comes back while the connection stands.
class LockWatch : public QObject {
  Q_OBJECT

 public:
  explicit LockWatch(const QString& database);
  ~LockWatch() override;

  void look();
  int looks() const { return looks_; }
  int losses() const { return losses_; }
  /// What happened when the lock was first seen missing.
  QString firstLoss() const { return firstLoss_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QString database_;
  bool stood_ = false;
  int looks_ = 0;
  int losses_ = 0;
  QString firstLoss_;
};

}  // namespace qk::test
