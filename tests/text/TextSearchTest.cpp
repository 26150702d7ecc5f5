// CTextString: search, replace, line input, collapsing and integer formatting.

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

#include "tests/text/TextHelpers.h"
#include "text/TextString.h"

TEST(TextFind, EdgesOfTextAndPattern)
{
    struct Row {
        const char* text;
        const char* pattern;
        int start;
        int found;
    };
    const Row rows[] = {
        {"", "a", 0, -1},
        {"", "", 0, -1},
        {"abc", "", 3, -1},
        {"abc", "", 1, 1},
        {"abc", "a", -1, -1},
        {"abc", "abcd", 0, -1},
        {"abc", "bc", 2, -1},
        {"aaab", "aab", 0, 1},
        {"abcabc", "abc", 0, 0},
        {"abcabc", "abc", 1, 3},
        {"xxxyz", "yz", 0, 3},
        {"hello world", "o w", 0, 4},
        {"abababa", "aba", 1, 2},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.text) + " / " + row.pattern);
        const CTextString text(row.text);
        const int n = static_cast<int>(std::string(row.pattern).size());
        EXPECT_EQ(text.Find(row.pattern, row.start, n), row.found);
        CTextString pattern(row.pattern);
        EXPECT_EQ(text.Find(pattern, row.start), row.found);
        ASSERT_TRUE(pattern.BuildSkipTable());
        EXPECT_EQ(text.Find(pattern, row.start), row.found);
    }
}

// The shift is taken from the mismatching byte and lowered by what matched; whatever the
// shape of text and pattern, the leftmost occurrence must still be found.
TEST(TextFind, AgreesWithStdStringOnRandomTexts)
{
    std::mt19937 random(11);
    for (int round = 0; round < 20000; ++round) {
        std::string text(random() % 24, 'a'), pattern(1 + random() % 5, 'a');
        const int alphabet = 1 + static_cast<int>(random() % 3);
        for (char& c : text)
            c = static_cast<char>("ab\0"[random() % alphabet]);
        for (char& c : pattern)
            c = static_cast<char>("ab\0"[random() % alphabet]);
        const int start = static_cast<int>(random() % (text.size() + 1));
        std::size_t expected = start < static_cast<int>(text.size()) ? text.find(pattern, start)
                                                                      : std::string::npos;
        const int want = expected == std::string::npos ? -1 : static_cast<int>(expected);
        CTextString subject = Make(text);
        ASSERT_EQ(subject.Find(pattern.data(), start, static_cast<int>(pattern.size())), want)
            << "text '" << text << "' pattern '" << pattern << "' start " << start;
    }
}

TEST(TextFind, SkipTableEntries)
{
    CTextString pattern("abcab");
    ASSERT_TRUE(pattern.BuildSkipTable());
    const std::int32_t* table = pattern.SkipTable();
    EXPECT_EQ(table['a'], 1);
    EXPECT_EQ(table['b'], 3);   // the last byte does not count as an occurrence
    EXPECT_EQ(table['c'], 2);
    EXPECT_EQ(table['z'], 5);
    EXPECT_EQ(table[0], 5);

    // A second build refills the same table.
    pattern.Assign("zz");
    ASSERT_TRUE(pattern.BuildSkipTable());
    EXPECT_EQ(pattern.SkipTable(), table);
    EXPECT_EQ(table['z'], 1);
    EXPECT_EQ(table['a'], 2);
}

TEST(TextReplace, AllFourCases)
{
    struct Row {
        const char* text;
        const char* search;
        const char* replacement;
        const char* result;
    };
    const Row rows[] = {
        // one byte by one byte
        {"a.b.c", ".", "/", "a/b/c"},
        {"abc", "x", "y", "abc"},
        // same length
        {"abababa", "ab", "xy", "xyxyxya"},
        {"aaaa", "aa", "ab", "abab"},
        {"abc", "zz", "yy", "abc"},
        // one byte by something else
        {"a\"b\"", "\"", "''", "a''b''"},
        {"a-b-", "-", "", "ab"},
        {"", "-", "xx", ""},
        // general
        {"one, two, three", ", ", ";", "one;two;three"},
        {"abcabc", "bc", "", "aa"},
        {"abab", "ab", "abab", "abababab"},
        {"xyz", "ab", "c", "xyz"},
        {"start end", "end", "finish", "start finish"},
        {"end start", "end", "", " start"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.text) + " / " + row.search + " / " + row.replacement);
        CTextString text(row.text);
        text.Replace(row.search, row.replacement);
        EXPECT_EQ(Bytes(text), row.result);
        EXPECT_EQ(text.CursorOffset(), 0);
        EXPECT_EQ(text.Text()[text.Length()], '\0');
    }
}

