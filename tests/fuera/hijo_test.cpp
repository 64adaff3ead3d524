// What is thrown in a child process ends there and is told.
#include "tests/fuera/hijo.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <unistd.h>

#include "tests/apoyo/usuario.h"

namespace estructura {
namespace {

// A child that comes back into the test has escaped; it says so by ending well.
class no_escape {
 public:
  no_escape() = default;
  ~no_escape() {
    if (::getpid() != parent_) ::_exit(0);
  }
  no_escape(const no_escape&) = delete;
  no_escape& operator=(const no_escape&) = delete;
  no_escape(no_escape&&) = delete;
  no_escape& operator=(no_escape&&) = delete;

 private:
  pid_t parent_ = ::getpid();
};

bool throws_an_exception() {
  throw std::runtime_error("thrown");
}

bool throws_a_number() {
  throw 1;
}

TEST(hijo, what_a_child_throws_is_its_text) {
  const no_escape guard;
  EXPECT_EQ(apoyo::en_hijo([] { return throws_an_exception() ? "" : "x"; }).text, "<exception: thrown>");
  EXPECT_EQ(apoyo::en_hijo([] { return throws_a_number() ? "" : "x"; }).text, "<exception>");
}

TEST(hijo, what_a_child_throws_is_a_no) {
  const no_escape guard;
  EXPECT_TRUE(apoyo::in_child([] { return true; }));
  EXPECT_FALSE(apoyo::in_child(throws_an_exception));
  EXPECT_FALSE(apoyo::in_child(throws_a_number));
}

TEST(hijo, another_process_that_throws_does_not_end_well) {
  const no_escape guard;
  EXPECT_TRUE(apoyo::otro_proceso([] {}).acaba());
  EXPECT_FALSE(apoyo::otro_proceso(throws_an_exception).acaba());
}

}  // namespace
}  // namespace estructura
