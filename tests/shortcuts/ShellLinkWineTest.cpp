// CLinkDropTarget on real shortcut files under Wine: each file is made by the test through
// the shell's IShellLinkA, and read back through a fresh one, so that what is compared is
// what the shell itself sees.

#include <gtest/gtest.h>

#include <windows.h>
#include <objbase.h>
#include <shlobj.h>
#include <shobjidl.h>

#include <filesystem>
#include <string>

#include "shortcuts/LinkDropTarget.h"
#include "tests/shortcuts/ProgramFolder.h"

namespace {

struct Facts {
    std::string target;
    std::string arguments;
    std::string workDir;
    std::string iconPath;   // empty on write: no icon location of its own
    int iconIndex = 0;
};

std::wstring WideOf(const std::string& wideForm)
{
    std::wstring wide;
    for (std::size_t i = 0; i + 1 < wideForm.size(); i += 2)
        wide += static_cast<wchar_t>(static_cast<unsigned char>(wideForm[i]) |
                                     static_cast<unsigned char>(wideForm[i + 1]) << 8);
    return wide;
}

HRESULT Open(IShellLinkA** link, IPersistFile** file)
{
    HRESULT hr = CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkA,
                                  reinterpret_cast<void**>(link));
    if (hr != S_OK)
        return hr;
    hr = (*link)->QueryInterface(IID_IPersistFile, reinterpret_cast<void**>(file));
    if (hr != S_OK)
        (*link)->Release();
    return hr;
}

HRESULT Write(const std::string& wideForm, const Facts& facts)
{
    IShellLinkA* link;
    IPersistFile* file;
    HRESULT hr = Open(&link, &file);
    if (hr != S_OK)
        return hr;
    hr = link->SetPath(facts.target.c_str());
    if (hr == S_OK)
        hr = link->SetArguments(facts.arguments.c_str());
    if (hr == S_OK)
        hr = link->SetWorkingDirectory(facts.workDir.c_str());
    if (hr == S_OK)
        hr = link->SetDescription("Kept across saves");
    if (hr == S_OK && !facts.iconPath.empty())
        hr = link->SetIconLocation(facts.iconPath.c_str(), facts.iconIndex);
    if (hr == S_OK)
        hr = file->Save(WideOf(wideForm).c_str(), TRUE);
    file->Release();
    link->Release();
    return hr;
}

HRESULT Read(const std::string& wideForm, Facts* facts, std::string* description)
{
    IShellLinkA* link;
    IPersistFile* file;
    HRESULT hr = Open(&link, &file);
    if (hr != S_OK)
        return hr;
    char buffer[MAX_PATH * 4];
    hr = file->Load(WideOf(wideForm).c_str(), STGM_READ);
    if (hr == S_OK && link->GetPath(buffer, sizeof buffer, nullptr, 0) == S_OK)
        facts->target = buffer;
    if (hr == S_OK && (hr = link->GetArguments(buffer, sizeof buffer)) == S_OK)
        facts->arguments = buffer;
    if (hr == S_OK && (hr = link->GetWorkingDirectory(buffer, sizeof buffer)) == S_OK)
        facts->workDir = buffer;
    if (hr == S_OK && (hr = link->GetIconLocation(buffer, sizeof buffer, &facts->iconIndex)) == S_OK)
        facts->iconPath = buffer;
    if (hr == S_OK && (hr = link->GetDescription(buffer, sizeof buffer)) == S_OK)
        *description = buffer;
    file->Release();
    link->Release();
    return hr;
}

class ShellLinkWine : public ProgramFolder {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(SUCCEEDED(CoInitialize(nullptr)));
        ProgramFolder::SetUp();
        std::filesystem::create_directories("Sim");
        std::filesystem::create_directories("Zelmar");
        WriteFile("Sim\\sim.exe", "MZ");
        WriteFile("Zelmar\\Zelmar.exe", "MZ");
        plain.target = folder + "\\Sim\\sim.exe";
        plain.arguments = "-config \"C:\\My Files\\a.cfg\"";
        plain.workDir = folder + "\\Sim";
        parent = folder + "\\Zelmar\\Zelmar.exe";
    }

    void TearDown() override
    {
        link.ReleaseInterfaces();
        ProgramFolder::TearDown();
        CoUninitialize();
    }

    // Interfaces and m_linkPath set for the wide path.
    void Point(const std::string& wideForm)
    {
        ASSERT_TRUE(link.InitLinkInterfaces());
        link.m_linkPath.MakeEmpty();
        link.m_linkPath.AppendBytes(wideForm.data(), static_cast<int>(wideForm.size()));
    }

    bool SaveEnhanced(const std::string& args)
    {
        CChain<CTextString> profiles;
        EXPECT_TRUE(InsertEntry(profiles, Make("Flight")));
        EXPECT_TRUE(InsertEntry(profiles, Make("Pedals")));
        return link.SaveEnhanced(Make(parent), link.m_linkTarget, link.m_linkWorkDir, Make(args), profiles);
    }

    Facts plain;
    std::string parent;
    CLinkDropTarget link;
};

}  // namespace

