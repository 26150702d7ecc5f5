// The shortcut engine's texts and files: the enhanced line, QuoteChars.txt, the registry and
// its report, and what a drag offers.

#include <memory>

#include "shortcuts/ArgumentLine.h"
#include "shortcuts/LinkDropTarget.h"
#include "shortcuts/QuoteChars.h"
#include "shortcuts/ShortcutList.h"
#include "tests/files/FilesFixture.h"
#include "text/Allocation.h"

namespace {

std::string Joined(const CChain<CTextString>& chain)
{
    std::string joined;
    for (CChainNode<CTextString>* node = chain.Head(); node; node = node->next)
        joined += Bytes(*node->payload) + "|";
    return joined;
}

// UTF-16 units low byte first, and the one zero byte of the wide path form unless bare.
std::string Wide(const std::u16string& text, bool bare = false)
{
    std::string bytes;
    for (char16_t unit : text)
        bytes += std::string{static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)};
    return bare ? bytes : bytes + '\0';
}

}  // namespace

TEST(ArgumentLine, SplitComposeAndTakeApart)
{
    const std::pair<const char*, const char*> tokens[] = {
        {" \t\r\n ", ""}, {"\"\"", ""}, {"\"\" a", "a|"}, {" a  b\x01" "c !", "a|b|c|!|"}, {"x\"a b\"y \"c d", "xa b|y|c d|"},
    };
    CChain<CTextString> chain, profiles;
    for (const auto& [source, joined] : tokens) {
        Tokenize(CTextString(source), chain);
        EXPECT_EQ(Joined(chain), joined) << source;
    }
    const CTextString two(("a " + std::string(20, 'b')).c_str());   // each allocation failed in turn
    std::string answers;
    for (long nth = 1; nth <= 8; ++nth, FailAllocation(0)) {
        FailAllocation(nth);
        answers += Tokenize(two, chain) ? "+" : "-";
    }
    EXPECT_EQ(answers, "-+---+--");   // a token that lost its first allocation grows one
    Tokenize(Make(std::string("\0 a \t\0 b  ", 10)), chain);   // a run of blanks costs no token
    EXPECT_EQ(AllocationsMade(), 10);
    // line; then the profiles, target, working folder and arguments taken from it ("-": untouched)
    const std::pair<const char*, const char*> lines[] = {
        {"profile=\"A\" profile=\"B b\" target=\"C:\\x.exe\" targetDir=\"C:\\\" args=\"-f [a b]\"", "A|B b|;C:\\x.exe;C:\\;-f [a b]"},
        {"TARGET=\"x\" targetDirX=\"y\" Xrofile=\"q\" args=\"a b", ";x;-;a b"},
        {"profile=\"\" targetDir= Profile=P target=old target=new", "P|;new;;-"},
        {"", ";-;-;-"},
    };
    for (const auto& [line, fields] : lines) {
        CTextString target("-"), workDir("-"), args("-");
        profiles.Clear();
        TakeApartArguments(CTextString(line), chain, profiles, target, workDir, args);
        EXPECT_EQ(Joined(profiles) + ";" + Bytes(target) + ";" + Bytes(workDir) + ";" + Bytes(args), fields) << line;
        if (line == lines[0].first || !line[0]) {   // the canonical line comes back from its fields
            EXPECT_EQ(Bytes(ComposeArguments(target, workDir, args, profiles)), line[0] ? line : " target=\"-\" targetDir=\"-\" args=\"-\"");
        }
    }
    profiles.Clear();
    EXPECT_EQ(Bytes(ComposeArguments(CTextString(""), CTextString(""), CTextString(""), profiles)), " target=\"\"");

    // arguments, the quote pair, and their substituted form; restoring gives the arguments back
    const std::tuple<const char*, char, char, const char*> quotes[] = {
        {"\"a b\" c \"d", '[', ']', "[a b] c [d"}, {"x\"\"", '{', '}', "x{}"}, {"-q \"a\"", '"', '"', "-q \"a\""},
    };
    for (const auto& [original, left, right, substituted] : quotes) {
        CTextString args(original);
        SubstituteQuotes(args, left, right);
        EXPECT_EQ(Bytes(args), substituted);
        RestoreQuotes(args, left, right);
        EXPECT_EQ(Bytes(args), original);
    }
    CTextString spaced("a b");
    RestoreQuotes(spaced, ' ', '#');
    EXPECT_EQ(Bytes(spaced), "a\"b");
    for (long nth : {1, 2, 3}) {   // no memory for one of its one-byte texts: false, nothing replaced
        CTextString args("[a]");
        FailAllocation(nth);
        EXPECT_FALSE(RestoreQuotes(args, '[', ']'));
        FailAllocation(0);
        EXPECT_EQ(Bytes(args), "[a]");
    }
}

