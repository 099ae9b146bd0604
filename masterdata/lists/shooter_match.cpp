#include "masterdata/lists/shooter_match.h"

#include "masterdata/people/person_name.h"

namespace qk::lists {

namespace {

class Matching {
 public:
  Matching(std::vector<SaidOfShooter>& rows, const ShooterReader& reader, const ShooterIndex& index)
      : rows_(rows), reader_(reader), index_(index) {}

  std::vector<int> run() {
    refuseTwins();
    std::vector<int> found;
    for (SaidOfShooter& said : rows_) found.push_back(match(said));
    refuseSameShooter(found);
    return found;
  }

 private:
  QString numberOf(const SaidOfShooter& said) const { return said.text(index_.number); }
  QString licenceOf(const SaidOfShooter& said) const { return said.text(index_.licence); }
  QString birthOf(const SaidOfShooter& said) const { return said.text(index_.birthDate); }

  void fault(SaidOfShooter& said, const QString& column, const QString& why) const {
    said.judged.faults.push_back({reader_.cellOf(column), column, why});
  }
  void rowFault(SaidOfShooter& said, const QString& why) const {
    said.judged.faults.push_back({-1, {}, why});
  }

  /// What may stand only once in a list; nobody knows which of the rows is the right one.
  void refuseTwins() {
    refuseTwins([this](const SaidOfShooter& said) { return foldedText(numberOf(said)); },
                heading::StartNumber, "Die Startnummer steht auch in Zeile %1.");
    refuseTwins([this](const SaidOfShooter& said) { return foldedText(licenceOf(said)); }, heading::Licence,
                "Die Ausweisnummer steht auch in Zeile %1.");
    refuseTwins(
        [this](const SaidOfShooter& said) {
          const bool numbered = !numberOf(said).isEmpty() || !licenceOf(said).isEmpty();
          const QString name = numbered ? QString() : saidName(said, index_);
          return name.isEmpty() ? QString() : index_.personKey(name, birthOf(said));
        },
        {}, "Name und Geburtsdatum stehen auch in Zeile %1.");
  }

  template <class Key>
  void refuseTwins(const Key& keyOf, const QString& column, const QString& why) {
    QHash<QString, Positions> seen;
    for (size_t i = 0; i < rows_.size(); ++i)
      if (const QString key = keyOf(rows_[i]); !key.isEmpty()) seen[key].push_back(static_cast<int>(i));
    refuseAll(seen, column, why);
  }

  template <class Key>
  void refuseAll(const QHash<Key, Positions>& seen, const QString& column, const QString& why) {
    for (const Positions& twins : seen) {
      if (twins.size() < 2) continue;
      for (const int twin : twins) {
        const int other = twin == twins[0] ? twins[1] : twins[0];
        const QString text = why.arg(rows_[static_cast<size_t>(other)].judged.line);
        SaidOfShooter& said = rows_[static_cast<size_t>(twin)];
        column.isEmpty() ? rowFault(said, text) : fault(said, column, text);
      }
    }
  }

  void refuseSameShooter(const std::vector<int>& found) {
    QHash<int, Positions> seen;
    for (size_t i = 0; i < found.size(); ++i)
      if (found[i] != kNobody) seen[found[i]].push_back(static_cast<int>(i));
    refuseAll(seen, {}, "Zeile %1 meint denselben Schützen.");
  }

  int match(SaidOfShooter& said) const {
    if (!numberOf(said).isEmpty()) return byNumber(said);
    if (!licenceOf(said).isEmpty()) return byLicence(said);
    return byPerson(said);
  }

  int byNumber(SaidOfShooter& said) const {
    const Positions& found = index_.byNumber(numberOf(said));
    if (found.size() > 1) {
      fault(said, heading::StartNumber, "Die Startnummer steht im Wettkampf mehrmals.");
      return kNobody;
    }
    const int match = found.empty() ? kNobody : found.front();
    if (!licenceOf(said).isEmpty())
      for (const int other : index_.byLicence(licenceOf(said)))
        if (other != match) {
          fault(said, heading::Licence,
                "Die Ausweisnummer gehört im Wettkampf zu " + index_.describe(other) + ".");
          return match;
        }
    if (match == kNobody)
      remarkNamesake(said);
    else
      refuseOther(said, match, heading::StartNumber, "Die Startnummer");
    return match;
  }

