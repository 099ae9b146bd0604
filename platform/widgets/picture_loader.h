// Small versions of picture files, read in a thread of their own, so that no window waits for a slow folder.
//
// A file that is no picture, is damaged, or would take too much memory gives a picture with a fault instead
// of an image; nothing else happens. The formats of other files aren't tried, whatever they hold.
#pragma once

#include <QFutureWatcher>
#include <QImage>
#include <QStringList>

namespace qk {

struct SmallPicture {
  QImage image;   ///< null with a fault
  QSize size;     ///< of the whole picture in pixels; empty when unknown
  QString fault;  ///< why there is no image, in German
};

/// Reads one picture of that format ("bmp"), not larger than the box. May be called in any thread.
SmallPicture readSmallPicture(const QString& path, const QByteArray& format, const QSize& box);

class PictureLoader : public QObject {
  Q_OBJECT

 public:
  explicit PictureLoader(const QByteArray& format, QObject* parent = nullptr);
  /// Gives up what is being read; waits for nothing.
  ~PictureLoader() override;

  /// Reads these files in their order, and gives up the ones before.
  void load(const QStringList& paths, const QSize& box);

 Q_SIGNALS:
  /// `position` counts in the list given to load().
  void loaded(int position, const qk::SmallPicture& picture);

 private:
  QByteArray format_;
  QFutureWatcher<SmallPicture> watcher_;
};

}  // namespace qk
