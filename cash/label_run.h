// Printing the labels of a purchase: for each discipline or combination that is ticked, as many labels as
// told, each a document of its own, and a second document for a second label.
#pragma once

#include <QDateTime>
#include <functional>
#include <vector>

#include "cash/barcode_text.h"
#include "cash/label_text.h"
#include "platform/runtime/fonttext.h"

namespace qk {

class LabelOutput;
namespace dao {
class Database;
}

/// A ticked row of the selection.
struct LabelRow {
  bool kombination = false;
  int id = 0;  ///< discipline or combination
  QString name = {};
  int anzahl = 0;
};

struct LabelPosition {
  int x = 0, y = 0;  ///< twips
  bool querformat = true;
};

/// How labels look; kept in the settings of the workstation.
struct LabelLayout {
  QString printer = {};
  BarcodeKind kind = BarcodeKind::Code128;
  LabelPosition first = {}, second = {};
  bool barcode = false, text = false, zweitesEtikett = false;
  QString vorlage = {};  ///< template of the text block
  FontSpec textFont = {};
  FontSpec barcodeFont = {};
  /// The bars are drawn by the program: no bar code font is chosen.
  bool eigeneBalken = true;
};

struct LabelShooter {
  QString startnummer = {};
  int id = 0;
  LabelFields felder = {};  ///< all but the discipline, which each row brings
};

struct LabelTime {
  std::function<QDateTime()> now;
  std::function<void(int)> pause;  ///< milliseconds; may run the event loop
};

/// Prints all rows on the layout's printer and goes back to the one before. An error leaves the label printer
/// chosen: Error 3021, naming the discipline, where no stake pays for it; those of store and printer pass.
void PrintScheibenEtiketten(LabelOutput& output, dao::Database& database, const std::vector<LabelRow>& rows,
                            const LabelLayout& layout, const LabelShooter& shooter, const LabelTime& time);

}  // namespace qk
