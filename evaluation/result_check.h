// What a typed result, weapon or date may be. Doubtful values can be stored all the same: an official may
// know better than the discipline.
#pragma once

#include <QDate>
#include <QString>
#include <QVariant>

#include "capture/records.h"

namespace qk {

struct CellCheck {
  enum class Verdict { Fine, Doubtful, Impossible };
  Verdict verdict = Verdict::Fine;
  QString text = {};  ///< what is to be said about it; a question where it is doubtful
};

/// The range of results of a discipline: shots of a series times the most that a shot counts, and whole rings
/// where it counts no tenths; teilers up to what stands for "no limit". Without a result it is impossible.
CellCheck checkErgebnis(const Disziplin& discipline, const QVariant& value);
/// One of the weapons that the discipline admits, where it names any.
CellCheck checkWaffe(const Disziplin& discipline, const QString& text);
/// A text that is no date is impossible; none, and one that lies ahead or long ago, is doubtful.
CellCheck checkDatum(const QVariant& value, const QDate& today);

}  // namespace qk
