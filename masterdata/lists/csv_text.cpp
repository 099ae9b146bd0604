#include "masterdata/lists/csv_text.h"

#include <csv.h>

#include <algorithm>
#include <array>
#include <new>
#include <optional>

#include "masterdata/lists/text_decoding.h"

namespace qk::lists {

namespace {

constexpr int MostColumns = 500;
constexpr int LinesLookedAt = 20;
constexpr int BytesBetweenQuestions = 256 * 1024;
constexpr size_t BufferStep = 64 * 1024;  // the library grows a cell by this much at a time

/// Takes the cells from the library, whose calls carry no more than bytes, and knows the lines, which the
/// library doesn't count.
class Splitter {
 public:
  Splitter(char separator, CsvTable& table) : table_(table) {
    if (csv_init(&parser_, CSV_STRICT | CSV_STRICT_FINI | CSV_EMPTY_IS_NULL) != 0) throw std::bad_alloc();
    csv_set_delim(&parser_, static_cast<unsigned char>(separator));
    csv_set_blk_size(&parser_, BufferStep);
  }
  ~Splitter() { csv_free(&parser_); }
  Splitter(const Splitter&) = delete;
  Splitter& operator=(const Splitter&) = delete;

  /// One line with its end. False, and refusal() says why, when the list can't be read on.
  bool feed(QByteArrayView line, int number) {
    line_ = number;
    if (!inRow_) rowLine_ = number;
    size_t done = 0;
    while (done < static_cast<size_t>(line.size())) {
      done +=
          csv_parse(&parser_, line.data() + done, static_cast<size_t>(line.size()) - done, cell, row, this);
      if (csv_error(&parser_) == CSV_EPARSE && !parser_.quoted) {
        takeQuote(line.data() + done);
        ++done;
      } else if (csv_error(&parser_) != CSV_SUCCESS) {
        refuse(csv_error(&parser_) == CSV_EPARSE
                   ? "Hinter einem schließenden Anführungszeichen steht noch Text; davor fehlt eines, oder "
                     "eines ist zu viel."
                   : "Die Zelle ist für den Speicher zu groß.");
      }
      if (!refusal_.isEmpty()) return false;
    }
    inRow_ = parser_.pstate != RowNotBegun;
    return true;
  }

  /// Behind the last line.
  bool finish() {
    if (csv_fini(&parser_, cell, row, this) != 0) {
      line_ = rowLine_;
      refuse("Ein Anführungszeichen wird bis zum Ende der Datei nicht geschlossen.");
    }
    return refusal_.isEmpty();
  }

  const QString& refusal() const { return refusal_; }

 private:
  static constexpr int RowNotBegun = 0;

  /// A quote within a cell that began without one is a letter like any other: Verein "Adler" e.V.
  void takeQuote(const char* quote) {
    const auto options = static_cast<unsigned char>(csv_get_opts(&parser_));
    csv_set_opts(&parser_, static_cast<unsigned char>(options & ~CSV_STRICT));
    csv_parse(&parser_, quote, 1, cell, row, this);
    csv_set_opts(&parser_, options);
    parser_.status = CSV_SUCCESS;  // the library leaves that to its caller
  }

  void refuse(const QString& why) {
    if (refusal_.isEmpty()) refusal_ = QString("Zeile %1: %2").arg(line_).arg(why);
  }

  static void cell(void* bytes, size_t size, void* self) {
    auto& splitter = *static_cast<Splitter*>(self);
    if (splitter.cells_.size() == MostColumns)
      return splitter.refuse(QString("Die Zeile hat mehr als %1 Spalten.").arg(MostColumns));
    splitter.cells_ << (bytes
                            ? QString::fromUtf8(static_cast<const char*>(bytes), static_cast<qsizetype>(size))
                            : QString());
  }

  static void row(int /*end*/, void* self) {
    auto& splitter = *static_cast<Splitter*>(self);
    splitter.allCells_ += splitter.cells_.size();
    if (splitter.table_.rows.size() > kMostRows || splitter.allCells_ > kMostCells)
      return splitter.refuse("Die Liste ist zu lang. Bitte auf mehrere Dateien aufteilen.");
    splitter.table_.rows.push_back(std::move(splitter.cells_));
    splitter.table_.lines.push_back(splitter.rowLine_);
    splitter.cells_ = {};
  }

