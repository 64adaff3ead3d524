#include "script_runner.h"

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <sys/wait.h>
#include <utility>

namespace {

std::string content_of(const std::filesystem::path& path) {
  const std::ifstream file(path, std::ios::binary);
  std::ostringstream content;
  content << file.rdbuf();
  return content.str();
}

void put(const std::filesystem::path& path, std::string_view content) {
  std::ofstream file(path, std::ios::binary);
  file.write(content.data(), static_cast<std::streamsize>(content.size()));
}

}  // namespace

script_runner::script_runner(std::string mode) : mode_(std::move(mode)) {
  std::string name = (std::filesystem::temp_directory_path() / "prueba-guion-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no folder: " + name);
  folder_ = name;
}

script_runner::~script_runner() {
  std::error_code error;
  std::filesystem::remove_all(folder_, error);
}

told script_runner::run_text(std::string_view script) {
  return run({"-"}, script);
}

told script_runner::run(const std::vector<std::string>& arguments, std::string_view input) {
  put(folder_ / "in", input);
  std::string command = "cd '" + folder_.string() + "' && '" GUION_PATH "' " + mode_;
  for (const std::string& argument : arguments) command += " '" + argument + "'";
  const int status = std::system((command + " <in >out 2>err").c_str());
  return {content_of(folder_ / "out"), content_of(folder_ / "err"),
          WIFEXITED(status) ? WEXITSTATUS(status) : -1};
}

std::string script_runner::file(const std::string& name, std::string_view script) {
  put(folder_ / name, script);
  return name;
}

std::string mode_name(const testing::TestParamInfo<const char*>& info) {
  return *info.param == '\0' ? "libre" : "ventana";
}
