#include "tests/targetconfig/station_fuzz.h"

#include <QByteArrayList>
#include <QHash>

#include "platform/runtime/error.h"
#include "platform/runtime/files.h"
#include "targetconfig/configuration_check.h"
#include "targetconfig/discipline_groups.h"
#include "targetconfig/station_files.h"
#include "tests/support/wounds.h"

namespace qk::test {

namespace {

constexpr int kOverflow = 6;
const QString kFolder = "/esa/";

/// A folder in memory: a disk would be what is measured.
class FewFiles : public Files {
 public:
  QHash<QString, QByteArray> files;

  QByteArray read(const QString& path) override {
    const auto file = files.constFind(path);
    if (file == files.constEnd()) throw Error(53);
    return *file;
  }
  bool readable(const QString& path) override { return files.contains(path); }
};

const QByteArray kIni =
    "[Setting]\r\nPreselection = 1\r\n[W1]\r\nBezeichnung = \"LG Gl\xFC"
    "ck\"\r\nDefinition = \"a.def\"\r\nCheck = 0\r\n[W2]\r\nBezeichnung = \"LP\"\r\nDefinition = "
    "\"fehlt.def\"\r\n";
const QByteArray kDefinition =
    "\">Bezeichnung\"\r\n\"LG\"\r\n\">Schusszahl\"\r\n\"40\"\r\n\">DateiWaffe\"\r\n\"w.def\"\r\n\">"
    "DateiScheibe\"\r\n"
    "\"s.def\"\r\n\">ZeitenAnzahl\"\r\n\"2\"\r\n\">Zeit1\"\r\n\"60 min\"\r\n\">Zeit2\"\r\n\"60 min\"\r\n";

/// What these files are made of, and what breaks readers of lines and numbers.
const QByteArrayList& pieces() {
  static const QByteArrayList all{"Bezeichnung",
                                  "Definition",
                                  ">DateiWaffe",
                                  ">DateiScheibe",
                                  ">Schusszahl",
                                  ">Zeit",
                                  ">ZeitenAnzahl",
                                  "a.def",
                                  "\"",
                                  "=",
                                  "\r\n",
                                  "\n",
                                  "\r",
                                  "\t",
                                  " ",
                                  "[",
                                  "..",
                                  "/",
                                  "\\",
                                  "-",
                                  ",",
                                  "9",
                                  "1e400",
                                  "32768",
                                  "99999999999999999999",
                                  QByteArray(400, '9'),
                                  QByteArray(1, '\0'),
                                  "\x81",
                                  "\xFF",
                                  "\x1A"};
  return all;
}

QString complaintOfRow(const CheckRow& row, FewFiles& folder) {
  static const QHash<CheckKind, int> depths{
      {CheckKind::Title, 0}, {CheckKind::Definition, 1}, {CheckKind::Weapon, 2}, {CheckKind::Target, 2}};
  const int depth = depths[row.kind];
  const QStringView behind = QStringView(row.text).mid(depth);
  if (row.kind == CheckKind::Title)
    return row.state == CheckState::Plain ? QString() : "a title with a colour";
  if (checkDepth(row.text) < depth) return "a row at another depth: " + row.text;
  if (behind.startsWith(u"Datei nicht vorhanden: ") != (row.state == CheckState::Missing))
    return "text and state differ: " + row.text;
  if (folder.readable(kFolder + row.file) != (row.state == CheckState::Found))
    return "state and folder differ: " + row.text;
  if (missingText(row, kFolder).isEmpty() != (row.state == CheckState::Found))
    return "a red row that says nothing: " + row.text;
  return {};
}

/// The whole walk; rows below a definition belong to one that was found.
QString complaintOfCheck(FewFiles& folder, StationFuzzResult& result, size_t titles) {
  size_t seen = 0;
  QString complaint;
  CheckState above = CheckState::Plain;
  const bool whole = reported(
      [&](const Error& error) {
        complaint = "the checker failed: " + error.description();
        return ErrorAnswer::Abort;
      },
      [&](Steps& step) {
        checkConfiguration(folder, kFolder, step, [&](const CheckRow& row) {
          complaint = complaintOfRow(row, folder);
          seen += row.kind == CheckKind::Title;
          result.found += row.state == CheckState::Found;
          if (row.kind == CheckKind::Definition) above = row.state;
          if (checkDepth(row.text) > 1 && row.kind != CheckKind::Title && row.kind != CheckKind::Definition &&
              above != CheckState::Found)
            complaint = "a row below nothing: " + row.text;
          return complaint.isEmpty();
        });
      });
  if (complaint.isEmpty() && whole && seen != titles) complaint = "the checker counts other titles";
  return complaint;
}

/// What was read is written and read again; a repeat count beyond 16 bits can't be written.
QString complaintOfReaders(const QByteArray& ini, const QByteArray& definition) {
  const auto disciplines = stationDisciplinesFromBytes(ini);
  if (stationDisciplinesFromBytes(stationDisciplinesToBytes(disciplines)).size() != disciplines.size())
    return "the ini reader loses what the writer wrote";
  try {
    const Definition read = definitionFromBytes(definition);
    // Thousands of repeats cost time and show nothing new.
    if (read.zeitenAnzahl.size() + read.schussAnzahl.size() + read.positionsAnzahl.size() +
            read.serienAnzahl.size() <=
        8)
      definitionFromBytes(definitionToBytes(read));
  } catch (const Error& error) {
    if (error.number() != kOverflow) return "the def reader failed: " + error.description();
  }
  return {};
}

QString complaintOf(FewFiles& folder, StationFuzzResult& result) {
  const QString iniPath = kFolder + EsaPreisIni;
  QString complaint = complaintOfReaders(folder.files[iniPath], folder.files[kFolder + "a.def"]);
  if (!complaint.isEmpty()) return complaint;
  try {
    const QStringList titles = groupTitles(folder, iniPath);
    result.titles += static_cast<int>(titles.size());
    for (const QString& title : titles)
      if (title.contains('"') || title.contains('=') || title.startsWith(' ') || title.endsWith(' '))
        return "a title as " + title;
    complaint = complaintOfCheck(folder, result, static_cast<size_t>(titles.size()));
    if (!complaint.isEmpty()) return complaint;
    const DisciplineGrid grid = readDisciplineGrid(folder, kFolder);
    if (grid.iniMissing || grid.rows.size() != static_cast<size_t>(titles.size()))
      return "the firing line counts other titles";
    for (size_t i = 0; i < grid.rows.size(); ++i)
      if (grid.rows[i].title != titles[static_cast<qsizetype>(i)])
        return "line and groups differ: " + titles[static_cast<qsizetype>(i)];
  } catch (const Error& error) {
    // A shot count beyond all range: the operator is asked, nothing is lost.
    if (error.number() != kOverflow) return "failed: " + error.description();
  }
  return {};
}

}  // namespace

StationFuzzResult fuzzStationFiles(quint64 seed, int files) {
  Dice dice(seed);
  StationFuzzResult result;
  FewFiles folder;
  folder.files[kFolder + "w.def"] = {};
  while (result.files < files && result.complaint.isEmpty()) {
    const bool isIni = result.files % 2 == 0;
    QByteArray wounded = isIni ? kIni : kDefinition;
    for (qsizetype wounds = 1 + dice.below(6); wounds > 0 && !wounded.isEmpty(); --wounds)
      wound(wounded, pieces(), dice);
    folder.files[kFolder + EsaPreisIni] = isIni ? wounded : kIni;
    folder.files[kFolder + "a.def"] = isIni ? kDefinition : wounded;
    ++result.files;
    result.complaint = complaintOf(folder, result);
    if (!result.complaint.isEmpty())
      result.complaint += "\n" + QString::fromLatin1(wounded.toPercentEncoding());
  }
  return result;
}

}  // namespace qk::test