TEST_F(FilesFixture, QuoteCharsFile)
{
    const std::pair<std::string, const char*> rows[] = {   // the file ("-": none), and the pair read, whole
        {"-", "[]"}, {"leftargquote={\r\nRIGHTARGQUOTE=}", "{}"}, {"LeftArgQuote=   \nRightArgQuote=<>\nRightArgQuote=)", "[)"},
        {std::string("\0 LeftArgQuote= x", 17), " ]"}, {"Left=x\n\nLeftArgQuote\nQuote=y", "[]"},
    };
    for (const auto& [file, pair] : rows) {
        if (file != "-")
            WriteFile("QuoteChars.txt", file);
        char quotes[] = "[]";
        EXPECT_TRUE(ReadQuoteChars(Make(file[0] == 'L' ? base + "\\" : base), quotes[0], quotes[1]));
        EXPECT_EQ(std::string(quotes), pair);
    }
    // With each allocation failed in turn: the pair of a file read to its end, or not whole.
    WriteFile("QuoteChars.txt", "RightArgQuote=)" + std::string(30, ' ') + "\nLeftArgQuote={");
    std::string answers;
    for (long nth = 1; nth <= 9; ++nth, FailAllocation(0)) {
        char left = '[', right = ']';
        FailAllocation(nth);
        answers += ReadQuoteChars(Make(base), left, right) ? std::string{left, right, ' '} : "- ";
    }
    EXPECT_EQ(answers, "{) - {) - - {) - - {) ");
}

TEST_F(FilesFixture, ShortcutListAndReport)
{
    const CTextString program = Make(base);
    const std::string above = Wide(u"a\u4E2Db");
    const std::pair<std::string, std::string> loads[] = {
        {"-", "stale|"}, {"", ""}, {Wide(u"b") + Wide(u"A") + Wide(u"a") + Wide(u"b"), Wide(u"A") + "|" + Wide(u"a") + "|" + Wide(u"b") + "|"},
        {above + Wide(u"B") + std::string("c\0d", 3), above + "|" + Wide(u"B") + "|"},
    };
    CChain<CTextString> list;
    for (const auto& [bytes, joined] : loads) {
        if (bytes != "-")
            WriteFile("ShortcutList", bytes);
        list.Clear();
        ASSERT_TRUE(InsertEntry(list, CTextString("stale")));
        LoadList(list, program);
        EXPECT_EQ(Joined(list), joined);
    }
    const std::string report = " currently modified. Do not delete the file \"ShortcutList\" or Zelmardeck\r\n"
                               "will not be able to restore these shortcuts if you uninstall.\r\n";
    list.Clear();
    auto wide = [](const char16_t* path) { return Make(Wide(path)); };
    for (const char16_t* path : {u"b", u"A", u"a"})
        EXPECT_TRUE(AddEntry(list, program, wide(path)));
    // No path, no folder, or a list the disk refuses: the chain and the files as they were.
    std::filesystem::create_directory("ShortcutList.tmp");
    EXPECT_FALSE(AddEntry(list, program, Make("")) || AddEntry(list, Make(""), wide(u"q")) ||
                 AddEntry(list, program, wide(u"c")) || RemoveEntry(list, program, wide(u"b")));
    std::filesystem::remove("ShortcutList.tmp");
    EXPECT_EQ(Joined(list) + ReadFile("ShortcutList") + ReadFile("ShortcutList.txt"),
              Wide(u"A") + "|" + Wide(u"b") + "|" + Wide(u"A") + Wide(u"b") + "2 Shortcuts" + report + "\r\nA\r\nb");
    EXPECT_TRUE(RemoveEntry(list, program, wide(u"B")));
    EXPECT_EQ(ReadFile("ShortcutList") + ReadFile("ShortcutList.txt"), Wide(u"A") + "1 Shortcut" + report + "\r\nA");
    std::filesystem::remove("ShortcutList");
    EXPECT_TRUE(RemoveEntry(list, program, wide(u"zz")));
    EXPECT_FALSE(std::filesystem::exists("ShortcutList"));
    EXPECT_TRUE(RemoveEntry(list, Make(base + "\\"), wide(u"a")));
    EXPECT_EQ(Joined(list) + ReadFile("ShortcutList") + ReadFile("ShortcutList.txt"), "0 Shortcuts" + report);
}

