// A recordset: a dynaset is a list of keys, filled as far as it is walked; rows are read when stood on.
// A snapshot is a dynaset that refuses changes; a table recordset adds Seek over an index.
//
// After opening it stands on the first row (or BOF and EOF are both true). After Update of an AddNew the
// former row is current again and the new one is last. A bookmark is the row's key.
#pragma once

#include <QByteArray>
#include <QString>
#include <QVariant>
#include <memory>

#include "platform/dao/values/types.h"

namespace qk::dao {

enum class RecordsetType { Table = 1, Dynaset = 2, Snapshot = 4 };

class Recordset {
 public:
  virtual ~Recordset() = default;

  virtual bool bof() const = 0;
  virtual bool eof() const = 0;
  virtual void moveFirst() = 0;
  virtual void moveLast() = 0;
  virtual void moveNext() = 0;      ///< 3021 when already at EOF
  virtual void movePrevious() = 0;  ///< 3021 when already at BOF

  virtual int fieldCount() const = 0;
  virtual const FieldDef& fieldDef(int position) const = 0;
  virtual int fieldPosition(const QString& name) const = 0;  ///< 3265 when missing

  /// The current row, or the edit buffer while adding or editing. Null is an invalid QVariant.
  virtual QVariant value(int position) const = 0;
  QVariant value(const QString& name) const { return value(fieldPosition(name)); }
  /// Into the edit buffer; converts to the field's type (3421 when it can't), 3020 without addNew/edit.
  virtual void setValue(int position, const QVariant& value) = 0;
  void setValue(const QString& name, const QVariant& value) { setValue(fieldPosition(name), value); }

  virtual void addNew() = 0;  ///< an auto number can be read at once
  virtual void edit() = 0;
  virtual void update() = 0;  ///< on failure buffer and mode survive, so that a retry can repeat it
  virtual void cancelUpdate() = 0;
  virtual void remove() = 0;  ///< deletes the current row; it stays current and unreadable until a move

  /// First row in the recordset's order that meets a criterion such as "ID = 5" or "Startnummer = '107'".
  virtual void findFirst(const QString& criterion) = 0;
  virtual bool noMatch() const = 0;

  /// Table recordsets: 3015 for an unknown index. comparison is "=", ">=", ">", "<=" or "<".
  virtual void setIndex(const QString& name) = 0;
  virtual void seek(const QString& comparison, const QVariantList& keys) = 0;

  virtual QByteArray bookmark() const = 0;
  virtual void setBookmark(const QByteArray& bookmark) = 0;  ///< 3159 when it isn't a row of this recordset

  /// Rows visited so far; all of them after moveLast.
  virtual int recordCount() const = 0;
  virtual void requery() = 0;
};

}  // namespace qk::dao
