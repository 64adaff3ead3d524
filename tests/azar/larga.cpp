// A long continuous run in the real window, with a person at it all the time: pins, resets, values typed into
// registers, source edited, other devices after a power-on, lists and boxes clicked.
//
//   carrera_larga 600          seconds; the exit status is 0 only if what is claimed below holds
//
// Claimed: a gesture is served, from its posting to its end, in less than 10 ms at the 99th percentile, no
// fault occurs, the run goes on to its end; the window is painted 20 times a second at least while the person
// rests, which is when nothing but the run has it painted; and in runs of more than a minute the memory in
// use, looked at every two seconds, is never more than 1 MB above what it is after that minute. Time that the
// window's thread spent ready to run, waiting for a processor that something else had, is printed but not
// counted: it says how busy the machine is.
#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>
#include <unistd.h>

#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QListView>
#include <QPlainTextEdit>
#include <QTest>
#include <QTimer>

#include "tests/azar/avisos.h"
#include "tests/modelo/azar.h"
#include "ui/qt/anfitrion_qt.h"
#include "ui/qt/aplicacion.h"
#include "ui/qt/mapa.h"
#include "ui/qt/ventana.h"

namespace {

using namespace estructura;
using clock_type = std::chrono::steady_clock;
using namespace std::chrono_literals;

constexpr auto settled_after = 60s;
constexpr std::int64_t most_growth_bytes = 1 << 20;
constexpr auto between_samples = 2s;
constexpr int slowest_ms = 10;
constexpr int fewest_frames_a_second = 20;
constexpr auto rest = 250ms;
constexpr int gestures_between_rests = 300;

/// Clears the watchdog in each round, whose count would run into its 32-bit limit within a minute otherwise.
/// Ports stay inputs, as a reset leaves them, so that pins can be clicked.
constexpr std::array<std::uint16_t, 12> program = {
    0x004,  // 000  CLRWDT
    0x2A8,  // 001  INCF 08
    0x208,  // 002  MOVF 08,W
    0x90A,  // 003  CALL 00A
    0x1A9,  // 004  XORWF 09
    0x205,  // 005  MOVF 05,W
    0x12A,  // 006  IORWF 0A
    0x2EB,  // 007  DECFSZ 0B
    0xA00,  // 008  GOTO 000
    0xA00,  // 009  GOTO 000
    0xE07,  // 00A  ANDLW 07
    0x855,  // 00B  RETLW 55
};

std::int64_t memory_in_use() {
  long pages = 0;
  if (std::FILE* const file = std::fopen("/proc/self/statm", "r"); file != nullptr) {
    if (std::fscanf(file, "%*d %ld", &pages) != 1) pages = 0;
    std::fclose(file);
  }
  return std::int64_t{pages} * ::sysconf(_SC_PAGESIZE);
}

/// Nanoseconds that the thread of the window has waited for a processor; 0 where the system does not say.
std::int64_t waited_for_processor() {
  static const std::string name = "/proc/self/task/" + std::to_string(::getpid()) + "/schedstat";
  long long waited = 0;
  if (std::FILE* const file = std::fopen(name.c_str(), "r"); file != nullptr) {
    if (std::fscanf(file, "%*d %lld", &waited) != 1) waited = 0;
    std::fclose(file);
  }
  return waited;
}

/// Times in tenths of a millisecond, counted: memory stays the same however many there are.
class tiempos {
 public:
  void add(std::chrono::nanoseconds time) {
    const auto tenth = static_cast<std::size_t>(std::max<std::int64_t>(0, time.count() / 100'000));
    ++counts_[std::min(tenth, counts_.size() - 1)];
    ++total_;
    most_ = std::max(most_, time);
  }
  [[nodiscard]] std::int64_t total() const { return total_; }
  [[nodiscard]] double most_ms() const { return std::chrono::duration<double, std::milli>(most_).count(); }
  /// Upper end of the tenth within which this share of all times lies.
  [[nodiscard]] double percentile_ms(double share) const {
    const auto wanted = static_cast<std::int64_t>(share * static_cast<double>(total_));
    std::int64_t passed = 0;
    for (std::size_t tenth = 0; tenth < counts_.size(); ++tenth) {
      passed += counts_[tenth];
      if (passed > wanted) return static_cast<double>(tenth + 1) / 10;
    }
    return static_cast<double>(counts_.size()) / 10;
  }

 private:
  std::array<std::int64_t, 10'000> counts_{};
  std::int64_t total_ = 0;
  std::chrono::nanoseconds most_{};
};

/// Questions get the answer of a box that was closed; no fault is expected.
class host final : public anfitrion_qt {
 public:
  answer mensaje(box kind, std::string_view) override {
    if (kind == box::fault) ++faults;
    return kind == box::yesno || kind == box::yesnocancel ? answer::no : answer::ok;
  }
  std::string elige_fichero(bool, std::string_view, std::string_view, std::string_view) override {
    return {};
  }
  void rest() override {}
  int cede() override {
    const int turns = anfitrion_qt::cede();
    steps += turns;
    return turns;
  }
  int faults = 0;
  std::int64_t steps = 0;
};

/// Counts the times that the window is painted.
class cuenta_imagenes final : public QObject {
 public:
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() == QEvent::UpdateRequest) ++images;
    return false;
  }
  std::int64_t images = 0;
};

class sesion {
 public:
  explicit sesion(std::chrono::seconds length) : length_(length), shown_((window_.Form_Load(), window_)) {
    host_.pon_ventana(&shown_);
    shown_.installEventFilter(&painted_);
    for (const int vector : {0x1FF, 0x3FF, 0x7FF}) window_.poke().progmem[vector] = 0xA00;
    int address = 0;
    for (const std::uint16_t word : program) window_.poke().progmem[address++] = word;
    shown_.resize(shown_.least());
    shown_.show();
    shown_.activateWindow();
  }