TEST_F(ShellLinkWine, EnhancedAndRestoredShortcutsReadBackByteForByte)
{
    const std::string path = WideForm(folder + "\\Sim.lnk");
    ASSERT_EQ(S_OK, Write(path, plain));
    Point(path);
    ASSERT_TRUE(link.LoadLink());
    EXPECT_EQ(plain.target, Bytes(link.m_linkTarget));
    EXPECT_EQ(plain.arguments, Bytes(link.m_linkArgs));
    EXPECT_EQ(plain.workDir, Bytes(link.m_linkWorkDir));
    EXPECT_EQ(plain.target, Bytes(link.m_linkIconPath));   // no icon of its own

    ASSERT_TRUE(SaveEnhanced("-config [C:\\My Files\\a.cfg]"));
    Facts enhanced;
    std::string description;
    ASSERT_EQ(S_OK, Read(path, &enhanced, &description));
    EXPECT_EQ(parent, enhanced.target);
    EXPECT_EQ(folder + "\\Zelmar", enhanced.workDir);
    EXPECT_EQ("profile=\"Flight\" profile=\"Pedals\" target=\"" + plain.target + "\" targetDir=\"" + plain.workDir +
                  "\" args=\"-config [C:\\My Files\\a.cfg]\"",
              enhanced.arguments);
    EXPECT_EQ(plain.target, enhanced.iconPath);
    EXPECT_EQ(link.m_linkIconIndex, enhanced.iconIndex);
    EXPECT_EQ("Kept across saves", description);

    ASSERT_TRUE(link.SaveRestored(Make(plain.target), Make(plain.workDir), Make(plain.arguments)));
    Facts restored;
    ASSERT_EQ(S_OK, Read(path, &restored, &description));
    EXPECT_EQ(plain.target, restored.target);
    EXPECT_EQ(plain.arguments, restored.arguments);
    EXPECT_EQ(plain.workDir, restored.workDir);
    EXPECT_EQ(plain.target, restored.iconPath);   // the explicit pair stays
    EXPECT_EQ("Kept across saves", description);

    // Empty folder and arguments are written as empty, not skipped.
    ASSERT_TRUE(link.SaveRestored(Make(plain.target), Make(""), Make("")));
    ASSERT_EQ(S_OK, Read(path, &restored, &description));
    EXPECT_EQ("", restored.arguments);
    EXPECT_EQ("", restored.workDir);
}

TEST_F(ShellLinkWine, IconLocationOfItsOwnIsKept)
{
    const std::string path = WideForm(folder + "\\Icon.lnk");
    Facts withIcon = plain;
    withIcon.iconPath = folder + "\\Sim\\sim.ico";
    withIcon.iconIndex = 2;
    ASSERT_EQ(S_OK, Write(path, withIcon));
    Point(path);
    ASSERT_TRUE(link.LoadLink());
    EXPECT_EQ(withIcon.iconPath, Bytes(link.m_linkIconPath));
    EXPECT_EQ(2, link.m_linkIconIndex);
    ASSERT_TRUE(SaveEnhanced(""));
    Facts enhanced;
    std::string description;
    ASSERT_EQ(S_OK, Read(path, &enhanced, &description));
    EXPECT_EQ(withIcon.iconPath, enhanced.iconPath);
    EXPECT_EQ(2, enhanced.iconIndex);
}

TEST_F(ShellLinkWine, ReadOnlyShortcutLoadsSavesAndStaysWritable)
{
    const std::string path = WideForm(folder + "\\Locked.lnk");
    ASSERT_EQ(S_OK, Write(path, plain));
    const std::string narrow = folder + "\\Locked.lnk";
    ASSERT_TRUE(SetFileAttributesA(narrow.c_str(), FILE_ATTRIBUTE_READONLY));
    Point(path);
    ASSERT_TRUE(link.LoadLink());
    EXPECT_EQ(0u, GetFileAttributesA(narrow.c_str()) & FILE_ATTRIBUTE_READONLY);
    EXPECT_TRUE(SaveEnhanced("-x"));
    EXPECT_EQ(0u, GetFileAttributesA(narrow.c_str()) & FILE_ATTRIBUTE_READONLY);
}

TEST_F(ShellLinkWine, MissingFileFailsAtLoad)
{
    Point(WideForm(folder + "\\Gone.lnk"));
    EXPECT_FALSE(link.LoadLink());
    EXPECT_FALSE(Exists("Gone.lnk"));
    EXPECT_EQ("", Bytes(link.m_linkTarget));
}

TEST_F(ShellLinkWine, WideNameOpensThroughTheWidePath)
{
    const std::string path = WideForm(std::u16string(folder.begin(), folder.end()) + u"\\\u4E2D.lnk");
    ASSERT_EQ(S_OK, Write(path, plain));
    Point(path);
    ASSERT_TRUE(link.LoadLink());
    EXPECT_EQ(plain.target, Bytes(link.m_linkTarget));
    ASSERT_TRUE(SaveEnhanced(""));
    Facts enhanced;
    std::string description;
    ASSERT_EQ(S_OK, Read(path, &enhanced, &description));
    EXPECT_EQ(parent, enhanced.target);
}
