// A key as bytes that a caller may keep and hand back. Bytes that were never a bookmark are told from one.
#pragma once

#include <QByteArray>
#include <optional>

#include "platform/dao/values/catalogue.h"

namespace qk::dao {

QByteArray bookmarkOf(const Key& key);
/// Nothing for bytes that aren't a key of this width.
std::optional<Key> keyOfBookmark(const QByteArray& bookmark, int width);

}  // namespace qk::dao
