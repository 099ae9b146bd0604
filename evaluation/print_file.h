// The file that one sheet is printed from: a copy of "ergschdruck.mdb" in the folder for temporary files.
#pragma once

#include <QString>
#include <memory>

#include "platform/workplace.h"

namespace qk {

namespace dao {
class Database;
}

/// The file goes with this object, whatever happened.
class Druckdatei {
 public:
  /// Copies the template and opens the copy. Errors name template and folder, and leave no file.
  Druckdatei(const Workplace& workplace, const QString& sVorlage);
  ~Druckdatei();
  Druckdatei(const Druckdatei&) = delete;
  Druckdatei& operator=(const Druckdatei&) = delete;

  const QString& path() const { return path_; }
  /// Error 91 once it is closed.
  dao::Database& db() const;
  /// What was written stands in the file then, for whoever reads it next.
  void close();

 private:
  Workplace workplace_;
  QString path_;
  std::unique_ptr<dao::Database> db_;
};

}  // namespace qk
