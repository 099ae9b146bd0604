#include "app/shell/single_instance.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QLocalServer>
#include <QLocalSocket>

namespace qk {

namespace {

constexpr int kAnswerMilliseconds = 2000;

QString lockFile(const QString& settingsFile, const QString& kind) {
  QDir().mkpath(QFileInfo(settingsFile).absolutePath());
  return settingsFile + "." + kind;
}

QString serverName(const QString& lockFile) {
  const QByteArray path = QFileInfo(lockFile).absoluteFilePath().toUtf8();
  return "qk-intarso-" + QCryptographicHash::hash(path, QCryptographicHash::Sha1).toHex().left(16);
}

}  // namespace

SingleInstance::SingleInstance(const QString& settingsFile, const QString& kind)
    : name_(serverName(lockFile(settingsFile, kind))),
      lock_(lockFile(settingsFile, kind)),
      server_(std::make_unique<QLocalServer>()) {
  lock_.setStaleLockTime(0);
}

SingleInstance::~SingleInstance() = default;

bool SingleInstance::begin() {
  if (!lock_.tryLock() && lock_.error() == QLockFile::LockFailedError) {
    askRunning();
    return false;
  }
  QLocalServer::removeServer(name_);  // what a crash left
  server_->listen(name_);
  connect(server_.get(), &QLocalServer::newConnection, this, [this] {
    if (QLocalSocket* socket = server_->nextPendingConnection()) {
      connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
      socket->disconnectFromServer();
    }
    Q_EMIT comeToFront();
  });
  return true;
}

void SingleInstance::askRunning() {
  QLocalSocket socket;
  socket.connectToServer(name_);
  if (socket.waitForConnected(kAnswerMilliseconds)) socket.disconnectFromServer();
}

}  // namespace qk
