#include "platform/widgets/picture_loader.h"

#include <QFileInfo>
#include <QImageReader>
#include <QLocale>
#include <QPromise>
#include <QThreadPool>
#include <memory>

namespace qk {

namespace {

constexpr qint64 kMostBytes = 128 * 1000 * 1000;
constexpr qint64 kMostPixels = 30 * 1000 * 1000;

SmallPicture faulty(const QString& fault, const QSize& size = {}) {
  return {{}, size, fault};
}

}  // namespace

SmallPicture readSmallPicture(const QString& path, const QByteArray& format, const QSize& box) {
  const QFileInfo file(path);
  if (!file.isFile()) return faulty("Die Datei fehlt oder ist nicht erreichbar.");
  if (file.size() > kMostBytes)
    return faulty("Die Datei ist zu groß für eine Vorschau (" + QLocale().formattedDataSize(file.size()) +
                  ").");
  QImageReader reader(path, format);
  reader.setAutoDetectImageFormat(false);
  const QSize size = reader.size();
  if (size.isEmpty()) return faulty("Die Datei ist beschädigt oder kein Bild.");
  if (qint64(size.width()) * size.height() > kMostPixels)
    return faulty("Das Bild ist zu groß für eine Vorschau.", size);
  if (size.width() > box.width() || size.height() > box.height())
    reader.setScaledSize(size.scaled(box, Qt::KeepAspectRatio).expandedTo({1, 1}));
  const QImage image = reader.read();
  if (image.isNull()) return faulty("Die Datei ist beschädigt oder kein Bild.", size);
  return {image, size, {}};
}

PictureLoader::PictureLoader(const QByteArray& format, QObject* parent) : QObject(parent), format_(format) {
  connect(&watcher_, &QFutureWatcherBase::resultReadyAt, this,
          [this](int position) { Q_EMIT loaded(position, watcher_.resultAt(position)); });
}

PictureLoader::~PictureLoader() {
  watcher_.cancel();
}

void PictureLoader::load(const QStringList& paths, const QSize& box) {
  watcher_.cancel();
  const auto promise = std::make_shared<QPromise<SmallPicture>>();
  watcher_.setFuture(promise->future());
  promise->start();
  QThreadPool::globalInstance()->start([promise, paths, box, format = format_] {
    for (const QString& path : paths) {
      if (promise->isCanceled()) break;
      promise->addResult(readSmallPicture(path, format, box));
    }
    promise->finish();
  });
}

}  // namespace qk
