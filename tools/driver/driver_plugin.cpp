// The part of the driver that lives in the driven program: takes one JSON request a line from the local
// socket named in QK_TREIBER and answers each with one line.
#include <QGenericPlugin>
#include <QJsonDocument>
#include <QLocalSocket>
#include <QTimer>

#include "tools/driver/driver_actions.h"

namespace qk::driver {

class Ear : public QObject {
 public:
  Ear() {
    connect(&socket_, &QLocalSocket::readyRead, this, &Ear::answerAll);
    // Not before the event loop runs: by then the program's windows stand.
    QTimer::singleShot(0, this, [this] { socket_.connectToServer(qEnvironmentVariable("QK_TREIBER")); });
  }

 private:
  void answerAll() {
    while (socket_.canReadLine()) {
      const QJsonObject reply = perform(QJsonDocument::fromJson(socket_.readLine()).object());
      socket_.write(QJsonDocument(reply).toJson(QJsonDocument::Compact) + '\n');
      socket_.flush();
    }
  }
  QLocalSocket socket_;
};

class DriverPlugin : public QGenericPlugin {
  Q_OBJECT
  Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "driver.json")

 public:
  QObject* create(const QString& key, const QString&) override {
    return key.compare("qkdriver", Qt::CaseInsensitive) == 0 ? new Ear : nullptr;
  }
};

}  // namespace qk::driver

#include "driver_plugin.moc"
