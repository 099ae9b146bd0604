#include "backup/copy_making.h"

#include <QFileInfo>
#include <QLockFile>

#include "platform/dao/database.h"
#include "platform/dao/moving/snapshot.h"
#include "platform/runtime/error.h"
#include "platform/runtime/files.h"
#include "platform/runtime/settled_files.h"

namespace qk {

namespace {

constexpr int kDifferent = errors::kChangedMeanwhile;
/// After so long without an end whoever holds the folder, on another machine, has crashed.
constexpr auto kLongest = std::chrono::minutes(30);

void requireFolder(Files& files, const QString& folder) {
  if (files.folderExists(folder)) return;
  if (folder.isEmpty() || isForeignPath(folder)) throw Error(errors::kPathNotFound);
  files.makeFolder(folder);
}

class Making {
 public:
  Making(dao::SnapshotReader& reader, const CopyRequest& request, Files& files, const dao::PartDone& done,
         const CopyHooks& hooks)
      : reader_(reader),
        request_(request),
        source_(sourceOf(request.competition)),
        files_(files),
        done_(done),
        hooks_(hooks) {}

  CopyResult run() {
    requireFolder(files_, request_.folder);
    QLockFile lock(withTrailingSeparator(request_.folder) + copyBaseOf(request_.competition) + ".sperre");
    lock.setStaleLockTime(kLongest);
    if (!lock.tryLock(0)) {
      if (lock.error() == QLockFile::LockFailedError) return {CopyResult::Kind::Elsewhere, {}};
      throw Error(errors::kPathAccess, "In den Ordner der Sicherungen kann nicht geschrieben werden.");
    }
    removeDrafts(files_, request_.folder, request_.competition);
    return runAlone();
  }

 private:
  CopyResult runAlone() {
    std::vector<ProvenCopy> copies = provenCopies(files_, request_.folder, source_);
    if (!copies.empty() && isYoung(copies.back().evidence)) return {CopyResult::Kind::Young, copies.back()};
    const QString stem = freeStem();
    const QString draft = stem + ".entwurf";
    try {
      const auto made = prove(draft, copies.empty() ? nullptr : &copies.back().evidence);
      if (!made) return {CopyResult::Kind::Current, copies.back()};
      const qint64 sequence = copies.empty() ? 1 : copies.back().evidence.sequence + 1;
      copies.push_back({stem + ".qkk", *made});
      copies.back().evidence.sequence = sequence;
      copies.back().evidence.file = QFileInfo(copies.back().path).fileName();
      publish(draft, copies.back());
    } catch (...) {
      removeDrafts(files_, request_.folder, request_.competition);
      throw;
    }
    thinOut(files_, copies);
    return {CopyResult::Kind::Made, copies.back()};
  }

  bool isYoung(const Evidence& last) const {
    const qint64 age = last.moment.secsTo(request_.moment);
    return age >= 0 && age < std::chrono::seconds(request_.interval).count();
  }

  /// Two within one second get names a second apart.
  QString freeStem() const {
    QDateTime moment = request_.moment;
    for (;; moment = moment.addSecs(1)) {
      const QString stem = copyStemOf(request_.folder, request_.competition, moment);
      if (!files_.exists(stem + ".qkk") && !files_.exists(stem + ".beleg")) return stem;
    }
  }

  /// Nothing when the last copy holds the same.
  std::optional<Evidence> prove(const QString& draft, const Evidence* last) {
    Evidence evidence;
    evidence.source = source_;
    evidence.moment = request_.moment.addMSecs(-request_.moment.time().msec());
    std::vector<dao::TableFigures> figures;
    dao::PageWitness written;
    std::optional<dao::Snapshot> snapshot(std::in_place, reader_);
    const auto catalogue = snapshot->catalogue();
    evidence.structure = structureOf(*catalogue);
    const QStringList tables = catalogue->tableNames();
    for (const QString& table : tables) {
      figures.push_back(snapshot->figures(table));
      evidence.tables.push_back({table, figures.back().rows, figures.back().digest});
      tell(Reading, static_cast<double>(figures.size()) / static_cast<double>(tables.size()));
    }
    if (last && last->isOfSameContents(evidence)) return {};
    written = snapshot->writeTo(draft, [this](double part) { tell(Writing, part); });
    snapshot.reset();  // the store needn't keep what others overwrite any longer
    settleFile(draft);
    if (hooks_.written) hooks_.written(draft);
    evidence.sha256 = written.compare(draft);
    evidence.size = QFileInfo(draft).size();
    requireFlawless(draft);
    requireEqual(draft, *catalogue, evidence, figures);
    return evidence;
  }

  void requireFlawless(const QString& draft) {
    const QString flaws = dao::flawsOfSnapshot(draft, reader_.cancelled());
    if (!flaws.isEmpty())
      throw Error(errors::kStoreDamaged,
                  "In der Kopie, und also wohl im Wettkampf selbst, ist etwas beschädigt: " + flaws);
    tell(Checking, 0.3);
  }

  void requireEqual(const QString& draft, const dao::Catalogue& catalogue, const Evidence& evidence,
                    const std::vector<dao::TableFigures>& figures) {
    dao::SnapshotReader copy(draft, reader_.cancelled());
    const dao::Snapshot snapshot(copy);
    if (structureOf(*snapshot.catalogue()) != evidence.structure)
      throw Error(kDifferent, "Die Kopie hat andere Tabellen als der Wettkampf.");
    for (size_t i = 0; i < figures.size(); ++i) {
      const QString& table = evidence.tables[i].table;
      const QString difference =
          dao::differenceOf(catalogue.info(table)->def, figures[i], snapshot.figures(table));
      if (!difference.isEmpty())
        throw Error(
            kDifferent,
            QString("Die Kopie ist anders als der Wettkampf, Tabelle »%1«: %2.").arg(table, difference));
      tell(Checking, 0.3 + 0.7 * static_cast<double>(i + 1) / static_cast<double>(figures.size()));
    }
  }

  /// The name comes last: a copy without evidence, or half of one, never lies there under it.
  void publish(const QString& draft, const ProvenCopy& copy) {
    writeSettled(evidencePathOf(copy.path), evidenceText(copy.evidence));
    files_.rename(draft, copy.path);
    settleFolder(request_.folder);
  }

  enum Stage : int { Reading, Writing, Checking };
  void tell(Stage stage, double part) const {
    constexpr double kStages = 3;
    if (done_) done_((static_cast<int>(stage) + part) / kStages);
  }

  dao::SnapshotReader& reader_;
  const CopyRequest& request_;
  QString source_;
  Files& files_;
  const dao::PartDone& done_;
  const CopyHooks& hooks_;
};

}  // namespace

CopyResult makeCopy(dao::SnapshotReader& reader, const CopyRequest& request, Files& files,
                    const dao::PartDone& done, const CopyHooks& hooks) {
  return Making(reader, request, files, done, hooks).run();
}

}  // namespace qk
