#include "tests/support/foreign/foreign_process.h"

#include <QStringList>

namespace qk::test {

namespace {

const QString kProgram = QK_FOREIGN;
constexpr int kPatience = 60000;

bool ran(const QString& act, const QString& file) {
  QProcess process;
  process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  process.start(kProgram, {act, file});
  return process.waitForFinished(kPatience) && process.exitStatus() == QProcess::NormalExit &&
         process.exitCode() == 0;
}

}  // namespace

bool foreignRead(const QString& file) {
  return ran("read", file);
}
bool foreignWrite(const QString& file) {
  return ran("write", file);
}
bool foreignCheck(const QString& file) {
  return ran("check", file);
}

ForeignHolder::ForeignHolder(const QString& file) {
  process_.start(kProgram, {"hold", file});
  if (!process_.waitForReadyRead(kPatience)) qFatal("the foreign process can't open %s", qPrintable(file));
}

ForeignHolder::~ForeignHolder() {
  process_.closeWriteChannel();
  process_.waitForFinished(kPatience);
}

ForeignVisitor::ForeignVisitor(const QString& file, unsigned seed, Manner manner) {
  process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  process_.start(kProgram, {manner == Manner::Read ? "look" : "come-and-go", file, QString::number(seed)});
  if (!process_.waitForStarted(kPatience)) qFatal("the foreign process doesn't start");
}

ForeignVisitor::~ForeignVisitor() {
  if (process_.state() != QProcess::NotRunning) end();
}

int ForeignVisitor::end() {
  process_.closeWriteChannel();
  if (!process_.waitForFinished(kPatience) || process_.exitCode() != 0) return -1;
  return process_.readAllStandardOutput().trimmed().toInt();
}

}  // namespace qk::test
