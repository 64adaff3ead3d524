// The two documents in the window.
#include <gtest/gtest.h>

#include "tests/support/test_window.h"

namespace estructura {
namespace {

using support::test_window;

TEST(load, the_file_is_named_before_its_errors_are_told) {
  test_window w;
  w.desktop.chosen = "/no/hay/Nada.hex";
  w.desktop.at_box = [&w] { EXPECT_EQ(w.text("FILHEX"), "nada.hex"); };
  w.view.click(id::cargar);
  EXPECT_EQ(w.desktop.boxes.size(), 1U);
}

}  // namespace
}  // namespace estructura
