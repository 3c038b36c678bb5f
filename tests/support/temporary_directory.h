#pragma once

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

/// A directory for the length of a test, removed with all its contents.
class TemporaryDirectory {
  public:
    TemporaryDirectory() {
        std::string pattern = std::filesystem::temp_directory_path() / "kirvo-test-XXXXXX";
        if (!mkdtemp(pattern.data()))
            throw std::runtime_error("cannot make " + pattern);
        path = pattern;
    }

    TemporaryDirectory(const TemporaryDirectory&) = delete;

    ~TemporaryDirectory() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }

    const std::filesystem::path& Path() const { return path; }

  private:
    std::filesystem::path path;
};
