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

std::string ReplaceAll(const std::string& s, const std::string& from, const std::string& to)
{
    std::string out;
    std::size_t at = 0;
    for (std::size_t hit; (hit = s.find(from, at)) != std::string::npos; at = hit + from.size())
        out += s.substr(at, hit - at) + to;
    return out + s.substr(at);
}

}  // namespace

TEST(TextString, RandomEditsAndQueriesAgreeWithStdString)
{
    std::mt19937 random(1);
    const std::string alphabet("aAbB \0\xE9[z{", 10);
    auto piece = [&](unsigned most) {
        std::string s(random() % (most + 1), ' ');
        for (char& c : s)
            c = alphabet[random() % alphabet.size()];
        return s;
    };
    auto upper = [](std::string s) {
        for (char& c : s)
            c = static_cast<char>(c >= 'a' && c <= 'z' ? c - 32 : c);
        return s;
    };
    CTextString text(0);   // the first allocation of the run: no failure is armed yet
    std::string model;
    ASSERT_TRUE(text.HasAllocation());
    for (int run = 0; run < 2000; ++run) {
        int n = static_cast<int>(model.size()), k = static_cast<int>(random() % (n + 3)) - 1;   // -1 to n + 1
        const std::string a = piece(5), b = run % 4 ? piece(3) : model.substr(0, random() % 4), search = k % 2 ? b : b.c_str(), with = k % 2 ? a : a.c_str();
        const int low = k % 2 ? 0 : 'A', high = k % 2 ? ' ' : 'a';
        auto trimmed = [&](char c) { return (c & 0xFF) >= low && (c & 0xFF) <= high; };
        std::string even;
        switch (random() % 11) {
        case 0: text.Append(Make(a)); model += a; break;
        case 1: text.Append((a + b).c_str()); model += (a + b).c_str(); break;
        case 2: text.KeepRight(k); model = k <= 0 ? "" : model.substr(n - std::min(k, n)); break;
        case 3: text.Truncate(k + 1); model.resize(std::min(k + 1, n)); break;
        case 4: text.Assign(a.c_str()); model = a.c_str(); break;
        case 5: text.Assign(Make(a + b)); model = a + b; break;
        case 6: b.empty() ? text.MakeEmpty() : (void)text.AssignChar(b[0]); model = b.substr(0, 1); break;
        case 9: {   // in place, only where all of b lies within the text
            const bool fits = k >= 0 && k + b.size() <= model.size();
            ASSERT_EQ(text.OverwriteBytes(k, b.data(), static_cast<int>(b.size())), fits);
            if (fits)
                model.replace(static_cast<std::size_t>(k), b.size(), b);
            break;
        }
        case 7:
            ASSERT_TRUE(text.CollapseWide());   // the bytes at even offsets, less one zero byte at the end
            for (std::size_t i = 0; i < model.size(); i += 2)
                even += model[i];
            model = even.empty() || even.back() ? even : even.substr(0, even.size() - 1);
            break;
        case 8:
            if (!search.empty())
                k % 2 ? text.Replace(Make(search), Make(with)) : text.Replace(search.c_str(), with.c_str());
            model = search.empty() ? model : ReplaceAll(model, search, with);
            break;
        default:
            (k % 3 == 0 ? TrimLeft : k % 3 == 1 ? TrimRight : Trim)(text, low, high);
            while (k % 3 != 1 && !model.empty() && trimmed(model.front()))
                model.erase(0, 1);
            while (k % 3 != 0 && !model.empty() && trimmed(model.back()))
                model.pop_back();
        }
        ASSERT_EQ(Bytes(text), model) << run;
        ASSERT_EQ(text.Text()[text.Length()], 0);

        n = static_cast<int>(model.size());
        const std::string p = run % 3 ? piece(3) : model.substr(random() % (n + 1), random() % 5);   // often found
        const CTextString pattern = Make(p);
        ASSERT_TRUE(run % 2 || pattern.BuildSkipTable());
        const int found = k < 0 || k >= n ? -1 : static_cast<int>(model.find(p, static_cast<std::size_t>(k)));
        EXPECT_EQ(text.Find(p.data(), k, static_cast<int>(p.size())), found) << model << '|' << p << '|' << k;
        EXPECT_EQ(text.Find(pattern, k), found) << model << '|' << p << '|' << k;
        EXPECT_EQ(text.Compare(p.data(), static_cast<int>(p.size())), std::clamp(model.compare(p), -1, 1));
        EXPECT_EQ(text.CompareTo(pattern, true), std::clamp(upper(model).compare(upper(p)), -1, 1));
        EXPECT_EQ(text.Equals(pattern) * 2 + text.Equals(p.c_str()), (model == p) * 2 + (model == p.c_str()));
        EXPECT_EQ(Bytes(text.Left(k)) + "|" + Bytes(text.Right(k)), model.substr(0, std::clamp(k, 0, n)) + "|" +
                                                                      model.substr(n - std::clamp(k, 0, n)));
    }
}

