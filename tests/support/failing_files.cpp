#include "tests/support/failing_files.h"

#include "platform/runtime/error.h"

namespace qk::test {

namespace {

QString verb(FileStep step) {
  switch (step) {
    case FileStep::Read:
      return "read";
    case FileStep::Write:
      return "write";
    case FileStep::Append:
      return "append";
    case FileStep::Remove:
      return "remove";
    case FileStep::Copy:
      return "copy";
    case FileStep::Rename:
      return "rename";
    case FileStep::MakeFolder:
      return "makeFolder";
    case FileStep::Look:
      return "look";
  }
  Q_UNREACHABLE();
}

QString fileName(QString path) {
  path.replace(u'\\', u'/');
  while (path.size() > 1 && path.endsWith(u'/')) path.chop(1);
  return path.mid(path.lastIndexOf(u'/') + 1);
}

}  // namespace

void FailingFiles::addRule(FileStep step, const QString& pattern, int error, int times, int after,
                           std::optional<int> bytes) {
  const QRegularExpression expression(QRegularExpression::wildcardToRegularExpression(pattern),
                                      QRegularExpression::CaseInsensitiveOption);
  rules_.push_back({step, expression, error, times, after, bytes});
}

void FailingFiles::fail(FileStep step, const QString& pattern, int error, int times, int after) {
  addRule(step, pattern, error, times, after, std::nullopt);
}

void FailingFiles::tear(FileStep step, const QString& pattern, int bytes, int error, int times) {
  Q_ASSERT(step == FileStep::Write || step == FileStep::Append);
  addRule(step, pattern, error, times, 0, bytes);
}

void FailingFiles::fillDisk() {
  for (const FileStep step :
       {FileStep::Write, FileStep::Append, FileStep::Copy, FileStep::Rename, FileStep::MakeFolder})
    fail(step, "*", 61);
}

void FailingFiles::unplug() {
  for (const FileStep step : {FileStep::Read, FileStep::Write, FileStep::Append, FileStep::Remove,
                              FileStep::Copy, FileStep::Rename, FileStep::MakeFolder, FileStep::Look})
    fail(step, "*", 76);
}

std::optional<FailingFiles::Rule> FailingFiles::meet(FileStep step, const QString& path) {
  for (Rule& rule : rules_) {
    if (rule.step != step || rule.times == 0 || !rule.pattern.match(fileName(path)).hasMatch()) continue;
    if (rule.after > 0) {
      --rule.after;
      continue;
    }
    if (rule.times > 0) --rule.times;
    return rule;
  }
  return std::nullopt;
}

void FailingFiles::pass(FileStep step, const QString& path, const QByteArray* content) {
  if (hook_) hook_(step, path);
  journal_ += verb(step) + " " + fileName(path);
  const std::optional<Rule> rule = meet(step, path);
  if (!rule) return;
  journal_.last() += " !" + QString::number(rule->error);
  if (rule->bytes && content) {
    const QByteArray torn = content->left(*rule->bytes);
    if (step == FileStep::Append)
      Files::append(path, torn);
    else
      Files::write(path, torn);
  }
  throw Error(rule->error);
}

bool FailingFiles::seesNothing(const QString& path) {
  ++looks_;
  return meet(FileStep::Look, path).has_value();
}

QByteArray FailingFiles::read(const QString& path) {
  pass(FileStep::Read, path);
  return Files::read(path);
}

void FailingFiles::write(const QString& path, const QByteArray& content) {
  pass(FileStep::Write, path, &content);
  Files::write(path, content);
}

void FailingFiles::append(const QString& path, const QByteArray& content) {
  pass(FileStep::Append, path, &content);
  Files::append(path, content);
}

void FailingFiles::remove(const QString& path) {
  pass(FileStep::Remove, path);
  Files::remove(path);
}

void FailingFiles::copy(const QString& from, const QString& to) {
  pass(FileStep::Copy, to);
  Files::copy(from, to);
}

void FailingFiles::rename(const QString& from, const QString& to) {
  pass(FileStep::Rename, to);
  Files::rename(from, to);
}

void FailingFiles::replace(const QString& path, const QByteArray& content) {
  pass(FileStep::Write, path + ".neu", &content);
  pass(FileStep::Rename, path);
  Files::replace(path, content);
}

void FailingFiles::makeFolder(const QString& path) {
  pass(FileStep::MakeFolder, path);
  Files::makeFolder(path);
}

bool FailingFiles::exists(const QString& path) {
  return !seesNothing(path) && Files::exists(path);
}
bool FailingFiles::folderExists(const QString& path) {
  return !seesNothing(path) && Files::folderExists(path);
}
bool FailingFiles::readable(const QString& path) {
  return !seesNothing(path) && Files::readable(path);
}

QStringList FailingFiles::list(const QString& folder, const QString& pattern) {
  return seesNothing(folder) ? QStringList() : Files::list(folder, pattern);
}

}  // namespace qk::test
