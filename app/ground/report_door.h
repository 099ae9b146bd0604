// The one door to reports: whoever can show or print them stands behind it.
#pragma once

#include <QString>

namespace qk {

struct ReportOrder {
  enum class Ziel { Fenster = 0, Drucker = 1 };
  QString reportFile;
  QString dataFile;
  QString unterbericht;  ///< name of a subreport with a data file of its own; empty without
  QString unterberichtDatei;
  QString titel;
  QString parameter;  ///< "Tageswahl;Date(YYYY,MM,dd);TRUE;" or empty
  Ziel ziel = Ziel::Fenster;
  int zoom = 90;  ///< per cent, in the window
};

class ReportDoor {
 public:
  virtual ~ReportDoor() = default;
  /// Returns when the report is printed, or its window closed: the data file may go then. False when the
  /// operator gave the printing up. Errors pass.
  virtual bool run(const ReportOrder& order) = 0;
};

}  // namespace qk
