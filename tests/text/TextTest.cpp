// CTextString against std::string: random runs of edits and queries made on both, and tables
// for what the standard library cannot answer (capacities, formatting, failed allocations).

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstdio>
#include <functional>
#include <random>

#include "tests/text/TextHelpers.h"
#include "text/Allocation.h"
#include "text/Chain.h"

namespace {

int Sign(int v)
{
    return (v > 0) - (v < 0);
}

std::string Upper(std::string s)
{
    for (char& c : s)
        c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
    return s;
}

std::string ReplaceAll(const std::string& s, const std::string& from, const std::string& to)
{
    std::string out;
    std::size_t at = 0;
    for (std::size_t hit; (hit = s.find(from, at)) != std::string::npos; at = hit + from.size())
        out += s.substr(at, hit - at) + to;
    return out + s.substr(at);
}

// The bytes at even offsets, less one zero byte at the end.
std::string Collapse(const std::string& s)
{
    std::string out;
    for (std::size_t i = 0; i < s.size(); i += 2)
        out += s[i];
    if (!out.empty() && out.back() == 0)
        out.pop_back();
    return out;
}

int FindIn(const std::string& s, const std::string& pattern, int start)
{
    if (start < 0 || start >= static_cast<int>(s.size()))
        return -1;
    const std::size_t hit = s.find(pattern, static_cast<std::size_t>(start));
    return hit == std::string::npos ? -1 : static_cast<int>(hit);
}

}  // namespace

TEST(TextString, RandomEditsAndQueriesAgreeWithStdString)
{
    std::mt19937 random(1);
    const std::string alphabet("aAbB \0\xE9[z", 9);
    auto piece = [&](unsigned most) {
        std::string s(random() % (most + 1), ' ');
        for (char& c : s)
            c = alphabet[random() % alphabet.size()];
        return s;
    };
    for (int run = 0; run < 40; ++run) {
        CTextString text(0);
        std::string model;
        for (int step = 0; step < 60; ++step) {
            int n = static_cast<int>(model.size());
            int k = static_cast<int>(random() % (n + 3)) - 1;   // -1 to n + 1
            const std::string a = piece(5), b = piece(3);
            const int low = k % 2 ? 0 : 'A', high = k % 2 ? ' ' : 'a';
            auto trimmed = [&](char c) { return (c & 0xFF) >= low && (c & 0xFF) <= high; };
            switch (random() % 10) {
            case 0: text.Append(Make(a)); model += a; break;
            case 1: text.Append((a + b).c_str()); model += (a + b).c_str(); break;
            case 2: text.KeepRight(k); model = k <= 0 ? "" : model.substr(n - std::min(k, n)); break;
            case 3: text.Truncate(k + 1); model.resize(std::min(k + 1, n)); break;
            case 4: text.Assign(a.c_str()); model = a.c_str(); break;
            case 5: text.Assign(Make(a + b)); model = a + b; break;
            case 6: text.AssignChar(b[0]); model = b.substr(0, 1); if (b.empty()) text.MakeEmpty(); break;
            case 7: text.CollapseWide(); model = Collapse(model); break;
            case 8: {
                const std::string search = k % 2 ? b : b.c_str(), with = k % 2 ? a : a.c_str();
                if (search.empty())
                    break;
                k % 2 ? text.Replace(Make(search), Make(with)) : text.Replace(search.c_str(), with.c_str());
                model = ReplaceAll(model, search, with);
                break;
            }
            default:
                (k % 3 == 0 ? TrimLeft : k % 3 == 1 ? TrimRight : Trim)(text, low, high);
                while (k % 3 != 1 && !model.empty() && trimmed(model.front()))
                    model.erase(0, 1);
                while (k % 3 != 0 && !model.empty() && trimmed(model.back()))
                    model.pop_back();
            }
            ASSERT_EQ(Bytes(text), model) << run << ':' << step;
            ASSERT_EQ(text.Text()[text.Length()], 0);

            n = static_cast<int>(model.size());
            const std::string p = piece(3);
            const CTextString pattern = Make(p);
            ASSERT_TRUE(step % 2 || pattern.BuildSkipTable());
            EXPECT_EQ(text.Find(p.data(), k, static_cast<int>(p.size())), FindIn(model, p, k)) << model << '|' << p;
            EXPECT_EQ(text.Find(pattern, k), FindIn(model, p, k)) << model << '|' << p << '|' << k;
            EXPECT_EQ(text.Compare(p.data(), static_cast<int>(p.size())), Sign(model.compare(p)));
            EXPECT_EQ(text.CompareTo(pattern, true), Sign(Upper(model).compare(Upper(p))));
            EXPECT_EQ(text.Equals(pattern), model == p ? 1 : 0);
            EXPECT_EQ(text.Equals(p.c_str()), model == p.c_str() ? 1 : 0);
            EXPECT_EQ(Bytes(text.Left(k)), model.substr(0, std::clamp(k, 0, n)));
            EXPECT_EQ(Bytes(text.Right(k)), model.substr(n - std::clamp(k, 0, n)));
            EXPECT_EQ(Bytes(text.Concat(pattern)) + Bytes(text.Concat(p.c_str())), model + p + model + p.c_str());
            EXPECT_EQ(Bytes(CTextString(text)), model);
        }
    }
}

