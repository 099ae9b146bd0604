#include "platform/dao/signs/waiting_sign.h"

#include <QScopedValueRollback>
#include <atomic>
#include <utility>

namespace qk::dao {
namespace {

std::atomic<WaitingSign*> current = nullptr;
thread_local bool showing = false;

}  // namespace

WaitingSign::WaitingSign(std::function<void()> show, std::function<void()> hide)
    : show_(std::move(show)), hide_(std::move(hide)), thread_(std::this_thread::get_id()) {
  current = this;
}

WaitingSign::~WaitingSign() {
  current = nullptr;
}

void WaitingSign::call(const std::function<void()>& routine) {
  const QScopedValueRollback shown(showing, true);
  routine();
}

void WaitingSign::show() {
  WaitingSign* const sign = current;
  if (!sign || showing || std::this_thread::get_id() != sign->thread_) return;
  sign->visible_ = true;
  sign->call(sign->show_);
}

void WaitingSign::hide() {
  WaitingSign* const sign = current;
  if (!sign || showing || std::this_thread::get_id() != sign->thread_) return;
  if (std::exchange(sign->visible_, false)) sign->call(sign->hide_);
}

bool WaitingSign::isShowing() {
  return showing;
}

}  // namespace qk::dao
