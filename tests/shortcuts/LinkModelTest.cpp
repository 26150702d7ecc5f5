// CLinkDropTarget's link side on the in-memory link object: the calls made, in order, and
// what each failing step leaves behind.

#include <sys/stat.h>

#include "platform/model/ShellLinkModel.h"
#include "shortcuts/LinkDropTarget.h"
#include "tests/files/FilesFixture.h"

using namespace ShellLinkModel;

namespace {

LinkFile Plain()
{
    LinkFile file;
    file.path = "C:\\Sim\\sim.exe";
    file.arguments = "-c \"a b\"";
    file.workDir = "C:\\Sim";
    file.iconIndex = 3;
    file.description = "kept";
    return file;
}

std::string Steps()
{
    std::string steps;
    for (const std::string& call : Calls())
        steps += call + ";";
    return steps;
}

}  // namespace

TEST_F(FilesFixture, LinkOnTheModel)
{
    Reset();
    const std::string key = Wide(Full("Sim.lnk"));
    const std::string full = "C:\\Sim\\sim.exe|-c \"a b\"|C:\\Sim\\sim.exe|C:\\Sim|3";
    CChain<CTextString> profiles;
    ASSERT_TRUE(InsertEntry(profiles, Make("Flight")));
    {
        CLinkDropTarget link;
        EXPECT_FALSE(link.LoadLink() || link.SaveRestored(Make("x"), Make(""), Make("")));
        EXPECT_TRUE(link.InitLinkInterfaces() && link.InitLinkInterfaces() && link.m_interfacesReady);
        link.m_linkPath.Assign(Make(key));
        PutFile(key, Plain());
        ASSERT_TRUE(link.LoadLink());
        ASSERT_TRUE(link.SaveEnhanced(Make("C:\\Z\\Zelmar.exe"), Make("C:\\Sim\\sim.exe"), Make("C:\\Sim"), Make("-c [a b]"), profiles));
        ASSERT_TRUE(link.SaveRestored(Make("C:\\Sim\\sim.exe"), Make(""), Make("-c \"a b\"")));
        link.ReleaseInterfaces();
        EXPECT_EQ(Steps(), "Create;QueryPersistFile;Load " + Full("Sim.lnk") + ";Resolve (nil);GetPath 16383;GetArguments 16383;"
                           "GetIconLocation 16383;GetWorkingDirectory 16383;SetPath C:\\Z\\Zelmar.exe;SetWorkingDirectory C:\\Z;"
                           "SetArguments profile=\"Flight\" target=\"C:\\Sim\\sim.exe\" targetDir=\"C:\\Sim\" args=\"-c [a b]\";"
                           "SetIconLocation C:\\Sim\\sim.exe,3;Save " + Full("Sim.lnk") + ";SetPath C:\\Sim\\sim.exe;"
                           "SetWorkingDirectory ;SetArguments -c \"a b\";Save " + Full("Sim.lnk") + ";ReleasePersistFile;ReleaseShellLink;");
        LinkFile restored = Plain();
        restored.workDir.clear();
        restored.iconPath = restored.path;   // the pair stored by the enhanced save stays
        EXPECT_EQ(GetFile(key), restored);
        EXPECT_EQ(Bytes(link.m_linkTarget) + "|" + Bytes(link.m_linkArgs) + "|" + Bytes(link.m_linkIconPath) + "|" +
                      Bytes(link.m_linkWorkDir) + "|" + std::to_string(link.m_linkIconIndex), full);
    }
    // The step that fails; the fields a load leaves; whether the load, the enhanced and the
    // restored save answer true; how many calls each save makes; how many files were written.
    const struct {
        Step step;
        std::string fields;
        const char* answers;
        int enhancedCalls, restoredCalls, saved;
    } rows[] = {
        {StepCreate, "||||0", "---", 0, 0, 0}, {StepQueryPersistFile, "||||0", "---", 0, 0, 0},
        {StepLoad, "||||0", "-++", 5, 4, 2}, {StepResolve, "||||0", "-++", 5, 4, 2}, {StepGetPath, "||||0", "-++", 5, 4, 2},
        {StepGetArguments, "C:\\Sim\\sim.exe||||0", "-++", 5, 4, 2},
        {StepGetIconLocation, "C:\\Sim\\sim.exe|-c \"a b\"|||0", "-++", 5, 4, 2},
        {StepGetWorkingDirectory, "C:\\Sim\\sim.exe|-c \"a b\"|C:\\Sim\\sim.exe||3", "-++", 5, 4, 2},
        {StepSetPath, full, "+--", 1, 1, 0}, {StepSetWorkingDirectory, full, "+--", 5, 4, 2},
        {StepSetArguments, full, "+--", 5, 4, 2}, {StepSetIconLocation, full, "+-+", 5, 4, 2}, {StepSave, full, "+--", 5, 4, 0},
    };
    for (const auto& row : rows) {
        WriteFile("Sim.lnk", "");
        chmod("Sim.lnk", 0444);
        Reset();
        PutFile(key, Plain());
        FailStep(row.step);
        CLinkDropTarget link;
        (void)link.InitLinkInterfaces();
        link.m_linkPath.Assign(Make(key));
        std::string answers = link.LoadLink() ? "+" : "-";
        const std::size_t loadCalls = Calls().size();
        answers += link.SaveEnhanced(Make("C:\\Z\\Zelmar.exe"), Make("x"), Make(""), Make(""), profiles) ? "+" : "-";
        const std::size_t enhancedCalls = Calls().size() - loadCalls;
        answers += link.SaveRestored(Make("x"), Make(""), Make("")) ? "+" : "-";
        EXPECT_EQ(Bytes(link.m_linkTarget) + "|" + Bytes(link.m_linkArgs) + "|" + Bytes(link.m_linkIconPath) + "|" +
                      Bytes(link.m_linkWorkDir) + "|" + std::to_string(link.m_linkIconIndex), row.fields) << row.step;
        EXPECT_EQ(answers, row.answers) << row.step;
        EXPECT_EQ(enhancedCalls, static_cast<std::size_t>(row.enhancedCalls)) << row.step;
        EXPECT_EQ(Calls().size() - loadCalls - enhancedCalls, static_cast<std::size_t>(row.restoredCalls)) << row.step;
        EXPECT_EQ(SaveCount(key), row.saved) << row.step;
        struct stat facts;
        EXPECT_TRUE(stat("Sim.lnk", &facts) == 0 && (facts.st_mode & S_IWUSR) == (row.step > StepQueryPersistFile ? S_IWUSR : 0u));
    }
    EXPECT_EQ(LiveObjects(), 0);
    // A unit above 0xFF: the attribute calls name no file, the wide path still opens the link.
    CLinkDropTarget wide;
    std::string above = key;
    above[above.size() - 10] = '\x4E';
    PutFile(above, Plain());
    wide.m_linkPath.Assign(Make(above));
    EXPECT_TRUE(wide.InitLinkInterfaces() && wide.LoadLink() && wide.m_linkTarget.Equals("C:\\Sim\\sim.exe"));
}
