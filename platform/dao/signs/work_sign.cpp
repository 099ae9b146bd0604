#include "platform/dao/signs/work_sign.h"

#include <utility>

namespace qk::dao {
namespace {

constexpr qint64 kMoment = 300;  // milliseconds

thread_local WorkSign* current = nullptr;

}  // namespace

WorkSign::WorkSign(std::function<void(double done)> show, std::function<void()> hide)
    : show_(std::move(show)), hide_(std::move(hide)) {
  current = this;
}

WorkSign::~WorkSign() {
  current = nullptr;
}

Work::~Work() {
  if (shown_ && current) current->hide_();
}

void Work::done(double part) {
  if (!current || sinceShown_.elapsed() < kMoment) return;
  shown_ = true;
  current->show_(part);
  sinceShown_.restart();
}

}  // namespace qk::dao
