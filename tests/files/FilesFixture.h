#pragma once
// A throw-away folder, made the current folder for the test's run. `base` is its Windows path
// as the platform layer reports it, so that both builds go through Windows paths; the test's
// own helpers name files relative to it with '/', which the standard library takes on both.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <string>

#include "files/Paths.h"
#include "tests/text/TextHelpers.h"

class FilesFixture : public ::testing::Test {
protected:
    void SetUp() override
    {
        folder = std::filesystem::temp_directory_path() / ("lw-test-" + std::to_string(std::random_device()()));
        std::filesystem::create_directories(folder);
        std::filesystem::current_path(folder);
        base = CurrentFolder().Text();
    }

    void TearDown() override
    {
        std::filesystem::current_path(folder.parent_path());
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }

    static void WriteFile(const std::filesystem::path& relative, const std::string& bytes)
    {
        if (relative.has_parent_path())
            std::filesystem::create_directories(relative.parent_path());
        std::ofstream(relative, std::ios::binary) << bytes;
    }

    static std::string ReadFile(const std::filesystem::path& relative)
    {
        std::ifstream in(relative, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }

    std::string Full(const std::string& relative) const { return base + "\\" + relative; }

    std::filesystem::path folder;
    std::string base;   // no trailing backslash
};
