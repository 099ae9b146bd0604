// A database on a PostgreSQL server: several workstations at once, every commit durable unless asked
// otherwise.
//
// What a lost connection means for a change: outside of transaction() a statement is one commit, and when its
// answer gets lost nobody knows whether it was stored. The call fails with 3043, and whoever repeats it gets
// the change once, for each kind by what stands in the store itself:
//
//   a row with its key      it is looked up before it is inserted again. A reserved key is nobody else's, and
//                           with all other values it is this row
//   a row without, execute  they leave a mark, a row that is stored with the change or not at all; the same
//                           statement asks for it before it is run again
//   a row's new values      are absolute and stand behind its key: stored twice they are stored once
//   a row's deletion        a row that is gone is gone
//   reserved numbers        are lost, a gap
//   transaction()           asks for its mark by itself; only where that fails, too, its fate stays open, and
//                           transactionOnce() asks when it is run again
//
// Where the desk may not make the table of the marks there are none: then a statement that counts on
// ("x = x + 1") and was stored without an answer is stored again by who repeats it.
#pragma once

#include <vector>

#include "platform/dao/engine/engine.h"
#include "platform/dao/postgres/postgres_catalogue.h"
#include "platform/dao/postgres/postgres_connection.h"
#include "platform/dao/postgres/postgres_numbers.h"
#include "platform/dao/postgres/postgres_writer.h"

namespace qk::dao {

class PostgresEngine final : public Engine {
 public:
  static std::unique_ptr<Engine> open(const QString& path, const ServerAddress& address,
                                      const OpenOptions& options);
  static std::unique_ptr<Engine> create(const QString& path, const ServerAddress& address,
                                        const OpenOptions& options);

  const QString& path() const override { return path_; }
  bool readOnly() const override { return options_.readOnly; }
  const sql::Writer& writer() const override { return writer_; }

  std::shared_ptr<const Catalogue> catalogue() override;
  void createTable(const TableDef& table) override;
  void dropTable(const TableInfo& table) override;
  void appendField(const TableInfo& table, const FieldDef& field) override;
  void appendIndex(const TableInfo& table, const IndexDef& index) override;
  void createQuery(const QString& name, const sql::Select& select, const QString& text) override;

  std::unique_ptr<Engine> reader(std::function<bool()> cancelled) const override;
  void hold() override;
  void release() override;
  bool stands() const override { return true; }  // a connection that is lost says so by itself
  QString stamp() override;
  void read(const QString& text, const QVariantList& values,
            const std::function<bool(const NativeRow&)>& take) override;
  int write(const QString& text, const QVariantList& values) override;
  int execute(const QString& text, const QVariantList& values) override;
  qint64 insert(const TableInfo& table, const NewRow& row, const QVariantList& values) override;
  void transaction(const std::function<void()>& body) override;
  void holdTable(const TableInfo& table) override;
  void transactionOnce(const std::function<void()>& body, QString& doubt) override;

  qint64 takeNumber(const TableInfo& table, int block) override;
  void giveBackNumber(const TableInfo& table, qint64 number) override;
  void reserveNumbers(const TableInfo& table) override;
  qint64 lastNumber(const TableInfo& table) override;
  void goOnAfter(const TableInfo& table, qint64 number) override;

  void learnFigures(const QString& table) override;

  bool isOpenElsewhere() override;
  std::optional<QString> poorEncoding() override;
  qint64 commitCount() const override { return commits_; }

  PostgresConnection& connection() { return *connection_; }  ///< for tests of this engine

 private:
  PostgresEngine(const QString& path, const ServerAddress& address, const OpenOptions& options);
  void furnish();
  void requireFurnished();
  void renewFunctions();
  void makeMarks();
  sql::StoredTable storedTable(const QString& name) const;
  void define(const std::function<void()>& body);
  void comment(const QString& object, const QString& text);
  void createIndex(const TableDef& table, const IndexDef& index);
  void reserveBlock(const TableInfo& table, int count);
  QString sequenceOf(const TableInfo& table);
  qint64 once(const QString& text, const QVariantList& values, const std::function<qint64()>& change);
  qint64 insertKeyed(const TableInfo& table, const NewRow& row, const QVariantList& values);
  qint64 insertNow(const TableInfo& table, const NewRow& row, const QVariantList& values);
  void keepUnanswered(const NewRow& row, const QVariantList& values);
  bool isUnanswered(const NewRow& row, const QVariantList& values, qsizetype number) const;
  bool wasStored(const TableInfo& table, const NewRow& row, const QVariantList& values);
  bool isStored(const TableInfo& table, const NewRow& row, const QVariantList& values);
  bool renumber(const TableInfo& table, const NewRow& row, const QVariantList& stored,
                const QVariant& number);

  QString path_;
  OpenOptions options_;
  std::shared_ptr<PostgresConnection> connection_;
  sql::PostgresWriter writer_;
  std::shared_ptr<PostgresCatalogue> catalogue_;
  PostgresNumbers numbers_;
  int depth_ = 0;  // of nested transactions
  qint64 commits_ = 0;
  /// Rows whose storing nobody has confirmed.
  struct Unanswered {
    bool is(const NewRow& row, const QVariantList& now, qsizetype number) const;

    QString text;
    QVariantList values;
  };
  std::vector<Unanswered> unanswered_;
  /// Changes whose commit nobody has confirmed, by their mark.
  struct Doubt {
    QString text;
    QVariantList values;
    QString mark;
    qint64 result = 0;
  };
  std::vector<Doubt> doubts_;
  int knownLosses_ = 0;
};

}  // namespace qk::dao
