// A folder of its own for each test, gone afterwards.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "tavro-files-XXXXXX").string();
        path_ = mkdtemp(pattern.data());
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }
    std::string operator/(const char* name) const { return (path_ / name).string(); }

private:
    std::filesystem::path path_;
};
