// Folders and files that tests make.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

// A new folder for one test, which has to remove it.
inline std::filesystem::path newFolder(const std::string& purpose)
{
    std::string name = (std::filesystem::temp_directory_path() / ("kso-" + purpose)).string();
    name += "-XXXXXX";
    return ::mkdtemp(name.data()) ? std::filesystem::path(name) : std::filesystem::path();
}

inline std::string contents(const std::filesystem::path& file)
{
    std::ostringstream text;
    text << std::ifstream(file).rdbuf();
    return text.str();
}

inline void write(const std::filesystem::path& file, const std::vector<std::uint8_t>& bytes)
{
    std::ofstream(file) << std::string(bytes.begin(), bytes.end());
}
