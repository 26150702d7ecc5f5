#pragma once
// A throw-away folder that stands for the program's folder, made current for the test, so
// that the registry and QuoteChars.txt can be written and read by name. `folder` is its
// Windows path as the platform layer reports it; both builds therefore go through Windows
// paths. Also the wide path form the registry and the link object take.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <system_error>

#include "files/Paths.h"
#include "tests/text/TextHelpers.h"

class ProgramFolder : public ::testing::Test {
protected:
    void SetUp() override
    {
        previous = std::filesystem::current_path();
        std::random_device random;
        local = std::filesystem::temp_directory_path() / ("lw-shortcuts-" + std::to_string(random()));
        std::filesystem::create_directories(local);
        std::filesystem::current_path(local);
        folder = CurrentFolder().Text();
        ASSERT_FALSE(folder.empty());
    }

    void TearDown() override
    {
        std::filesystem::current_path(previous);
        std::error_code ignored;
        std::filesystem::permissions(local, std::filesystem::perms::owner_all, ignored);
        std::filesystem::remove_all(local, ignored);
    }

    CTextString Folder() const { return Make(folder); }

    static void WriteFile(const std::string& name, const std::string& bytes)
    {
        std::ofstream(name, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }

    static std::string ReadFile(const std::string& name)
    {
        std::ifstream in(name, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }

    static bool Exists(const std::string& name) { return std::filesystem::exists(name); }

    std::filesystem::path previous;
    std::filesystem::path local;
    std::string folder;   // Windows path, no trailing backslash
};

// Wide path form: each UTF-16 unit low byte first, then one zero byte.
inline std::string WideForm(const std::u16string& path)
{
    std::string wide;
    for (char16_t unit : path) {
        wide += static_cast<char>(unit & 0xFF);
        wide += static_cast<char>(unit >> 8);
    }
    wide += '\0';
    return wide;
}

inline std::string WideForm(const std::string& path)
{
    std::u16string units;
    for (unsigned char ch : path)
        units += static_cast<char16_t>(ch);
    return WideForm(units);
}
