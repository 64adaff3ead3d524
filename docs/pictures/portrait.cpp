// Takes the pictures of the window that the pages show, and those by which its looks are judged.
//
//   portrait docs/ventana.png --asm ejemplos/bancos.asm --breakpoint 00B --steps 350 --size 1366x720
//   portrait oscura.png --device 12C508 --dark --size 1366x720
//   portrait registros.png --asm primero.asm --panel Frame2 'eje1*20' RE#2 dat=08
//   portrait aviso.png --asm wrong.asm --box
//   QT_SCALE_FACTOR=2 portrait doble.png
//
// Behind the picture's name stand the actions of a person, in their order, done after the files are loaded
// and before the instructions of --steps:
//
//   NAME         a click                  NAME*20     twenty of them
//   NAME=TEXT    typed, or chosen         NAME#5      a click on line 5 of a list
//
// --panel cuts the picture to the named widgets and what stands between them, --height to its upper part;
// --numbers writes 1, 2, 3 ... upon them; --box takes the first message box instead of the window;
// --compare writes nothing, and fails unless the file holds that picture already. A picture holds at most 256
// colours, so that the files stay small. Runs on Qt's offscreen platform unless told otherwise, with the
// fonts of the machine (DejaVu is what the pictures of the pages use: package fonts-dejavu-core).
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include <QApplication>
#include <QCommandLineParser>
#include <QFontInfo>
#include <QHash>
#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <QStyleFactory>
#include <QTimer>

#include "ui/estructura.h"
#include "ui/qt/window/application.h"
#include "ui/qt/window/main_window.h"
#include "ui/qt/window/qt_host.h"

namespace {

/// Answers for the person who is not there: the file to load, and yes to whatever is asked.
class portrait_host final : public estructura::qt_host {
 public:
  std::string path;
  bool wants_box = false;
  QPixmap first_box;

  estructura::answer show_box(estructura::box kind, std::string_view text) override {
    std::fprintf(stderr, "%.*s\n", static_cast<int>(text.size()), text.data());
    if (wants_box && first_box.isNull()) {
      // Long enough for the box to be laid out and painted.
      constexpr int until_painted_ms = 200;
      QTimer::singleShot(until_painted_ms, [this] {
        QWidget* const shown = QApplication::activeModalWidget();
        if (shown == nullptr) return;
        first_box = shown->grab();
        shown->close();
      });
      return qt_host::show_box(kind, text);
    }
    return kind == estructura::box::ok ? estructura::answer::ok : estructura::answer::yes;
  }
  void rest() override {}
  std::string choose_file(bool, std::string_view, std::string_view, std::string_view) override {
    return path;
  }
};

QPalette dark_palette() {
  QPalette dark;
  const QColor face(45, 47, 51);
  const QColor base(30, 31, 34);
  const QColor text(222, 224, 228);
  dark.setColor(QPalette::Window, face);
  dark.setColor(QPalette::WindowText, text);
  dark.setColor(QPalette::Base, base);
  dark.setColor(QPalette::AlternateBase, face);
  dark.setColor(QPalette::Text, text);
  dark.setColor(QPalette::Button, face.lighter(120));
  dark.setColor(QPalette::ButtonText, text);
  dark.setColor(QPalette::BrightText, Qt::white);
  dark.setColor(QPalette::ToolTipBase, base);
  dark.setColor(QPalette::ToolTipText, text);
  dark.setColor(QPalette::Highlight, QColor(53, 132, 228));
  dark.setColor(QPalette::HighlightedText, Qt::white);
  dark.setColor(QPalette::PlaceholderText, QColor(222, 224, 228, 140));
  dark.setColor(QPalette::Light, face.lighter(150));
  dark.setColor(QPalette::Midlight, face.lighter(125));
  dark.setColor(QPalette::Mid, face.darker(125));
  dark.setColor(QPalette::Dark, face.darker(150));
  dark.setColor(QPalette::Shadow, Qt::black);
  for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    dark.setColor(QPalette::Disabled, role, QColor(130, 132, 136));
  return dark;
}

using estructura::Estructura;
using estructura::id;

/// "NAME", "NAME*20", "NAME=TEXT" or "NAME#5"; false for what is no action.
bool act(Estructura& window, portrait_host& host, const std::string& action) {
  const std::size_t end = std::min(action.find_first_of("*=#"), action.size());
  const std::string value = end < action.size() ? action.substr(end + 1) : std::string();
  const auto found = estructura::find_control(std::string_view(action).substr(0, end));
  if (!found) return false;
  const auto [which, index] = *found;
  const char mark = end < action.size() ? action[end] : '*';
  const int number = std::atoi(value.c_str());
  switch (mark) {
    case '*':
      for (int times = value.empty() ? 1 : number; times > 0; --times) window.click(which, index);
      return true;
    case '#': window.click_row(which, index, number); return true;
    default: break;
  }
  switch (window.look(which, index).is()) {
    case estructura::kind::combo: window.pick(which, value); return true;
    case estructura::kind::text: window.type(which, value); return true;
    default: break;
  }
  // A button with a text loads that file.
  host.path = value;
  window.click(which, index);
  return true;
}

/// The part of the window that holds the named widgets, with a little room around.
QRect frame_around(const QWidget& shown, const QStringList& names) {
  constexpr int room = 4;
  QRect part;
  for (const QString& name : names) {
    const auto* widget = shown.findChild<QWidget*>(name);
    if (widget == nullptr) continue;
    part |= QRect(widget->mapTo(&shown, QPoint()), widget->size());
  }
  return part.isEmpty() ? shown.rect() : part.adjusted(-room, -room, room, room) & shown.rect();
}

/// A disc with its number within the upper right corner of each named widget, or to the right of it where the
/// name ends in ">".
void number_them(QPixmap& picture, const QWidget& shown, const QStringList& names) {
  constexpr int radius = 11;
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  QFont font = shown.font();
  font.setBold(true);
  painter.setFont(font);
  for (qsizetype i = 0; i < names.size(); ++i) {
    const bool beside = names[i].endsWith(QLatin1Char('>'));
    const auto* widget = shown.findChild<QWidget*>(beside ? names[i].chopped(1) : names[i]);
    if (widget == nullptr) continue;
    const QPoint corner = widget->mapTo(&shown, QPoint(widget->width(), 0));
    QRect disc(0, 0, 2 * radius, 2 * radius);
    disc.moveCenter(corner + QPoint(beside ? radius : -radius, radius));
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(192, 28, 40));
    painter.drawEllipse(disc);
    painter.setPen(Qt::white);
    painter.drawText(disc, Qt::AlignCenter, QString::number(i + 1));
  }
}

