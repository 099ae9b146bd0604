#include "tests/masterdata/lists/hostile_files.h"

#include <QRandomGenerator>
#include <QStringEncoder>
#include <iterator>

#include "platform/runtime/textcodec.h"

namespace qk::test {

namespace {

using Outcome = HostileFile::Outcome;

enum Column { Number, Surname, FirstName, BirthDate, Sex, Club, Town, Class, Columns };

/// A list of new shooters before somebody harms it, and how it is written.
struct Draft {
  explicit Draft(int number) : random(static_cast<quint32>(7919 * number + 17)) {
    rows << QStringList{"Startnummer", "Nachname", "Vorname", "Geburtsdatum",
                        "Geschlecht",  "Verein",   "Ort",     "Klasse"};
    const int count = 2 + below(40);
    for (int i = 0; i < count; ++i)
      rows << QStringList{QString::number(5000 + i),
                          QString("Größl%1").arg(i),
                          below(2) ? "Zoë" : "Jürgen",
                          QString("%1.%2.%3").arg(1 + below(28)).arg(1 + below(12)).arg(1950 + below(50)),
                          below(2) ? "m" : "w",
                          QString("Verein „%1“").arg(below(5)),
                          below(2) ? "Öd" : "",
                          ""};
    encoding = below(5);
    separator = QString(";,\t").at(below(3));
    lineEnd = QStringList{"\n", "\r\n", "\r"}.at(below(3));
    quoteAll = below(2) == 0;
  }

  int below(int limit) { return random.bounded(limit); }
  int anyRow() { return 1 + below(static_cast<int>(rows.size()) - 1); }
  QString& cell(int row, Column column) { return rows[row][column]; }

  QByteArray bytes() {
    QString text;
    for (const QStringList& row : rows) {
      QStringList cells;
      for (const QString& cell : row) cells << written(cell);
      text += cells.join(separator) + lineEnd;
    }
    return encoded(text);
  }

  QString written(QString cell) const {
    const bool needed = cell.contains(separator) || cell.contains(u'"') || cell.contains(u'\n') ||
                        cell.contains(u'\r') || cell != cell.trimmed();
    if (!needed && !quoteAll) return cell;
    return u'"' + cell.replace(u'"', "\"\"") + u'"';
  }

  QByteArray encoded(const QString& text) const {
    switch (encoding) {
      case 0:
        return text.toUtf8();
      case 1:
        return "\xEF\xBB\xBF" + text.toUtf8();
      case 2:
      case 3: {
        QStringEncoder encode(encoding == 2 ? QStringEncoder::Utf16LE : QStringEncoder::Utf16BE,
                              QStringEncoder::Flag::WriteBom);
        return encode(text);
      }
      default:
        return toWindows1252(text);
    }
  }

