#include "platform/dao/rows/row_writer.h"

#include <algorithm>

#include "platform/dao/engine/engine.h"
#include "platform/dao/engine/right_to_write.h"
#include "platform/dao/values/convert.h"
#include "platform/runtime/error.h"

namespace qk::dao {

RowWriter::RowWriter(std::shared_ptr<Engine> engine, std::shared_ptr<const SelectPlan> plan)
    : engine_(std::move(engine)), plan_(std::move(plan)) {}

void RowWriter::requireUpdatable() const {
  if (!plan_->keyed || engine_->readOnly()) throw Error(errors::kNotUpdatable);
}

/// The column whose number a new row gets before it is stored; -1 for none.
int RowWriter::autoNumberColumn() const {
  const int autoNumber = plan_->target().table->autoNumber;
  if (autoNumber < 0) return -1;
  for (size_t i = 0; i < plan_->columns.size(); ++i)
    if (plan_->columns[i].source == plan_->manySide && plan_->columns[i].baseField == autoNumber)
      return static_cast<int>(i);
  return -1;
}

EditBuffer RowWriter::unchanged() const {
  return {std::vector<QVariant>(plan_->columns.size()), std::vector<bool>(plan_->columns.size(), false)};
}

EditBuffer RowWriter::newRow() const {
  EditBuffer buffer = unchanged();
  for (size_t i = 0; i < plan_->columns.size(); ++i) {
    if (plan_->columns[i].source != plan_->manySide) continue;
    buffer.values[i] = presetValue(plan_->columns[i].def);
    buffer.changed[i] = buffer.values[i].isValid();
  }
  if (const int column = autoNumberColumn(); column >= 0) {
    const TableInfo& table = *plan_->target().table;
    buffer.values[static_cast<size_t>(column)] = static_cast<int>(engine_->takeNumber(table));
    buffer.changed[static_cast<size_t>(column)] = true;
  }
  return buffer;
}

void RowWriter::discard(const EditBuffer& newRow) const {
  if (const int column = autoNumberColumn(); column >= 0)
    engine_->giveBackNumber(*plan_->target().table, newRow.values[static_cast<size_t>(column)].toLongLong());
}

void RowWriter::set(EditBuffer& buffer, int column, const QVariant& value, bool added) const {
  const PlanColumn& target = plan_->columns[static_cast<size_t>(column)];
  if (target.baseField < 0 || (target.def.autoNumber && !added)) throw Error(errors::kFieldNotUpdatable);
  buffer.values[static_cast<size_t>(column)] = convertedValue(value, target.def);
  buffer.changed[static_cast<size_t>(column)] = true;
}

QVariant RowWriter::native(int column, const EditBuffer& buffer) const {
  return engine_->writer().toNative(buffer.values[static_cast<size_t>(column)],
                                    plan_->columns[static_cast<size_t>(column)].def.type);
}

void RowWriter::refuseIncomplete(const EditBuffer& buffer, const PlanSource& source, bool added) const {
  for (size_t i = 0; i < plan_->columns.size(); ++i) {
    const PlanColumn& column = plan_->columns[i];
    if (column.source < 0 || &plan_->sources[static_cast<size_t>(column.source)] != &source) continue;
    if (!added && !buffer.changed[i]) continue;
    requireAllowed(buffer.values[i], source.table->def.fields[static_cast<size_t>(column.baseField)]);
  }
}

Key RowWriter::insert(const EditBuffer& buffer) {
  const PlanSource& target = plan_->target();
  refuseIncomplete(buffer, target, true);
  const auto& fields = target.table->def.fields;

  QStringList columns;
  QVariantList values;
  values.reserve(static_cast<qsizetype>(plan_->columns.size()));
  const bool known = plan_->insertion.columns == buffer.changed;
  QVariantList byField(static_cast<qsizetype>(fields.size()));
  for (size_t i = 0; i < plan_->columns.size(); ++i) {
    if (!buffer.changed[i]) continue;
    const PlanColumn& column = plan_->columns[i];
    if (column.source != plan_->manySide) throw Error(errors::kFieldNotUpdatable);
    values.append(native(static_cast<int>(i), buffer));
    byField[column.baseField] = values.last();
    if (!known) columns.append(fields[static_cast<size_t>(column.baseField)].name);
  }
  if (!known) {
    plan_->insertion.row = {engine_->writer().insertRow(*target.table, columns), columns};
    plan_->insertion.columns = buffer.changed;
  }
  const qint64 assigned =
      withRightToWrite([&] { return engine_->insert(*target.table, plan_->insertion.row, values); });

  Key key(plan_->keyWidth);
  for (qsizetype i = 0; i < target.table->key.names.size(); ++i) {
    const auto field = std::find_if(fields.begin(), fields.end(), [&](const FieldDef& candidate) {
      return sameName(candidate.name, target.table->key.names[i]);
    });
    QVariant part = field == fields.end() ? QVariant() : byField[field - fields.begin()];
    if (!part.isValid()) part = static_cast<qlonglong>(assigned);
    key[target.keyFirst + i] = target.table->key.integer ? QVariant(part.toLongLong()) : part;
  }
  return key;
}

Key RowWriter::keyOf(const PlanSource& source, const Key& key) const {
  return key.mid(source.keyFirst, source.table->key.names.size());
}

Key RowWriter::update(const Key& key, const EditBuffer& buffer) {
  Key changedKey = key;
  const auto updateSource = [&](size_t index) {
    const PlanSource& source = plan_->sources[index];
    QStringList names;
    QVariantList values;
    for (size_t i = 0; i < plan_->columns.size(); ++i) {
      const PlanColumn& column = plan_->columns[i];
      if (!buffer.changed[i] || column.source != static_cast<int>(index)) continue;
      const QString& name = source.table->def.fields[static_cast<size_t>(column.baseField)].name;
      names.append(name);
      values.append(native(static_cast<int>(i), buffer));
      const qsizetype part = source.table->key.names.indexOf(name);
      if (part >= 0)
        changedKey[source.keyFirst + part] =
            source.table->key.integer ? QVariant(values.last().toLongLong()) : values.last();
    }
    if (names.isEmpty()) return;
    refuseIncomplete(buffer, source, false);
    const Key own = keyOf(source, key);
    if (own.first().isNull()) throw Error(errors::kFieldNotUpdatable);
    const QString text = engine_->writer().updateRow(*source.table, names);
    if (withRightToWrite([&] { return engine_->write(text, values + own); }) == 0)
      throw Error(errors::kRecordDeleted);
  };
  if (plan_->sources.size() == 1)
    updateSource(0);
  else
    engine_->transaction([&] {
      for (size_t i = 0; i < plan_->sources.size(); ++i) updateSource(i);
    });
  return changedKey;
}

void RowWriter::remove(const Key& key) {
  const PlanSource& source = plan_->target();
  const QString text = engine_->writer().deleteRow(*source.table);
  try {
    const int removed = withRightToWrite([&] { return engine_->write(text, keyOf(source, key)); });
    if (removed == 0 && unansweredRemoval_ != key) throw Error(errors::kRecordDeleted);
    unansweredRemoval_.reset();
  } catch (const Error& error) {
    // Whether the statement went through is open.
    if (error.number() == errors::kConnectionLost) unansweredRemoval_ = key;
    throw;
  }
}

}  // namespace qk::dao
