#include "app/ground/temp_module_ui.h"

#include <QDesktopServices>
#include <QDir>
#include <QHeaderView>
#include <QProcess>
#include <QScreen>
#include <QSignalBlocker>
#include <QTableView>
#include <QUrl>
#include <QWidget>
#include <algorithm>
#include <cmath>

#include "app/ground/settings_keys.h"
#include "app/ground/temp_module.h"
#include "platform/dialog/dialogs.h"
#include "platform/grid/text_grid.h"
#include "platform/runtime/error.h"
#include "platform/runtime/files.h"
#include "platform/runtime/numbers.h"
#include "platform/widgets/panel_splitter.h"

namespace qk {

namespace {

constexpr int kTwipsPerInch = 1440;
constexpr int kMaximizedMargin = 20;  // a maximized window comes back a little smaller, and movable
constexpr int kScreenEdge = 2;        // a window over the whole screen leaves its frame in sight
constexpr int kTaskBar = 30;
constexpr int kSmallestScreen = 1366;   // pixels across
constexpr int kCharactersAcross = 195;  // of the house's font on that screen

QString positionName(const QWidget& form, const QTableView* grid) {
  return form.objectName() + "-" + (grid ? grid->objectName() : QString());
}

SettingKey positionKey(const QString& name) {
  return {keys::kFamilie, keys::kPositionen, name};
}

/// The number at a place of a saved value, whichever decimal mark its workstation wrote; -1 when there is
/// none.
int fieldAt(const QStringList& fields, int place) {
  const std::optional<double> read = readPrefix(QString(fields.value(place)).replace(u',', u'.'));
  const bool usable = read && *read >= 0 && *read < QWIDGETSIZE_MAX;
  return usable ? static_cast<int>(std::lround(*read)) : -1;
}

/// A hidden column keeps the width that it will have again; the grid itself calls it 0.
int widthOf(const QTableView& grid, int column) {
  if (!grid.isColumnHidden(column)) return grid.columnWidth(column);
  QHeaderView& header = *grid.horizontalHeader();
  const QSignalBlocker quiet(header);
  header.setSectionHidden(column, false);
  const int width = header.sectionSize(column);
  header.setSectionHidden(column, true);
  return width;
}

int pixels(int twips, int dotsPerInch) {
  return static_cast<int>(std::lround(double(twips) * dotsPerInch / kTwipsPerInch));
}

/// A place that can't be kept must not disturb anybody who moves or closes a window.
template <class Value>
void keep(Settings& settings, const SettingKey& key, const Value& value) {
  try {
    schreibe(settings, key, value);
  } catch (const Error&) {
    // The next start takes the place that was kept before.
  }
}

}  // namespace

void MitProgrammOeffnen(const Workplace& workplace, const QString& path) {
  if (!DateiVorhanden(workplace.files, path)) return;
  const QString real = workplace.files.resolve(path);
  if (QDesktopServices::openUrl(QUrl::fromLocalFile(real))) return;
#ifdef Q_OS_WIN
  QProcess shell;
  shell.setProgram("rundll32.exe");
  shell.setNativeArguments("shell32.dll,OpenAs_RunDLL " + QDir::toNativeSeparators(real));
  shell.startDetached();
#else
  workplace.dialogs.note("Für diese Datei ist kein Programm zugeordnet:\n" + real, BoxIcon::Exclamation);
#endif
}

void ExplorerStarten(const Workplace& workplace, const QString& folder) {
  const QString real = workplace.files.resolve(folder);
#ifdef Q_OS_WIN
  const bool started = QProcess::startDetached("explorer.exe", {QDir::toNativeSeparators(real)});
#else
  const bool started =
      workplace.files.folderExists(folder) && QDesktopServices::openUrl(QUrl::fromLocalFile(real));
#endif
  if (!started)
    workplace.dialogs.note("Der Ordner lässt sich nicht anzeigen:\n" + folder, BoxIcon::Exclamation);
}

void FormZentrieren(QWidget& form) {
  QRect frame = form.frameGeometry();
  frame.moveCenter(form.screen()->availableGeometry().center());
  form.move(frame.topLeft());
}

void PositionSpeichern(const Workplace& workplace, const QWidget& form, const QTableView* grid) {
  if (form.isMinimized()) return;
  const int margin = form.isMaximized() ? kMaximizedMargin : 0;
  QStringList fields;
  for (const int value : {form.x(), form.y(), form.width() - margin, form.height() - margin})
    fields += QString::number(value);
  if (grid && grid->model())
    for (int column = 0; column < grid->model()->columnCount(); ++column)
      fields += QString::number(widthOf(*grid, column));
  const QString name = positionName(form, grid);
  keep(workplace.settings, positionKey(name), fields.join(u';'));
}

void PositionLaden(const Workplace& workplace, QWidget& form, QTableView* grid) {
  const QString name = positionName(form, grid);
  const QString value = liesText(workplace.settings, positionKey(name));
  if (value.isEmpty()) return FormZentrieren(form);
  const QStringList fields = value.split(u';');
  const int left = fieldAt(fields, 0), top = fieldAt(fields, 1);
  const int width = fieldAt(fields, 2), height = fieldAt(fields, 3);
  form.move(left >= 0 ? left : form.x(), top >= 0 ? top : form.y());
  form.resize(width > 0 ? width : form.width(), height > 0 ? height : form.height());
  if (!grid || !grid->model()) return;
  for (int column = 0; column < grid->model()->columnCount(); ++column)
    if (const int columnWidth = fieldAt(fields, 4 + column); columnWidth >= 0)
      grid->setColumnWidth(column, columnWidth);
}

int PanelMass(const QWidget& panel, int characters) {
  const int screen = std::max(kSmallestScreen, panel.screen()->availableSize().width());
  return characters * std::min(panel.fontMetrics().averageCharWidth(), screen / kCharactersAcross);
}

void PanelGroesseMerken(const Workplace& workplace, PanelSplitter& splitter, int panel, const SettingKey& key,
                        int designSize) {
  const int kept = liesZahl(workplace.settings, key);
  splitter.setPanelSize(panel, kept > 0 ? kept : designSize);
  QObject::connect(&splitter, &PanelSplitter::released, &splitter,
                   [&settings = workplace.settings, &splitter, panel, key] {
                     keep(settings, key, splitter.panelSize(panel));
                   });
}

void SpaltenbreitenMerken(const Workplace& workplace, TextGrid& grid, const QString& key) {
  const auto with = [&settings = workplace.settings, key](int column, const auto& use) {
    const QString name = key + QString::number(column);
    use(settings, SettingKey{keys::kFamilie, keys::kDaten, name});
  };
  for (int column = 0; column < grid.table()->columns(); ++column)
    with(column, [&](const Settings& settings, const SettingKey& width) {
      if (const int kept = liesZahl(settings, width); kept > 0) grid.table()->setColumnWidth(column, kept);
    });
  QObject::connect(&grid, &TextGrid::columnDrawn, &grid, [with](int column, int twips) {
    with(column, [twips](Settings& settings, const SettingKey& width) { keep(settings, width, twips); });
  });
}

void AnzeigeLage(const Workplace& workplace, QWidget& form, const QString& suffix) {
  if (liesFlag(workplace.settings, keys::AnzeigeScreen)) {
    const QSize screen = form.screen()->geometry().size();
    form.move(kScreenEdge, kScreenEdge);
    form.resize(screen.width() - 2 * kScreenEdge, screen.height() - kTaskBar);
    return;
  }
  const auto place = [&](const QString& edge, int designed, int dotsPerInch) {
    const QString key = "Main_" + edge + suffix;
    const QString text = liesText(workplace.settings, {keys::kFamilie, keys::kAnzeige, key});
    const std::optional<double> read = readPrefix(text);
    return read && std::fabs(*read) < 1e6 ? pixels(static_cast<int>(*read), dotsPerInch) : designed;
  };
  const int acrossInch = form.logicalDpiX(), downInch = form.logicalDpiY();
  form.move(place("Left", form.x(), acrossInch), place("Top", form.y(), downInch));
  form.resize(place("Width", form.width(), acrossInch), place("Height", form.height(), downInch));
}

}  // namespace qk
