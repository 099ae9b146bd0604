// qk-vorlage TEXT DATEI: builds a side database from its schema text. A tool of the build.

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTextStream>

#include "platform/runtime/error.h"
#include "platform/runtime/program_call.h"
#include "platform/schema/schema_build.h"

namespace {

QString readText(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly))
    throw qk::Error(qk::errors::kFileNotFound, path + ": " + file.errorString());
  return QString::fromUtf8(file.readAll());
}

/// With whatever an engine left beside it: what belonged to the old file must not meet the new one.
void removeDatabase(const QString& path) {
  const QFileInfo file(path);
  for (const QString& name : file.dir().entryList({file.fileName(), file.fileName() + "-*"}, QDir::Files))
    QFile::remove(file.dir().filePath(name));
}

/// The build sees either the old file or the whole new one.
void build(const QString& textPath, const QString& target) {
  const QString draft = target + ".neu";
  removeDatabase(draft);
  const qk::Schema schema = qk::parseSchema(readText(textPath), QFileInfo(textPath).fileName());
  qk::createDatabase(draft, [&schema](qk::dao::Database& database) { qk::buildSchema(database, schema); });
  removeDatabase(target);
  if (!QFile::rename(draft, target)) throw qk::Error(qk::errors::kPathAccess, target);
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  const QStringList arguments = application.arguments();
  const QString help =
      "qk-vorlage - baut eine Nebendatenbank aus ihrer Beschreibung\n\n"
      "Aufruf: qk-vorlage TEXT DATEI\n"
      "        qk-vorlage --hilfe | --version\n";
  if (qk::answeredCall(arguments.mid(1), "qk-vorlage", help)) return 0;
  QTextStream errors(stderr);
  if (arguments.size() != 3) {
    errors << help;
    return 2;
  }
  try {
    build(arguments.at(1), arguments.at(2));
  } catch (const qk::Error& error) {
    errors << error.description() << "\n";
    return 1;
  }
  return 0;
}
