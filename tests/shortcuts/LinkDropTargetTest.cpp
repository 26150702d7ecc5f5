// CLinkDropTarget's link side on the in-memory link object: the order of the shell calls,
// what each failing step leaves behind, the read-only bit, and the exact enhanced line.

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <string>
#include <vector>

#include "platform/model/ShellLinkModel.h"
#include "shortcuts/LinkDropTarget.h"
#include "tests/shortcuts/ProgramFolder.h"

using namespace ShellLinkModel;

namespace {

typedef std::vector<std::string> Lines;

const char Parent[] = "C:\\Zelmar\\Zelmar.exe";

LinkFile Plain()
{
    LinkFile file;
    file.path = "C:\\Sim\\sim.exe";
    file.arguments = "-config \"C:\\My Files\\a.cfg\"";
    file.workDir = "C:\\Sim";
    file.iconPath = "C:\\Sim\\sim.ico";
    file.iconIndex = 3;
    file.description = "Flight simulator";
    return file;
}

class LinkDropTarget : public ProgramFolder {
protected:
    void SetUp() override
    {
        ProgramFolder::SetUp();
        Reset();
        key = WideForm(folder + "\\Sim.lnk");
        PutFile(key, Plain());
        link.m_linkPath.AppendBytes(key.data(), static_cast<int>(key.size()));
    }

    void TearDown() override
    {
        link.ReleaseInterfaces();
        EXPECT_EQ(0, LiveObjects());
        Reset();
        ProgramFolder::TearDown();
    }

    // Interfaces obtained and the calls so far forgotten.
    void Ready()
    {
        ASSERT_TRUE(link.InitLinkInterfaces());
        Reset();
        PutFile(key, Plain());
    }

    // The names of the calls made, without what they were given.
    static Lines Steps()
    {
        Lines steps;
        for (const std::string& call : Calls())
            steps.push_back(call.substr(0, call.find(' ')));
        return steps;
    }

    bool SaveEnhanced(const std::vector<std::string>& profiles)
    {
        CChain<CTextString> chain;
        for (const std::string& profile : profiles)
            EXPECT_TRUE(InsertEntry(chain, Make(profile)));
        return link.SaveEnhanced(Make(Parent), Make("C:\\Sim\\sim.exe"), Make("C:\\Sim"),
                                 Make("-config [C:\\My Files\\a.cfg]"), chain);
    }

    std::string key;   // wide path of the shortcut
    CLinkDropTarget link;
};

const Lines LoadSteps = {"Load", "Resolve", "GetPath", "GetArguments", "GetIconLocation", "GetWorkingDirectory"};
const Lines EnhancedSteps = {"SetPath", "SetWorkingDirectory", "SetArguments", "SetIconLocation", "Save"};
const Lines RestoredSteps = {"SetPath", "SetWorkingDirectory", "SetArguments", "Save"};

}  // namespace

TEST_F(LinkDropTarget, InterfacesAreTakenOnceAndGivenBackFileFirst)
{
    EXPECT_TRUE(link.InitLinkInterfaces());
    EXPECT_TRUE(link.InitLinkInterfaces());
    EXPECT_EQ(Lines({"Create", "QueryPersistFile"}), Calls());
    EXPECT_TRUE(link.m_interfacesReady);
    EXPECT_EQ(1, LiveObjects());

    link.ReleaseInterfaces();
    link.ReleaseInterfaces();
    EXPECT_EQ(Lines({"Create", "QueryPersistFile", "ReleasePersistFile", "ReleaseShellLink"}), Calls());
    EXPECT_EQ(nullptr, link.m_shellLink);
    EXPECT_EQ(nullptr, link.m_persistFile);
    EXPECT_FALSE(link.LoadLink());
    EXPECT_FALSE(SaveEnhanced({"A"}));
    EXPECT_FALSE(link.SaveRestored(Make("x"), Make(""), Make("")));
    EXPECT_EQ(4u, Calls().size());
}

TEST_F(LinkDropTarget, FailingInterfacesLeaveTheTargetWithoutLinks)
{
    {
        CLinkDropTarget noObject;
        FailStep(StepCreate);
        EXPECT_FALSE(noObject.InitLinkInterfaces());
        EXPECT_FALSE(noObject.m_interfacesReady);
        EXPECT_EQ(nullptr, noObject.m_shellLink);
        EXPECT_FALSE(noObject.LoadLink());
    }
    Reset();
    {
        CLinkDropTarget noFile;
        FailStep(StepQueryPersistFile);
        EXPECT_FALSE(noFile.InitLinkInterfaces());
        EXPECT_FALSE(noFile.m_interfacesReady);
        EXPECT_NE(nullptr, noFile.m_shellLink);
        EXPECT_EQ(nullptr, noFile.m_persistFile);
        EXPECT_FALSE(noFile.LoadLink());
        EXPECT_EQ(1, LiveObjects());
    }
    EXPECT_EQ(0, LiveObjects());
}

