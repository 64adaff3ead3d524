// What is thrown in a child process ends there and is told.
#include "tests/system/child.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <unistd.h>

#include "tests/support/ordinary_user.h"

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

TEST(child, what_a_child_throws_is_its_text) {
  const no_escape guard;
  EXPECT_EQ(support::run_in_child([] { return throws_an_exception() ? "" : "x"; }).text,
            "<exception: thrown>");
  EXPECT_EQ(support::run_in_child([] { return throws_a_number() ? "" : "x"; }).text, "<exception>");
}

TEST(child, what_a_child_throws_is_a_no) {
  const no_escape guard;
  EXPECT_TRUE(support::in_child([] { return true; }));
  EXPECT_FALSE(support::in_child(throws_an_exception));
  EXPECT_FALSE(support::in_child(throws_a_number));
}

TEST(child, another_process_that_throws_does_not_end_well) {
  const no_escape guard;
  EXPECT_TRUE(support::other_process([] {}).ends_well());
  EXPECT_FALSE(support::other_process(throws_an_exception).ends_well());
}

}  // namespace
}  // namespace estructura