// Sizes of allocations, and where the cursor stands, after each operation on "abcde" with 16;
// "~" marks a text without its terminator.
TEST(TextString, CapacitiesAndTheCursor)
{
    const std::tuple<std::function<void(CTextString&)>, std::string, int, int> rows[] = {
        {[](CTextString& t) { t.KeepRight(2).AppendChar('f'); }, "def", 16, 0},
        {[](CTextString& t) { t.KeepRight(2).Assign("xyz"); }, "xyz", 16, 0},
        {[](CTextString& t) { t.KeepRight(2).Assign(CTextString("xyz")); }, "xyz", 16, 0},
        {[](CTextString& t) { t.KeepRight(2).AssignChar('q'); }, "q", 16, 0},
        {[](CTextString& t) { t.KeepRight(2).MakeEmpty(); }, "", 16, 0},
        {[](CTextString& t) { t.KeepRight(0); }, "", 16, 0},
        {[](CTextString& t) { t.KeepRight(3); TrimRight(t, 'a', 'e'); }, "", 16, 0},
        {[](CTextString& t) { t.AppendBytes(nullptr, 0); (void)t.OverwriteBytes(5, nullptr, 0); }, "abcde", 16, 0},
        {[](CTextString& t) { t.KeepRight(1).Append(std::string(20, 'x').c_str()); }, "e" + std::string(20, 'x'), 37, 0},
        {[](CTextString& t) { t.Assign(CTextString(std::string(20, 'x').c_str())).AppendChar('y'); }, std::string(20, 'x') + "y", 37, 0},
        {[](CTextString& t) { t.Assign(CTextString(std::string(20, 'x').c_str())).KeepRight(5).AppendChar('y'); }, "xxxxxy", 21, 0},
        {[](CTextString& t) { t.Assign("0123456789abcdef"); }, "0123456789abcdef", 17, 0},
        {[](CTextString& t) { (void)t.Reserve(6, false, true); t.Assign(CTextString("abcdef")); }, "abcdef", 7, 0},
        {[](CTextString& t) { (void)t.Reserve(1, false, true); t.Assign("abcdef"); }, "abcdef", 16, 0},
        {[](CTextString& t) { t.Append(std::string(995, 'x').c_str()); }, "abcde" + std::string(995, 'x'), 1100, 0},
        {[](CTextString& t) { (void)t.Reserve(1, false, true); }, "", 4, 0},
        {[](CTextString& t) { (void)t.Reserve(5, true, true); }, "abcd", 5, 0},
        {[](CTextString& t) { (void)t.Reserve(7, true, true); }, "abcde", 7, 0},
        {[](CTextString& t) { (void)t.Reserve(16, false, false); }, "abcde", 16, 0},
        {[](CTextString& t) { (void)t.Reserve(4, true, true); t.AssignBigEndian16(0x4142); }, "AB", 4, 0},
        {[](CTextString& t) { (void)t.Reserve(6, true, true); t.AssignBigEndian32(0x41424344); }, "ABCD", 6, 0},
        {[](CTextString& t) { (void)t.KeepRight(2).Reserve(16, true, true); }, "de", 16, 0},
        {[](CTextString& t) { (void)t.KeepRight(2).Reserve(10, false, false); }, "ab~", 16, 0},
        {[](CTextString& t) { (void)t.Reserve(16, false); }, "", 32, 0},
        {[](CTextString& t) { (void)t.Reserve(200, true); }, "abcde", 220, 0},
        {[](CTextString& t) { t.Append(std::string(45, 'x').c_str()).KeepRight(2); (void)t.Reserve(18, true); }, "xx", 66, 0},
        {[](CTextString& t) { t.KeepRight(4).AssignBigEndian16(0x1234); }, "\x12\x34", 15, 1},
        {[](CTextString& t) { t.KeepRight(4); TrimLeft(t, 'a', 'c'); }, "de", 13, 3},
        {[](CTextString& t) { t.Replace(Make(std::string(1, '\0')), Make("z")); }, "abcde", 16, 0},   // not the terminator
    };
    for (const auto& [op, bytes, capacity, cursor] : rows) {
        CTextString text("abcde");
        op(text);
        EXPECT_EQ(Bytes(text) + (text.Text()[text.Length()] ? "~" : "") + "|" + std::to_string(text.Capacity()) + "|" +
                      std::to_string(text.CursorOffset()),
                  bytes + "|" + std::to_string(capacity) + "|" + std::to_string(cursor));
    }
    // Made whole: each constructor's text, terminated, and its capacity; results sized from the
    // capacity constructor.
    const CTextString big(std::string(20, 'x').c_str());
    std::string made;
    for (const CTextString& text : {CTextString(0), CTextString(-1), CTextString('y'), CTextString(""),
                                    CTextString(static_cast<const char*>(nullptr)), CTextString(big), big.Concat(big),
                                    big.Concat(big.Text()), big.Left(20), big.Right(19)})
        made += std::string(text.Text()) + ":" + std::to_string(text.Capacity()) + " ";
    const std::string x20(20, 'x');
    EXPECT_EQ(big.Find(x20.data(), 2, 20), -1);   // a search that would end past the allocation
    MinimumCapacity = 0;   // without the minimum, a default string has room for its terminator alone
    EXPECT_EQ(CTextString().Capacity(), 1);
    MinimumCapacity = 16;
    EXPECT_EQ(made, ":17 :17 y:16 :16 :16 " + x20 + ":21 " + x20 + x20 + ":42 " + x20 + x20 + ":42 " + x20 + ":21 " + x20.substr(1) + ":20 ");
}

