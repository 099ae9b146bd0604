#include "platform/dao/engine/page_witness.h"

#include <QCryptographicHash>
#include <QDataStream>
#include <algorithm>

#include "platform/runtime/error.h"
#include "platform/runtime/settled_files.h"

namespace qk::dao {
namespace {

constexpr int kDifferent = errors::kChangedMeanwhile;

quint64 digestOf(const char* bytes, qsizetype size) {
  QCryptographicHash hash(QCryptographicHash::Sha1);
  hash.addData(QByteArrayView(bytes, size));
  quint64 digest = 0;
  QDataStream(hash.result()) >> digest;
  return std::max<quint64>(digest, 1);
}

}  // namespace

void PageWitness::note(qint64 offset, const char* bytes, qsizetype size) {
  for (qsizetype at = 0; at < size; at += pageSize_) {
    const auto page = static_cast<size_t>((offset + at) / pageSize_);
    if (pages_.size() <= page) pages_.resize(page + 1);
    pages_[page] = digestOf(bytes + at, std::min(pageSize_, size - at));
  }
}

void PageWitness::cut(qint64 size) {
  pages_.resize(static_cast<size_t>(size / pageSize_));
}

QByteArray PageWitness::compare(const QString& file) const {
  const auto refuse = [](const QString& difference) { throw Error(kDifferent, difference); };
  QCryptographicHash hash(QCryptographicHash::Sha256);
  size_t page = 0;
  readInPieces(file, pageSize_, [&](const QByteArray& piece) {
    hash.addData(piece);
    const bool known = page < pages_.size();
    const bool same =
        known && (pages_[page] == 0 ? piece.count('\0') == piece.size()
                                    : pages_[page] == digestOf(piece.constData(), piece.size()));
    if (!same) refuse(QString("Block %1 der Datei ist nicht, was geschrieben wurde.").arg(page + 1));
    ++page;
  });
  if (page != pages_.size())
    refuse(QString("Die Datei hat %1 statt %2 Blöcke.").arg(page).arg(pages_.size()));
  return hash.result();
}

}  // namespace qk::dao
