#include "benchmarks/pairs.h"

namespace qk::bench {

namespace {
std::vector<Pair>& allPairs() {
  static std::vector<Pair> all;
  return all;
}
std::vector<Figure>& allFigures() {
  static std::vector<Figure> all;
  return all;
}
std::vector<Quotient>& allQuotients() {
  static std::vector<Quotient> all;
  return all;
}
}  // namespace

Registered::Registered(Pair pair) {
  allPairs().push_back(std::move(pair));
}
Registered::Registered(Figure figure) {
  allFigures().push_back(std::move(figure));
}
Registered::Registered(Quotient quotient) {
  allQuotients().push_back(std::move(quotient));
}

const std::vector<Pair>& pairs() {
  return allPairs();
}
const std::vector<Figure>& figures() {
  return allFigures();
}
const std::vector<Quotient>& quotients() {
  return allQuotients();
}

}  // namespace qk::bench
