// Whom payments belong to: a shooter by his start number, a club or a team by its id.
#pragma once

#include <QString>

namespace qk {

class Payer {
 public:
  enum class Art { Schuetze, Verein, Mannschaft };

  /// A shooter; implicit, for that is what nearly all of them are.
  Payer(const QString& Startnummer) : Startnummer_(Startnummer) {}
  static Payer verein(qint32 id) { return Payer(Art::Verein, id); }
  static Payer mannschaft(qint32 id) { return Payer(Art::Mannschaft, id); }

  Art art() const { return art_; }
  const QString& Startnummer() const { return Startnummer_; }
  qint32 id() const { return id_; }

  /// Which rows of `Kasse_Eingang` are his, for a query.
  QString bedingung() const;
  QString werfall() const;  ///< "Der Schütze"
  QString wesfall() const;  ///< "des Schützen"

 private:
  Payer(Art art, qint32 id) : art_(art), id_(id) {}

  Art art_ = Art::Schuetze;
  QString Startnummer_;
  qint32 id_ = 0;
};

}  // namespace qk
