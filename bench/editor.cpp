// What the source editor costs with texts far beyond any program: loading one, and one key typed into it,
// until everything is painted.
//
// Budgets: loading 1 s; a key or a move of the caret in a megabyte of lines 50 ms. A single line of a
// megabyte is no program, and Qt works out the whole line at each key: 300 ms.
#include <benchmark/benchmark.h>
#include <fstream>
#include <memory>
#include <string>

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QTemporaryDir>

#include "ui/qt/anfitrion_qt.h"
#include "ui/qt/aplicacion.h"
#include "ui/qt/ventana.h"

namespace {

using namespace estructura;

constexpr std::size_t megabyte = 1'000'000;

std::string many_lines() {
  std::string text;
  for (int i = 0; text.size() < megabyte; ++i)
    text += "L" + std::to_string(i) + ":\tMOVLW\t" + std::to_string(i % 100) + "\t; línea\r\n";
  return text;
}

std::string one_line() {
  std::string text;
  while (text.size() < megabyte) text += "MOVLW 10 ";
  return text;
}

class host_with_file : public anfitrion_qt {
 public:
  answer mensaje(box kind, std::string_view) override {
    return kind == box::ok || kind == box::ok_right ? answer::ok : answer::no;
  }
  std::string elige_fichero(bool, std::string_view, std::string_view, std::string_view) override {
    return path;
  }
  std::string path;
};

struct open_window {
  QTemporaryDir folder;
  host_with_file host;
  Estructura window{host};
  std::unique_ptr<ventana> shown;

  explicit open_window(const std::string& text) {
    host.path = folder.filePath("largo.asm").toStdString();
    std::ofstream(host.path, std::ios::binary) << text;
    window.Form_Load();
    shown = std::make_unique<ventana>(window);
    host.pon_ventana(shown.get());
    shown->resize(shown->least());
    shown->show();
    QApplication::processEvents();
  }
  void load() {
    shown->findChild<QAbstractButton*>("cargarasm")->click();
    paint();
  }
  void paint() {
    shown->repaint();
    QApplication::processEvents();
  }
};

void load(benchmark::State& state, const std::string& text) {
  open_window open(text);
  for (auto _ : state) open.load();
  if (open.window.look(id::source).text().size() < megabyte) state.SkipWithError("nothing was loaded");
}

// A letter typed in the middle of the text.
void key(benchmark::State& state, const std::string& text) {
  open_window open(text);
  open.load();
  auto* const edit = open.shown->findChild<QPlainTextEdit*>("source");
  edit->setFocus();
  QTextCursor cursor = edit->textCursor();
  cursor.setPosition(static_cast<int>(text.size() / 2));
  edit->setTextCursor(cursor);
  open.paint();
  const std::size_t before = open.window.look(id::source).text().size();
  for (auto _ : state) {
    QKeyEvent letter(QEvent::KeyPress, Qt::Key_A, {}, "a");
    QApplication::sendEvent(edit, &letter);
    open.paint();
  }
  if (open.window.look(id::source).text().size() == before) state.SkipWithError("nothing was typed");
}

void caret_move(benchmark::State& state, const std::string& text) {
  open_window open(text);
  open.load();
  auto* const edit = open.shown->findChild<QPlainTextEdit*>("source");
  edit->setFocus();
  QTextCursor cursor = edit->textCursor();
  cursor.setPosition(static_cast<int>(text.size() / 2));
  edit->setTextCursor(cursor);
  for (auto _ : state) {
    QKeyEvent right(QEvent::KeyPress, Qt::Key_Right, {});
    QApplication::sendEvent(edit, &right);
    open.paint();
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  prepara_aplicacion(app);
  const auto add = [](const char* name, auto* measure, const std::string& text) {
    benchmark::RegisterBenchmark(name, measure, text)->Unit(benchmark::kMillisecond);
  };
  add("BM_load_megabyte", load, many_lines());
  add("BM_key_in_megabyte", key, many_lines());
  add("BM_caret_in_megabyte", caret_move, many_lines());
  add("BM_load_long_line", load, one_line());
  add("BM_key_in_long_line", key, one_line());
  add("BM_caret_in_long_line", caret_move, one_line());
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
