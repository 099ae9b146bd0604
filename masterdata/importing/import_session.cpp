#include "masterdata/importing/import_session.h"

#include <QFileInfo>

#include "masterdata/lists/export.h"
#include "masterdata/lists/store_state.h"
#include "masterdata/lists/take_over.h"
#include "platform/dao/database.h"
#include "platform/dialog/dialogs.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/datetext.h"
#include "platform/runtime/files.h"
#include "platform/settings/settings.h"

namespace qk {

namespace {

const QString kTitle = "Listen";

/// "120 neu, 4 geändert"
QString counts(int added, int changed) {
  QStringList parts;
  if (added > 0) parts << QString("%1 neu").arg(added);
  if (changed > 0) parts << QString("%1 geändert").arg(changed);
  return parts.isEmpty() ? "nichts Neues" : parts.join(", ");
}

}  // namespace

ImportSession::ImportSession(const Workplace& workplace, dao::Database& database)
    : workplace_(workplace), database_(database) {}

ImportSession::~ImportSession() = default;

void ImportSession::drop() {
  Q_EMIT dropping();
  judgement_.reset();
}

void ImportSession::setKind(lists::ListKind kind) {
  kind_ = kind;
  drop();
  if (table_) assignment_ = lists::recognised(kind_, table_->rows.front(), workplace_.settings);
  Q_EMIT changed();
}

bool ImportSession::load(const QString& path) {
  bool loaded = false;
  reported(fehlerReport(workplace_.dialogs, "Die Liste konnte nicht gelesen werden."), [&](Steps&) {
    lists::CsvReading reading = lists::readCsv(workplace_.files.read(path), goesOn);
    if (reading.stopped) return;
    if (!reading.ok())
      return workplace_.dialogs.note(reading.refusal + "\n" + path, BoxIcon::Exclamation, kTitle);
    drop();
    path_ = path;
    table_ = std::make_shared<const lists::CsvTable>(std::move(reading.table));
    assignment_ = lists::recognised(kind_, table_->rows.front(), workplace_.settings);
    loaded = true;
  });
  Q_EMIT changed();
  return loaded;
}

void ImportSession::assign(int column, const QString& heading) {
  if (!heading.isEmpty())
    for (QString& other : assignment_)
      if (other == heading) other.clear();
  assignment_[column] = heading;
  drop();
  reported(fehlerReport(workplace_.dialogs, "Die Zuordnung konnte nicht gemerkt werden."),
           [&](Steps&) { lists::remember(kind_, table_->rows.front(), assignment_, workplace_.settings); });
  Q_EMIT changed();
}

QString ImportSession::missing() const {
  return table_ ? lists::missingColumns(kind_, assignment_) : "Es ist noch keine Datei gewählt.";
}

bool ImportSession::judge() {
  drop();
  if (!missing().isEmpty()) return false;
  reported(fehlerReport(workplace_.dialogs, "Die Liste konnte nicht beurteilt werden."), [&](Steps&) {
    auto judged = std::make_unique<lists::Judgement>(
        lists::judge(kind_, table_, assignment_, lists::readStoreState(database_), goesOn));
    if (!judged->stopped) judgement_ = std::move(judged);
  });
  Q_EMIT changed();
  return judgement_ != nullptr;
}

int ImportSession::writable() const {
  return judgement_ ? judgement_->count(lists::Verdict::New) + judgement_->count(lists::Verdict::Changed) : 0;
}

QString ImportSession::takeOver() {
  QString done;
  if (writable() == 0) return done;
  const int faulty = judgement_->count(lists::Verdict::Faulty);
  QString question =
      QString("Soll übernommen werden: %1?")
          .arg(counts(judgement_->count(lists::Verdict::New), judgement_->count(lists::Verdict::Changed)));
  if (faulty > 0)
    question += faulty == 1 ? "\nEine fehlerhafte Zeile bleibt draußen."
                            : QString("\n%1 fehlerhafte Zeilen bleiben draußen.").arg(faulty);
  if (workplace_.dialogs.show(
          {.text = question, .title = kTitle, .icon = BoxIcon::Question, .buttons = BoxButtons::YesNo}) !=
      BoxAnswer::Yes)
    return done;
  reported(fehlerReport(workplace_.dialogs, "Die Liste wurde nicht übernommen."), [&](Steps&) {
    lists::TakenOver taken =
        lists::takeOver(database_, *judgement_, QFileInfo(path_).fileName(), workplace_.clock.now());
    if (!taken.written) {
      drop();
      if (taken.fresh) judgement_ = std::make_unique<lists::Judgement>(std::move(*taken.fresh));
      workplace_.dialogs.note(
          "Im Wettkampf hat sich inzwischen etwas geändert; übernommen wurde nichts.\nDie Vorschau ist neu "
          "beurteilt. Bitte noch einmal ansehen.",
          BoxIcon::Exclamation, kTitle);
      return;
    }
    done = "Übernommen: " + counts(taken.added, taken.changed) + ".";
  });
  if (done.isEmpty())
    Q_EMIT changed();
  else
    judge();
  return done;
}

QString ImportSession::undo() {
  QString done;
  reported(fehlerReport(workplace_.dialogs, "Der Import wurde nicht zurückgenommen."), [&](Steps&) {
    const auto last = lists::lastImport(database_);
    if (!last)
      return workplace_.dialogs.note("Es gibt keinen Import, der sich zurücknehmen ließe.",
                                     BoxIcon::Information, kTitle);
    if (!workplace_.dialogs.confirm(
            QString("Soll der Import »%1« vom %2 zurückgenommen werden (%3)?")
                .arg(last->name, dateText(last->when), counts(last->added, last->changed)),
            BoxIcon::Question, BoxAnswer::No))
      return;
    const lists::Undone undone = lists::undoLastImport(database_);
    if (!undone.done) {
      constexpr int kMost = 12;
      QStringList lines = undone.refusals.mid(0, kMost);
      if (undone.refusals.size() > kMost)
        lines << QString("… und %1 weitere").arg(undone.refusals.size() - kMost);
      return workplace_.dialogs.note(
          "Der Import lässt sich nicht zurücknehmen, geändert wurde nichts:\n" + lines.join('\n'),
          BoxIcon::Exclamation, kTitle);
    }
    done = QString("Zurückgenommen: »%1«.").arg(last->name);
  });
  if (!done.isEmpty() && judgement_) judge();
  return done;
}

QString ImportSession::exportList() {
  QString done;
  reported(fehlerReport(workplace_.dialogs, "Die Liste wurde nicht geschrieben."), [&](Steps&) {
    QString path = workplace_.dialogs.saveFile("Liste (*.csv)|*.csv|Alle Dateien (*.*)|*.*", path_);
    if (path.isEmpty()) return;
    if (QFileInfo(path).suffix().isEmpty()) path += ".csv";
    workplace_.files.replace(path, lists::exportedCsv(kind_, *lists::readStoreState(database_)));
    done = lists::kindName(kind_) + " geschrieben: " + path;
  });
  return done;
}

}  // namespace qk
