// Opening a competition file: this program's own tables and column are made where they are missing, then the
// file becomes the main database and its head data are read. Needs no window.
#pragma once

#include <QString>
#include <functional>
#include <memory>

#include "app/ground/global_variablen.h"
#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "platform/runtime/error.h"
#include "platform/runtime/retry.h"
#include "platform/workplace.h"

namespace qk {

/// Creates a table, with the rows it has there, from the template database. True if it was created; false
/// when it stood there already (nothing is said) or after a failure that was shown.
bool TabelleAnlegen(const Workplace& workplace, const QString& sVorlage, const QString& sTabelle,
                    const QString& sWettkampf);

/// Copies the index definitions of a table from the template. A step that fails is passed over.
void IndizesUebertragen(const QString& sVorlage, const QString& sTabelle, const QString& sWettkampf);

/// Adds a column if it is missing. `nErgebnis` is 0 when it was added, 2 when it stood there already. A
/// positive `nGroesse` sets the size. Reports its own failures; `nErgebnis` then stays.
void FeldAnlegen(const Workplace& workplace, const QString& sWettkampf, const QString& sTabelle,
                 const QString& sFeld, dao::FieldType typ, int nGroesse, int& nErgebnis);

/// True where the cleaned absolute path has a dot before the extension of the file.
bool hasDotBeforeExtension(const QString& path);

/// The competition that is open. Owns the recordset that is held while it is; the database itself belongs to
/// the program-wide values.
class CompetitionOpening {
 public:
  CompetitionOpening(const Workplace& workplace, GlobalVariablen& global);

  /// The open dialog of the window: asks for a path and, when one is given, opens it. Its own statements run
  /// as steps of the opening.
  std::function<void(Steps& step)> onOpenDialog;
  /// The title of the main window for a path.
  std::function<void(const QString& caption)> onCaption;

  /// An empty path takes the one opened last. A path that doesn't exist or isn't a competition's runs the
  /// open dialog first. False after a failure, which was reported; what was open before stays open then.
  bool setWettkampf(const QString& path);
  const QString& sWettkampf() const { return sWettkampf_; }

  /// All shots in the order of their time, held while a competition is open; null otherwise.
  const dao::Recordset* shots() const { return openShots_.get(); }

  const QString& bezeichnung() const { return bezeichnung_; }
  const QString& bezeichnung2() const { return bezeichnung2_; }
  const QString& ort() const { return ort_; }

  /// Closes recordset and database; failures are ignored.
  void close();

 private:
  bool open(Steps& step);
  void backToWhatIsOpen();
  bool fileChosen(Steps& step);
  void showCaption();
  void makeOwnTables();
  bool isWithinReach() const;
  bool openMain();
  void refuse(const Error& error) const;
  ErrorReport report() const;

  Workplace workplace_;
  GlobalVariablen& global_;
  QString sWettkampf_;
  QString opened_;  // path of what is open
  QString bezeichnung_, bezeichnung2_, ort_;
  std::unique_ptr<dao::Recordset> openShots_;
};

}  // namespace qk