  int byLicence(SaidOfShooter& said) const {
    const Positions& found = index_.byLicence(licenceOf(said));
    if (found.size() > 1) {
      fault(said, heading::Licence, "Die Ausweisnummer steht im Wettkampf mehrmals.");
      return kNobody;
    }
    if (found.size() == 1) {
      refuseOther(said, found.front(), heading::Licence, "Die Ausweisnummer");
      return found.front();
    }
    // Known without his licence so far: it comes with this list.
    const Positions& persons = index_.byPerson(saidName(said, index_), birthOf(said));
    if (persons.size() == 1 && !index_.birthKey(birthOf(said)).isEmpty() &&
        index_.text(persons.front(), index_.licence).isEmpty())
      return persons.front();
    remarkNamesake(said);
    return kNobody;
  }

  int byPerson(SaidOfShooter& said) const {
    const QString name = saidName(said, index_);
    if (name.isEmpty()) {
      rowFault(said, "Weder Startnummer noch Ausweisnummer noch Name: Wer gemeint ist, steht nicht fest.");
      return kNobody;
    }
    const Positions& found = index_.byPerson(name, birthOf(said));
    if (found.size() == 1) return found.front();
    if (found.size() > 1) {
      rowFault(said,
               "Diesen Namen mit diesem Geburtsdatum gibt es im Wettkampf mehrmals; eine Startnummer "
               "sagt, wer gemeint ist.");
      return kNobody;
    }
    const Positions& namesakes = index_.byName(name);
    if (!namesakes.empty() && index_.birthKey(birthOf(said)).isEmpty())
      rowFault(said,
               QString("Ist %1 gemeint? Ohne Geburtsdatum, Start- oder Ausweisnummer steht es nicht fest.")
                   .arg(index_.describe(namesakes.front())));
    remarkNamesake(said);
    return kNobody;
  }

  void remarkNamesake(SaidOfShooter& said) const {
    const QString name = saidName(said, index_);
    if (name.isEmpty()) return;
    // Of those with the name, whoever may be the same: with the same date, or where one date is unknown.
    const bool dated = !index_.birthKey(birthOf(said)).isEmpty();
    const Positions* others = dated ? &index_.byPerson(name, birthOf(said)) : &index_.byName(name);
    if (others->empty()) others = &index_.byPerson(name, {});
    if (!others->empty())
      said.judged.remarks << "Im Wettkampf steht schon " + index_.describe(others->front()) + ".";
  }

  /// A number never turns one person into another: neither family name nor first name nor birth date agree.
  void refuseOther(SaidOfShooter& said, int match, const QString& column, const QString& what) const {
    const QString name = saidName(said, index_);
    if (name.isEmpty() || foldedText(name) == foldedText(index_.text(match, index_.name))) return;
    const QString date = index_.birthKey(birthOf(said));
    if (!date.isEmpty() && date == index_.birthKey(index_.text(match, index_.birthDate))) return;
    const PersonName there =
        personName({index_.text(match, index_.name), index_.text(match, index_.firstName)});
    const auto same = [](const QString& a, const QString& b) {
      return !a.isEmpty() && foldedText(a) == foldedText(b);
    };
    if (same(said.surname, there.last) || same(said.firstName, there.first)) return;
    if (said.surname.isEmpty() && sharesWord(name, index_.text(match, index_.name))) return;
    fault(said, column, QString("%1 gehört im Wettkampf zu %2.").arg(what, index_.describe(match)));
  }

  static bool sharesWord(const QString& a, const QString& b) {
    const QStringList words = foldedText(b).split(u' ');
    const QStringList said = foldedText(a).remove(u',').split(u' ');
    return std::any_of(said.begin(), said.end(), [&](const QString& word) { return words.contains(word); });
  }

  std::vector<SaidOfShooter>& rows_;
  const ShooterReader& reader_;
  const ShooterIndex& index_;
};

}  // namespace

std::vector<int> matchShooters(std::vector<SaidOfShooter>& rows, const ShooterReader& reader,
                               const ShooterIndex& index) {
  return Matching(rows, reader, index).run();
}

QString saidName(const SaidOfShooter& said, const ShooterIndex& index) {
  const QString exact = said.text(index.name);
  if (!exact.isEmpty()) return exact;
  if (!said.surname.isEmpty()) return storedName({said.surname, said.firstName}).name;
  if (said.fullName.isEmpty()) return {};
  PersonName person = personNameOf(said.fullName);
  if (person.first.isEmpty() && !said.firstName.isEmpty())
    return storedName({person.last, said.firstName}).name;
  return storedName(person).name;
}

}  // namespace qk::lists