  /// Runs to the end; whether all that is claimed held.
  bool run() {
    if (!QTest::qWaitForWindowActive(&shown_)) return said(false, "the window does not become active");
    const auto start = clock_type::now();
    std::int64_t settled = 0;
    std::int64_t most = 0;
    QTimer samples;
    samples.setTimerType(Qt::PreciseTimer);
    // What is taken and given back between two samples is seen by none, what stays is by all that follow.
    QObject::connect(&samples, &QTimer::timeout, &shown_, [&] {
      if (clock_type::now() - start < settled_after) return;
      most = std::max(most, memory_in_use());
      if (settled == 0) settled = most;
    });
    samples.start(between_samples);
    QTimer end;
    end.setSingleShot(true);
    end.setTimerType(Qt::PreciseTimer);
    std::int64_t last = 0;
    QObject::connect(&end, &QTimer::timeout, &shown_, [&] {
      last = memory_in_use();
      most = std::max(most, last);
      if (settled == 0) settled = last;
      over_ = true;
      in_time_ = window_.chip().running;
      click(id::ejecutar);
    });
    end.start(length_);

    std::thread person([this] { post_gestures(); });
    click(id::ejecutar);
    over_ = true;
    person.join();
    QCoreApplication::processEvents();
    const std::chrono::duration<double> lasted = clock_type::now() - start;
    return judge(lasted.count(), settled, most, last);
  }

 private:
  template <class Widget = QWidget>
  Widget& at(id which, int index = 0) {
    return *static_cast<Widget*>(shown_.widget_of(which, index));
  }
  void click(id which, int index = 0) { QTest::mouseClick(&at(which, index), Qt::LeftButton); }
  void click_row(id which, int index, int row) {
    auto& view = at<QListView>(which, index);
    const QModelIndex line = view.model()->index(row, 0);
    view.scrollTo(line);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, view.visualRect(line).center());
  }
  void type(id which, const QString& text) {
    QInputMethodEvent commit;
    commit.setCommitString(text);
    QApplication::sendEvent(&at(which), &commit);
  }

  // --- the other thread ---

