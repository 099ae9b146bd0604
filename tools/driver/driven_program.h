// A real program, started as a process of its own and driven by object names.
//
// Every call waits for its answer; one that can't be carried out throws DriverError with the reason. Waiting
// for something to come about is waitUntil, never a pause.
#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QLocalServer>
#include <QProcess>
#include <functional>
#include <memory>
#include <stdexcept>

class QLocalSocket;

namespace qk {

class DriverError : public std::runtime_error {
 public:
  explicit DriverError(const QString& text) : std::runtime_error(text.toStdString()) {}
};

class DrivenProgram {
 public:
  /// `environment` is added to this process's own.
  DrivenProgram(const QString& program, const QStringList& arguments, const QProcessEnvironment& environment);
  ~DrivenProgram();

  /// As a crash would: SIGKILL.
  void kill();
  /// The same in so many milliseconds, whatever it does then; calls on it throw from that moment.
  void killIn(int milliseconds);
  bool running() const { return process_.state() != QProcess::NotRunning; }
  /// Waits for the end; the exit status.
  int waitForEnd();

  void click(const QString& object);
  void type(const QString& object, const QString& text);
  void press(const QString& object, const QString& key);
  QJsonValue get(const QString& object, const QString& property);
  QString text(const QString& object) { return get(object, "text").toString(); }
  bool enabled(const QString& object) { return get(object, "enabled").toBool(); }
  /// Rows of cells {text, ticked, data} of a list, tree or grid.
  QJsonArray items(const QString& object);
  void clickCell(const QString& object, int row, int column, bool beside = false);
  void doubleClickCell(const QString& object, int row, int column);
  /// Clicks the tick of the list entry with this text and waits until it has changed.
  void clickItem(const QString& object, const QString& text);
  /// Makes the entry with this text the chosen one: of a combo box, or a tab.
  void choose(const QString& object, const QString& text);
  /// The modal window {class, title, text, buttons}, or an empty object.
  QJsonObject modal();
  /// Waits for a box whose text contains `expected` and presses the button; throws for another box.
  void answer(const QString& expected, const QString& button);
  /// Keys for whatever has the focus, as somebody types who looks at the shooter; "\n" is Enter.
  void typeBlindly(const QString& text);
  void grab(const QString& file, const QString& object = {});

  void waitUntil(const QString& what, const std::function<bool()>& condition, int seconds = 20);

 private:
  QJsonValue call(QJsonObject request);

  QLocalServer server_;
  QProcess process_;
  QLocalSocket* socket_ = nullptr;
};

/// The text of a cell of DrivenProgram::items.
QString cellText(const QJsonArray& rows, qsizetype row, int column);

}  // namespace qk