TEST_F(LinkDropTarget, LoadReadsEveryFieldThroughOneBuffer)
{
    Ready();
    ASSERT_TRUE(link.LoadLink());
    EXPECT_EQ(Lines({"Load " + folder + "\\Sim.lnk", "Resolve (nil)", "GetPath 16383", "GetArguments 16383",
                     "GetIconLocation 16383", "GetWorkingDirectory 16383"}),
              Calls());
    EXPECT_EQ("C:\\Sim\\sim.exe", Bytes(link.m_linkTarget));
    EXPECT_EQ("-config \"C:\\My Files\\a.cfg\"", Bytes(link.m_linkArgs));
    EXPECT_EQ("C:\\Sim\\sim.ico", Bytes(link.m_linkIconPath));
    EXPECT_EQ(3, link.m_linkIconIndex);
    EXPECT_EQ("C:\\Sim", Bytes(link.m_linkWorkDir));
    EXPECT_EQ(key, Bytes(link.m_linkPath));
}

TEST_F(LinkDropTarget, ShortcutWithoutIconFileShowsItsTarget)
{
    Ready();
    LinkFile file = Plain();
    file.iconPath.clear();
    file.iconIndex = 7;
    PutFile(key, file);
    ASSERT_TRUE(link.LoadLink());
    EXPECT_EQ("C:\\Sim\\sim.exe", Bytes(link.m_linkIconPath));
    EXPECT_EQ(7, link.m_linkIconIndex);

    // Saved enhanced, the pair becomes an explicit icon location, which survives a restore.
    ASSERT_TRUE(SaveEnhanced({"Flight"}));
    ASSERT_TRUE(link.SaveRestored(Make(file.path), Make(file.workDir), Make(file.arguments)));
    EXPECT_EQ("C:\\Sim\\sim.exe", GetFile(key).iconPath);
    EXPECT_EQ(7, GetFile(key).iconIndex);
}

TEST_F(LinkDropTarget, FirstFailingReadEndsTheLoadAndKeepsWhatWasRead)
{
    const struct {
        Step step;
        ShellResult result;
        const char* target;   // what the fields hold afterwards
        const char* args;
        const char* icon;
    } rows[] = {
        {StepLoad, NotFound, "", "", ""},
        {StepResolve, Failed, "", "", ""},
        {StepGetPath, ShellFalse, "", "", ""},
        {StepGetArguments, Failed, "C:\\Sim\\sim.exe", "", ""},
        {StepGetIconLocation, ShellFalse, "C:\\Sim\\sim.exe", "-config \"C:\\My Files\\a.cfg\"", ""},
        {StepGetWorkingDirectory, Failed, "C:\\Sim\\sim.exe", "-config \"C:\\My Files\\a.cfg\"", "C:\\Sim\\sim.ico"},
    };
    for (std::size_t i = 0; i < sizeof rows / sizeof rows[0]; ++i) {
        SCOPED_TRACE(LoadSteps[i]);
        CLinkDropTarget fresh;
        fresh.m_linkPath.AppendBytes(key.data(), static_cast<int>(key.size()));
        ASSERT_TRUE(fresh.InitLinkInterfaces());
        Reset();
        PutFile(key, Plain());
        FailStep(rows[i].step, rows[i].result);
        EXPECT_FALSE(fresh.LoadLink());
        EXPECT_EQ(Lines(LoadSteps.begin(), LoadSteps.begin() + static_cast<long>(i) + 1), Steps());
        EXPECT_EQ(rows[i].target, Bytes(fresh.m_linkTarget));
        EXPECT_EQ(rows[i].args, Bytes(fresh.m_linkArgs));
        EXPECT_EQ(rows[i].icon, Bytes(fresh.m_linkIconPath));
        EXPECT_EQ("", Bytes(fresh.m_linkWorkDir));
    }
}

