// A window that does nothing but load and save one of its documents, and the two contents that it saves.
//
//   document_window window(document_kind::source_text);
//   window.put(amount::large);
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

#include "tests/support/temporary_folder.h"
#include "ui/estructura.h"

namespace estructura::support {

enum class document_kind { hex, hex84, source_text };

/// The document's name in the name of a test.
inline std::string case_name(const testing::TestParamInfo<document_kind>& test) {
  switch (test.param) {
    case document_kind::hex: return "hex";
    case document_kind::hex84: return "hex84";
    case document_kind::source_text: return "fuente";
  }
  return "?";
}

/// Two contents that no half of either could be taken for: a file of 2 or 3 kB and one of 11 kB.
enum class amount { small, large };

inline std::string text_of(char letter, std::size_t size) {
  const std::string line = "; " + std::string(60, letter) + "\r\n";
  std::string text;
  while (text.size() < size) text += line;
  return text.substr(0, text.size() - 2);
}

class document_window {
 public:
  explicit document_window(document_kind which) : which_(which) { window_.Form_Load(); }

  /// Puts a content into the document by hand, as a person's change.
  void put(amount which) {
    const bool big = which == amount::large;
    if (which_ == document_kind::source_text) {
      window_.type(id::source, big ? text_of('g', 11000) : text_of('c', 2000));
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
    const id button = which_ == document_kind::source_text ? id::salvarasm
                      : which_ == document_kind::hex84     ? id::salvar16c84
                                                           : id::salvar;
    return run(button, path);
  }
  std::string carga(const std::string& path) {
    return run(which_ == document_kind::source_text ? id::cargarasm : id::cargar, path);
  }

  [[nodiscard]] bool modified() const {
    return which_ == document_kind::source_text ? window_.source().modified : window_.hex().modified;
  }
  std::string source_text() { return window_.look(id::source).text(); }
  [[nodiscard]] const chipstate& chip() const { return window_.chip(); }

 private:
  struct fake_desktop : window_host {
    std::string path;
    std::string boxes;
    std::string choose_file(bool, std::string_view, std::string_view, std::string_view) override {
      return path;
    }
    answer show_box(box kind, std::string_view text) override {
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

  document_kind which_;
  fake_desktop desktop_;
  Estructura window_{desktop_};
};

/// The file that a save gives where nothing disturbs it.
inline std::string file_of(document_kind which, amount content) {
  const temporary_folder folder;
  document_window window(which);
  window.put(content);
  const std::string boxes = window.salva(folder / "uno");
  return boxes + lee(folder / "uno");
}

/// Everything below a folder that may be looked into, an entry a line: kind and permissions, name, and what a
/// file or link holds.
inline std::string listing_of(const std::string& folder) {
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

}  // namespace estructura::support