// Sizes of allocations, and where the cursor stands, after each operation on "abcde" with 16.
TEST(TextString, CapacitiesAndTheCursor)
{
    const struct {
        const char* what;
        std::function<void(CTextString&)> op;
        std::string text;
        int capacity;
        int cursor;
    } rows[] = {
        {"cut", [](CTextString& t) { t.KeepRight(2); }, "de", 13, 3},
        {"cut, append", [](CTextString& t) { t.KeepRight(2).AppendChar('f'); }, "def", 16, 0},
        {"cut, assign", [](CTextString& t) { t.KeepRight(2).Assign("0123456789abcde"); }, "0123456789abcde", 16, 0},
        {"assign beyond", [](CTextString& t) { t.Assign("0123456789abcdef"); }, "0123456789abcdef", 17, 0},
        {"assign string", [](CTextString& t) { (void)t.Reserve(1, false, true); t.Assign(CTextString("abcdef")); }, "abcdef", 7, 0},
        {"assign chars", [](CTextString& t) { (void)t.Reserve(1, false, true); t.Assign("abcdef"); }, "abcdef", 16, 0},
        {"grow", [](CTextString& t) { t.Append(std::string(100, 'x').c_str()); }, "abcde" + std::string(100, 'x'), 121, 0},
        {"grow more", [](CTextString& t) { t.Append(std::string(995, 'x').c_str()); }, "abcde" + std::string(995, 'x'), 1100, 0},
        {"reserve exact", [](CTextString& t) { (void)t.Reserve(1, false, true); }, "", 4, 0},
        {"reserve keeping", [](CTextString& t) { (void)t.Reserve(4, true, true); }, "abc", 4, 0},
        {"reserve, fits", [](CTextString& t) { (void)t.KeepRight(2).Reserve(16, true, true); }, "de", 16, 0},
        {"reserve, rebase", [](CTextString& t) { (void)t.KeepRight(2).Reserve(10, false, false); }, "ab", 16, 0},
        {"reserve below", [](CTextString& t) { (void)t.Reserve(15, true); }, "abcde", 16, 0},
        {"reserve at", [](CTextString& t) { (void)t.Reserve(16, false); }, "", 32, 0},
        {"reserve more", [](CTextString& t) { (void)t.Reserve(200, true); }, "abcde", 220, 0},
        {"big-endian", [](CTextString& t) { t.KeepRight(1).AssignBigEndian16(0x1234); }, "\x12\x34", 12, 4},
        {"big-endian 32", [](CTextString& t) { t.AssignBigEndian32(0x00A0B0C0); }, std::string("\0\xA0\xB0\xC0", 4), 16, 0},
        {"empty", [](CTextString& t) { t.KeepRight(2); t.MakeEmpty(); }, "", 16, 0},
        {"trim left", [](CTextString& t) { t.KeepRight(4); TrimLeft(t, 'a', 'c'); }, "de", 13, 3},
        {"trim right", [](CTextString& t) { t.KeepRight(4); TrimRight(t, 'a', 'z'); }, "", 16, 0},
    };
    for (const auto& row : rows) {
        CTextString text("abcde");
        row.op(text);
        EXPECT_EQ(Bytes(text), row.text) << row.what;
        EXPECT_EQ(text.Capacity(), row.capacity) << row.what;
        EXPECT_EQ(text.CursorOffset(), row.cursor) << row.what;
    }
    CTextString cut("abcde");
    cut.KeepRight(2);
    EXPECT_EQ(CTextString(cut).Capacity(), 13);
    EXPECT_EQ(CTextString(0).Capacity() + CTextString(-5).Capacity() + CTextString(20).Capacity(), 17 + 17 + 21);
    EXPECT_EQ(CTextString("").Capacity() + CTextString('\0').Capacity() + CTextString('\0').Length(), 16 + 16 + 1);
}

