#include "platform/dao/rows/joined_update.h"

#include <QElapsedTimer>
#include <algorithm>
#include <limits>

#include "platform/dao/engine/engine.h"
#include "platform/dao/signs/work_sign.h"

namespace qk::dao {
namespace {

/// How many keys a piece takes: as many as it gets done in some 50 ms. Never less than a quarter of the
/// first: what a statement costs by itself doesn't become less with the rows.
class PieceSize {
 public:
  PieceSize(qint64 first, qint64 most) : size_(first), least_(first / 4), most_(most) {}

  qint64 value() const { return size_; }
  void took(qint64 milliseconds) {
    if (milliseconds < kShort)
      size_ = std::min(most_, size_ * 2);
    else if (milliseconds > kLong)
      size_ = std::max(least_, size_ / 2);
  }

 private:
  static constexpr qint64 kShort = 20, kLong = 50;
  qint64 size_;
  const qint64 least_, most_;
};

constexpr qint64 kFirstLook = 10'000, kMostLookedAt = std::numeric_limits<qint64>::max() / 4;
constexpr qint64 kFirstWritten = 200, kMostWritten = 20'000;

void tablesOf(const sql::Source& source, std::vector<const sql::TableSource*>& tables, bool& others) {
  if (const auto* table = std::get_if<sql::TableSource>(&source.node)) {
    tables.push_back(table);
    others |= !table->file.isEmpty();
  } else if (const auto* join = std::get_if<sql::Join>(&source.node)) {
    tablesOf(*join->left, tables, others);
    tablesOf(*join->right, tables, others);
  } else {
    others = true;
  }
}

bool asksASelect(const sql::ExpressionPtr& expression);

struct SelectFinder {
  bool operator()(const sql::Literal&) const { return false; }
  bool operator()(const sql::Column&) const { return false; }
  bool operator()(const sql::Unary& unary) const { return asksASelect(unary.operand); }
  bool operator()(const sql::Binary& binary) const {
    return asksASelect(binary.left) || asksASelect(binary.right);
  }
  bool operator()(const sql::Between& between) const {
    return asksASelect(between.value) || asksASelect(between.low) || asksASelect(between.high);
  }
  bool operator()(const sql::In& in) const {
    return in.select || asksASelect(in.value) || std::any_of(in.list.begin(), in.list.end(), asksASelect);
  }
  bool operator()(const sql::IsNull& isNull) const { return asksASelect(isNull.value); }
  bool operator()(const sql::Call& call) const {
    return std::any_of(call.arguments.begin(), call.arguments.end(), asksASelect);
  }
};

bool asksASelect(const sql::ExpressionPtr& expression) {
  return expression && std::visit(SelectFinder(), expression->node);
}

/// The table that the statement changes, where it can be changed in pieces; else nullptr.
const TableInfo* divisible(const sql::Update& update, const Catalogue& catalogue) {
  std::vector<const sql::TableSource*> tables;
  bool others = asksASelect(update.where) ||
                std::any_of(update.set.begin(), update.set.end(),
                            [](const sql::Assignment& one) { return asksASelect(one.value); });
  tablesOf(*update.source, tables, others);
  if (others) return nullptr;
  const TableInfo* target = nullptr;
  const QString& changed = update.set.front().column.table;
  for (const sql::TableSource* table : tables) {
    const TableInfo* info = catalogue.info(table->name);
    if (!info || info->query) return nullptr;
    if ((table->alias.isEmpty() ? table->name : table->alias) == changed) target = info;
  }
  const auto uses = std::count_if(tables.begin(), tables.end(), [&](const sql::TableSource* table) {
    return catalogue.info(table->name) == target;
  });
  return target && target->key.integer && uses == 1 ? target : nullptr;
}

class Pieces {
 public:
  Pieces(Engine& engine, sql::Update update, const TableInfo& target)
      : engine_(engine), statement_(std::move(update)), target_(target) {
    time_.start();
  }

  int run() {
    const std::optional<qint64> first = keyAt(sql::End::Least), last = keyAt(sql::End::Greatest);
    if (!first || !last) return 0;
    const qint64 least = *first, greatest = *last;
    PieceSize looked(kFirstLook, kMostLookedAt);
    for (qint64 low = least; low <= greatest;) {
      const quint64 rest = quint64(greatest) - quint64(low);
      const qint64 high = qint64(quint64(low) + std::min(quint64(looked.value() - 1), rest));
      time_.restart();
      const std::vector<qint64> keys = toBeWritten(low, high);
      looked.took(time_.elapsed());
      write(keys);
      work_.done((double(high) - double(least) + 1) / (double(greatest) - double(least) + 1));
      if (high == greatest) break;
      low = high + 1;
    }
    return changed_;
  }

 private:
  sql::Update& update() { return std::get<sql::Update>(statement_); }
  const QString& keyName() const { return target_.key.names.front(); }

  /// Nothing where the table has no rows.
  std::optional<qint64> keyAt(sql::End end) {
    std::optional<qint64> key;
    engine_.read(engine_.writer().endOfKeys(target_, end), {}, [&](const NativeRow& row) {
      if (!row[0].isNull()) key = row[0].toLongLong();
      return false;
    });
    return key;
  }

  std::vector<qint64> toBeWritten(qint64 low, qint64 high) {
    update().piece = {keyName(), low, high};
    const sql::NativeQuery query = engine_.writer().keysToChange(update(), keyName());
    std::vector<qint64> keys;
    engine_.read(query.text, query.values, [&](const NativeRow& row) {
      keys.push_back(row[0].toLongLong());
      return true;
    });
    std::sort(keys.begin(), keys.end());
    keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
    return keys;
  }

  void write(const std::vector<qint64>& keys) {
    for (std::size_t done = 0; done < keys.size();) {
      const std::size_t end = std::min(keys.size(), done + std::size_t(written_.value()));
      // By their names: what is to be written may lie far apart, and the join of all between would be made
      // again.
      update().piece = {keyName(), keys[done], keys[end - 1], {keys.begin() + done, keys.begin() + end}};
      done = end;
      time_.restart();
      const sql::NativeQuery query = engine_.writer().statement(statement_);
      changed_ += engine_.execute(query.text, query.values);
      written_.took(time_.elapsed());
    }
  }

  Engine& engine_;
  sql::Statement statement_;
  const TableInfo& target_;
  PieceSize written_{kFirstWritten, kMostWritten};
  QElapsedTimer time_;
  Work work_;
  int changed_ = 0;
};

}  // namespace

int updateOverJoin(Engine& engine, sql::Update update) {
  const auto catalogue = engine.catalogue();
  if (const TableInfo* target = divisible(update, *catalogue))
    return Pieces(engine, std::move(update), *target).run();
  const sql::NativeQuery query = engine.writer().statement(std::move(update));
  return engine.execute(query.text, query.values);
}

}  // namespace qk::dao
