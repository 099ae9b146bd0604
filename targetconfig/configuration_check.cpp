#include "targetconfig/configuration_check.h"

#include <QStringList>

#include "platform/runtime/files.h"
#include "targetconfig/station_files.h"
#include "targetconfig/station_lines.h"

namespace qk {

namespace {

const QString kMissing = "Datei nicht vorhanden: ";
const QString kWeaponKey = "DateiWaffe";
const QString kTargetKey = "DateiScheibe";

class Walk {
 public:
  Walk(Files& files, const QString& folder, Steps& step, const CheckSink& sink)
      : files_(files), folder_(folder), step_(step), sink_(sink) {}

  void run() {
    for (const QString& line : read(EsaPreisIni)) {
      if (stopped_) return;
      if (holdsTitle(line)) show({CheckKind::Title, CheckState::Plain, titleForCheck(line), {}, EsaPreisIni});
      if (holdsDefinition(line)) takeDefinition(line);
    }
  }

 private:
  QStringList read(const QString& name) {
    QStringList lines;
    step_([&] { lines = readStationLines(files_, folder_ + name); });
    return lines;
  }

  void show(const CheckRow& row) { stopped_ = stopped_ || !sink_(row); }

  CheckState stateOf(const QString& name) const {
    return !name.trimmed().isEmpty() && files_.readable(folder_ + name) ? CheckState::Found
                                                                        : CheckState::Missing;
  }

  /// The line as it stands in the ini: what is wrong with a name shows only there.
  void takeDefinition(const QString& line) {
    const QString name = definitionForCheck(line);
    const CheckState state = stateOf(name);
    const bool found = state == CheckState::Found;
    show({CheckKind::Definition, state, "\t" + (found ? name : kMissing + line), name, EsaPreisIni});
    if (found && !stopped_) lookInto(name);
  }

  /// A value that was read is looked at as a key, too: a weapon without its value doesn't hide the target
  /// behind it.
  void lookInto(const QString& definition) {
    const QStringList lines = read(definition);
    for (qsizetype i = 0; i < lines.size() && !stopped_; ++i) {
      QString held = lines[i];
      const auto takeValue = [&](CheckKind kind, const QString& key) {
        if (!held.contains(key)) return;
        held = lines.value(++i).remove('"');
        const CheckState state = stateOf(held);
        const QString mark = state == CheckState::Missing ? kMissing : QString();
        show({kind, state, "\t\t" + mark + key + ": " + held, held, definition});
      };
      takeValue(CheckKind::Weapon, kWeaponKey);
      takeValue(CheckKind::Target, kTargetKey);
    }
  }

  Files& files_;
  const QString& folder_;
  Steps& step_;
  const CheckSink& sink_;
  bool stopped_ = false;
};

QString counted(int count, const QString& one, const QString& many) {
  return QString::number(count) + " " + (count == 1 ? one : many);
}

QString kindName(CheckKind kind) {
  switch (kind) {
    case CheckKind::Definition:
      return "def-Datei";
    case CheckKind::Weapon:
      return "Waffendatei";
    case CheckKind::Target:
      return "Scheibendatei";
    case CheckKind::Title:
      break;
  }
  return {};
}

}  // namespace

void checkConfiguration(Files& files, const QString& folder, Steps& step, const CheckSink& sink) {
  Walk(files, folder, step, sink).run();
}

int checkDepth(QStringView text) {
  int depth = 0;
  while (depth < text.size() && text[depth] == u'\t') ++depth;
  return depth;
}

CheckCounts countRows(const std::vector<CheckRow>& rows) {
  CheckCounts counts;
  for (const CheckRow& row : rows) {
    counts.titles += row.kind == CheckKind::Title;
    counts.found += row.state == CheckState::Found;
    counts.missing += row.state == CheckState::Missing;
  }
  return counts;
}

QString countsText(const CheckCounts& counts) {
  return counted(counts.titles, "Disziplin", "Disziplinen") + ", " +
         counted(counts.found, "Datei", "Dateien") + " vorhanden, " +
         (counts.missing == 0 ? QString("keine fehlt") : counted(counts.missing, "fehlt", "fehlen"));
}

QString missingText(const CheckRow& row, const QString& folder) {
  if (row.state != CheckState::Missing) return {};
  if (row.file.trimmed().isEmpty())
    return "In " + row.namer + " steht kein Name für die " + kindName(row.kind) + ".\nOrdner: " + folder;
  return "Es fehlt die " + kindName(row.kind) + ": " + row.file + "\nOrdner: " + folder +
         "\nGenannt wird sie in: " + row.namer;
}

}  // namespace qk