/// The picture in at most 256 colours: near ones are drawn as the most frequent of them, so that surfaces
/// keep theirs exactly and only the edges of letters lose shades.
QImage with_few_colours(const QImage& picture) {
  constexpr qsizetype most = 256;
  const QImage full = picture.convertToFormat(QImage::Format_RGB32);
  QHash<QRgb, int> frequency;
  for (int y = 0; y < full.height(); ++y)
    for (int x = 0; x < full.width(); ++x) ++frequency[full.pixel(x, y)];

  QHash<QRgb, QRgb> chosen;  // by what near colours have in common
  QRgb common = 0xFFFFFFFF;
  for (int dropped = 0; dropped == 0 || chosen.size() > most; ++dropped) {
    const QRgb channel = 0xFFU << dropped & 0xFFU;
    common = 0xFF000000U | channel << 16 | channel << 8 | channel;
    chosen.clear();
    for (auto colour = frequency.cbegin(); colour != frequency.cend(); ++colour) {
      QRgb& best = chosen[colour.key() & common];
      if (best == 0 || frequency[best] < colour.value()) best = colour.key();
    }
  }

  QImage indexed(full.size(), QImage::Format_Indexed8);
  indexed.setDevicePixelRatio(picture.devicePixelRatio());
  QHash<QRgb, uint> place;
  for (auto colour = chosen.cbegin(); colour != chosen.cend(); ++colour) {
    place[colour.key()] = static_cast<uint>(place.size());
    indexed.setColorCount(static_cast<int>(place.size()));
    indexed.setColor(static_cast<int>(place.size()) - 1, colour.value());
  }
  for (int y = 0; y < full.height(); ++y)
    for (int x = 0; x < full.width(); ++x) indexed.setPixel(x, y, place[full.pixel(x, y) & common]);
  return indexed;
}

bool save(const QPixmap& picture, const QString& path) {
  // Written slowly, and small.
  constexpr int smallest_file = 0;
  return with_few_colours(picture.toImage()).save(path, "PNG", smallest_file);
}

/// Whether the file shows the same. Another release of the font renderer shades the edges of letters a little
/// otherwise; a letter that changes has dozens of pixels that turn from light to dark.
bool is_the_same(const QPixmap& picture, const QString& path) {
  constexpr int far_apart = 96;  // of 255, in any channel
  constexpr int allowed = 20;    // pixels
  const QImage now = with_few_colours(picture.toImage()).convertToFormat(QImage::Format_RGB32);
  const QImage before = QImage(path).convertToFormat(QImage::Format_RGB32);
  if (now.isNull() || now.size() != before.size()) {
    std::fprintf(stderr, "%dx%d in the file, %dx%d now\n", before.width(), before.height(), now.width(),
                 now.height());
    return false;
  }
  int different = 0;
  for (int y = 0; y < now.height(); ++y)
    for (int x = 0; x < now.width(); ++x) {
      const QRgb a = now.pixel(x, y);
      const QRgb b = before.pixel(x, y);
      const int distance = std::max(
          {std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)), std::abs(qBlue(a) - qBlue(b))});
      if (distance > far_apart) ++different;
    }
  std::fprintf(stderr, "%d pixels differ, %d are allowed to\n", different, allowed);
  return different <= allowed;
}

}  // namespace