TEST(TextString, FormatInteger)
{
    const struct {
        std::int64_t value;
        bool group;
        int width;
        const char* text;
    } rows[] = {
        {0, true, 0, "0"}, {999, true, 0, "999"}, {1000, true, 0, "1,000"}, {1234567, true, 0, "1,234,567"},
        {42, false, 5, "00042"}, {1234, true, 7, "001,234"}, {1234567, false, 0, "1234567"},
        {4294967295, true, 0, "4,294,967,295"}, {-5, false, 3, "-005"}, {INT_MIN, true, 0, "-2,147,483,648"},
    };
    for (const auto& row : rows) {
        const CTextString text = row.value < 0 || row.value < 1000
                                     ? FormatInteger(static_cast<std::int32_t>(row.value), row.group, row.width)
                                     : FormatInteger(static_cast<std::uint32_t>(row.value), row.group, row.width);
        EXPECT_EQ(Bytes(text), row.text);
    }
}

TEST(TextString, ReadLineSkipsEmptyLines)
{
    std::FILE* stream = std::tmpfile();
    ASSERT_NE(stream, nullptr);
    std::fwrite("\r\n\r\nabc\r\ndef\n\0x\nlast", 1, 20, stream);
    std::rewind(stream);
    CTextString line(0);
    std::string lines;
    while (line.ReadLine(stream))
        lines += Bytes(line) + '|';
    EXPECT_EQ(lines, std::string("abc|def|\0x|last|", 16));
    EXPECT_EQ(line.Length(), 0);
    std::fclose(stream);
}

// Each operation with its next allocation failed (or the one after): what it leaves.
TEST(TextString, FailedAllocations)
{
    const struct {
        const char* what;
        std::function<std::string()> run;
        std::string result;
    } rows[] = {
        {"construct, then append", [] { FailAllocation(1); CTextString t("abc"); t.Append("de"); return Bytes(t); }, "de"},
        {"grow", [] { CTextString t("abc"); FailAllocation(1); t.Append(std::string(20, 'x').c_str()); return Bytes(t); }, "abc"},
        {"assign chars", [] { CTextString t("abc"); FailAllocation(1); t.Assign(std::string(20, 'x').c_str());
                              return Bytes(t) + (t.HasAllocation() ? "+" : "-"); }, "-"},
        {"assign string", [] { CTextString t("abc"), big(std::string(20, 'x').c_str()); FailAllocation(1);
                               t.Assign(big); return Bytes(t) + (t.HasAllocation() ? "+" : "-"); }, "-"},
        {"reserve", [] { CTextString t("abc"); FailAllocation(1); return Bytes(t) + (t.Reserve(99, true) ? "+" : "-"); }, "abc-"},
        {"big-endian", [] { FailAllocation(1); CTextString t("abc"); FailAllocation(1); t.AssignBigEndian16(0x4142);
                            return Bytes(t.AssignBigEndian32(0x41424344)); }, "ABCD"},
        {"left, right, concat", [] { CTextString t("abc"); FailAllocation(1); const CTextString l = t.Left(2);
                                     FailAllocation(1); const CTextString r = t.Right(2); FailAllocation(1);
                                     const CTextString c = t.Concat("d");
                                     return Bytes(l) + Bytes(r) + Bytes(c) + Bytes(t.Concat(t)); }, "abcabc"},
        {"replace's search", [] { CTextString t("abc"); FailAllocation(1); t.Replace("b", "xx"); return Bytes(t); }, "abc"},
        {"replace's replacement", [] { CTextString t("abc"); FailAllocation(2); t.Replace("b", "xx"); return Bytes(t); }, "abc"},
        {"replace without table", [] { CTextString t("abcbc"), s("bc"), r("x"); FailAllocation(1); t.Replace(s, r);
                                       return Bytes(t) + (s.SkipTable() ? "+" : "-"); }, "axx-"},
        {"in place: the table only", [] { CTextString t("abababa"), s("ab"), r("xy"); FailAllocation(0); t.Replace(s, r);
                                          return Bytes(t) + std::to_string(AllocationsMade()); }, "xyxyxya1"},
        {"list entry", [] { CChain<CTextString> c; const CTextString a("a"); std::string r;
                            for (long nth : {1, 2, 3, 4}) { FailAllocation(nth); r += InsertEntry(c, a) ? "+" : "-"; }
                            return r + std::to_string(c.Count()); }, "---+1"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.run(), row.result) << row.what;
        FailAllocation(0);
    }
}
