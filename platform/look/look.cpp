#include "platform/look/look.h"

#include <QApplication>
#include <QFontDatabase>
#include <QLibraryInfo>
#include <QLocale>
#include <QStyleHints>
#include <QTranslator>

#include "platform/look/house_style.h"
#include "platform/look/inside_screen.h"

namespace qk::look {

namespace {

constexpr double kPointSize = 9.0;

QFont houseFont() {
  for (const char* family : {"Liberation Sans", "DejaVu Sans"})
    if (QFontDatabase::hasFamily(family)) {
      QFont font((QString(family)));
      font.setPointSizeF(kPointSize);
      return font;
    }
  return QApplication::font();
}

struct Colours {
  QColor window, text, base, alternate, button, highlight, highlightedText, link, disabled, hint;
};

const Colours& coloursOf(Scheme scheme) {
  static const Colours light{0xf2f3f4, 0x1b1e22, 0xffffff, 0xf5f7f9, 0xe9ebed,
                             0x1f66ad, 0xffffff, 0x1a5a9e, 0x7f848a, 0x6b7076};
  static const Colours dark{0x2a2d31, 0xe9ebee, 0x1e2023, 0x25282b, 0x363a3f,
                            0x2f72b8, 0xffffff, 0x7db8f5, 0x858b92, 0x9aa1a9};
  return scheme == Scheme::Dark ? dark : light;
}

}  // namespace

Scheme systemScheme() {
  const QPalette system = QGuiApplication::palette();
  const bool dark =
      system.color(QPalette::WindowText).lightness() > system.color(QPalette::Window).lightness();
  return dark ? Scheme::Dark : Scheme::Light;
}

QPalette palette(Scheme scheme) {
  const Colours& colours = coloursOf(scheme);
  // The constructor derives the shades of frames and bevels from the two.
  QPalette result(colours.button, colours.window);
  result.setColor(QPalette::WindowText, colours.text);
  result.setColor(QPalette::Text, colours.text);
  result.setColor(QPalette::ButtonText, colours.text);
  result.setColor(QPalette::Base, colours.base);
  result.setColor(QPalette::AlternateBase, colours.alternate);
  result.setColor(QPalette::ToolTipBase, colours.base);
  result.setColor(QPalette::ToolTipText, colours.text);
  result.setColor(QPalette::Highlight, colours.highlight);
  result.setColor(QPalette::HighlightedText, colours.highlightedText);
  result.setColor(QPalette::Link, colours.link);
  result.setColor(QPalette::LinkVisited, colours.link);
  result.setColor(QPalette::PlaceholderText, colours.hint);
  for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    result.setColor(QPalette::Disabled, role, colours.disabled);
  result.setColor(QPalette::Disabled, QPalette::Base, colours.window);
  return result;
}

void apply(QApplication& application, Scheme scheme) {
  QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
  if (!application.findChild<QTranslator*>("qtbase")) {
    auto* translator = new QTranslator(&application);
    translator->setObjectName("qtbase");
    if (translator->load("qtbase_de", QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
      QCoreApplication::installTranslator(translator);
  }
  if (!application.findChild<InsideScreen*>()) application.installEventFilter(new InsideScreen(&application));
  QApplication::setStyle(new HouseStyle);
  QApplication::setFont(houseFont());
  QApplication::setPalette(palette(scheme));
}

}  // namespace qk::look
