#include "platform/dao/rows/row_writer.h"

#include <algorithm>

#include "platform/dao/engine/engine.h"
#include "platform/dao/engine/right_to_write.h"
#include "platform/dao/values/convert.h"
#include "platform/runtime/error.h"

namespace qk::dao {
namespace {

/// All but the text.
std::shared_ptr<RowChange> changeOf(const SelectPlan& plan, int index, const std::vector<bool>& changed) {
  const TableInfo& table = *plan.sources[static_cast<size_t>(index)].table;
  auto made = std::make_shared<RowChange>(RowChange{changed});
  made->keyPlaces.assign(static_cast<size_t>(table.key.names.size()), -1);
  for (size_t i = 0; i < plan.columns.size(); ++i) {
    const PlanColumn& column = plan.columns[i];
    if (!changed[i] || column.source != index) continue;
    const QString& name = table.def.fields[static_cast<size_t>(column.baseField)].name;
    for (qsizetype part = 0; part < table.key.names.size(); ++part)
      if (sameName(table.key.names[part], name))
        made->keyPlaces[static_cast<size_t>(part)] = static_cast<int>(made->columns.size());
    made->columns.push_back(static_cast<int>(i));
    made->names.append(name);
  }
  return made;
}

}  // namespace

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

EditBuffer RowWriter::presets() const {
  EditBuffer buffer = unchanged();
  for (size_t i = 0; i < plan_->columns.size(); ++i) {
    if (plan_->columns[i].source != plan_->manySide) continue;
    buffer.values[i] = presetValue(plan_->columns[i].def);
    buffer.changed[i] = buffer.values[i].isValid();
  }
  return buffer;
}

EditBuffer RowWriter::newRow() const {
  if (!plan_->newRow) plan_->newRow = presets();
  EditBuffer buffer = *plan_->newRow;
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

QVariantList RowWriter::nativesOf(const RowChange& change, const EditBuffer& buffer, qsizetype more) const {
  const sql::Writer& writer = engine_->writer();
  QVariantList values;
  values.reserve(static_cast<qsizetype>(change.columns.size()) + more);
  for (const int column : change.columns) {
    const auto i = static_cast<size_t>(column);
    values.append(writer.toNative(buffer.values[i], plan_->columns[i].def.type));
  }
  return values;
}

void RowWriter::refuseIncomplete(const EditBuffer& buffer, const PlanSource& source, bool added) const {
  for (size_t i = 0; i < plan_->columns.size(); ++i) {
    const PlanColumn& column = plan_->columns[i];
    if (column.source < 0 || &plan_->sources[static_cast<size_t>(column.source)] != &source) continue;
    if (!added && !buffer.changed[i]) continue;
    requireAllowed(buffer.values[i], source.table->def.fields[static_cast<size_t>(column.baseField)]);
  }
}

std::shared_ptr<const RowChange> RowWriter::insertionOf(const EditBuffer& buffer) const {
  auto& last = plan_->insertion;
  if (last && last->changed == buffer.changed) return last;
  const auto made = changeOf(*plan_, plan_->manySide, buffer.changed);
  const auto changed = std::count(buffer.changed.begin(), buffer.changed.end(), true);
  if (static_cast<size_t>(changed) != made->columns.size()) throw Error(errors::kFieldNotUpdatable);
  made->text = engine_->writer().insertRow(*plan_->target().table, made->names);
  return last = made;
}

std::shared_ptr<const RowChange> RowWriter::updateOf(int source, const EditBuffer& buffer) const {
  plan_->updates.resize(plan_->sources.size());
  auto& last = plan_->updates[static_cast<size_t>(source)];
  if (last && last->changed == buffer.changed) return last;
  const auto made = changeOf(*plan_, source, buffer.changed);
  made->text = engine_->writer().updateRow(*plan_->sources[static_cast<size_t>(source)].table, made->names);
  return last = made;
}

Key RowWriter::insert(const EditBuffer& buffer) {
  const PlanSource& target = plan_->target();
  refuseIncomplete(buffer, target, true);
  const auto change = insertionOf(buffer);
  const QVariantList values = nativesOf(*change, buffer);
  const qint64 assigned = withRightToWrite([&] {
    return engine_->insert(*target.table, NewRow{change->text, change->names}, values);
  });

  Key key(plan_->keyWidth);
  for (size_t i = 0; i < change->keyPlaces.size(); ++i) {
    const int place = change->keyPlaces[i];
    const bool known = place >= 0 && values[place].isValid();
    const QVariant part = known ? values[place] : QVariant(static_cast<qlonglong>(assigned));
    key[target.keyFirst + static_cast<qsizetype>(i)] =
        target.table->key.integer ? QVariant(part.toLongLong()) : part;
  }
  return key;
}

Key RowWriter::keyOf(const PlanSource& source, const Key& key) const {
  return key.mid(source.keyFirst, source.table->key.names.size());
}

void RowWriter::updateSource(int index, const Key& key, const EditBuffer& buffer, Key& changedKey) {
  const PlanSource& source = plan_->sources[static_cast<size_t>(index)];
  const auto change = updateOf(index, buffer);
  if (change->columns.empty()) return;
  QVariantList values = nativesOf(*change, buffer, source.table->key.names.size());
  refuseIncomplete(buffer, source, false);
  const Key own = keyOf(source, key);
  if (own.first().isNull()) throw Error(errors::kFieldNotUpdatable);
  for (size_t i = 0; i < change->keyPlaces.size(); ++i)
    if (const int place = change->keyPlaces[i]; place >= 0)
      changedKey[source.keyFirst + static_cast<qsizetype>(i)] =
          source.table->key.integer ? QVariant(values[place].toLongLong()) : values[place];
  values += own;
  if (withRightToWrite([&] { return engine_->write(change->text, values); }) == 0)
    throw Error(errors::kRecordDeleted);
}

Key RowWriter::update(const Key& key, const EditBuffer& buffer) {
  Key changedKey = key;
  if (plan_->sources.size() == 1)
    updateSource(0, key, buffer, changedKey);
  else
    engine_->transaction([&] {
      for (int i = 0; i < static_cast<int>(plan_->sources.size()); ++i)
        updateSource(i, key, buffer, changedKey);
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
