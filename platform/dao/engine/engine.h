// The seam to a database kind. Everything above it (recordsets, definitions, SELECT … INTO between files) is
// the same for each engine: it asks the engine's Writer for text and hands over native values.
//
// Of SQL, what stands above takes for granted: a statement is a text and the values that it asks for, in that
// order; the same question asks for them in the same text, so that a text may be kept; a select may be begun
// in one place and completed in another (Writer::chosen()). It neither looks into a text nor puts one
// together.
//
// An engine is one connection. No cursor and no lock outlives a call. Every failure is a qk::Error with the
// number of the classic engine.
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "platform/dao/engine/open_options.h"
#include "platform/dao/engine/page_witness.h"
#include "platform/dao/sql/writer.h"
#include "platform/dao/values/catalogue.h"

namespace qk::dao {

using NativeRow = QVariantList;

/// An INSERT of one row, and the columns that its values are for.
struct NewRow {
  QString text;
  QStringList columns;
};

class Engine {
 public:
  /// How many numbers are reserved at once for rows that come one by one.
  static constexpr int kNumberBlock = 32;

  virtual ~Engine() = default;

  virtual const QString& path() const = 0;
  virtual bool readOnly() const = 0;
  virtual const sql::Writer& writer() const = 0;

  /// The catalogue as it stands: another object as soon as anyone, this connection or another, has changed
  /// it.
  virtual std::shared_ptr<const Catalogue> catalogue() = 0;
  virtual void createTable(const TableDef& table) = 0;
  virtual void dropTable(const TableInfo& table) = 0;
  virtual void appendField(const TableInfo& table, const FieldDef& field) = 0;
  virtual void appendIndex(const TableInfo& table, const IndexDef& index) = 0;
  virtual void createQuery(const QString& name, const sql::Select& select, const QString& text) = 0;

  /// Another connection to the same store, for reading in another thread. A read on it ends with 3059 as soon
  /// as `cancelled`, asked now and then from that thread, says so.
  virtual std::unique_ptr<Engine> reader(std::function<bool()> cancelled) const = 0;

  /// For a reader: all reads until release() see the store as it is now, whoever changes it meanwhile.
  virtual void hold() = 0;
  /// Fails with nothing.
  virtual void release() = 0;
  /// False once what its reads see has been taken away from under it. May be asked while a read runs.
  virtual bool stands() const = 0;
  /// A text that stays the same as long as nobody commits a change. Two of them can be compared only when
  /// both are from this connection.
  virtual QString stamp() = 0;
  /// Where the store is a file of pages: writes the held ones into a file (sqlite_pages.h). Nothing
  /// otherwise.
  virtual std::optional<PageWitness> copyHeldPages(const QString& /*file*/,
                                                   const std::function<bool()>& /*cancelled*/,
                                                   const PartDone& /*done*/) {
    return {};
  }

  /// Hands over row after row until `take` says false. `take` runs no statement of this engine.
  virtual void read(const QString& text, const QVariantList& values,
                    const std::function<bool(const NativeRow&)>& take) = 0;
  /// One action statement, a transaction of its own outside of transaction(). The count of affected rows.
  virtual int write(const QString& text, const QVariantList& values) = 0;
  /// The same for a statement of any kind, which may be another change each time it runs.
  virtual int execute(const QString& text, const QVariantList& values) { return write(text, values); }
  /// One INSERT of one row, likewise. The key that the row got is known to the caller, but for a number that
  /// the engine assigned itself: that one is the result.
  virtual qint64 insert(const TableInfo& table, const NewRow& row, const QVariantList& values) = 0;
  /// All or nothing; may be nested, the outermost commits.
  virtual void transaction(const std::function<void()>& body) = 0;
  /// The same, to be run again with the same `doubt` after a failure: where a failure left it open whether
  /// all was stored, `doubt` says by what to ask, and the body runs only if it wasn't.
  virtual void transactionOnce(const std::function<void()>& body, QString& /*doubt*/) { transaction(body); }

  /// Within a transaction: nobody else changes rows of the table until its end.
  virtual void holdTable(const TableInfo& /*table*/) {}

  /// A number for a new row of the table that nobody else gets. Costs a commit only when no reserved number
  /// is left, and then so many are reserved; insert() sees to it that the next one is reserved within the
  /// commit that stores the row.
  virtual qint64 takeNumber(const TableInfo& table, int block) = 0;
  qint64 takeNumber(const TableInfo& table) { return takeNumber(table, kNumberBlock); }
  /// The row of that number wasn't stored.
  virtual void giveBackNumber(const TableInfo& table, qint64 number) = 0;
  virtual void reserveNumbers(const TableInfo& table) = 0;
  /// The highest auto number that was reserved so far, by whomever, or stands in a row; 0 where there is
  /// none. A server tells of all that were reserved by now even while hold() shows earlier rows: it is ahead
  /// of those, never behind.
  virtual qint64 lastNumber(const TableInfo& table) = 0;
  /// No number up to this one is reserved any more. For a table from which nobody takes numbers meanwhile.
  virtual void goOnAfter(const TableInfo& table, qint64 number) = 0;

  /// Many rows of the table were stored at once: a store that plans its reads by figures, and learns them
  /// only later by itself, learns them now.
  virtual void learnFigures(const QString& /*table*/) {}

  virtual qint64 commitCount() const = 0;

  /// Whether another connection, of this process or any other, stands on the store just now.
  virtual bool isOpenElsewhere() = 0;
  /// The name of the encoding, if it is one that lacks characters.
  virtual std::optional<QString> poorEncoding() = 0;
};

}  // namespace qk::dao
