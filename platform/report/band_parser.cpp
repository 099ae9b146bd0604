#include "platform/report/band_parser.h"

#include "platform/report/formats.h"
#include "platform/report/text_template.h"

namespace qk::report {

namespace {

constexpr double kLargest = 2000;  // millimetres
constexpr size_t kMostElements = 500;
constexpr int kMostValues = 400;

Place placeOf(LineReader& words) {
  Place place;
  place.left = words.number("Abstand von links in mm", 0, kLargest);
  place.top = words.number("Abstand von oben in mm", 0, kLargest);
  if (words.nextIs(Token::Kind::Share))
    words.take();
  else
    place.width = words.number("Breite in mm", 0, kLargest);
  place.height = words.number("Höhe in mm", 0, kLargest);
  return place;
}

Condition conditionOf(LineReader& words) {
  Condition condition;
  condition.negated = words.takes("nicht");
  condition.value = words.value("der Wert hinter \"wenn\"");
  return condition;
}

QColor colourOf(LineReader& words) {
  const QString name = words.peek();
  const QColor colour = name.startsWith(u'#') ? QColor(name) : QColor();
  if (!colour.isValid()) words.fail("Hinter Farbe steht eine Farbe wie #1F3A5F.");
  words.take();
  return colour;
}

/// True where a word of the style stood there.
bool takesStyle(LineReader& words, TextStyle& style) {
  if (words.takes("fett")) return style.bold = true;
  if (words.takes("kursiv")) return style.italic = true;
  if (words.takes("grau")) return style.colour = QColor(0x55, 0x55, 0x55), true;
  if (words.takes("Farbe")) return style.colour = colourOf(words), true;
  if (words.takes("Schrift")) return style.family = words.text("der Name der Schrift"), true;
  if (words.nextIs(Token::Kind::Number)) {
    style.points = words.number("Schriftgröße in Punkt", 3, 200);
    if (!words.takes("Punkt")) words.fail("Hinter der Schriftgröße steht \"Punkt\".");
    return true;
  }
  return false;
}

bool takesAlign(LineReader& words, Align& align) {
  if (words.takes("links")) return align = Align::Left, true;
  if (words.takes("rechts")) return align = Align::Right, true;
  if (words.takes("mitte")) return align = Align::Centre, true;
  return false;
}

/// The words behind an element, each handed to `option`, which says whether it knows it.
template <class Option>
void options(LineReader& words, Element& element, const Option& option) {
  while (!words.atEnd()) {
    if (words.takes("wenn"))
      element.when = conditionOf(words);
    else if (!option())
      words.end();
  }
}

Element textElement(LineReader& words) {
  Element element{.place = placeOf(words)};
  TextElement text;
  text.text = words.textTemplate("der Text");
  options(words, element, [&] {
    return takesAlign(words, text.align) || takesStyle(words, text.style) ||
           (words.takes("mehrzeilig") && (text.grows = true));
  });
  element.shape = text;
  return element;
}

Element lineElement(LineReader& words) {
  Element element;
  element.place.left = words.number("Abstand von links in mm", 0, kLargest);
  element.place.top = words.number("Abstand von oben in mm", 0, kLargest);
  if (words.nextIs(Token::Kind::Share))
    words.take();
  else
    element.place.width = words.number("Breite in mm", 0, kLargest);
  if (words.nextIs(Token::Kind::Number)) element.place.height = words.number("Höhe in mm", 0, kLargest);
  LineElement shape;
  options(words, element, [&] {
    if (words.takes("Stärke")) return shape.thickness = words.number("Stärke in mm", 0.05, 20), true;
    if (words.takes("Farbe")) return shape.colour = colourOf(words), true;
    return words.takes("grau") && (shape.colour = QColor(0x99, 0x99, 0x99), true);
  });
  element.shape = shape;
  return element;
}

Element boxElement(LineReader& words) {
  Element element{.place = placeOf(words)};
  BoxElement shape;
  options(words, element, [&] {
    if (words.takes("Stärke")) return shape.thickness = words.number("Stärke in mm", 0, 20), true;
    if (words.takes("Farbe")) return shape.colour = colourOf(words), true;
    return words.takes("gefüllt") && (shape.ground = colourOf(words), true);
  });
  element.shape = shape;
  return element;
}

Element pictureElement(LineReader& words) {
  Element element{.place = placeOf(words)};
  PictureElement shape;
  shape.source = words.textTemplate("die Datei des Bildes");
  options(words, element, [] { return false; });
  element.shape = shape;
  return element;
}

Element barElement(LineReader& words) {
  Element element{.place = placeOf(words)};
  BarElement shape;
  const std::optional<Symbology> kind = barKindNamed(words.name("die Art des Strichcodes"));
  if (!kind) words.fail("Einen Strichcode gibt es als Code128, Code39 oder EAN13.");
  shape.kind = *kind;
  shape.text = words.textTemplate("der Inhalt des Strichcodes");
  options(words, element, [&] { return words.takes("ohneText") && (shape.withText = false, true); });
  element.shape = shape;
  return element;
}

/// Werte 0 0 * 4 E 1 100 je 10 0,0
Element valuesElement(LineReader& words) {
  Element element{.place = placeOf(words)};
  if (element.place.height <= 0) words.fail("Eine Zeile von Werten braucht eine Höhe.");
  ValuesElement shape;
  const QString name = words.name("der Anfang der Spaltennamen");
  const int first = static_cast<int>(words.number("die erste Nummer", 0, 9999));
  const int last = static_cast<int>(words.number("die letzte Nummer", first, first + kMostValues));
  if (!words.takes("je")) words.fail("Hinter den Nummern steht \"je\" und wie viele in einer Zeile stehen.");
  shape.perRow = static_cast<int>(words.number("Werte in einer Zeile", 1, 100));
  std::optional<Format> format;
  options(words, element, [&] {
    if (words.takes("Format")) {
      format = formatNamed(words.peek());
      if (!format) words.fail(QString("Das Format \"%1\" gibt es nicht.").arg(words.peek()));
      words.take();
      return true;
    }
    if (words.takes("gleiche")) {
      if (!words.takes("Stellen")) words.fail("Es heißt: gleiche Stellen");
      return shape.evenDecimals = true;
    }
    return takesStyle(words, shape.style);
  });
  for (int number = first; number <= last; ++number) {
    Piece piece = parseValue(name + QString::number(number));
    piece.format = format;
    shape.values.push_back({{piece}, words.line()});
  }
  element.shape = shape;
  return element;
}

std::optional<Element> elementOf(LineReader& words) {
  if (words.takes("Text")) return textElement(words);
  if (words.takes("Strich")) return lineElement(words);
  if (words.takes("Kasten")) return boxElement(words);
  if (words.takes("Bild")) return pictureElement(words);
  if (words.takes("Strichcode")) return barElement(words);
  if (words.takes("Werte")) return valuesElement(words);
  return std::nullopt;
}

}  // namespace

std::optional<Symbology> barKindNamed(const QString& name) {
  const QString key = name.toCaseFolded();
  if (key == "code128") return Symbology::Code128;
  if (key == "code39") return Symbology::Code39;
  if (key == "ean13") return Symbology::Ean13;
  return std::nullopt;
}

void parseBandLine(LineReader& words, Band& band) {
  if (words.takes("Höhe")) {
    band.height = words.number("Höhe in mm", 0, kLargest);
  } else if (words.takes("wenn")) {
    band.when = conditionOf(words);
  } else if (std::optional<Element> element = elementOf(words)) {
    if (band.elements.size() >= kMostElements) words.fail("Hier steht zu viel.");
    element->line = words.line();
    band.elements.push_back(std::move(*element));
  } else {
    words.fail(QString("\"%1\" gibt es hier nicht. Erlaubt sind Text, Strich, Kasten, Bild, Strichcode, "
                       "Werte, Höhe und wenn.")
                   .arg(words.peek()));
  }
  words.end();
}

}  // namespace qk::report
