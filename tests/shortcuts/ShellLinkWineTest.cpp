// CLinkDropTarget on real shortcut files through the shell's link object, under Wine: what
// one object writes, a fresh one reads back, by a plain name and by one above the code page.

#include <windows.h>
#include <objbase.h>

#include "shortcuts/LinkDropTarget.h"
#include "tests/files/FilesFixture.h"

namespace {

// target|arguments|working folder|icon,index as a fresh link object loads them.
std::string Loaded(const CTextString& widePath)
{
    CLinkDropTarget link;
    link.m_linkPath.Assign(widePath);
    if (!link.InitLinkInterfaces() || !link.LoadLink())
        return "not loaded";
    return Bytes(link.m_linkTarget) + "|" + Bytes(link.m_linkArgs) + "|" + Bytes(link.m_linkWorkDir) + "|" +
           Bytes(link.m_linkIconPath) + "," + std::to_string(link.m_linkIconIndex);
}

}  // namespace

TEST_F(FilesFixture, AShortcutsRoadReadsBackByteForByte)
{
    ASSERT_TRUE(SUCCEEDED(CoInitialize(nullptr)));
    WriteFile("Sim/sim.exe", "MZ");
    WriteFile("Zelmar/Zelmar.exe", "MZ");
    const std::string sim = Full("Sim\\sim.exe"), parent = Full("Zelmar\\Zelmar.exe");
    CChain<CTextString> profiles;
    ASSERT_TRUE(InsertEntry(profiles, Make("Flight")));
    for (const char16_t* name : {u"Sim.lnk", u"\u4E2D.lnk"}) {
        CLinkDropTarget link;
        for (char16_t unit : std::u16string(base.begin(), base.end()) + u"\\" + name)
            link.m_linkPath.AppendBytes(&unit, 2);
        link.m_linkPath.AppendChar('\0');
        ASSERT_TRUE(link.InitLinkInterfaces());
        EXPECT_EQ(Loaded(link.m_linkPath), "not loaded");
        ASSERT_TRUE(link.SaveRestored(Make(sim), Make(Full("Sim")), Make("-c \"a b\"")));   // a new plain shortcut
        if (name[0] == u'S')   // a read-only shortcut loads, and stays writable
            SetFileAttributesA(Full("Sim.lnk").c_str(), FILE_ATTRIBUTE_READONLY);
        ASSERT_TRUE(link.LoadLink());
        EXPECT_EQ(Loaded(link.m_linkPath), sim + "|-c \"a b\"|" + Full("Sim") + "|" + sim + ",0");
        ASSERT_TRUE(link.SaveEnhanced(Make(parent), link.m_linkTarget, link.m_linkWorkDir, Make("-c [a b]"), profiles));
        EXPECT_EQ(Loaded(link.m_linkPath), parent + "|profile=\"Flight\" target=\"" + sim + "\" targetDir=\"" + Full("Sim") +
                                               "\" args=\"-c [a b]\"|" + Full("Zelmar") + "|" + sim + ",0");
        ASSERT_TRUE(link.SaveRestored(Make(sim), Make(""), Make("")));
        EXPECT_EQ(Loaded(link.m_linkPath), sim + "|||" + sim + ",0");
    }
    EXPECT_EQ(GetFileAttributesA(Full("Sim.lnk").c_str()) & FILE_ATTRIBUTE_READONLY, 0u);
    CoUninitialize();
}