  QRandomGenerator random;
  QList<QStringList> rows;
  int encoding;
  QString separator, lineEnd;
  bool quoteAll;
};

struct Harm {
  const char* name;
  Outcome outcome;
  void (*toDraft)(Draft&);
  void (*toBytes)(Draft&, QByteArray&);
};

void nothing(Draft&) {}
void keep(Draft&, QByteArray&) {}

constexpr int TenMegabytes = 10 * 1024 * 1024;

const Harm Harms[] = {
    {"none", Outcome::Fine, nothing, keep},
    {"doubled numbers", Outcome::Faulty, [](Draft& draft) { draft.rows << draft.rows.at(draft.anyRow()); },
     keep},
    {"31.02.", Outcome::Faulty, [](Draft& draft) { draft.cell(draft.anyRow(), BirthDate) = "31.02.1980"; },
     keep},
    {"formulas", Outcome::Fine,
     [](Draft& draft) {
       draft.cell(draft.anyRow(), Surname) = "=cmd|' /C calc'!A0";
       draft.cell(draft.anyRow(), FirstName) = "@SUM(1+1)*cmd";
       draft.cell(draft.anyRow(), Town) = "+1-1";
     },
     keep},
    {"ten megabytes", Outcome::Faulty,
     [](Draft& draft) {
       draft.cell(draft.anyRow(), draft.below(2) ? Town : Number) = QString(TenMegabytes, QChar(u'9'));
     },
     keep},
    {"binary", Outcome::Refused, nothing,
     [](Draft& draft, QByteArray& bytes) {
       bytes.resize(1000 + draft.below(100'000));
       for (char& byte : bytes) byte = static_cast<char>(draft.below(256));
       bytes[0] = 'x';  // no mark of an encoding
       bytes[draft.below(500) + 1] = 0;
     }},
    {"a workbook", Outcome::Refused, nothing,
     [](Draft&, QByteArray& bytes) { bytes = QByteArray("PK\x03\x04\x14\0\x06\0", 8) + bytes; }},
    {"a torn quote", Outcome::Anything, nothing,
     [](Draft& draft, QByteArray& bytes) { bytes.insert(draft.below(static_cast<int>(bytes.size())), '"'); }},
    {"cut off", Outcome::Anything, nothing,
     [](Draft& draft, QByteArray& bytes) { bytes.truncate(draft.below(static_cast<int>(bytes.size()))); }},
    {"wrong bytes", Outcome::Anything, nothing,
     [](Draft& draft, QByteArray& bytes) {
       for (int i = 0; i < 20; ++i)
         bytes[draft.below(static_cast<int>(bytes.size()))] = static_cast<char>(draft.below(256));
     }},
    {"control characters", Outcome::Faulty,
     [](Draft& draft) {
       draft.cell(draft.anyRow(), Surname) = QString("Bell") + QChar(7) + QChar(0x1b) + "[2J";
     },
     keep},
    {"two encodings", Outcome::Refused, [](Draft& draft) { draft.encoding = 0; },
     [](Draft&, QByteArray& bytes) { bytes += toWindows1252("9999;Müßig;Jörg;;;;;\n"); }},
    {"many columns", Outcome::Refused, nothing,
     [](Draft&, QByteArray& bytes) { bytes = QByteArray(700, ';') + "\n" + bytes; }},
    {"no headings", Outcome::Refused, [](Draft& draft) { draft.rows.removeFirst(); }, keep},
    {"quotes and line breaks", Outcome::Fine,
     [](Draft& draft) {
       draft.cell(draft.anyRow(), Town) = "Haus \"Adler\"\r\nHinterhof; links,\trechts\n";
       draft.cell(draft.anyRow(), Surname) = "\"\"";
     },
     keep},
    {"slipped cells", Outcome::Faulty,
     [](Draft& draft) { draft.rows[draft.anyRow()].insert(2, "verrutscht"); }, keep},
    {"unknown class", Outcome::Faulty, [](Draft& draft) { draft.cell(draft.anyRow(), Class) = "Gibtsnicht"; },
     keep},
    {"a long name", Outcome::Faulty,
     [](Draft& draft) { draft.cell(draft.anyRow(), Surname) = QString(300, QChar(u'x')); }, keep},
    {"nobody", Outcome::Faulty,
     [](Draft& draft) {
       const int row = draft.anyRow();
       for (const Column column : {Number, Surname, FirstName}) draft.cell(row, column).clear();
     },
     keep},
    {"somebody else's number", Outcome::Faulty,
     [](Draft& draft) { draft.cell(draft.anyRow(), Number) = "101"; }, keep},
    {"foreign letters", Outcome::Anything,
     [](Draft& draft) {
       draft.encoding = 0;
       draft.cell(draft.anyRow(), Surname) = QString::fromUtf8("😀\u202Eאבג") + QChar(0xD800);
       draft.cell(draft.anyRow(), Club) = "'; DROP TABLE Schützen; --";
     },
     keep},
    {"numbers without end", Outcome::Anything,
     [](Draft& draft) {
       draft.cell(draft.anyRow(), Number) = "99999999999999999999";
       draft.cell(draft.anyRow(), Number) = "-0";
       draft.cell(draft.anyRow(), BirthDate) = "0000-00-00T99:99";
     },
     keep}};

}  // namespace

HostileFile hostileFile(int number) {
  const Harm& harm = Harms[static_cast<size_t>(number) % std::size(Harms)];
  Draft draft(number);
  harm.toDraft(draft);
  QByteArray bytes = draft.bytes();
  harm.toBytes(draft, bytes);
  return {QString("%1 %2").arg(number).arg(harm.name), bytes, harm.outcome};
}

}  // namespace qk::test
