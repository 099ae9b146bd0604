// One running program of a kind per workstation. The settings store is the workstation: another store,
// another one.
//
// A lock file beside the store decides, also after a crash; the local socket only carries the wish that the
// running window come to the front.
#pragma once

#include <QLockFile>
#include <QObject>
#include <memory>

class QLocalServer;

namespace qk {

class SingleInstance : public QObject {
  Q_OBJECT

 public:
  /// `kind`: what there may be one of.
  SingleInstance(const QString& settingsFile, const QString& kind);
  ~SingleInstance() override;

  /// True when this process is the one. Otherwise the running one was asked to come to the front.
  bool begin();

 Q_SIGNALS:
  void comeToFront();

 private:
  void askRunning();

  QString name_;
  QLockFile lock_;
  std::unique_ptr<QLocalServer> server_;
};

}  // namespace qk
