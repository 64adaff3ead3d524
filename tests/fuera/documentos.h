// A window that does nothing but load and save one of its documents, and the two contents that it saves.
//
//   ventana_de_ficheros window(documento::fuente);
//   window.pon(tomo::grande);
//   window.salva("/no/hay/uno.asm")                       // "Error en escritura"
//   window.modified()                                     // true
//
// What `salva` and `carga` answer are the boxes with an OK button only, joined by " | "; every question is
// answered Yes, and what questions there are is the business of other tests.
#pragma once

#include <algorithm>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <vector>

#include "tests/apoyo/carpeta_temporal.h"
#include "ui/estructura.h"

namespace estructura::apoyo {

enum class documento { hex, hex84, fuente };

/// The document's name in the name of a test.
inline std::string nombre_del_caso(const testing::TestParamInfo<documento>& test) {
  switch (test.param) {
    case documento::hex: return "hex";
    case documento::hex84: return "hex84";
    case documento::fuente: return "fuente";
  }
  return "?";
}

/// Two contents that no half of either could be taken for: a file of 2 or 3 kB and one of 11 kB.
enum class tomo { chico, grande };

inline std::string texto_de(char letter, std::size_t size) {
  const std::string line = "; " + std::string(60, letter) + "\r\n";
  std::string text;
  while (text.size() < size) text += line;
  return text.substr(0, text.size() - 2);
}

class ventana_de_ficheros {
 public:
  explicit ventana_de_ficheros(documento which) : which_(which) { window_.Form_Load(); }

  /// Puts a content into the document by hand, as a person's change.
  void pon(tomo which) {
    const bool big = which == tomo::grande;
    if (which_ == documento::fuente) {
      window_.type(id::source, big ? texto_de('g', 11000) : texto_de('c', 2000));
      return;
    }
    chipstate& chip = window_.poke();
    chip.progmem.fill(unprogrammed);
    const int words = big ? program_words : 400;
    for (int a = 0; a < words; ++a) chip.progmem[a] = big ? 0xA55 : 0x0C5;
    window_.type(id::direc, "000");
    window_.type(id::INS, "NOP");
    window_.click(id::Entrarins);
  }

  std::string salva(const std::string& path) {
    const id button = which_ == documento::fuente  ? id::salvarasm
                      : which_ == documento::hex84 ? id::salvar16c84
                                                   : id::salvar;
    return run(button, path);
  }
  std::string carga(const std::string& path) {
    return run(which_ == documento::fuente ? id::cargarasm : id::cargar, path);
  }

  [[nodiscard]] bool modified() const {
    return which_ == documento::fuente ? window_.source().modified : window_.hex().modified;
  }
  std::string source_text() { return window_.look(id::source).text(); }
  [[nodiscard]] const chipstate& chip() const { return window_.chip(); }

 private:
  struct escritorio : anfitrion {
    std::string path;
    std::string boxes;
    std::string elige_fichero(bool, std::string_view, std::string_view, std::string_view) override {
      return path;
    }
    answer mensaje(box kind, std::string_view text) override {
      if (kind == box::yesno || kind == box::yesnocancel) return answer::yes;
      boxes.append(boxes.empty() ? "" : " | ").append(kind == box::fault ? "fault" : text);
      return answer::ok;
    }
  };

  std::string run(id button, const std::string& path) {
    desktop_.path = path;
    desktop_.boxes.clear();
    window_.click(button);
    return desktop_.boxes;
  }

  documento which_;
  escritorio desktop_;
  Estructura window_{desktop_};
};

/// The file that a save gives where nothing disturbs it.
inline std::string fichero_de(documento which, tomo content) {
  const carpeta_temporal folder;
  ventana_de_ficheros window(which);
  window.pon(content);
  const std::string boxes = window.salva(folder / "uno");
  return boxes + lee(folder / "uno");
}

/// Everything below a folder that may be looked into, an entry a line: kind and permissions, name, and what a
/// file or link holds.
inline std::string retrato(const std::string& folder) {
  namespace fs = std::filesystem;
  std::string picture;
  std::vector<fs::path> found;
  for (const auto& entry :
       fs::recursive_directory_iterator(folder, fs::directory_options::skip_permission_denied))
    found.push_back(entry.path());
  std::sort(found.begin(), found.end());
  for (const fs::path& path : found) {
    struct stat data {};
    if (::lstat(path.c_str(), &data) != 0) continue;
    picture += std::to_string(data.st_mode) + " " + path.string();
    if (S_ISLNK(data.st_mode)) picture += " -> " + fs::read_symlink(path).string();
    if (S_ISREG(data.st_mode)) {
      const std::string bytes = lee(path.string());
      picture +=
          ": " + std::to_string(bytes.size()) + " bytes, " + std::to_string(std::hash<std::string>{}(bytes));
    }
    picture += "\n";
  }
  return picture;
}

}  // namespace estructura::apoyo
