#include "tests/support/cutting_proxy.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <optional>
#include <stdexcept>
#include <utility>
#include <vector>

namespace qk::test {
namespace {

/// Bytes of a long answer that still arrive: many rows, and a piece of one.
constexpr qsizetype kBeginning = 20000;

sockaddr_un addressOf(const QByteArray& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  qstrncpy(address.sun_path, path.constData(), sizeof address.sun_path);
  return address;
}

int openSocket() {
  const int made = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (made < 0) throw std::runtime_error("no socket");
  return made;
}

QByteArray received(int from) {
  std::array<char, 65536> buffer{};
  const ssize_t count = recv(from, buffer.data(), buffer.size(), 0);
  return count > 0 ? QByteArray(buffer.data(), count) : QByteArray();
}

bool sendAll(int to, const QByteArray& bytes) {
  for (qsizetype done = 0; done < bytes.size();) {
    const ssize_t count =
        send(to, bytes.constData() + done, static_cast<size_t>(bytes.size() - done), MSG_NOSIGNAL);
    if (count <= 0) return false;
    done += count;
  }
  return true;
}

}  // namespace

/// One connection of the program, and its other half to the server.
struct CuttingProxy::Link {
  Link(int fromProgram, int toServer) : program(fromProgram), server(toServer) {}
  Link(const Link&) = delete;
  Link& operator=(const Link&) = delete;
  ~Link() {
    close(program);
    close(server);
  }

  const int program, server;
  std::optional<Cut> cut;  // of the request that is under way
  qsizetype arrived = 0;   // bytes of its answer
  bool answered = true;    // the server has spoken last
};

CuttingProxy::CuttingProxy(const QString& serverFolder)
    : server_(serverFolder.toUtf8() + "/.s.PGSQL.5432"), listener_(openSocket()) {
  const sockaddr_un own = addressOf(folder_.path().toUtf8() + "/.s.PGSQL.5432");
  if (bind(listener_, reinterpret_cast<const sockaddr*>(&own), sizeof own) != 0 ||
      listen(listener_, 10) != 0 ||
      pipe2(wake_, O_CLOEXEC) != 0)  // a server that is started meanwhile inherits nothing
    throw std::runtime_error("can't listen");
  thread_ = std::thread([this] { serve(); });
}

CuttingProxy::~CuttingProxy() {
  close(wake_[1]);
  thread_.join();
  close(wake_[0]);
  close(listener_);
}

void CuttingProxy::cutNext(const QByteArray& words, Cut cut, const std::function<void()>& then) {
  const std::lock_guard lock(mutex_);
  plans_ = {{words, cut, then}};
}

void CuttingProxy::cutThen(const QByteArray& words, Cut cut) {
  const std::lock_guard lock(mutex_);
  plans_.push_back({words, cut, {}});
}

bool CuttingProxy::noteCut() {
  if (then_) std::exchange(then_, {})();
  ++cuts_;
  return false;
}

void CuttingProxy::serve() {
  std::vector<std::unique_ptr<Link>> links;
  for (;;) {
    std::vector<pollfd> waiting{{wake_[0], POLLIN, 0}, {listener_, POLLIN, 0}};
    for (const auto& link : links) {
      waiting.push_back({link->program, POLLIN, 0});
      waiting.push_back({link->server, POLLIN, 0});
    }
    if (poll(waiting.data(), waiting.size(), -1) < 0) return;
    if (waiting[0].revents) return;
    for (size_t i = links.size(); i-- > 0;) {
      const bool asked = waiting[2 + 2 * i].revents != 0, answered = waiting[3 + 2 * i].revents != 0;
      if ((asked && !passOn(*links[i])) || (answered && !answer(*links[i])))
        links.erase(links.begin() + static_cast<std::ptrdiff_t>(i));
    }
    if (!waiting[1].revents) continue;
    links.push_back(std::make_unique<Link>(accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC), openSocket()));
    const sockaddr_un server = addressOf(server_);
    if (refusing_ ||
        connect(links.back()->server, reinterpret_cast<const sockaddr*>(&server), sizeof server) != 0)
      links.pop_back();
  }
}

bool CuttingProxy::passOn(Link& link) {
  const QByteArray request = received(link.program);
  if (request.isEmpty()) return false;
  if (std::exchange(link.answered, false)) ++turns_;
  const std::lock_guard lock(mutex_);
  if (!plans_.empty() && request.contains(plans_.front().words)) {
    const Plan plan = plans_.front();
    plans_.pop_front();
    link.cut = plan.cut;
    then_ = plan.then;
    if (plan.cut == Cut::Request) return noteCut();
  }
  return sendAll(link.server, request);
}

bool CuttingProxy::answer(Link& link) {
  const QByteArray bytes = received(link.server);
  if (bytes.isEmpty()) return false;
  link.answered = true;
  const qsizetype before = std::exchange(link.arrived, link.cut ? link.arrived + bytes.size() : 0);
  if (link.cut == Cut::Answer || (link.cut == Cut::InAnswer && link.arrived > kBeginning)) {
    if (link.cut == Cut::InAnswer) sendAll(link.program, bytes.left(kBeginning - before));
    return noteCut();
  }
  return sendAll(link.program, bytes);
}

}  // namespace qk::test
