#include "platform/print/current_printer.h"

#include <QHash>
#include <QPageSize>
#include <QPrinter>
#include <QPrinterInfo>

#include "platform/runtime/error.h"
#include "platform/settings/settings.h"

namespace qk {

namespace {

constexpr int kPrinterError = 482;

const QString kName = "Drucker";
const QString kPaper = "DruckerPapier";
const QString kLandscape = "DruckerQuerformat";

/// The paper of that key; not valid for one that nobody knows.
QPageSize pageSize(const QString& key) {
  for (int id = 0; id <= QPageSize::LastPageSize; ++id)
    if (QPageSize::key(static_cast<QPageSize::PageSizeId>(id)) == key)
      return QPageSize(static_cast<QPageSize::PageSizeId>(id));
  return QPageSize();
}

QHash<QString, PrinterSetup>& takenForNow() {
  static QHash<QString, PrinterSetup> taken;
  return taken;
}

/// A new device has the paper of the system's language, whatever the printer holds.
QPageSize ownPaper(const QString& name) {
  return (name.isEmpty() ? QPrinterInfo::defaultPrinter() : QPrinterInfo::printerInfo(name))
      .defaultPageSize();
}

}  // namespace

CurrentPrinter::CurrentPrinter(Settings& settings, QString application, QString section)
    : settings_(settings), application_(std::move(application)), section_(std::move(section)) {}

/// A settings file is a workstation: whoever prints in this program and reads it means the same printer.
QString CurrentPrinter::key() const {
  return settings_.filePath() + u'\n' + application_ + u'\n' + section_;
}

PrinterSetup CurrentPrinter::setup() const {
  const auto taken = takenForNow().constFind(key());
  return taken == takenForNow().constEnd() ? kept() : *taken;
}

void CurrentPrinter::takeForNow(const PrinterSetup& setup) {
  takenForNow().insert(key(), setup);
}

void CurrentPrinter::takeKept() {
  takenForNow().remove(key());
}

PrinterSetup CurrentPrinter::kept() const {
  return {settings_.value(application_, section_, kName), settings_.value(application_, section_, kPaper),
          settings_.flag(application_, section_, kLandscape)};
}

void CurrentPrinter::keep(const PrinterSetup& setup) {
  settings_.setValue(application_, section_, kPaper, setup.paper);
  settings_.setValue(application_, section_, kLandscape, setup.landscape ? "1" : "0");
  settings_.setValue(application_, section_, kName, setup.name);
  takeKept();
}

std::unique_ptr<QPrinter> CurrentPrinter::make() const {
  return makePrinter(setup());
}

std::unique_ptr<QPrinter> makePrinter(const PrinterSetup& chosen) {
  if (!chosen.name.isEmpty() && !QPrinterInfo::availablePrinterNames().contains(chosen.name))
    throw Error(kPrinterError, errorDescription(kPrinterError) + ": " + chosen.name);
  auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
  if (!chosen.name.isEmpty()) printer->setPrinterName(chosen.name);
  QPageSize paper = pageSize(chosen.paper);
  if (!paper.isValid()) paper = ownPaper(chosen.name);
  if (paper.isValid()) printer->setPageSize(paper);
  printer->setPageOrientation(chosen.landscape ? QPageLayout::Landscape : QPageLayout::Portrait);
  return printer;
}

bool isPaused(const QString& name) {
  const QPrinterInfo info = name.isEmpty() ? QPrinterInfo::defaultPrinter() : QPrinterInfo::printerInfo(name);
  return !info.isNull() && (info.state() == QPrinter::Error || info.state() == QPrinter::Aborted);
}

std::vector<InstalledPrinter> installedPrinters() {
  std::vector<InstalledPrinter> found;
  for (const QPrinterInfo& info : QPrinterInfo::availablePrinters()) {
    InstalledPrinter printer{info.printerName(), info.isDefault(), {}};
    for (const QPageSize& size : info.supportedPageSizes())
      if (size.id() != QPageSize::Custom) printer.papers.push_back({size.key(), size.name()});
    found.push_back(std::move(printer));
  }
  return found;
}

}  // namespace qk
