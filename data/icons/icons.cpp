#include "data/icons/icons.h"

#include <QFile>

// Q_INIT_RESOURCE stands outside every namespace; a static library would otherwise leave its resource behind.
static void loadResource() {
  Q_INIT_RESOURCE(icons);
}

namespace qk {

QIcon icon(const QString& key) {
  loadResource();
  const QString path = ":/icons/" + key + ".svg";
  return QFile::exists(path) ? QIcon(path) : QIcon();
}

}  // namespace qk
