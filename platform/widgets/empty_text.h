// What an empty list says in its middle, so that an empty screen isn't taken for a broken one.
#pragma once

#include <QString>

class QAbstractItemView;

namespace qk {

/// Shows `text` over the view while its model has no rows. Call it after the model is set; again for another
/// text.
void setEmptyText(QAbstractItemView* view, const QString& text);

}  // namespace qk
