// Other programs beside ours on a database file: processes of their own that know nothing of the house.
#pragma once

#include <QProcess>
#include <QString>

namespace qk::test {

/// Opens, does it, closes, and ends. False when the file is damaged.
bool foreignRead(const QString& file);
bool foreignWrite(const QString& file);
bool foreignCheck(const QString& file);

/// Has the file open while it lives.
class ForeignHolder {
 public:
  explicit ForeignHolder(const QString& file);
  ~ForeignHolder();

 private:
  QProcess process_;
};

/// Opens and closes the file while it lives, reading and writing by chance, or only reading.
class ForeignVisitor {
 public:
  enum class Manner { ReadAndWrite, Read };
  ForeignVisitor(const QString& file, unsigned seed, Manner manner = Manner::ReadAndWrite);
  ~ForeignVisitor();
  /// Ends it; how often it had opened the file, or -1 when it found it damaged.
  int end();

 private:
  QProcess process_;
};

}  // namespace qk::test