TEST(TextString, FormatIntegerAndInput)
{
    const std::pair<const char*, CTextString> formats[] = {
        {"0", FormatInteger(0, true, 0)}, {"999", FormatInteger(999u, true, 0)}, {"1,000", FormatInteger(1000u, true, 0)},
        {"1,234,567", FormatInteger(1234567, true, 0)}, {"1234567", FormatInteger(1234567u, false, 0)},
        {"00042", FormatInteger(42u, false, 5)}, {"001,234", FormatInteger(1234u, true, 7)}, {"-005", FormatInteger(-5, false, 3)},
        {"4,294,967,295", FormatInteger(4294967295u, true, 0)}, {"-2,147,483,648", FormatInteger(INT_MIN, true, 0)},
    };
    for (const auto& [expected, formatted] : formats)
        EXPECT_EQ(Bytes(formatted), expected);

    std::FILE* stream = std::tmpfile();
    ASSERT_TRUE(stream && std::fwrite("\r\n\r\nabc\r\nd\n\0x\nz", 1, 15, stream) == 15);
    std::rewind(stream);
    std::string lines;
    for (CTextString line(0); line.ReadLine(stream) || (lines += std::to_string(line.Length()), false);)
        lines += Bytes(line) + '|';
    EXPECT_EQ(lines, std::string("abc|d|\0x|z|0", 12));
    EXPECT_EQ(CTextString("z").WriteTo(stream) * 2 + CTextString("").WriteTo(stream), 2);
    std::fclose(stream);

    // Through file handles: a read grows the allocation as it needs, keeps one big enough and
    // ends the text; a failed one leaves it empty.
    const std::string path = testing::TempDir() + "text-handles";
    CTextString read(0);
    FileHandle file = CreateFileForWriting(path.c_str());
    EXPECT_EQ(CTextString("abc").WriteToHandle(file), 3);
    for (int n : {40, 10}) {
        EXPECT_TRUE(CloseFile(file) && (file = OpenFileForReading(path.c_str())) != InvalidFileHandle);
        EXPECT_EQ(read.ReadFromHandle(file, n), 3);
    }
    EXPECT_EQ(std::string(read.Text()) + ":" + std::to_string(read.Capacity()), "abc:41");
    FailAllocation(1);
    EXPECT_EQ(read.ReadFromHandle(file, 100) + read.WriteToHandle(file), -2);   // no memory; a handle for reading
    FailAllocation(0);
    EXPECT_TRUE(CloseFile(file) && DeleteFileAt(path.c_str()));
    EXPECT_EQ(read.ReadFromHandle(file, 5), -1);   // the handle is closed
    EXPECT_EQ(std::string(read.Text()) + std::to_string(read.Length()), "0");
    std::string letters;   // the letters of the drive names
    for (int c = 0; c < 256; ++c)
        letters += IsLetter(static_cast<unsigned char>(c)) ? std::string(1, static_cast<char>(c)) : "";
    EXPECT_EQ(letters, "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
}

// Each operation with its next allocation failed (or the one after): what it leaves.
TEST(TextString, FailedAllocations)
{
    const std::pair<std::function<std::string()>, std::string> rows[] = {
        {[] { FailAllocation(1); CTextString t("abc"); t.Truncate(0); t.AppendBytes(nullptr, 0).Append("de"); return Bytes(t); }, "de"},
        {[] { CTextString t("abc"); FailAllocation(1); return Bytes(t.Append(std::string(20, 'x').c_str())); }, "abc"},
        {[] { CTextString t("abc"); FailAllocation(1); t.Assign(std::string(20, 'x').c_str()); return Bytes(t) + (t.HasAllocation() ? "+" : "-"); }, "-"},
        {[] { CTextString t("abc"), big(std::string(20, 'x').c_str()); FailAllocation(1); t.Assign(big); return Bytes(t) + (t.HasAllocation() ? "+" : "-"); }, "-"},
        {[] { CTextString t("abc"); FailAllocation(1); return Bytes(t) + (t.Reserve(99, true) ? "+" : "-"); }, "abc-"},
        {[] { FailAllocation(1); CTextString t("abc"); (void)t.Reserve(8, true, false); return t.Text() + std::to_string(t.Length()); }, "0"},
        {[] { FailAllocation(1); const CTextString none("x"); CTextString t("abc"); return Bytes(t.Assign(none)); }, ""},
        {[] { FailAllocation(1); CTextString t("abc"); FailAllocation(1); t.AssignBigEndian16(0x4142); t.AssignChar('x'); return Bytes(t) + std::to_string(t.Capacity()); }, "x18"},
        {[] { CTextString t("abcde"), s("0123456789ABCDE"); FailAllocation(0); t.Assign("0123456789abcde").Assign(s);
              return Bytes(t) + std::to_string(AllocationsMade()); }, "0123456789ABCDE0"},
        {[] { CTextString t("abc"); FailAllocation(1); const CTextString l = t.Left(2); FailAllocation(1); const CTextString r = t.Right(2);
              FailAllocation(1); const CTextString c = t.Concat("d"); return Bytes(l) + Bytes(r) + Bytes(c) + Bytes(t.Concat(t)); }, "abcabc"},
        {[] { CTextString t("abc"); FailAllocation(2); t.Replace("b", "xx"); return Bytes(t); }, "abc"},
        {[] { CTextString t("abcbc"), s("bc"), r("x"); FailAllocation(1); t.Replace(s, r); return Bytes(t) + (s.SkipTable() ? "+" : "-"); }, "axx-"},
        {[] { const CTextString p("ab"); FailAllocation(1); const bool first = p.BuildSkipTable(); return std::string(first ? "+" : "-") +
              (p.BuildSkipTable() ? "+" : "-"); }, "-+"},
        {[] { CTextString t("abababa"), s("ab"), r("xy"); FailAllocation(0); t.Replace(s, r); return Bytes(t) + std::to_string(AllocationsMade()); }, "xyxyxya1"},
        {[] { CChain<CTextString> c; const CTextString a("a"); std::string r;
              for (long nth : {1, 2, 3, 4}) { FailAllocation(nth); r += InsertEntry(c, a) ? "+" : "-"; }
              return r + std::to_string(c.Count()) + std::to_string(c.Head()->tag); }, "---+10"},
        {[] { std::FILE* f = std::tmpfile(); std::fputs("a line longer than its first allocation\n", f); std::rewind(f);
              CTextString line(0); FailAllocation(1); const bool read = line.ReadLine(f); const bool end = std::feof(f);
              std::fclose(f); return std::to_string(read) + std::to_string(end); }, "00"},   // a byte not kept: short of the end
    };
    for (const auto& [run, result] : rows) {
        EXPECT_EQ(run(), result);
        FailAllocation(0);
    }
}
