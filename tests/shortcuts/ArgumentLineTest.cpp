// The enhanced argument line: splitting, composing, taking apart, and the quote round trip.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "shortcuts/ArgumentLine.h"
#include "text/Allocation.h"

namespace {

std::string Bytes(const CTextString& text)
{
    return std::string(text.Text(), static_cast<std::size_t>(text.Length()));
}

CTextString Make(const std::string& bytes)
{
    CTextString text(0);
    text.AppendBytes(bytes.data(), static_cast<int>(bytes.size()));
    return text;
}

std::vector<std::string> Items(const CChain<CTextString>& chain)
{
    std::vector<std::string> items;
    for (const CChainNode<CTextString>* node = chain.Head(); node; node = node->next)
        items.push_back(Bytes(*node->payload));
    return items;
}

std::vector<std::string> Tokens(const std::string& source)
{
    CChain<CTextString> tokens;
    Tokenize(Make(source), tokens);
    return Items(tokens);
}

// The four values taken apart from a line, as the analysis receives them.
struct TakenApart {
    std::vector<std::string> profiles;
    std::string target;
    std::string workDir;
    std::string args;
};

TakenApart TakeApart(const std::string& line)
{
    CChain<CTextString> tokens, profiles;
    CTextString target(0), workDir(0), args(0);
    TakeApartArguments(Make(line), tokens, profiles, target, workDir, args);
    return {Items(profiles), Bytes(target), Bytes(workDir), Bytes(args)};
}

typedef std::vector<std::string> List;

}  // namespace

