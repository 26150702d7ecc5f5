#pragma once
// A throw-away folder for the file tests, made the current folder for the test's run, so
// that tests can name files relative to it. `base` is its Windows path, as the platform
// layer reports the current folder; both builds therefore test Windows paths.

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <system_error>

#include "files/Paths.h"

class FilesFixture : public ::testing::Test {
protected:
    void SetUp() override
    {
        previous = std::filesystem::current_path();
        std::random_device random;
        folder = std::filesystem::temp_directory_path() / ("lw-files-" + std::to_string(random()));
        std::filesystem::create_directories(folder);
        std::filesystem::current_path(folder);
        base = CurrentFolder().Text();
        ASSERT_FALSE(base.empty());
    }

    void TearDown() override
    {
        std::filesystem::current_path(previous);
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }

    // relative is a Windows path below the folder; the standard library takes '/' on both.
    static std::filesystem::path Native(std::string relative)
    {
        for (char& ch : relative)
            if (ch == '\\')
                ch = '/';
        return std::filesystem::path(relative);
    }

    static void WriteFile(const std::string& relative, const std::string& bytes)
    {
        std::filesystem::path path = Native(relative);
        if (path.has_parent_path())
            std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }

    static void MakeFolder(const std::string& relative) { std::filesystem::create_directories(Native(relative)); }

    static std::string ReadFile(const std::string& relative)
    {
        std::ifstream in(Native(relative), std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }

    std::string Full(const std::string& relative) const { return base + "\\" + relative; }

    std::filesystem::path previous;
    std::filesystem::path folder;
    std::string base;   // Windows path of the folder, no trailing backslash
};
