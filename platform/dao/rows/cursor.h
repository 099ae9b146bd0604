// The one Recordset: a place in a lazily filled list of keys, and an edit buffer.
//
//   list ─► keys of the source, in its order, as far as somebody walked │ rows added here, in that order
//
//   place ► Unset (just opened) │ Before │ Row │ After
//
// A row that was found by a criterion or a bookmark has a key; its index in the list is worked out when
// somebody moves from it.
#pragma once

#include <memory>

#include "platform/dao/recordset.h"
#include "platform/dao/rows/row_source.h"
#include "platform/dao/rows/row_writer.h"

namespace qk::dao {

class Cursor final : public Recordset {
 public:
  Cursor(std::shared_ptr<Engine> engine, std::shared_ptr<const SelectPlan> plan, RecordsetType type);
  ~Cursor() override;

  bool bof() const override;
  bool eof() const override;
  void moveFirst() override;
  void moveLast() override;
  void moveNext() override;
  void movePrevious() override;

  int fieldCount() const override;
  const FieldDef& fieldDef(int position) const override;
  int fieldPosition(const QString& name) const override;
  QVariant value(int position) const override;
  void setValue(int position, const QVariant& value) override;

  void addNew() override;
  void edit() override;
  void update() override;
  void cancelUpdate() override;
  void remove() override;

  void findFirst(const QString& criterion) override;
  bool noMatch() const override;
  void setIndex(const QString& name) override;
  void seek(const QString& comparison, const QVariantList& keys) override;

  QByteArray bookmark() const override;
  void setBookmark(const QByteArray& bookmark) override;
  int recordCount() const override;
  void requery() override;

 private:
  enum class Place { Unset, Before, Row, After };
  enum class Mode { Reading, Adding, Editing };

  // the list, and the additions behind it
  int keyWidth() const;
  bool listMore();
  void listAll();
  qsizetype nextLive(qsizetype index);
  qsizetype previousLive(qsizetype index);
  qsizetype indexOf(const Key& key) const;
  Key keyAt(qsizetype index) const;
  bool isMember(const Key& key) const;

  // the place
  void settle() const;
  void placeAt(qsizetype index);
  void visit(qsizetype count);
  void placeAt(const Key& key);
  void placeAside(Place place);
  qsizetype workOutIndex();
  void requireRow() const;
  void loadRow() const;
  void leaveEditing();
  void bury();

  const FieldDef& field(int position) const;
  void requireUpdatable() const;

  std::shared_ptr<Engine> engine_;
  std::shared_ptr<const SelectPlan> plan_;
  RecordsetType type_;
  std::unique_ptr<RowSource> source_;
  RowWriter writer_;

  KeyList keys_;
  KeyList added_;
  bool complete_ = false;
  qsizetype visited_ = 0;  // rows of keys_ that somebody stood on or passed
  qsizetype buried_ = 0;   // deleted among the visited and the added ones

  Place place_ = Place::Unset;
  Key key_;
  qsizetype index_ = -1;  // -1 while not worked out
  bool gone_ = false;     // the row we stand on was deleted through this recordset

  mutable bool loaded_ = false;
  mutable QVariantList row_;  // native values of the current row

  mutable int asked_ = -1;  // the field whose name was asked for last

  Mode mode_ = Mode::Reading;
  bool tried_ = false;  // to store the new row
  EditBuffer buffer_;
  bool noMatch_ = false;
};

}  // namespace qk::dao