  void post_gestures() {
    modelo::azar pauses(1);
    for (int posted_ones = 0; !over_; ++posted_ones) {
      if (posted_ones % gestures_between_rests == 0) take_a_rest();
      std::this_thread::sleep_for(std::chrono::microseconds(1000 + pauses.below(11'000)));
      const auto posted = clock_type::now();
      const std::int64_t waited = waited_for_processor();
      QMetaObject::invokeMethod(
          &shown_, [this, posted, waited] { serve(posted, waited); }, Qt::QueuedConnection);
    }
  }

  void take_a_rest() {
    QMetaObject::invokeMethod(
        &shown_, [this] { resting_ = now(); }, Qt::QueuedConnection);
    std::this_thread::sleep_for(rest);
    QMetaObject::invokeMethod(
        &shown_, [this] { end_rest(); }, Qt::QueuedConnection);
  }

  // --- the window's thread ---

  struct momento {
    clock_type::time_point time;
    std::int64_t waited_ns = 0;
    std::int64_t images = 0;
  };

  [[nodiscard]] momento now() const { return {clock_type::now(), waited_for_processor(), painted_.images}; }

  void end_rest() {
    if (over_) return;
    const momento end = now();
    rested_ += end.time - resting_.time - std::chrono::nanoseconds(end.waited_ns - resting_.waited_ns);
    painted_at_rest_ += end.images - resting_.images;
  }

  void serve(clock_type::time_point posted, std::int64_t waited_before) {
    if (over_) return;
    gesture();
    const auto time = clock_type::now() - posted;
    all_.add(time);
    own_.add(time - std::chrono::nanoseconds(waited_for_processor() - waited_before));
  }

  void gesture() {
    const long what = chance_.below(100);
    if (what < 80) return click_pin();
    if (what < 84) return click(id::MCLR);
    if (what < 87) return edit_register();
    if (what < 89) return edit_source();
    if (what < 91) return change_device();
    if (what < 93) return click_row(id::MP, 0, static_cast<int>(chance_.below(512)));
    if (what < 95) return click(id::sl, static_cast<int>(chance_.below(2)));
    if (what < 97) return click(id::VISMP);
    if (what < 98) return click(id::TOCKI);
    if (what < 99) return press_map();
    QTest::mouseDClick(&at(id::ciclos), Qt::LeftButton);
  }

  void click_pin() {
    constexpr std::array ports = {id::PA, id::PB, id::PC};
    const id port = chance_.one_of(ports);
    click(port, static_cast<int>(chance_.below(declared(port).count)));
  }

  void edit_register() {
    // W and the general registers, which the program bears at any value.
    if (chance_.one_in(2))
      click_row(id::RE, 0, 1);
    else
      click_row(id::MDP, 0, 8 + static_cast<int>(chance_.below(8)));
    type(id::dat, QString::number(chance_.below(256), 16));
    QTest::keyClick(&at(id::dat), Qt::Key_Return);
  }

  void edit_source() {
    click(id::sl, 0);
    if (chance_.one_in(8)) return click(id::borrarasm);
    click(id::source);
    type(id::source, QStringLiteral(" MOVLW %1\n").arg(chance_.below(256)));
    if (chance_.one_in(3)) click(id::tab);
  }

  void change_device() {
    click(id::por);
    // The next step closes the choice again, so it is made before one is taken.
    auto& combo = at<QComboBox>(id::PIC);
    combo.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&combo, chance_.one_in(2) ? Qt::Key_Down : Qt::Key_Up);
    ++devices_;
  }

  void press_map() {
    const auto& map = at<mapa_qt>(id::mapa);
    const int row = static_cast<int>(chance_.below(512));
    QTest::mouseClick(&at(id::mapa), Qt::LeftButton, {}, QPoint(5, static_cast<int>(map.altura(row + 0.5))));
  }

  // --- the end ---

  static bool said(bool holds, const char* claim) {
    if (!holds) std::fprintf(stderr, "does not hold: %s\n", claim);
    return holds;
  }

  [[nodiscard]] bool judge(double seconds, std::int64_t settled, std::int64_t most, std::int64_t last) const {
    constexpr double mb = 1 << 20;
    std::printf("%.1f s, %lld steps, %.1f ns a step\n", seconds, static_cast<long long>(host_.steps),
                seconds * 1e9 / static_cast<double>(host_.steps));
    std::printf("%lld gestures, %d of them a power-on with another device\n",
                static_cast<long long>(all_.total()), devices_);
    std::printf("served in        p50 %.1f ms, p99 %.1f ms, most %.1f ms\n", own_.percentile_ms(0.5),
                own_.percentile_ms(0.99), own_.most_ms());
    std::printf("with the machine p50 %.1f ms, p99 %.1f ms, most %.1f ms\n", all_.percentile_ms(0.5),
                all_.percentile_ms(0.99), all_.most_ms());
    const double rested_s = std::chrono::duration<double>(rested_).count();
    const double frames = static_cast<double>(painted_at_rest_) / std::max(rested_s, 1e-3);
    std::printf("painted %.1f times a second while the person rests, %.1f s in all\n", frames, rested_s);
    bool holds = said(in_time_, "the run goes on to its end");
    holds &= said(host_.faults == 0, "no fault occurs");
    holds &= said(azar::avisos == 0, "Qt has nothing to complain of");
    holds &= said(devices_ > 0 && all_.total() > static_cast<std::int64_t>(seconds) * 20,
                  "there is a gesture every 50 ms at least");
    holds &= said(own_.percentile_ms(0.99) < slowest_ms, "99 of 100 gestures are served within 10 ms");
    holds &= said(rested_s > 0 && frames >= fewest_frames_a_second,
                  "the window is painted 20 times a second at least");
    if (length_ > settled_after) {
      std::printf("memory after a minute %.2f MB, at the most %.2f MB, at the end %.2f MB\n",
                  static_cast<double>(settled) / mb, static_cast<double>(most) / mb,
                  static_cast<double>(last) / mb);
      holds &= said(settled > 0 && most - settled <= most_growth_bytes,
                    "memory stays within 1 MB of what it is after a minute");
    }
    return holds;
  }

  std::chrono::seconds length_;
  modelo::azar chance_{20240611};
  host host_;
  Estructura window_{host_};
  cuenta_imagenes painted_;
  ventana shown_;
  momento resting_;
  std::chrono::nanoseconds rested_{};
  std::int64_t painted_at_rest_ = 0;
  std::atomic<bool> over_ = false;
  bool in_time_ = false;
  int devices_ = 0;
  tiempos all_;
  tiempos own_;
};

}  // namespace

int main(int argc, char** argv) {
  constexpr int shortest = 2;
  const int seconds = argc > 1 ? std::atoi(argv[1]) : 600;
  if (seconds < shortest) {
    std::fprintf(stderr, "carrera_larga SECONDS    (%d at least)\n", shortest);
    return 2;
  }
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  qInstallMessageHandler(azar::avisa);
  QApplication application(argc, argv);
  prepara_aplicacion(application);
  sesion session{std::chrono::seconds(seconds)};
  return session.run() ? EXIT_SUCCESS : EXIT_FAILURE;
}