TEST_F(LinkDropTarget, ReadOnlyBitIsClearedForGoodAndWideNamesOpenWhole)
{
    Ready();
    WriteFile("Sim.lnk", "link");
    chmod("Sim.lnk", 0444);
    FailStep(StepResolve);
    EXPECT_FALSE(link.LoadLink());
    struct stat facts;
    ASSERT_EQ(0, stat("Sim.lnk", &facts));
    EXPECT_NE(0u, facts.st_mode & S_IWUSR);

    // The collapsed form names no file here: nothing is touched, the link still opens.
    Reset();
    const std::string wide = WideForm(folder + u8"\\" + "x.lnk");
    std::string above = wide;
    above[above.size() - 10] = '\x4E';   // the high byte of 'x': U+4E78
    PutFile(above, Plain());
    link.m_linkPath.MakeEmpty();
    link.m_linkPath.AppendBytes(above.data(), static_cast<int>(above.size()));
    EXPECT_TRUE(link.LoadLink());
    EXPECT_EQ("C:\\Sim\\sim.exe", Bytes(link.m_linkTarget));
}

TEST_F(LinkDropTarget, SaveEnhancedStoresTheLineAndKeepsTheRest)
{
    Ready();
    ASSERT_TRUE(link.LoadLink());
    Reset();
    ASSERT_TRUE(SaveEnhanced({"Flight", "Pedals"}));
    EXPECT_EQ(Lines({"SetPath C:\\Zelmar\\Zelmar.exe", "SetWorkingDirectory C:\\Zelmar",
                     "SetArguments profile=\"Flight\" profile=\"Pedals\" target=\"C:\\Sim\\sim.exe\" "
                     "targetDir=\"C:\\Sim\" args=\"-config [C:\\My Files\\a.cfg]\"",
                     "SetIconLocation C:\\Sim\\sim.ico,3", "Save " + folder + "\\Sim.lnk"}),
              Calls());
    const LinkFile saved = GetFile(key);
    EXPECT_EQ(Parent, saved.path);
    EXPECT_EQ("Flight simulator", saved.description);
    EXPECT_EQ("C:\\Sim\\sim.exe", Bytes(link.m_linkTarget));   // fields stay as read

    Reset();
    ASSERT_TRUE(link.SaveRestored(Make("C:\\Sim\\sim.exe"), Make(""), Make("")));
    EXPECT_EQ(Lines({"SetPath C:\\Sim\\sim.exe", "SetWorkingDirectory ", "SetArguments ",
                     "Save " + folder + "\\Sim.lnk"}),
              Calls());
    LinkFile restored = Plain();
    restored.arguments.clear();
    restored.workDir.clear();
    EXPECT_EQ(restored, GetFile(key));
}

TEST_F(LinkDropTarget, OnlyAFailedSetPathStopsASave)
{
    const struct {
        Step step;
        int enhancedSteps;   // calls made by SaveEnhanced
        int restoredSteps;   // calls made by SaveRestored
        bool written;
    } rows[] = {
        {StepSetPath, 1, 1, false},
        {StepSetWorkingDirectory, 5, 4, true},
        {StepSetArguments, 5, 4, true},
        {StepSetIconLocation, 5, 4, true},
        {StepSave, 5, 4, false},
    };
    Ready();
    ASSERT_TRUE(link.LoadLink());
    for (const auto& row : rows) {
        SCOPED_TRACE(row.step);
        Reset();
        PutFile(key, Plain());
        FailStep(row.step);
        EXPECT_FALSE(SaveEnhanced({"A"}));
        EXPECT_EQ(Lines(EnhancedSteps.begin(), EnhancedSteps.begin() + row.enhancedSteps), Steps());
        EXPECT_EQ(row.written ? 1 : 0, SaveCount(key));

        Reset();
        PutFile(key, Plain());
        FailStep(row.step);
        const bool restored = link.SaveRestored(Make("C:\\Sim\\sim.exe"), Make("C:\\Sim"), Make("-x"));
        EXPECT_EQ(row.step == StepSetIconLocation, restored);
        EXPECT_EQ(Lines(RestoredSteps.begin(), RestoredSteps.begin() + row.restoredSteps), Steps());
        EXPECT_EQ(row.written || row.step == StepSetIconLocation ? 1 : 0, SaveCount(key));
    }
}

TEST_F(LinkDropTarget, FailedWorkingFolderStillWritesTheLineAndIcon)
{
    Ready();
    ASSERT_TRUE(link.LoadLink());
    FailStep(StepSetWorkingDirectory);
    EXPECT_FALSE(SaveEnhanced({}));
    const LinkFile saved = GetFile(key);
    EXPECT_EQ(Parent, saved.path);
    EXPECT_EQ("C:\\Sim", saved.workDir);
    EXPECT_EQ(" target=\"C:\\Sim\\sim.exe\" targetDir=\"C:\\Sim\" args=\"-config [C:\\My Files\\a.cfg]\"",
              saved.arguments);
    EXPECT_EQ("C:\\Sim\\sim.ico", saved.iconPath);
}
