// A list on its way into the competition: chosen, assigned, judged, taken over, taken back. It asks and
// reports through the dialogs; nothing is written before takeOver().
#pragma once

#include <QObject>
#include <memory>

#include "masterdata/lists/judge.h"
#include "platform/workplace.h"

namespace qk {

namespace dao {
class Database;
}

class ImportSession : public QObject {
  Q_OBJECT

 public:
  /// The database outlives the session.
  ImportSession(const Workplace& workplace, dao::Database& database);
  ~ImportSession() override;

  /// Asked now and then while a list is read or judged; false stops it. The event loop may run in it.
  lists::GoesOn goesOn;

  lists::ListKind kind() const { return kind_; }
  /// Another kind: the columns are recognised anew.
  void setKind(lists::ListKind kind);
  /// Reads the file and recognises its columns. False when it can't be read, which a box tells, or was
  /// stopped.
  bool load(const QString& path);
  const QString& path() const { return path_; }
  bool isLoaded() const { return table_ != nullptr; }
  const lists::CsvTable& table() const { return *table_; }

  const lists::Assignment& assignment() const { return assignment_; }
  /// By hand; the same heading of another column is given up there. Remembered for the next file.
  void assign(int column, const QString& heading);

  /// Judges the list against what stands in the competition now. False when it was stopped or failed.
  bool judge();
  /// nullptr when nothing is judged.
  const lists::Judgement* judgement() const { return judgement_.get(); }
  /// What keeps it from being judged, a German sentence; empty when nothing.
  QString missing() const;
  /// Rows that would be written.
  int writable() const;

  /// Writes all of it or nothing, after a question. What the status line says; empty when nothing was done.
  QString takeOver();
  /// Takes the last import back, after a question.
  QString undo();
  /// Asks for a file and writes the competition's list of this kind into it.
  QString exportList();

 Q_SIGNALS:
  /// The judgement is about to go.
  void dropping();
  /// Columns, judgement, or both are others now.
  void changed();

 private:
  void drop();

  Workplace workplace_;
  dao::Database& database_;
  lists::ListKind kind_ = lists::ListKind::Shooters;
  QString path_;
  std::shared_ptr<const lists::CsvTable> table_;
  lists::Assignment assignment_;
  std::unique_ptr<lists::Judgement> judgement_;
};

}  // namespace qk
