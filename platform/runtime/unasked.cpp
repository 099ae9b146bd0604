#include "platform/runtime/unasked.h"

#include <utility>

namespace qk {

namespace {

thread_local const Unasked* innermost = nullptr;

}  // namespace

Unasked::Unasked(QString about) : about_(std::move(about)), outer_(std::exchange(innermost, this)) {}

Unasked::~Unasked() {
  innermost = outer_;
}

std::optional<QString> Unasked::current() {
  return innermost ? std::optional(innermost->about_) : std::nullopt;
}

Unasked::Aside::Aside() : kept_(std::exchange(innermost, nullptr)) {}

Unasked::Aside::~Aside() {
  innermost = kept_;
}

}  // namespace qk
