#include "tools/driver/driven_program.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QJsonDocument>
#include <QLocalSocket>
#include <QThread>
#include <QUuid>

namespace qk {

namespace {
constexpr int kAnswerSeconds = 30;
}

DrivenProgram::DrivenProgram(const QString& program, const QStringList& arguments,
                             const QProcessEnvironment& environment) {
  const QString name = "qk-" + QUuid::createUuid().toString(QUuid::Id128);
  if (!server_.listen(name)) throw DriverError("no local socket: " + server_.errorString());
  QProcessEnvironment all = QProcessEnvironment::systemEnvironment();
  all.insert(environment);
  all.insert("QT_PLUGIN_PATH", QK_PLUGIN_FOLDER);
  all.insert("QT_QPA_GENERIC_PLUGINS", "qkdriver");
  all.insert("QK_TREIBER", name);
  process_.setProcessEnvironment(all);
  process_.setProcessChannelMode(QProcess::ForwardedChannels);
  process_.start(program, arguments);
  if (!process_.waitForStarted()) throw DriverError(program + ": " + process_.errorString());
  QDeadlineTimer deadline(kAnswerSeconds * 1000);
  while (!server_.waitForNewConnection(100))
    if (process_.waitForFinished(0) || deadline.hasExpired())
      throw DriverError(program + " gives no sign of life");
  socket_ = server_.nextPendingConnection();
}

DrivenProgram::~DrivenProgram() {
  if (running()) kill();
}

void DrivenProgram::kill() {
  process_.kill();
  process_.waitForFinished();
}

void DrivenProgram::killIn(int milliseconds) {
  QProcess::startDetached(
      "sh",
      {"-c",
       QString("sleep %1; kill -9 %2").arg(milliseconds / 1000.0, 0, 'f', 3).arg(process_.processId())});
}

int DrivenProgram::waitForEnd() {
  if (running() && !process_.waitForFinished(kAnswerSeconds * 1000))
    throw DriverError("the program doesn't end");
  return process_.exitStatus() == QProcess::NormalExit ? process_.exitCode() : -1;
}

QJsonValue DrivenProgram::call(QJsonObject request) {
  socket_->write(QJsonDocument(request).toJson(QJsonDocument::Compact) + '\n');
  QDeadlineTimer deadline(kAnswerSeconds * 1000);
  while (!socket_->canReadLine()) {
    if (deadline.hasExpired() || (!socket_->waitForReadyRead(500) && process_.waitForFinished(0)))
      throw DriverError("no answer to " + request["do"].toString() + " " + request["object"].toString());
  }
  const QJsonObject reply = QJsonDocument::fromJson(socket_->readLine()).object();
  if (!reply["ok"].toBool())
    throw DriverError(request["do"].toString() + " " + request["object"].toString() + ": " +
                      reply["problem"].toString());
  return reply["value"];
}

void DrivenProgram::click(const QString& object) {
  call({{"do", "click"}, {"object", object}});
}

void DrivenProgram::type(const QString& object, const QString& text) {
  call({{"do", "type"}, {"object", object}, {"text", text}});
}

void DrivenProgram::press(const QString& object, const QString& key) {
  call({{"do", "press"}, {"object", object}, {"key", key}});
}

QJsonValue DrivenProgram::get(const QString& object, const QString& property) {
  return call({{"do", "get"}, {"object", object}, {"name", property}});
}

QJsonArray DrivenProgram::items(const QString& object) {
  return call({{"do", "items"}, {"object", object}}).toArray();
}

void DrivenProgram::clickCell(const QString& object, int row, int column, bool beside) {
  call({{"do", "cell"}, {"object", object}, {"row", row}, {"column", column}, {"beside", beside}});
}

void DrivenProgram::doubleClickCell(const QString& object, int row, int column) {
  call({{"do", "cell"},
        {"object", object},
        {"row", row},
        {"column", column},
        {"beside", true},
        {"twice", true}});
}

void DrivenProgram::clickItem(const QString& object, const QString& text) {
  const QJsonArray rows = items(object);
  const auto ticked = [](const QJsonArray& list, int row) {
    return list[row].toArray().first().toObject()["ticked"].toBool();
  };
  for (int row = 0; row < rows.size(); ++row)
    if (rows[row].toArray().first().toObject()["text"].toString() == text) {
      clickCell(object, row, 0);
      waitUntil("tick of " + text, [&] { return ticked(items(object), row) != ticked(rows, row); });
      return;
    }
  throw DriverError(object + " has no entry " + text);
}

void DrivenProgram::choose(const QString& object, const QString& text) {
  call({{"do", "choose"}, {"object", object}, {"text", text}});
}

QJsonObject DrivenProgram::modal() {
  return call({{"do", "modal"}}).toObject();
}

void DrivenProgram::answer(const QString& expected, const QString& button) {
  waitUntil("box: " + expected, [&] { return !modal().isEmpty(); });
  const QJsonObject box = modal();
  const QString text = box["text"].toString();
  if (!text.contains(expected))
    throw DriverError("expected the box \"" + expected + "\", found \"" + text + "\"");
  waitUntil("end of the box: " + expected, [&] {
    try {
      // A box that came unasked takes no click in its first moments.
      call({{"do", "answer"}, {"button", button}, {"id", box["id"]}});
      return modal()["id"] != box["id"];
    } catch (const DriverError&) {
      if (!running() || process_.waitForFinished(kAnswerSeconds * 1000))
        return true;  // the box was the program's last word
      throw;
    }
  });
}

void DrivenProgram::typeBlindly(const QString& text) {
  call({{"do", "typeBlindly"}, {"text", text}});
}

void DrivenProgram::grab(const QString& file, const QString& object) {
  call({{"do", "grab"}, {"file", file}, {"object", object}});
}

void DrivenProgram::waitUntil(const QString& what, const std::function<bool()>& condition, int seconds) {
  QDeadlineTimer deadline(seconds * 1000);
  while (!condition()) {
    if (deadline.hasExpired()) throw DriverError("waited in vain for " + what);
    QThread::msleep(20);
  }
}

QString cellText(const QJsonArray& rows, qsizetype row, int column) {
  return rows[row].toArray()[column].toObject()["text"].toString();
}

}  // namespace qk
