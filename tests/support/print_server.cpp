#include "tests/support/print_server.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTest>

#include "tests/support/expectations.h"

namespace qk::test {

namespace {

constexpr int kPatience = 20000;  // milliseconds

const char* const kServer = R"(Listen %1/run/cups.sock
LogLevel warn
DefaultAuthType None
WebInterface No
Browsing No
<Location />
Order allow,deny
Allow all
</Location>
<Policy default>
<Limit All>
Order deny,allow
Allow all
</Limit>
</Policy>
)";

const char* const kFiles = R"(ServerBin %1/programs
ServerRoot %1/root
RequestRoot %1/spool
CacheDir %1/cache
StateDir %1/state
TempDir %1/tmp
DocumentRoot %1
ErrorLog %1/log/error
AccessLog %1/log/access
PageLog %1/log/page
FatalErrors none
)";

// A device that keeps each job; a plain file would hold the last one only.
const char* const kDevice = R"(#!/bin/sh
[ $# -eq 0 ] && { echo 'direct jobs "Unknown" "Files"'; exit 0; }
file="${DEVICE_URI#jobs:}/$PRINTER-$(printf %06d "$1").ps"
cat ${6:+"$6"} > "$file.part" && mv "$file.part" "$file"
)";

const char* const kLabels = R"ppd(*PPD-Adobe: "4.3"
*FormatVersion: "4.3"
*FileVersion: "1.0"
*LanguageVersion: English
*LanguageEncoding: ISOLatin1
*PCFileName: "LABELS.PPD"
*Manufacturer: "Test"
*Product: "(Labels)"
*ModelName: "Labels"
*ShortNickName: "Labels"
*NickName: "Labels"
*PSVersion: "(3010.000) 0"
*LanguageLevel: "3"
*ColorDevice: False
*DefaultColorSpace: Gray
*FileSystem: False
*Throughput: "1"
*TTRasterizer: Type42
*OpenUI *PageSize/Media Size: PickOne
*OrderDependency: 10 AnySetup *PageSize
*DefaultPageSize: w283h170
*PageSize w283h170/100 x 60 mm: "<</PageSize[283 170]>>setpagedevice"
*CloseUI: *PageSize
*OpenUI *PageRegion: PickOne
*OrderDependency: 10 AnySetup *PageRegion
*DefaultPageRegion: w283h170
*PageRegion w283h170/100 x 60 mm: "<</PageSize[283 170]>>setpagedevice"
*CloseUI: *PageRegion
*DefaultImageableArea: w283h170
*ImageableArea w283h170/100 x 60 mm: "6 6 277 164"
*DefaultPaperDimension: w283h170
*PaperDimension w283h170/100 x 60 mm: "283 170"
*DefaultResolution: 203dpi
*DefaultFont: Courier
*Font Courier: Standard "(001.005)" Standard ROM
)ppd";

QString programOf(const QString& name) {
  const QString found = QStandardPaths::findExecutable(name);
  return found.isEmpty() ? QStandardPaths::findExecutable(name, {"/usr/sbin", "/sbin"}) : found;
}

}  // namespace

PrintServer::PrintServer() {
  lay();
  qputenv("CUPS_SERVER", path("run/cups.sock").toLocal8Bit());
  server_.setProcessChannelMode(QProcess::MergedChannels);
  server_.start(programOf("cupsd"), {"-f", "-c", path("cupsd.conf"), "-s", path("cups-files.conf")});
  running_ = server_.waitForStarted() &&
             QTest::qWaitFor([this] { return QFile::exists(path("run/cups.sock")); }, kPatience);
  if (!running_) complaint_ = "the print server doesn't start: " + QString::fromLocal8Bit(server_.readAll());
}

PrintServer::~PrintServer() {
  if (server_.state() == QProcess::NotRunning) return;
  server_.terminate();
  if (!server_.waitForFinished(kPatience)) server_.kill();
}

void PrintServer::write(const QString& name, const QString& text, bool program) {
  QFile file(path(name));
  if (!file.open(QIODevice::WriteOnly)) return failTest("can't write " + file.fileName());
  file.write(text.toUtf8());
  // The server runs a device with its own rights only when others can't read it.
  file.setPermissions(program ? QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner
                              : QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther);
}

void PrintServer::lay() {
  const auto everybody = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ReadGroup |
                         QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther;
  QFile::setPermissions(folder_.path(), everybody);  // its filters run as another user
  for (const char* name :
       {"run", "root", "spool", "cache", "state", "log", "tmp", "out", "programs", "programs/backend"})
    QDir(folder_.path()).mkpath(name);
  QFile::setPermissions(path("tmp"), everybody | QFile::WriteGroup | QFile::WriteOther);
  const QDir programs("/usr/lib/cups");
  for (const QString& each : programs.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
    if (each != "backend") QFile::link(programs.filePath(each), path("programs/" + each));
  write("programs/backend/jobs", kDevice, true);
  write("cupsd.conf", QString(kServer).arg(folder_.path()));
  write("cups-files.conf", QString(kFiles).arg(folder_.path()));
  write("labels.ppd", kLabels);
}

QString PrintServer::run(const QString& program, const QStringList& arguments) {
  QProcess process;
  process.start(programOf(program), arguments);
  if (!process.waitForFinished(kPatience) || process.exitCode() != 0)
    failTest(program + " " + arguments.join(' ') + ": " +
             QString::fromLocal8Bit(process.readAllStandardError()));
  return QString::fromLocal8Bit(process.readAllStandardOutput());
}

void PrintServer::addLabelPrinter(const QString& name) {
  run("lpadmin", {"-p", name, "-E", "-v", "jobs:" + path("out"), "-P", path("labels.ppd")});
}

void PrintServer::addSheetPrinter(const QString& name) {
  run("lpadmin", {"-p", name, "-E", "-v", "jobs:" + path("out"), "-m", "drv:///sample.drv/generic.ppd"});
}

void PrintServer::remove(const QString& name) {
  run("lpadmin", {"-x", name});
}

void PrintServer::pause(const QString& name) {
  run("cupsdisable", {name});
}

void PrintServer::resume(const QString& name) {
  run("cupsenable", {name});
}

int PrintServer::waiting(const QString& name) {
  return static_cast<int>(run("lpstat", {"-o", name}).split('\n', Qt::SkipEmptyParts).size());
}

QStringList PrintServer::jobs(const QString& name, int count) {
  const QDir out(path("out"));
  const auto files = [&] { return out.entryList({name + "-*.ps"}, QDir::Files, QDir::Name); };
  if (!QTest::qWaitFor([&] { return files().size() >= count; }, kPatience))
    failTest(QString("%1 jobs of %2 instead of %3").arg(files().size()).arg(name).arg(count));
  QStringList paths;
  for (const QString& file : files()) paths += out.filePath(file);
  return paths;
}

QImage PrintServer::page(const QString& file, int dotsPerInch) {
  const QString pattern = QString("%1-%2-%3.png").arg(file, QString::number(dotsPerInch), "%d");
  run("gs", {"-q", "-dNOPAUSE", "-dBATCH", "-dSAFER", "-sDEVICE=pnggray", "-r" + QString::number(dotsPerInch),
             "-o", pattern, file});
  if (QFile::exists(QString(pattern).replace("%d", "2"))) return {};
  return QImage(QString(pattern).replace("%d", "1"));
}

}  // namespace qk::test
