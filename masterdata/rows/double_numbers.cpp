#include "masterdata/rows/double_numbers.h"

#include <map>

#include "platform/dao/recordset.h"

namespace qk {

std::vector<Double> doublesOf(dao::Database& database, const QString& table, const QString& column) {
  const QString text =
      QString(
          "Select ID, [%2] as Wert from [%1] where [%2] <> '' and [%2] in (Select [%2] from [%1] "
          "group by [%2] having Count(*) > 1) order by [%2], ID")
          .arg(table, column);
  std::vector<Double> doubles;
  const auto rows = database.openRecordset(text, dao::RecordsetType::Snapshot);
  for (; !rows->eof(); rows->moveNext()) {
    const QString value = rows->value("Wert").toString();
    if (doubles.empty() || !dao::sameName(doubles.back().value, value)) doubles.push_back({value, {}});
    doubles.back().keys.push_back(rows->value("ID").toLongLong());
  }
  return doubles;
}

std::vector<Double> doubleNumbers(dao::Database& database) {
  return doublesOf(database, "Schützen", "Startnummer");
}

std::vector<LostNumber> lostNumbers(dao::Database& database) {
  std::map<QString, LostNumber> lost;
  const auto count = [&](const QString& table, qint64 LostNumber::*counter) {
    const auto rows = database.openRecordset(QString("Select %1.Startnummer as Nummer, Count(*) as Anzahl "
                                                     "from %1 left join [Schützen] on %1.Startnummer = "
                                                     "[Schützen].Startnummer where [Schützen].ID Is Null and "
                                                     "%1.Startnummer <> '' group by %1.Startnummer")
                                                 .arg(table),
                                             dao::RecordsetType::Snapshot);
    for (; !rows->eof(); rows->moveNext()) {
      const QString number = rows->value("Nummer").toString();
      LostNumber& found = lost.try_emplace(dao::foldedName(number), LostNumber{number}).first->second;
      found.*counter += rows->value("Anzahl").toLongLong();
    }
  };
  count("Schuss", &LostNumber::results);
  count("SchussSerien", &LostNumber::results);
  count("Kasse_Eingang", &LostNumber::payments);
  std::vector<LostNumber> result;
  for (auto& [folded, number] : lost) result.push_back(std::move(number));
  return result;
}

}  // namespace qk
