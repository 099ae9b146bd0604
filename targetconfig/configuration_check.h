// The walk through the target system's configuration: which def, weapon and target files esa_preis.ini and
// its def files name, and which of them are there. Reads only; needs no window.
#pragma once

#include <QString>
#include <QStringView>
#include <vector>

#include "platform/runtime/retry.h"

namespace qk {

class Files;

enum class CheckKind { Title, Definition, Weapon, Target };
enum class CheckState { Plain, Found, Missing };

struct CheckRow {
  CheckKind kind = CheckKind::Title;
  CheckState state = CheckState::Plain;
  QString text;   ///< as shown, behind as many tabs as the row is deep
  QString file;   ///< bare name that was looked for; empty for a title, or where no name stands
  QString namer;  ///< where the name stands: esa_preis.ini, or the def file
};

/// Takes the rows as the walk finds them, so that a walk that is aborted has shown what it found; false ends
/// the walk.
using CheckSink = std::function<bool(const CheckRow&)>;

/// `folder` with its final separator. Each file is read as one statement of `step`: where it was ignored that
/// it can't be read, the walk goes on behind it. A file that is damaged or cut off gives what can be read of
/// it.
void checkConfiguration(Files& files, const QString& folder, Steps& step, const CheckSink& sink);

/// Tabs at the start of the text.
int checkDepth(QStringView text);

struct CheckCounts {
  int titles = 0, found = 0, missing = 0;
};
CheckCounts countRows(const std::vector<CheckRow>& rows);
/// "3 Disziplinen, 8 Dateien vorhanden, 1 fehlt".
QString countsText(const CheckCounts& counts);

/// What is missing, in which folder, and who names it; empty for a row that isn't missing.
QString missingText(const CheckRow& row, const QString& folder);

}  // namespace qk
