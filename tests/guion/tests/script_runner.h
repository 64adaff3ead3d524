// The runner as its tests see it: a program that is given scripts and says something.
//
//   script_runner runner("--ventana");
//   const auto said = runner.run_text("show ciclos.caption\n");
//   said.out                  -> "ciclos.caption = \"0\"\n"
//   said.status               -> 0
#pragma once

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

struct told {
  std::string out;
  std::string err;
  int status = -1;
};

class script_runner {
 public:
  explicit script_runner(std::string mode);
  ~script_runner();
  script_runner(const script_runner&) = delete;
  script_runner& operator=(const script_runner&) = delete;
  script_runner(script_runner&&) = delete;
  script_runner& operator=(script_runner&&) = delete;

  /// Runs one script given on standard input.
  told run_text(std::string_view script);
  /// Runs with these arguments behind the mode.
  told run(const std::vector<std::string>& arguments, std::string_view input = {});
  /// A script file in a folder of this object's; the name to hand to `run`.
  std::string file(const std::string& name, std::string_view script);

 private:
  std::string mode_;
  std::filesystem::path folder_;
};

/// Tests that hold in every mode that was built.
class EachMode : public testing::TestWithParam<const char*> {
 protected:
  script_runner runner{GetParam()};
};

std::string mode_name(const testing::TestParamInfo<const char*>& info);

#ifdef GUION_WINDOW
#define IN_EACH_MODE(suite) INSTANTIATE_TEST_SUITE_P(mode, suite, testing::Values("", "--ventana"), mode_name)
#else
#define IN_EACH_MODE(suite) INSTANTIATE_TEST_SUITE_P(mode, suite, testing::Values(""), mode_name)
#endif