int main(int argc, char** argv) {
  if (std::getenv("QT_QPA_PLATFORM") == nullptr) setenv("QT_QPA_PLATFORM", "offscreen", 1);
  QApplication app(argc, argv);
  estructura::set_up_application(app);

  QCommandLineParser line;
  line.addHelpOption();
  line.addPositionalArgument("PNG", "the picture to write");
  line.addPositionalArgument("actions", "what the person does", "[actions...]");
  line.addOptions({{"device", "device shown", "name", "16C57"},
                   {"hex", "HEX file to load", "file"},
                   {"asm", "source to load and assemble", "file"},
                   {"breakpoint", "address of a breakpoint", "hex"},
                   {"panel", "cuts the picture to these widgets", "names"},
                   {"height", "keeps this many rows of pixels of the picture", "pixels"},
                   {"numbers", "writes numbers upon these widgets", "names"},
                   {"box", "takes the first message box"},
                   {"steps", "instructions to execute", "number", "0"},
                   {"size", "size of the window, as 1366x720", "size", "1366x765"},
                   {"letters", "size of the letters, in points", "points"},
                   {"compare", "compares with the file instead of writing it"},
                   {"listing", "shows the listing"},
                   {"dark", "a dark palette"}});
  line.process(app);
  if (line.positionalArguments().isEmpty()) line.showHelp(2);
  if (line.isSet("dark")) {
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    QApplication::setPalette(dark_palette());
  }
  if (line.isSet("letters")) {
    QFont font = QApplication::font();
    font.setPointSizeF(line.value("letters").toDouble());
    QApplication::setFont(font);
  }

  portrait_host host;
  host.wants_box = line.isSet("box");
  Estructura window(host);
  window.Form_Load();
  estructura::main_window shown(window);
  host.set_window(&shown);
  // Not the size that the window chooses for the screen there happens to be.
  const QStringList sides = line.value("size").split('x');
  shown.resize(sides.value(0).toInt(), sides.value(1).toInt());
  shown.show();
  window.pick(id::PIC, line.value("device").toStdString());
  if (line.isSet("hex")) act(window, host, "cargar=" + line.value("hex").toStdString());
  if (line.isSet("asm")) {
    act(window, host, "cargarasm=" + line.value("asm").toStdString());
    window.click(id::Ensamblar);
    window.click(id::por);
  }
  if (line.isSet("breakpoint")) {
    window.type(id::direc, line.value("breakpoint").toStdString());
    window.click(id::break_);
    // The breakpoint showed its own address in the list.
    window.click(id::MCLR);
  }
  const QStringList actions = line.positionalArguments().mid(1);
  for (const QString& action : actions) {
    shown.refresh();
    if (act(window, host, action.toStdString())) continue;
    std::fprintf(stderr, "no such control: %s\n", qPrintable(action));
    return 2;
  }
  if (line.isSet("listing")) window.click(id::sl, 1);
  for (int step = line.value("steps").toInt(); step > 0; --step) {
    // What the last step alone has changed is marked.
    if (step == 1) shown.refresh();
    window.click(id::eje1);
  }
  shown.refresh();
  for (int turn = 0; turn < 10; ++turn) QCoreApplication::processEvents();
  const QSize least = shown.least();
  std::printf("%s %.1f pt; at least %dx%d, is %dx%d\n", qPrintable(QFontInfo(shown.font()).family()),
              QFontInfo(shown.font()).pointSizeF(), least.width(), least.height(), shown.width(),
              shown.height());

  const QString path = line.positionalArguments().constFirst();
  const auto deliver = line.isSet("compare") ? is_the_same : save;
  if (host.wants_box) return deliver(host.first_box, path) ? 0 : 1;
  QPixmap picture = shown.grab();
  if (line.isSet("numbers")) number_them(picture, shown, line.value("numbers").split(' '));
  if (line.isSet("panel")) {
    const QRect part = frame_around(shown, line.value("panel").split(' '));
    const qreal scale = picture.devicePixelRatio();
    picture = picture.copy(QRectF(part.topLeft() * scale, part.size() * scale).toRect());
  }
  if (line.isSet("height"))
    picture = picture.copy(0, 0, picture.width(), std::min(picture.height(), line.value("height").toInt()));
  return deliver(picture, path) ? 0 : 1;
}
