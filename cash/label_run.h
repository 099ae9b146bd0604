// Printing the labels of a purchase: for each discipline or combination that is ticked, as many labels as
// told, each a document of its own, and a second document for a second label.
#pragma once

#include <QDateTime>
#include <functional>
#include <vector>

#include "cash/barcode_text.h"
#include "cash/label_text.h"
#include "platform/print/bars.h"
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
};

struct LabelShooter {
  QString startnummer = {};
  int id = 0;
  LabelFields felder = {};  ///< all but the discipline, which each row brings
};

struct LabelTime {
  std::function<QDateTime()> now;
  std::function<void(int)> pause;  ///< milliseconds; may run the event loop
  std::function<bool()> weiter;    ///< asked before each label; false stops the run there
};

/// What the bar code of a label says, and how a bar code font wants it.
struct LabelBarcode {
  Symbology symbology = Symbology::Code128;
  QString content = {}, encoded = {};
};
LabelBarcode barcodeOf(const LabelRow& row, const LabelLayout& layout, const LabelShooter& shooter);

/// The text block of a row's labels, before the counters of its copies are filled in.
QString textOf(const LabelRow& row, const LabelLayout& layout, const LabelShooter& shooter);

/// One label: a document, or two with a second label.
void druckeEtikett(LabelOutput& output, const LabelLayout& layout, const LabelBarcode& barcode,
                   LabelCopies& copies);

/// Prints all rows on the layout's printer (where it names one) and goes back to the one before; how many
/// labels it printed. An error leaves the label printer chosen: Error 3021, naming the discipline, where no
/// stake pays for it; those of store and printer pass.
int PrintScheibenEtiketten(LabelOutput& output, dao::Database& database, const std::vector<LabelRow>& rows,
                           const LabelLayout& layout, const LabelShooter& shooter, const LabelTime& time);

}  // namespace qk
