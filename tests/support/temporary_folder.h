// A folder of its own for a test that needs the disk; gone with everything in it at the end of the test.
//
//   const temporary_folder folder;
//   write_file(folder / "uno.hex", ":00000001FF\r\n");
//   EXPECT_EQ(lee(folder / "uno.hex"), ":00000001FF\r\n");
#pragma once

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <stdlib.h>
#include <string>
#include <string_view>
#include <system_error>

namespace estructura::support {

class temporary_folder {
 public:
  temporary_folder() {
    std::string name = (std::filesystem::temp_directory_path() / "estructura-test-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) throw std::filesystem::filesystem_error("mkdtemp", name, {});
    path_ = name;
  }
  ~temporary_folder() {
    namespace fs = std::filesystem;
    std::error_code error;
    // Folders that a test has closed are opened again on the way down, or what is in them would stay.
    fs::permissions(path_, fs::perms::owner_all, fs::perm_options::add, error);
    for (fs::recursive_directory_iterator it(path_, error), end; !error && it != end; it.increment(error)) {
      std::error_code refused;
      if (fs::is_directory(it->symlink_status(refused)))
        fs::permissions(it->path(), fs::perms::owner_all, fs::perm_options::add, refused);
    }
    fs::remove_all(path_, error);
  }
  temporary_folder(const temporary_folder&) = delete;
  temporary_folder& operator=(const temporary_folder&) = delete;
  temporary_folder(temporary_folder&&) = delete;
  temporary_folder& operator=(temporary_folder&&) = delete;

  /// The full path of a name in the folder.
  std::string operator/(std::string_view name) const { return (path_ / name).string(); }
  [[nodiscard]] std::string path() const { return path_.string(); }

  /// Files and folders directly in it.
  [[nodiscard]] int entries() const {
    return static_cast<int>(std::distance(std::filesystem::directory_iterator(path_), {}));
  }

 private:
  std::filesystem::path path_;
};

/// Writes a file, with the folders above it. Not through the code under test.
inline void write_file(const std::string& path, std::string_view bytes) {
  std::filesystem::create_directories(std::filesystem::path(path).parent_path());
  std::ofstream file(path, std::ios::binary);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  ASSERT_TRUE(file.flush().good()) << path;
}

/// The bytes of a file; a file that cannot be read gives a text that no test expects.
inline std::string lee(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) return "<no such file: " + path + ">";
  std::string bytes(static_cast<std::size_t>(std::filesystem::file_size(path)), '\0');
  file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  return file ? bytes : "<unreadable: " + path + ">";
}

}  // namespace estructura::support