  csv_parser parser_ = {};
  CsvTable& table_;
  QStringList cells_;
  qsizetype allCells_ = 0;
  int line_ = 0;
  int rowLine_ = 0;
  bool inRow_ = false;
  QString refusal_;
};

/// The line from there on, with its end (CR, LF or both).
QByteArrayView lineAt(const QByteArray& text, qsizetype from) {
  qsizetype end = from;
  while (end < text.size() && text[end] != '\n' && text[end] != '\r') ++end;
  if (end < text.size() && text[end] == '\r' && end + 1 < text.size() && text[end + 1] == '\n') ++end;
  return QByteArrayView(text).sliced(from, std::min(end + 1, text.size()) - from);
}

/// How often each separator stands outside of quotes in each of the first rows.
using Counts = std::array<std::vector<int>, 3>;
constexpr std::array<char, 3> Separators = {';', ',', '\t'};

Counts countSeparators(const QByteArray& text) {
  Counts counts;
  std::array<int, 3> inRow = {};
  bool quoted = false, blank = true;
  const auto endRow = [&] {
    if (!blank)
      for (size_t i = 0; i < Separators.size(); ++i) counts[i].push_back(inRow[i]);
    inRow = {};
    blank = true;
  };
  for (const char c : text) {
    if (c == '"') quoted = !quoted;
    if (!quoted && (c == '\n' || c == '\r')) {
      endRow();
      if (counts[0].size() == LinesLookedAt) return counts;
      continue;
    }
    blank = false;
    for (size_t i = 0; !quoted && i < Separators.size(); ++i) inRow[i] += c == Separators[i];
  }
  endRow();
  return counts;
}

/// The one that stands in the heading and equally often in most rows; the semicolon where none does.
char foundSeparator(const QByteArray& text) {
  const Counts counts = countSeparators(text);
  char best = Separators[0];
  double most = 0;
  for (size_t i = 0; i < Separators.size(); ++i) {
    if (counts[i].empty() || counts[i].front() == 0) continue;
    const auto equal = std::count(counts[i].begin(), counts[i].end(), counts[i].front());
    const double score =
        counts[i].front() * static_cast<double>(equal) / static_cast<double>(counts[i].size());
    if (score > most) most = score, best = Separators[i];
  }
  return best;
}

/// "sep=;" on the first line, which spreadsheets read and write and which is no row.
std::optional<char> toldSeparator(QByteArrayView line) {
  QByteArray bare = line.toByteArray();
  while (bare.endsWith('\n') || bare.endsWith('\r')) bare.chop(1);
  if (bare.size() != 5 || !bare.toLower().startsWith("sep=")) return std::nullopt;
  const auto known = std::find(Separators.begin(), Separators.end(), bare[4]);
  return known == Separators.end() ? std::nullopt : std::optional(*known);
}

CsvReading split(const QByteArray& text, const QString& encoding, const GoesOn& goesOn) {
  CsvReading reading;
  qsizetype at = 0;
  int line = 1;
  const std::optional<char> told = toldSeparator(lineAt(text, 0));
  if (told) at = lineAt(text, 0).size(), line = 2;
  const char separator = told ? *told : foundSeparator(text);
  reading.table.separator = QChar(separator);
  reading.table.encoding = encoding;
  Splitter splitter(separator, reading.table);
  qsizetype asked = 0;
  for (bool well = true; at < text.size() && well; ++line) {
    const QByteArrayView next = lineAt(text, at);
    well = splitter.feed(next, line);
    at += next.size();
    if (!goesOn || at - asked < BytesBetweenQuestions) continue;
    asked = at;
    if (!goesOn(static_cast<int>(at), static_cast<int>(text.size()))) {
      reading.stopped = true;
      return reading;
    }
  }
  if (splitter.refusal().isEmpty()) splitter.finish();
  reading.refusal = splitter.refusal();
  return reading;
}

bool wantsQuotes(const QString& cell) {
  static const QString marks = ";,\t\"\r\n";
  if (cell.isEmpty() || cell.front().isSpace() || cell.back().isSpace()) return true;
  return std::any_of(cell.begin(), cell.end(), [](QChar c) { return marks.contains(c); });
}

QByteArray written(const QString& cell) {
  if (cell.isNull()) return {};
  const QByteArray bytes = cell.toUtf8();
  if (!wantsQuotes(cell)) return bytes;
  const auto size = static_cast<size_t>(bytes.size());
  QByteArray quoted(static_cast<qsizetype>(csv_write(nullptr, 0, bytes.constData(), size)), '\0');
  csv_write(quoted.data(), static_cast<size_t>(quoted.size()), bytes.constData(), size);
  return quoted;
}

}  // namespace

CsvReading readCsv(const QByteArray& bytes, const GoesOn& goesOn) {
  CsvReading reading;
  if (bytes.size() > kLongestFile) {
    reading.refusal = QString("Die Datei ist größer als %1 MB.").arg(kLongestFile / 1024 / 1024);
    return reading;
  }
  const DecodedText decoded = decodedText(bytes);
  reading.refusal = decoded.refusal;
  if (!reading.refusal.isEmpty()) return reading;
  reading = split(decoded.text.toUtf8(), decoded.encoding, goesOn);
  if (reading.ok() && reading.table.rows.empty()) reading.refusal = "Die Datei ist leer.";
  if (!reading.ok()) reading.table = {};
  return reading;
}

QByteArray writeCsv(const std::vector<QStringList>& rows) {
  QByteArray text = "\xEF\xBB\xBF";
  for (const QStringList& row : rows) {
    for (qsizetype i = 0; i < row.size(); ++i) {
      if (i > 0) text += ';';
      text += written(row[i]);
    }
    text += "\r\n";
  }
  return text;
}

}  // namespace qk::lists
