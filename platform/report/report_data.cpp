#include "platform/report/report_data.h"

#include <QDateTime>
#include <QRegularExpression>

#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "platform/dao/row_reader.h"
#include "platform/dao/sql/quote.h"
#include "platform/report/report_error.h"

namespace qk::report {

namespace {

/// What a mistake in the query text is, with its place in the report file.
template <class Call>
auto placed(const QString& file, int line, const Call& call) {
  try {
    return call();
  } catch (const Error& error) {
    fail(file, line, error.description(), error.number());
  }
}

dao::FieldDef fieldNamed(const QString& name) {
  dao::FieldDef field;
  field.name = name;
  return field;
}

}  // namespace

ReportData::ReportData(const Definition& report, Input input, std::function<void()> grown)
    : file_(report.file), input_(std::move(input)), grown_(std::move(grown)) {
  for (const Parameter& parameter : report.parameters) {
    parameterNames_ << parameter.name;
    addFixed(parameter.name, input_.parameters.value(parameter.name));
  }
  addFixed("Titel", report.title);
  addFixed("Heute", QDateTime(input_.now.date(), QTime(0, 0)));
  addFixed("Jetzt", input_.now);
  for (const ValueQuery& query : report.values) readValues(query);
  for (const Part& part : report.parts)
    sources_.push_back(sources_.empty() && input_.table ? ofTable() : open(part));
}

ReportData::~ReportData() = default;

void ReportData::addFixed(const QString& name, const QVariant& value) {
  fixedNames_ << name;
  fixedValues_ << value;
}

dao::Database& ReportData::database(const QString& path) {
  auto& known = databases_[path];
  if (!known) {
    try {
      known = dao::Database::open(path, true);
    } catch (const Error& error) {
      databases_.erase(path);
      throw Error(error.number(),
                  QString("Die Datendatei \"%1\" ist nicht zu lesen: %2").arg(path, error.description()));
    }
  }
  return *known;
}

QString ReportData::pathFor(const Part& part) const {
  for (auto it = input_.partFiles.begin(); it != input_.partFiles.end(); ++it)
    if (dao::sameName(it.key(), part.name)) return it.value();
  return input_.dataFile;
}

QString ReportData::literalOf(const QString& parameter, int line) const {
  if (!parameterNames_.contains(parameter))
    fail(file_, line, QString("Den Parameter \"%1\" gibt es nicht.").arg(parameter));
  const QVariant value = input_.parameters.value(parameter);
  if (!value.isValid()) return {};
  if (value.typeId() == QMetaType::QDateTime) return value.toDateTime().toString("#yyyy-MM-dd#");
  return dao::sql::quoted(value.toString());
}

/// Parameters in braces become literals; a line that names one without a value is left out.
QString ReportData::withParameters(const QString& query, int line) const {
  static const QRegularExpression braces("\\{([^{}]*)\\}");
  QStringList kept;
  for (const QString& text : query.split(u'\n')) {
    QString filled;
    qsizetype at = 0;
    bool complete = true;
    for (auto match = braces.globalMatch(text); match.hasNext();) {
      const auto found = match.next();
      const QString literal = literalOf(found.captured(1).trimmed(), line);
      complete = complete && !literal.isEmpty();
      filled += text.sliced(at, found.capturedStart() - at) + literal;
      at = found.capturedEnd();
    }
    if (complete) kept << filled + text.sliced(at);
  }
  return kept.join(u'\n');
}

void ReportData::readValues(const ValueQuery& values) {
  dao::Database& store = database(input_.dataFile);
  const QString query = withParameters(values.query, values.line);
  placed(file_, values.line, [&] {
    const auto rows = store.openRecordset(query, dao::RecordsetType::Snapshot);
    for (int i = 0; i < rows->fieldCount(); ++i)
      addFixed(rows->fieldDef(i).name, rows->eof() ? QVariant() : rows->value(i));
  });
}

ReportData::Source ReportData::ofTable() const {
  Source source;
  for (const QString& name : input_.table->names) source.fields.push_back(fieldNamed(name));
  source.rows = std::make_unique<RowBuffer>();
  for (const QVariantList& row : input_.table->rows) source.rows->append(row);
  source.rows->finish();
  source.started = true;
  return source;
}

ReportData::Source ReportData::open(const Part& part) {
  Source source;
  source.rows = std::make_unique<RowBuffer>(grown_);
  if (part.query.isEmpty()) {
    source.rows->append({});
    source.rows->finish();
    source.started = true;
    return source;
  }
  dao::Database& store = database(pathFor(part));
  const QString query = withParameters(part.query, part.line);
  source.reader = placed(file_, part.line, [&] { return std::make_unique<dao::RowReader>(store, query); });
  source.fields = source.reader->fields();
  return source;
}

const RowBuffer& ReportData::rows(size_t part) {
  Source& source = sources_[part];
  if (!source.started) {
    source.started = true;
    RowBuffer& rows = *source.rows;
    source.reader->start([&rows](const QVariantList& row) { rows.append(row); },
                         [&rows](const std::optional<Error>& failure) { rows.finish(failure); });
  }
  return *source.rows;
}

}  // namespace qk::report
