// The splitter between source and program.
#include <gtest/gtest.h>

#include <QApplication>
#include <QSplitter>

#include "tests/support/shown_window.h"

namespace estructura {
namespace {

class splitter : public support::shown_window {};

TEST_F(splitter, the_splitter_shares_out_between_source_and_program_and_hides_neither) {
  QCoreApplication::processEvents();
  auto* const panes = window.findChild<QSplitter*>();
  ASSERT_NE(panes, nullptr);
  const auto before = places();
  const int room = panes->width();
  panes->setSizes({0, room});
  EXPECT_LT(places().at("source").width(), before.at("source").width());
  EXPECT_GT(places().at("MP").width(), before.at("MP").width());
  EXPECT_GT(panes->sizes().front(), 0);
  panes->setSizes({room, 0});
  EXPECT_GT(panes->sizes().back(), 0);
  // Every button keeps room for its caption.
  for (const id which : {id::cargar, id::fin, id::break_})
    EXPECT_GE(at(which).width(), at(which).minimumSizeHint().width());
}

}  // namespace
}  // namespace estructura
