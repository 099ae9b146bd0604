#include "masterdata/making/demo_shooters.h"

#include <QDate>
#include <array>

#include "masterdata/making/demo_rows.h"

namespace qk {

namespace {

constexpr int ReferenceYear = 2026;
constexpr int OldestAge = 88;
constexpr int ShooterWithLetter = 40;

const std::array<const char*, 24> Surnames = {
    "Bäumler",    "Dörfler", "Eßer",    "Förster",     "Göbel",     "Hübner",   "Jung",    "Köhler",
    "Lößlein",    "Märkl",   "Nüßlein", "Ostermüller", "Pröll",     "Rößler",   "Schäfer", "Tölzer",
    "Überreiter", "Völkl",   "Wünsch",  "Zäch",        "Bräutigam", "Grünwald", "Strauß",  "Kröner"};
const std::array<const char*, 12> MaleNames = {"Jürgen", "Günther", "Björn", "Matthäus", "Sören", "Götz",
                                               "Lukas",  "Anton",   "Max",   "Rüdiger",  "Veit",  "Jonas"};
const std::array<const char*, 12> FemaleNames = {"Bärbel", "Jördis", "Zoë",   "Käthe", "Änne", "Sörine",
                                                 "Anna",   "Sophie", "Maria", "Lena",  "Eva",  "Günay"};
const std::array<const char*, 6> Streets = {"Schützenstraße", "Mühlgäßchen", "Am Königsplatz",
                                            "Bürgerweg",      "Zur Höhe",    "Äußerer Ring"};
struct Home {
  const char* town;
  const char* code;
  int club;
  std::array<int, 2> teams;
};
const std::array<Home, 6> Homes = {{{"Grünau", "91001", 1, {1, 2}},
                                    {"Würzbrunn", "91002", 2, {3, 3}},
                                    {"Höfen", "91003", 3, {4, 4}},
                                    {"Äußere Au", "91004", 4, {5, 5}},
                                    {"Öd", "91005", 5, {6, 6}},
                                    {"Münnerfeld", "91006", 6, {7, 7}}}};

template <typename List>
auto pick(const List& list, SeededRandom& random) {
  return list.at(static_cast<size_t>(random.below(static_cast<int>(list.size()))));
}

/// A birthday that gives the age in the reference year, whatever the day of it.
QDate birthday(int age, SeededRandom& random) {
  const int year = ReferenceYear - age;
  return QDate(year, 1, 1).addDays(random.below(QDate(year, 1, 1).daysInYear()));
}

struct Person {
  QString sex;
  int age = 0;
};

/// Someone of the class that the running number points at, so that every class has shooters.
Person personOfClass(const TableData& classes, int number, SeededRandom& random) {
  const QVariantList& row = classes.rows.at(static_cast<size_t>(number) % classes.rows.size());
  const int from = row.at(classes.columns.indexOf("Alter von")).toInt();
  const int to = std::min(row.at(classes.columns.indexOf("Alter bis")).toInt(), OldestAge);
  const int wanted = row.at(classes.columns.indexOf("Geschlecht")).toInt();
  const int youngest = std::max(from, 10);
  const int sex = wanted == 0 ? 1 + random.below(2) : wanted;
  return {sex == 1 ? "M" : "W", youngest + random.below(to - youngest + 1)};
}

}  // namespace

TableData generatedShooters(int count, int firstId, const TableData& classes, SeededRandom& random) {
  TableData data{"Schützen",
                 {"ID", "Startnummer", "Anrede", "Name", "Vorname", "Strasse", "PLZ", "Ort", "Telefon",
                  "Geschlecht", "Gebdat", "AusweisNr", "VereinsID", "lMannID", "KlassenID", "SPOKey"},
                 {}};
  for (int i = 0; i < count; ++i) {
    const int id = firstId + i;
    const Person person = personOfClass(classes, i, random);
    const QString firstName = person.sex == "M" ? pick(MaleNames, random) : pick(FemaleNames, random);
    const QString surname = Surnames.at(static_cast<size_t>(i) % Surnames.size());
    const Home home = Homes.at(static_cast<size_t>(i) % Homes.size());
    const int team = i % 4 == 3 ? 0 : pick(home.teams, random);
    data.rows.push_back({id, QString::number(100 + id) + (id == ShooterWithLetter ? "b" : ""),
                         person.sex == "M" ? "Herr" : "Frau", surname + " " + firstName, firstName,
                         QString("%1 %2").arg(pick(Streets, random)).arg(1 + random.below(90)), home.code,
                         home.town, QString("0911/%1").arg(100000 + random.below(900000)), person.sex,
                         birthday(person.age, random).toString("dd.MM.yyyy"), QString::number(100100 + id),
                         home.club, team, classFor(classes, person.age, person.sex),
                         i % 2 ? "1.10" : "2.10"});
  }
  return data;
}

}  // namespace qk
