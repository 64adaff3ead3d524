// The source document in the window, where only the bytes of its file tell: encodings, and a disk that
// refuses.
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "common/text.h"
#include "tests/support/ordinary_user.h"
#include "tests/support/temporary_folder.h"
#include "ui/estructura.h"

namespace estructura {
namespace {

using support::lee;
using support::temporary_folder;
using support::write_file;

constexpr std::string_view latin = "; a\xF1o\r\n";  // Windows-1252

// A desktop whose file dialog gives the next path, and whose questions are all answered No.
struct desktop : window_host {
  std::string path;
  std::string boxes;
  std::string choose_file(bool, std::string_view, std::string_view, std::string_view) override {
    return path;
  }
  answer show_box(box kind, std::string_view text) override {
    boxes.append(text).append("|");
    return kind == box::ok ? answer::ok : answer::no;
  }
};

class source_document : public testing::Test {
 public:
  source_document() { window.Form_Load(); }

  void load(const std::string& path) {
    host.path = path;
    window.click(id::cargarasm);
  }
  void save(const std::string& path) {
    host.path = path;
    window.click(id::salvarasm);
  }

  const temporary_folder folder;
  desktop host;
  Estructura window{host};
};

TEST_F(source_document, keeps_the_encoding_it_was_loaded_in) {
  write_file(folder / "uno.asm", latin);
  load(folder / "uno.asm");
  EXPECT_EQ(window.look(id::source).text(), "; año");
  window.type(id::source, "; mañana");
  save(folder / "uno.asm");
  EXPECT_EQ(lee(folder / "uno.asm"),
            "; ma\xF1"
            "ana\r\n");
}

TEST_F(source_document, keeps_its_encoding_when_its_text_is_disassembled_anew) {
  write_file(folder / "uno.asm", latin);
  load(folder / "uno.asm");
  window.click(id::desensamblar);
  window.type(id::source, "; año");
  save(folder / "uno.asm");
  EXPECT_EQ(lee(folder / "uno.asm"), latin);
}

TEST_F(source_document, begins_in_utf8_again_when_it_begins_anew) {
  const auto begin_anew = {
      +[](source_document& t) { t.window.click(id::borrarasm); },
      +[](source_document& t) { t.load(""); },
      +[](source_document& t) { t.load(t.folder / "falta.asm"); },
      +[](source_document& t) { t.load(t.folder / "otro.asm"); },
  };
  for (const auto act : begin_anew) {
    write_file(folder / "uno.asm", latin);
    write_file(folder / "otro.asm", "; ASCII\r\n");
    load(folder / "uno.asm");
    act(*this);
    window.type(id::source, "; año");
    save(folder / "nuevo.asm");
    EXPECT_EQ(lee(folder / "nuevo.asm"), "; a\xC3\xB1o\r\n");
    std::filesystem::remove(folder / "nuevo.asm");
  }
}

TEST_F(source_document, keeps_the_old_file_when_the_disk_refuses) {
  write_file(folder / "uno.asm", "viejo");
  ASSERT_TRUE(support::give_to_ordinary_user(folder.path().c_str()));
  ASSERT_TRUE(support::give_to_ordinary_user((folder / "uno.asm").c_str()));
  EXPECT_TRUE(support::with_file_limit(4, [this] {
    load(folder / "uno.asm");
    window.type(id::source, "NOP");
    save(folder / "uno.asm");
    return host.boxes == "Error en escritura|" && window.source().modified &&
           window.look(id::source).text() == "NOP";
  }));
  EXPECT_EQ(lee(folder / "uno.asm"), "viejo");
}

TEST_F(source_document, refuses_an_unreadable_file) {
  write_file(folder / "uno.asm", "NOP\r\n");
  ASSERT_TRUE(support::give_to_ordinary_user(folder.path().c_str()));
  std::filesystem::permissions(folder / "uno.asm", std::filesystem::perms::none);
  EXPECT_TRUE(support::as_ordinary_user([this] {
    load(folder / "uno.asm");
    return host.boxes == "Error en lectura|" && window.look(id::source).text().empty() &&
           window.source().name == to_lower(folder / "uno.asm") && !window.source().modified;
  }));
}

}  // namespace
}  // namespace estructura