// DROPFILES blocks: a 20-byte header whose first field points behind it, fWide at 16.
TEST(DropReception, FirstNameInWidePathForm)
{
    auto drop = [](bool wide, const std::string& names) {
        return std::string{20, 0, 0, 0} + std::string(12, '\0') + std::string{wide, 0, 0, 0} + names;
    };
    const std::tuple<std::string, int, std::string> rows[] = {   // the block, the effect, m_droppedPath afterwards
        {drop(false, std::string("C:\\a.lnk\0b.txt\0", 16)), DropEffectCopy, Wide(u"C:\\a.lnk")},
        {drop(true, Wide(u"C:\\a.lnk") + '\0'), DropEffectCopy, Wide(u"C:\\a.lnk")},
        {drop(false, std::string("a.txt\0b.lnk\0", 12)), DropEffectNone, Wide(u"a.txt")},
        {drop(false, "GAME.LNK"), DropEffectCopy, Wide(u"GAME.LNK")},
        {drop(true, Wide(u"b.lnk", true)), DropEffectCopy, Wide(u"b.lnk")},
        {drop(true, Wide(u"b.lnk", true) + "x"), DropEffectCopy, Wide(u"b.lnk")},
        {drop(true, Wide(u".LNK")), DropEffectCopy, Wide(u".LNK")},
        {drop(true, Wide(u"a\u0100.lnk")), DropEffectNone, Wide(u"a")},
        {drop(true, "").substr(0, 19), DropEffectNone, ""},
        {drop(true, ""), DropEffectNone, ""},
        {std::string("\x14\x01\1\0", 4) + std::string(12, '\0') + std::string("\0\0\1\0", 4) + std::string(65792, '\0') +
             Wide(u"c.lnk"), DropEffectCopy, Wide(u"c.lnk")},   // all four bytes of both fields count
        {std::string("\4\0\0\0a.lnk", 9) + std::string(11, '\0'), DropEffectCopy, Wide(u"a.lnk")},   // a name in the header
    };
    CLinkDropTarget target;
    target.m_interfacesReady = true;
    for (const auto& [block, effect, path] : rows) {
        const std::unique_ptr<char[]> exact(new char[block.size()]);   // so that a read past its end shows
        std::copy(block.begin(), block.end(), exact.get());
        EXPECT_EQ(target.OnDragEnter(exact.get(), block.size(), 0x0C) * 10 + target.OnDragOver(0), effect * 11) << path;
        EXPECT_EQ(Bytes(target.m_droppedPath), path);
    }
    const std::string& first = std::get<0>(rows[0]);
    EXPECT_EQ(target.OnDragEnter(first.data(), first.size(), 0), DropEffectCopy);
    EXPECT_FALSE(target.OnDrop(DropEffectNone) || target.OnDrop(DropEffectCopy));   // no link object to load with
    EXPECT_TRUE(target.m_linkPath.IsEmpty());
    target.m_interfacesReady = false;
    EXPECT_TRUE(target.OnDragEnter(first.data(), first.size(), 0) == DropEffectNone && target.m_droppedPath.IsEmpty());
}
