// The examples are the files that their guiones run: a script holds a copy of the source that it assembles
// and of the HEX that it expects, since it finds nothing but what it has written itself.
#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "asm/odd_readings.h"
#include "common/text.h"
#include "tests/guion/words.h"
#include "tests/support/temporary_folder.h"

namespace estructura {
namespace {

using support::lee;

namespace fs = std::filesystem;

const std::string examples = std::string(TOP) + "/ejemplos/";
const std::string scripts = std::string(TOP) + "/tests/guiones/ejemplos/";

std::vector<std::string> names_in(const std::string& folder, std::string_view extension) {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(folder))
    if (entry.path().extension() == extension) names.push_back(entry.path().stem().string());
  std::sort(names.begin(), names.end());
  return names;
}

struct script_copies {
  std::string source;
  std::string hex;
};

script_copies copies_in(const std::string& name) {
  script_copies found;
  std::istringstream lines(lee(scripts + name + ".guion"));
  for (std::string line; std::getline(lines, line);) {
    if (line.empty() || line.front() == '#') continue;
    guiones::script_line words(line);
    const std::string verb = words.next().text;
    if (verb != "write" && verb != "expect") continue;
    const guiones::script_word what = words.next();
    if (verb == "write" && what.text == name + ".asm") found.source = words.next().text;
    if (verb == "expect" && what.written == "file(\"" + name + ".hex\")") found.hex = words.next().text;
  }
  return found;
}

TEST(examples, are_each_a_source_its_hex_and_its_guion) {
  const std::vector<std::string> sources = names_in(examples, ".asm");
  EXPECT_GE(sources.size(), 6U);
  EXPECT_EQ(names_in(examples, ".hex"), sources);
  EXPECT_EQ(names_in(scripts, ".guion"), sources);
}

TEST(examples, are_what_their_guiones_run) {
  for (const std::string& name : names_in(examples, ".asm")) {
    const script_copies copies = copies_in(name);
    EXPECT_EQ(copies.source, lee(examples + name + ".asm")) << name;
    EXPECT_EQ(copies.hex, lee(examples + name + ".hex")) << name;
  }
}

TEST(examples, hold_no_operand_that_is_read_as_something_else) {
  for (const std::string& name : names_in(examples, ".asm")) {
    std::istringstream text(lee(examples + name + ".asm"));
    std::vector<std::string> lines;
    name_table names;
    for (std::string line; std::getline(text, line);) {
      lines.push_back(line.substr(0, line.find('\r')));
      if (const auto made = definition_in(lines.back())) names.add(*made);
    }
    EXPECT_FALSE(names.empty()) << name;
    for (const std::string& line : lines)
      EXPECT_TRUE(odd_readings(line, names).empty()) << name << ": " << line;
  }
}

TEST(examples, are_files_as_the_system_writes_them) {
  for (const std::string& name : names_in(examples, ".asm")) {
    const std::string text = lee(examples + name + ".asm");
    EXPECT_TRUE(is_valid_utf8(text)) << name;
    EXPECT_TRUE(text.starts_with("; " + name + ".asm ")) << name;
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), std::count(text.begin(), text.end(), '\r')) << name;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
      EXPECT_TRUE(line.ends_with('\r')) << name << ": " << line;
      EXPECT_LE(char_count(line), 65U) << name << ": " << line;
    }
  }
}

}  // namespace
}  // namespace estructura