TEST(Tokenize, SplitsOnBlanksAndHonoursQuotes)
{
    const struct {
        std::string source;
        List tokens;
    } rows[] = {
        {"", {}},
        {" \t\r\n ", {}},
        {std::string("\0 \0", 3), {}},
        {"\"\"", {}},
        {"\"\" a", {"a"}},
        {"a b\tc", {"a", "b", "c"}},
        {"  lead  and  trail  ", {"lead", "and", "trail"}},
        {"profile=\"A B\"", {"profile=A B"}},
        {"a\"b c\"d", {"ab c", "d"}},
        {"\"open  to the end", {"open  to the end"}},
        {"\"trailing blanks of the line go first  ", {"trailing blanks of the line go first"}},
        {"C:\\x\\y.exe -RestoreAll", {"C:\\x\\y.exe", "-RestoreAll"}},
        {"\xE9t\xE9 \x80", {"\xE9t\xE9", "\x80"}},
        {std::string("a\0b", 3), {"a", "b"}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Tokens(row.source), row.tokens) << row.source;
}

TEST(Tokenize, ReplacesWhatTheChainHeld)
{
    CChain<CTextString> tokens;
    Tokenize(CTextString("one two"), tokens);
    Tokenize(CTextString("three"), tokens);
    EXPECT_EQ(Items(tokens), List{"three"});
    EXPECT_EQ(tokens.Count(), 1);
}

TEST(ComposeArguments, ItemsInOrderAndOnlyWhenGiven)
{
    CChain<CTextString> profiles;
    EXPECT_EQ(Bytes(ComposeArguments(CTextString("C:\\a.exe"), CTextString(""), CTextString(""), profiles)),
              " target=\"C:\\a.exe\"");
    EXPECT_EQ(Bytes(ComposeArguments(CTextString(""), CTextString(""), CTextString(""), profiles)),
              " target=\"\"");

    ASSERT_TRUE(InsertEntry(profiles, CTextString("Flight")));
    ASSERT_TRUE(InsertEntry(profiles, CTextString("Pedals")));
    EXPECT_EQ(Bytes(ComposeArguments(CTextString("C:\\Sim\\sim.exe"), CTextString("C:\\Sim"),
                                     CTextString("-config [C:\\My Files\\a.cfg]"), profiles)),
              "profile=\"Flight\" profile=\"Pedals\" target=\"C:\\Sim\\sim.exe\" targetDir=\"C:\\Sim\" "
              "args=\"-config [C:\\My Files\\a.cfg]\"");
}

TEST(TakeApartArguments, KeysInAnyCaseAndOrder)
{
    const TakenApart canonical =
        TakeApart("profile=\"Flight\" profile=\"Pedals\" target=\"C:\\Sim\\sim.exe\" targetDir=\"C:\\Sim\" "
                  "args=\"-config [a b]\"");
    EXPECT_EQ(canonical.profiles, (List{"Flight", "Pedals"}));
    EXPECT_EQ(canonical.target, "C:\\Sim\\sim.exe");
    EXPECT_EQ(canonical.workDir, "C:\\Sim");
    EXPECT_EQ(canonical.args, "-config [a b]");

    const TakenApart shuffled =
        TakeApart("ARGS=\"-config [a b]\" TargetDir=\"C:\\Sim\" PROFILE=Flight TARGET=\"C:\\Sim\\sim.exe\" "
                  "profile=\"Pedals\"");
    EXPECT_EQ(shuffled.profiles, canonical.profiles);
    EXPECT_EQ(shuffled.target, canonical.target);
    EXPECT_EQ(shuffled.workDir, canonical.workDir);
    EXPECT_EQ(shuffled.args, canonical.args);
}

TEST(TakeApartArguments, EmptyRepeatedAndUnknownItems)
{
    const struct {
        const char* line;
        List profiles;
        const char* target;
        const char* workDir;
        const char* args;
    } rows[] = {
        {"", {}, "", "", ""},
        {"target=\"\" profile=\"\"", {}, "", "", ""},
        {"target=\"a\" target=\"\"", {}, "", "", ""},
        {"target=\"a\" target=\"b\"", {}, "b", "", ""},
        {"profile=A profile=A profile=B", {"A", "A", "B"}, "", "", ""},
        {"args=\"a b", {}, "", "", "a b"},
        {"targetDirX=\"y\" targetDir=\"d\" targetDir=", {}, "", "", ""},
        {"targetDirX=\"y\" targetDir=\"d\"", {}, "", "d", ""},
        {"targ=x profil=y arg z", {}, "", "", ""},
        {"args=\"  keep  spaces \"", {}, "", "", "  keep  spaces "},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        const TakenApart taken = TakeApart(row.line);
        EXPECT_EQ(taken.profiles, row.profiles);
        EXPECT_EQ(taken.target, row.target);
        EXPECT_EQ(taken.workDir, row.workDir);
        EXPECT_EQ(taken.args, row.args);
    }
}

TEST(Quotes, SubstituteAlternatesAndRestoreUndoes)
{
    const struct {
        const char* args;
        const char* substituted;
        const char* restored;
    } rows[] = {
        {"\"a b\" c \"d", "[a b] c [d", "\"a b\" c \"d"},
        {"no quotes", "no quotes", "no quotes"},
        {"\"\"\"\"", "[][]", "\"\"\"\""},
        {"-x [1]", "-x [1]", "-x \"1\""},
        {"", "", ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.args);
        CTextString args(row.args);
        SubstituteQuotes(args, '[', ']');
        EXPECT_EQ(Bytes(args), row.substituted);
        CTextString copy(args);
        RestoreQuotes(copy, '[', ']');
        EXPECT_EQ(Bytes(copy), row.restored);
    }
}

// What Save followed by Restore gives back: compose, take apart, restore the quotes.
TEST(Quotes, RoundTripThroughTheLine)
{
    const struct {
        const char* target;
        const char* workDir;
        const char* args;
        char left;
        char right;
    } rows[] = {
        {"C:\\Program Files\\Game\\game.exe", "C:\\Program Files\\Game", "-window \"C:\\My Saves\" -x", '[', ']'},
        {"C:\\a.exe", "", "", '[', ']'},
        {"C:\\a.exe", "", "  spaced  \"q\"  ", '{', '}'},
        {"", "D:\\", "\"odd", '<', '>'},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.args);
        CTextString args(row.args);
        SubstituteQuotes(args, row.left, row.right);
        CChain<CTextString> profiles;
        ASSERT_TRUE(InsertEntry(profiles, CTextString("Profile One")));
        const CTextString line = ComposeArguments(CTextString(row.target), CTextString(row.workDir), args, profiles);

        const TakenApart taken = TakeApart(Bytes(line));
        EXPECT_EQ(taken.profiles, List{"Profile One"});
        EXPECT_EQ(taken.target, row.target);
        EXPECT_EQ(taken.workDir, row.workDir);
        CTextString restored = Make(taken.args);
        RestoreQuotes(restored, row.left, row.right);
        EXPECT_EQ(Bytes(restored), row.args);
    }
}

