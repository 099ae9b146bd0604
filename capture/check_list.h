// A check list without a window: entries of text, number and tick, and one current entry.
//
// It is an item model, so a QListView shows it as it is. Positions count from 0; a position outside is
// Error 9. setTicked() and setCurrent() are the program's own hand and don't emit ticked(); the operator's
// hand, through setData(Qt::CheckStateRole), does.
#pragma once

#include <QAbstractListModel>
#include <QString>
#include <cstdint>
#include <vector>

namespace qk {

class CheckList : public QAbstractListModel {
  Q_OBJECT

 public:
  explicit CheckList(QObject* parent = nullptr) : QAbstractListModel(parent) {}

  void clear();  ///< no entry, none current
  void add(const QString& text, std::int32_t number);
  void takeEntriesOf(const CheckList& other);  ///< instead of its own; none ticked, none current

  int count() const { return static_cast<int>(entries_.size()); }
  const QString& text(int position) const { return entry(position).text; }
  std::int32_t number(int position) const { return entry(position).number; }
  bool isTicked(int position) const { return entry(position).ticked; }
  int tickedCount() const;

  void setTicked(int position, bool ticked);
  void untickAll();

  int current() const { return current_; }  ///< -1 when none
  void setCurrent(int position);

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 Q_SIGNALS:
  void ticked(int position);          ///< the operator changed a tick
  void currentChanged(int position);  ///< each time it is set: a view may stand elsewhere by then

 private:
  struct Entry {
    QString text;
    std::int32_t number = 0;
    bool ticked = false;
  };
  const Entry& entry(int position) const;

  std::vector<Entry> entries_;
  int current_ = -1;
};

}  // namespace qk
