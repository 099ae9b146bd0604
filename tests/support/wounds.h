// Random wounds for texts: what the fuzz runs feed to readers. The same seed gives the same wounds.
#pragma once

#include <QtGlobal>

namespace qk::test {

class Dice {
 public:
  explicit Dice(quint64 seed) : state_(seed) {}
  qsizetype below(qsizetype limit) {
    state_ = state_ * 6364136223846793005u + 1442695040888963407u;
    return static_cast<qsizetype>((state_ >> 33) % static_cast<quint64>(limit));
  }

 private:
  quint64 state_;
};

/// Inserts a piece, cuts the text off, or takes something out. For QString with QStringList and QByteArray
/// with QByteArrayList.
template <class Text>
void wound(Text& text, const QList<Text>& pieces, Dice& dice) {
  const qsizetype at = dice.below(text.size() + 1);
  const Text& piece = pieces[dice.below(pieces.size())];
  switch (dice.below(4)) {
    case 0:
      text.insert(at, piece);
      break;
    case 1:
      text.truncate(at);
      break;
    case 2:
      text.remove(at, 1 + dice.below(20));
      break;
    case 3:
      text.replace(at, dice.below(12), piece);
      break;
  }
}

}  // namespace qk::test