namespace {

struct NoFailureAfterwards : ::testing::Test {
    ~NoFailureAfterwards() override { FailAllocation(0); }
};
typedef NoFailureAfterwards ArgumentLineAllocationFailure;

// Runs work with the 1st, 2nd, ... allocation failing, until a run makes no allocation that
// fails; check sees the outcome of each run. Gives the number of runs in which one failed.
template <class Work, class Check>
long FailEachAllocation(Work work, Check check)
{
    for (long nth = 1;; ++nth) {
        SCOPED_TRACE(nth);
        FailAllocation(nth);
        auto outcome = work();
        const bool failed = AllocationsMade() >= nth;
        FailAllocation(0);
        check(outcome, failed);
        if (!failed)
            return nth - 1;
    }
}

// True when got is want with at most one item left out.
bool AtMostOneDropped(const List& got, const List& want)
{
    if (got == want)
        return true;
    for (std::size_t skip = 0; skip < want.size(); ++skip) {
        List less = want;
        less.erase(less.begin() + static_cast<long>(skip));
        if (got == less)
            return true;
    }
    return false;
}

}  // namespace

TEST_F(ArgumentLineAllocationFailure, TokenizeDropsOneWholeToken)
{
    const CTextString source("alpha \"bravo charlie delta echo\" foxtrot");
    const List all{"alpha", "bravo charlie delta echo", "foxtrot"};
    const long runs = FailEachAllocation(
        [&] {
            CChain<CTextString> tokens;
            Tokenize(source, tokens);
            return Items(tokens);
        },
        [&](const List& got, bool failed) {
            // Only the copy of the whole source takes every token with it.
            EXPECT_TRUE(AtMostOneDropped(got, all) || got.empty()) << got.size();
            if (!failed) {
                EXPECT_EQ(got, all);
            }
        });
    EXPECT_GT(runs, 10);
}

TEST_F(ArgumentLineAllocationFailure, TakeApartDropsOneItem)
{
    const CTextString line("profile=\"A\" profile=\"B\" target=\"T\" targetDir=\"D\" args=\"X\"");
    const List all{"profile A", "profile B", "target T", "workDir D", "args X"};
    const long runs = FailEachAllocation(
        [&] {
            CChain<CTextString> tokens, profiles;
            CTextString target(0), workDir(0), args(0);
            TakeApartArguments(line, tokens, profiles, target, workDir, args);
            List items;
            for (const std::string& profile : Items(profiles))
                items.push_back("profile " + profile);
            if (!target.IsEmpty())
                items.push_back("target " + Bytes(target));
            if (!workDir.IsEmpty())
                items.push_back("workDir " + Bytes(workDir));
            if (!args.IsEmpty())
                items.push_back("args " + Bytes(args));
            return items;
        },
        [&](const List& got, bool failed) {
            EXPECT_TRUE(AtMostOneDropped(got, all) || got.empty()) << got.size();
            if (!failed) {
                EXPECT_EQ(got, all);
            }
        });
    EXPECT_GT(runs, 10);
}
