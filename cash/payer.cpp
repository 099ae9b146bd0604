#include "cash/payer.h"

#include "platform/dao/sql/quote.h"

namespace qk {

QString Payer::bedingung() const {
  switch (art_) {
    case Art::Schuetze:
      return "Startnummer = " + dao::sql::quoted(Startnummer_);
    case Art::Verein:
      return "VereinID = " + QString::number(id_);
    case Art::Mannschaft:
      return "MannID = " + QString::number(id_);
  }
  return {};
}

QString Payer::werfall() const {
  switch (art_) {
    case Art::Schuetze:
      return "Der Schütze";
    case Art::Verein:
      return "Der Verein";
    case Art::Mannschaft:
      return "Die Mannschaft";
  }
  return {};
}

QString Payer::wesfall() const {
  switch (art_) {
    case Art::Schuetze:
      return "des Schützen";
    case Art::Verein:
      return "des Vereins";
    case Art::Mannschaft:
      return "der Mannschaft";
  }
  return {};
}

}  // namespace qk
