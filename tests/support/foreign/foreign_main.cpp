// qk-foreign: what other programs do to a database file beside ours. Knows nothing of the house but the file.
//
//   qk-foreign read FILE           opens, reads, closes
//   qk-foreign write FILE          opens, adds a row to a table of its own, closes
//   qk-foreign hold FILE           opens, reads, says "ready", closes when its input ends
//   qk-foreign come-and-go FILE N  reads and writes in turn by chance (seed N) until its input ends, and says
//                                  how often it opened the file
//   qk-foreign look FILE N         the same, only reading
//   qk-foreign check FILE          the engine's own check of the whole file
//
// Exit status 0 when the engine never said that the file is damaged.
#include <poll.h>
#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>

namespace {

constexpr int kPatience = 10000;  // milliseconds for a lock

class File {
 public:
  explicit File(const char* path) {
    good_ = sqlite3_open_v2(path, &handle_, SQLITE_OPEN_READWRITE, nullptr) == SQLITE_OK;
    sqlite3_busy_timeout(handle_, kPatience);
  }
  ~File() { sqlite3_close(handle_); }
  File(const File&) = delete;
  File& operator=(const File&) = delete;

  bool run(const char* text) {
    std::string first;
    const int result = sqlite3_exec(handle_, text, &takeFirst, &first, nullptr);
    if (!first.empty()) answer_ = first;
    if (result != SQLITE_OK) std::fprintf(stderr, "%s: %s\n", text, sqlite3_errmsg(handle_));
    const bool busy = result == SQLITE_BUSY || result == SQLITE_LOCKED;  // a lock is no damage
    good_ = good_ && (result == SQLITE_OK || busy);
    return good_;
  }
  bool read() { return run("SELECT count(*) FROM sqlite_master"); }
  bool write() {
    return run("CREATE TABLE IF NOT EXISTS Fremd (id INTEGER PRIMARY KEY, text TEXT)") &&
           run("INSERT INTO Fremd (text) VALUES (hex(randomblob(200)))");
  }
  const std::string& answer() const { return answer_; }

 private:
  static int takeFirst(void* first, int, char** values, char**) {
    auto& text = *static_cast<std::string*>(first);
    if (text.empty() && values[0]) text = values[0];
    return 0;
  }

  sqlite3* handle_ = nullptr;
  std::string answer_;
  bool good_ = false;
};

/// Waits for the end of the input, but no longer than so many milliseconds.
bool inputEnds(int milliseconds) {
  pollfd input{0, POLLIN, 0};
  if (::poll(&input, 1, milliseconds) <= 0) return false;
  return std::getchar() == EOF;
}

int comeAndGo(const char* path, unsigned seed, bool writes) {
  std::mt19937 random(seed);
  int openings = 0;
  bool good = true;
  while (!inputEnds(static_cast<int>(random() % 100))) {
    File file(path);
    good = (writes && random() % 2 != 0 ? file.write() : file.read()) && good;
    ++openings;
  }
  std::printf("%d\n", openings);
  return good ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) return 2;
  const std::string act = argv[1];
  const unsigned seed = argc > 3 ? static_cast<unsigned>(std::atoi(argv[3])) : 1;
  if (act == "come-and-go" || act == "look") return comeAndGo(argv[2], seed, act != "look");
  File file(argv[2]);
  if (act == "read") return file.read() ? 0 : 1;
  if (act == "write") return file.write() ? 0 : 1;
  if (act == "check") return file.run("PRAGMA integrity_check") && file.answer() == "ok" ? 0 : 1;
  if (act != "hold" || !file.read()) return 1;
  std::puts("ready");
  std::fflush(stdout);
  while (!inputEnds(-1)) {
  }
  return 0;
}
