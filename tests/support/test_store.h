// Competitions and other stores for tests, on the engine that this run of the test program is for: files, or
// databases on a server (QK_TEST_ENGINE=postgres; qk_test(… ON_BOTH_ENGINES) registers a run for each).
//
//   const StoreOriginal original(makeDemoCompetition);  // once a program
//   original.copyTo(place.path("Pokal.qkk"));           // in each test
#pragma once

#include <QString>
#include <functional>
#include <memory>

namespace qk::test {

class ServerDatabase;

bool storesOnServer();

/// Where a store is to be made. As a file there is nothing to do; for a server a file is written that names
/// an empty database. It goes when the file's folder is gone, or at the end of the program.
void prepareStore(const QString& path);

/// The database of a store on the server.
const ServerDatabase& serverDatabase(const QString& path);

enum class StoreAct { Insert, Update, Delete };
/// From now on the act fails in the store for every row of the table with that value in that column. Once for
/// a store and an act.
void refuse(const QString& path, StoreAct act, const QString& table, const QString& column, int value);

/// From now on every change of the table's row of that ID fails in the store.
void refuseChanges(const QString& path, const QString& table, int id);

/// As if the disk had lost a block in the middle of the table, which is the store's largest: what stands
/// there can't be read. Nobody may have the store open.
void damage(const QString& path, const QString& table);

/// From now on nobody writes the store, whatever rights he has. Nobody may have it open.
void forbidWriting(const QString& path);

/// A store that is made once, and copied as often as tests want it.
class StoreOriginal {
 public:
  /// `make` makes a store at the path that it gets, and closes it.
  explicit StoreOriginal(const std::function<void(const QString& path)>& make);
  ~StoreOriginal();
  StoreOriginal(const StoreOriginal&) = delete;
  StoreOriginal& operator=(const StoreOriginal&) = delete;

  /// A copy of its own, at a path where nothing is yet.
  void copyTo(const QString& path) const;

 private:
  class Folder;
  std::unique_ptr<Folder> folder_;
  std::unique_ptr<ServerDatabase> database_;  ///< on a server
};

}  // namespace qk::test
