#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "evaluation/target_pictures.h"

namespace qk {

namespace {

constexpr int kSeite = 720;  // pixels
constexpr double kRand = 12;
constexpr double kTreffer = 11;  // radius of a hit's mark
constexpr int kMeisteRinge = 10;
constexpr double kUnermesslich = 1e12;  // whatever the station's unit is

const QColor kPapier(255, 255, 255), kZehn(0xE6, 0xEB, 0xF1), kLinie(0x99, 0x99, 0x99),
    kSchrift(0x66, 0x66, 0x66), kMarke(0x1F, 0x3A, 0x5F);

double abstand(const Treffer& treffer) {
  return std::hypot(treffer.x, treffer.y);
}

bool istGanz(double dblWert) {
  return dblWert == std::floor(dblWert);
}

std::vector<Treffer> lesbare(const std::vector<Treffer>& treffer) {
  std::vector<Treffer> lesbar;
  std::copy_if(treffer.begin(), treffer.end(), std::back_inserter(lesbar), [](const Treffer& einer) {
    return abstand(einer) < kUnermesslich && std::isfinite(einer.Ringwert);
  });
  return lesbar;
}

double groessterAbstand(const std::vector<Treffer>& treffer) {
  double groesster = 0;
  for (const Treffer& einer : treffer) groesster = std::max(groesster, abstand(einer));
  return groesster;
}

class Zeichnung {
 public:
  /// `halbeBreite`: what the picture shows on each side of the middle, in the unit of the hits.
  explicit Zeichnung(double halbeBreite)
      : bild_(kSeite, kSeite, QImage::Format_RGB32), massstab_((kSeite / 2.0 - kRand) / halbeBreite) {
    bild_.fill(kPapier);
    maler_.begin(&bild_);
    maler_.setRenderHint(QPainter::Antialiasing);
    maler_.translate(kSeite / 2.0, kSeite / 2.0);
  }

  void ring(double radius, const QBrush& fuellung) {
    maler_.setPen(QPen(kLinie, 2));
    maler_.setBrush(fuellung);
    maler_.drawEllipse(QPointF(0, 0), radius * massstab_, radius * massstab_);
  }

  void zahl(int nRing, double radius) {
    QFont font = maler_.font();
    font.setPixelSize(26);
    maler_.setFont(font);
    maler_.setPen(kSchrift);
    maler_.drawText(QRectF(-24, -radius * massstab_ - 16, 48, 32), Qt::AlignCenter, QString::number(nRing));
  }

  void kreuz() {
    maler_.setPen(QPen(kLinie, 2));
    maler_.drawLine(QPointF(-14, 0), QPointF(14, 0));
    maler_.drawLine(QPointF(0, -14), QPointF(0, 14));
  }

  void marke(const Treffer& treffer) {
    maler_.setPen(QPen(kPapier, 2));
    maler_.setBrush(kMarke);
    maler_.drawEllipse(QPointF(treffer.x * massstab_, -treffer.y * massstab_), kTreffer, kTreffer);
  }

  QByteArray png() {
    maler_.end();
    QByteArray bytes;
    QBuffer puffer(&bytes);
    puffer.open(QIODevice::WriteOnly);
    bild_.save(&puffer, "PNG");
    return bytes;
  }

 private:
  QImage bild_;
  QPainter maler_;
  double massstab_;
};

}  // namespace

// A hit of 10,0 lies one ring's width from the middle, one of 9,0 two. A value without tenths, or with
// tenths, stands for all hits of its step: their mean lies half a step further in.
double ringbreite(const std::vector<Treffer>& treffer) {
  const bool bGanze = std::all_of(treffer.begin(), treffer.end(),
                                  [](const Treffer& einer) { return istGanz(einer.Ringwert); });
  const double dblMitte = bGanze ? 10.5 : 10.95;
  double dblAbstand = 0, dblRinge = 0;
  for (const Treffer& einer : lesbare(treffer)) {
    if (einer.Ringwert < 1 || einer.Ringwert >= dblMitte) continue;
    dblAbstand += abstand(einer);
    dblRinge += dblMitte - einer.Ringwert;
  }
  return dblRinge > 0 ? dblAbstand / dblRinge : 0;
}

QByteArray scheibenbild(const std::vector<Treffer>& treffer) {
  const std::vector<Treffer> gezeigt = lesbare(treffer);
  const double breite = ringbreite(gezeigt), weiteste = groessterAbstand(gezeigt);
  // One ring more than the widest hit asks for, and at least the inner three; a hit beside the target is
  // shown beside it.
  const int nRinge =
      breite > 0 ? static_cast<int>(std::clamp(std::ceil(weiteste / breite) + 1, 3.0, double(kMeisteRinge)))
                 : 0;
  const double halb = std::max(nRinge * breite, weiteste * 1.05);
  Zeichnung zeichnung(halb > 0 ? halb : 1);
  for (int nRing = nRinge; nRing >= 1; --nRing)
    zeichnung.ring(nRing * breite, nRing == 1 ? QBrush(kZehn) : QBrush(Qt::NoBrush));
  for (int nRing = nRinge; nRing >= 2; --nRing)
    zeichnung.zahl(kMeisteRinge + 1 - nRing, (nRing - 0.5) * breite);
  zeichnung.kreuz();
  for (const Treffer& einer : gezeigt) zeichnung.marke(einer);
  return zeichnung.png();
}

}  // namespace qk