TEST(TextReplace, LeavesTheTableOnTheSearchString)
{
    const CTextString search("--");
    const CTextString replacement("+");
    CTextString text("a--b--c");
    text.Replace(search, replacement);
    EXPECT_EQ(Bytes(text), "a+b+c");
    EXPECT_NE(search.SkipTable(), nullptr);
}

namespace {

// A stream holding bytes, read back through ReadLine until it gives false.
std::vector<std::string> ReadLines(const std::string& content)
{
    std::FILE* stream = std::tmpfile();
    std::fwrite(content.data(), 1, content.size(), stream);
    std::rewind(stream);
    std::vector<std::string> lines;
    CTextString line(0);
    while (line.ReadLine(stream))
        lines.push_back(Bytes(line));
    EXPECT_EQ(line.Length(), 0);
    std::fclose(stream);
    return lines;
}

}  // namespace

TEST(TextReadLine, EndsOnEitherByteAndSkipsEmptyLines)
{
    typedef std::vector<std::string> Lines;
    EXPECT_EQ(ReadLines("\r\n\r\nabc"), Lines{"abc"});
    EXPECT_EQ(ReadLines("abc\r\ndef"), (Lines{"abc", "def"}));
    EXPECT_EQ(ReadLines("a\rb\nc\n"), (Lines{"a", "b", "c"}));
    EXPECT_EQ(ReadLines("\n\n\r\r"), Lines{});
    EXPECT_EQ(ReadLines(""), Lines{});
    EXPECT_EQ(ReadLines(std::string("x\0y\n", 4)), Lines{std::string("x\0y", 3)});
}

TEST(TextReadLine, ConsumesNothingBehindTheLineEnd)
{
    std::FILE* stream = std::tmpfile();
    std::fputs("ab\ncd", stream);
    std::rewind(stream);
    CTextString line(0);
    ASSERT_TRUE(line.ReadLine(stream));
    EXPECT_EQ(std::fgetc(stream), 'c');
    std::fclose(stream);
}

TEST(TextCollapseWide, KeepsEvenBytesAndCutsOneTrailingZero)
{
    struct Row {
        std::string wide;
        std::string narrow;
    };
    const Row rows[] = {
        {std::string("a\0b\0", 4), "ab"},
        {std::string("a\0\0\0", 4), "a"},
        {std::string("\0\0", 2), ""},
        {std::string("\0\0\0\0", 4), std::string(1, '\0')},
        {std::string("a\xFF" "b", 3), "ab"},
        {"", ""},
        {std::string("C\0:\0\\\0x\0\0", 9), "C:\\x"},
    };
    for (const Row& row : rows) {
        CTextString text = Make(row.wide);
        text.CollapseWide();
        EXPECT_EQ(Bytes(text), row.narrow);
    }
}

TEST(TextFormatInteger, GroupingAndFill)
{
    struct Row {
        std::int64_t value;
        bool group;
        int minWidth;
        const char* text;
    };
    const Row rows[] = {
        {0, true, 0, "0"},
        {999, true, 0, "999"},
        {1000, true, 0, "1,000"},
        {1234567, true, 0, "1,234,567"},
        {1234567, false, 0, "1234567"},
        {42, false, 5, "00042"},
        {1234, true, 7, "001,234"},
        {123, true, 2, "123"},
        {-5, false, 3, "-005"},
        {-1234, true, 0, "-1,234"},
        {INT32_MIN, true, 0, "-2,147,483,648"},
        {INT32_MAX, false, 0, "2147483647"},
        {UINT32_MAX, true, 0, "4,294,967,295"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        if (row.value > INT32_MAX) {
            EXPECT_EQ(Bytes(FormatInteger(static_cast<std::uint32_t>(row.value), row.group, row.minWidth)),
                      row.text);
            continue;
        }
        EXPECT_EQ(Bytes(FormatInteger(static_cast<std::int32_t>(row.value), row.group, row.minWidth)), row.text);
        if (row.value >= 0) {
            EXPECT_EQ(Bytes(FormatInteger(static_cast<std::uint32_t>(row.value), row.group, row.minWidth)),
                      row.text);
        }
    }
}
