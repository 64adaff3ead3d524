// guion: runs acceptance scripts against the window.
//
//   guion FILE...             each against the window without a toolkit
//   guion --ventana FILE...   each against the real widgets
//   guion --navegador FILE... each against the page in a real browser, one for all of them
//   guion -                   one script from standard input
//
// Each script gets a fresh window and a fresh scratch folder as current directory. Lines shown go to standard
// output, failures as FILE:LINE: to standard error; the exit status is 0 only if no script failed.
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "guion/browser_driver.h"
#include "guion/guion.h"
#include "guion/toolkit_free_driver.h"
#ifdef GUION_WINDOW
#include <QApplication>

#include "guion/qt_driver.h"
#include "ui/qt/window/application.h"
#endif

#ifndef GUION_PAGE_FILE
#error "GUION_PAGE_FILE has to name the page"
#endif

namespace fs = std::filesystem;
namespace guiones = estructura::guiones;

namespace {

constexpr std::string_view standard_input = "-";

/// A new folder that is the current directory for as long as this lives, and is removed afterwards.
class scratch_folder {
 public:
  scratch_folder() : before_(fs::current_path()) {
    std::string name = (fs::temp_directory_path() / "guion-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no scratch folder can be made: " + name);
    folder_ = name;
    fs::current_path(folder_);
  }
  ~scratch_folder() {
    std::error_code error;
    fs::current_path(before_, error);
    fs::remove_all(folder_, error);
    if (error) std::cerr << "guion: the scratch folder stays: " << folder_.string() << '\n';
  }
  scratch_folder(const scratch_folder&) = delete;
  scratch_folder& operator=(const scratch_folder&) = delete;
  scratch_folder(scratch_folder&&) = delete;
  scratch_folder& operator=(scratch_folder&&) = delete;

 private:
  fs::path before_;
  fs::path folder_;
};

/// The whole script; nothing when it cannot be read.
std::optional<std::string> script_of(const std::string& file) {
  std::ostringstream content;
  if (file == standard_input) {
    content << std::cin.rdbuf();
    return content.str();
  }
  std::error_code error;
  const std::ifstream stream(file, std::ios::binary);
  if (!stream || fs::is_directory(file, error)) return std::nullopt;
  content << stream.rdbuf();
  return content.str();
}

enum class mode { toolkit_free, window, page };

std::unique_ptr<guiones::window_driver> make_driver(mode wanted, guiones::scripted_desktop& desk) {
  if (wanted == mode::page) {
    const char* const chosen = std::getenv("GUION_PAGE");
    static guiones::browser_process browser(chosen != nullptr ? chosen : GUION_PAGE_FILE);
    return std::make_unique<guiones::browser_driver>(browser, desk);
  }
#ifdef GUION_WINDOW
  if (wanted == mode::window) return std::make_unique<guiones::qt_driver>(desk);
#endif
  return std::make_unique<guiones::toolkit_free_driver>(desk);
}

std::optional<guiones::script_failure> run_script(std::string_view script, mode wanted) try {
  const scratch_folder folder;
  guiones::scripted_desktop desk;
  const std::unique_ptr<guiones::window_driver> driver = make_driver(wanted, desk);
  return guiones::guion(*driver, desk, std::cout).run(script);
} catch (const std::exception& error) {
  return guiones::script_failure{0, error.what()};
}

#ifdef GUION_WINDOW
/// Qt's warnings go to standard error, where failures are looked for; so without those in which a platform
/// only says what it is not, which tell nothing of the window.
void warn(QtMsgType, const QMessageLogContext&, const QString& message) {
  const bool of_the_platform = message.startsWith("This plugin does not support") ||
                               message.startsWith("QStandardPaths: XDG_RUNTIME_DIR");
  if (!of_the_platform) std::cerr << message.toStdString() << '\n';
}
#endif

int usage(std::string_view problem) {
  std::cerr << "guion: " << problem
            << "\nguion [--ventana | --navegador] FILE...    (\"-\" reads one script from standard input)\n";
  return 2;
}

int run_files(const std::vector<std::string>& files, mode wanted) {
  int passed = 0;
  int failed = 0;
  bool from_input = false;
  for (const std::string& file : files) {
    from_input = from_input || file == standard_input;
    const auto script = script_of(file);
    const auto failure =
        script ? run_script(*script, wanted) : guiones::script_failure{0, "the script cannot be read"};
    std::cout.flush();
    ++(failure ? failed : passed);
    if (failure) std::cerr << file << ':' << failure->line << ": " << failure->what << '\n';
  }
  std::ostream& summary = from_input ? std::cerr : std::cout;
  summary << passed << " passed, " << failed << " failed" << std::endl;
  return failed == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

}  // namespace

int main(int argc, char** argv) {
  mode wanted = mode::toolkit_free;
  std::vector<std::string> files;
  for (int i = 1; i < argc; ++i) {
    const std::string argument = argv[i];
    if (argument == "--ventana")
      wanted = mode::window;
    else if (argument == "--navegador")
      wanted = mode::page;
    else if (argument.starts_with('-') && argument != standard_input)
      return usage("no such option: " + argument);
    else
      files.push_back(argument);
  }
  if (files.empty()) return usage("no script to run");
#ifdef GUION_WINDOW
  std::optional<QApplication> application;
  if (wanted == mode::window) {
    qInstallMessageHandler(warn);
    // Without a display the window is as real on the platform that needs none.
    const bool display = qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
    if (!display && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    estructura::set_up_application(application.emplace(argc, argv));
    // A script's window that closes ends that script's program, not this one.
    QGuiApplication::setQuitOnLastWindowClosed(false);
  }
#else
  if (wanted == mode::window) return usage("built without the window: --ventana is not to be had");
#endif
  return run_files(files, wanted);
}
