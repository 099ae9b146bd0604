// Record lines as a station writes them, for the tests of the link room and of what builds on it.
#pragma once

#include <QStringList>

namespace qk::test {

/// The 21 fields of a shot: line 3, hit 17, ring 9,7.
inline QStringList shotFields() {
  return {"21",    "LG Meister", "offene Klasse", "1",          "3",    "Müller, Änne", "M",
          "11",    "17",         "9,7",           "9",          "12,3", "-45,6",        "123,47",
          "285,1", "10:41:07",   "03:15",         "20.11.2026", "1.10", "frei",         "107"};
}

inline QString shotRecord(const QStringList& fields = shotFields()) {
  return fields.join(" ; ");
}

/// The shot with one field replaced.
inline QString shotRecordWith(int field, const QString& value) {
  QStringList fields = shotFields();
  fields[field] = value;
  return shotRecord(fields);
}

/// Another shot of the same line: hit number and code of choice.
inline QString shotRecordNumber(int number, const QString& code = "21") {
  QStringList fields = shotFields();
  fields[0] = code;
  fields[8] = QString::number(number);
  return shotRecord(fields);
}

}  // namespace qk::test
