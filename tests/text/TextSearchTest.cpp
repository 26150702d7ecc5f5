// CTextString: search, replace, line input, collapsing and integer formatting.

#include <gtest/gtest.h>

#include <cstdio>
#include <random>
#include <string>
#include <vector>

#include "tests/text/TextHelpers.h"

// The shift comes from the mismatching byte, lowered by what matched; whatever the shape
// of text and pattern, the leftmost occurrence must still be found.
TEST(TextFind, AgreesWithStdStringOnRandomTexts)
{
    std::mt19937 random(11);
    for (int round = 0; round < 20000; ++round) {
        std::string text(random() % 24, 'a'), pattern(random() % 6, 'a');
        const unsigned alphabet = 1 + random() % 3;
        for (char& c : text)
            c = "ab\0"[random() % alphabet];
        for (char& c : pattern)
            c = "ab\0"[random() % alphabet];
        const int start = static_cast<int>(random() % (text.size() + 2)) - 1;
        int want = -1;
        if (start >= 0 && start < static_cast<int>(text.size())) {
            const std::size_t found = text.find(pattern, static_cast<std::size_t>(start));
            want = found == std::string::npos ? -1 : static_cast<int>(found);
        }
        const CTextString subject = Make(text);
        CTextString search = Make(pattern);
        ASSERT_EQ(subject.Find(search, start), want) << text << " / " << pattern << " @" << start;
        ASSERT_TRUE(search.BuildSkipTable());
        ASSERT_EQ(subject.Find(search, start), want) << "own table";
    }
}

TEST(TextReplace, AllFourCases)
{
    const struct {
        const char *text, *search, *replacement, *result;
    } rows[] = {
        {"a.b.c", ".", "/", "a/b/c"},
        {"abababa", "ab", "xy", "xyxyxya"},
        {"aaaa", "aa", "ab", "abab"},
        {"aaa", "aa", "ba", "baa"},   // replaced text is not searched again
        {"a\"b\"", "\"", "''", "a''b''"},
        {"a-b-", "-", "", "ab"},
        {"one, two, three", ", ", ";", "one;two;three"},
        {"abab", "ab", "abab", "abababab"},
        {"xyz", "ab", "c", "xyz"},
        {"end start end", "end", "", " start "},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.text) + " / " + row.search);
        CTextString text = Make(std::string("__") + row.text);   // with the cursor moved
        text.KeepRight(text.Length() - 2);
        text.Replace(row.search, row.replacement);
        EXPECT_EQ(Bytes(text), row.result);
        // Same lengths are replaced in place; the others rebuild the text at its buffer.
        const bool inPlace = std::string(row.search).size() == std::string(row.replacement).size();
        EXPECT_EQ(text.CursorOffset(), inPlace ? 2 : 0);
    }
}

TEST(TextReadLine, EitherByteEndsALineAndEmptyLinesAreSkipped)
{
    const struct {
        std::string content;
        std::vector<std::string> lines;
    } rows[] = {
        {"\r\n\r\nabc", {"abc"}},
        {"abc\r\ndef", {"abc", "def"}},
        {"\n\n\r\r", {}},
        {std::string("x\0y\rz\n", 6), {std::string("x\0y", 3), "z"}},
    };
    for (const auto& row : rows) {
        std::FILE* stream = std::tmpfile();
        std::fwrite(row.content.data(), 1, row.content.size(), stream);
        std::rewind(stream);
        std::vector<std::string> lines;
        CTextString line(0);
        while (line.ReadLine(stream))
            lines.push_back(Bytes(line));
        EXPECT_EQ(lines, row.lines);
        EXPECT_EQ(line.Length(), 0);
        std::fclose(stream);
    }
}

TEST(TextFormat, CollapseWideAndFormatInteger)
{
    const struct {
        std::string wide, narrow;
    } wides[] = {
        {std::string("a\0b\0", 4), "ab"},
        {std::string("a\0\0\0", 4), "a"},
        {std::string("\0\0", 2), ""},
        {std::string("\0\0\0\0", 4), std::string(1, '\0')},
        {"a\xFF" "b", "ab"},
    };
    for (const auto& row : wides) {
        CTextString text = Make(row.wide);
        text.CollapseWide();
        EXPECT_EQ(Bytes(text), row.narrow);
    }

    EXPECT_EQ(Bytes(FormatInteger(0u, true, 0)), "0");
    EXPECT_EQ(Bytes(FormatInteger(999u, true, 0)), "999");
    EXPECT_EQ(Bytes(FormatInteger(1000u, true, 0)), "1,000");
    EXPECT_EQ(Bytes(FormatInteger(4294967295u, true, 0)), "4,294,967,295");
    EXPECT_EQ(Bytes(FormatInteger(42u, false, 5)), "00042");
    EXPECT_EQ(Bytes(FormatInteger(1234u, true, 7)), "001,234");
    EXPECT_EQ(Bytes(FormatInteger(-5, false, 3)), "-005");
    EXPECT_EQ(Bytes(FormatInteger(INT32_MIN, true, 0)), "-2,147,483,648");
}
