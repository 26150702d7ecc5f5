// CLinkDropTarget's link side on the in-memory link object: the calls each step makes, and
// what each failing step leaves behind.

#include <sys/stat.h>

#include "platform/model/DialogModel.h"
#include "platform/model/ShellLinkModel.h"
#include "shortcuts/LinkDropTarget.h"
#include "tests/files/FilesFixture.h"

using namespace ShellLinkModel;

TEST_F(FilesFixture, LinkOnTheModel)
{
    Reset();
    const LinkFile plain{"C:\\Sim\\sim.exe", "-c \"a b\"", "C:\\Sim", "C:\\Sim\\sim.ico", 3, "kept"};
    const std::string key = Wide(Full("Sim.lnk")), full = "C:\\Sim\\sim.exe|-c \"a b\"|C:\\Sim\\sim.ico|C:\\Sim|3";
    auto fields = [](const CLinkDropTarget& link) {
        return Bytes(link.m_linkTarget) + "|" + Bytes(link.m_linkArgs) + "|" + Bytes(link.m_linkIconPath) + "|" +
               Bytes(link.m_linkWorkDir) + "|" + std::to_string(link.m_linkIconIndex);
    };
    CChain<CTextString> profiles;
    ASSERT_TRUE(InsertEntry(profiles, Make("Flight")));
    // The step that fails; the fields a load leaves; whether the load, the enhanced and the
    // restored save answer true; the calls each save makes; how many files were written.
    const std::tuple<Step, std::string, const char*, std::size_t, std::size_t, int> rows[] = {
        {StepCreate, "||||0", "---", 0, 0, 0}, {StepQueryPersistFile, "||||0", "---", 0, 0, 0},
        {StepLoad, "||||0", "-++", 5, 4, 2}, {StepResolve, "||||0", "-++", 5, 4, 2}, {StepGetPath, "||||0", "-++", 5, 4, 2},
        {StepGetArguments, "C:\\Sim\\sim.exe||||0", "-++", 5, 4, 2},
        {StepGetIconLocation, "C:\\Sim\\sim.exe|-c \"a b\"|||0", "-++", 5, 4, 2},
        {StepGetWorkingDirectory, "C:\\Sim\\sim.exe|-c \"a b\"|C:\\Sim\\sim.ico||3", "-++", 5, 4, 2},
        {StepSetPath, full, "+--", 1, 1, 0}, {StepSetWorkingDirectory, full, "+--", 5, 4, 2},
        {StepSetArguments, full, "+--", 5, 4, 2}, {StepSetIconLocation, full, "+-+", 5, 4, 2}, {StepSave, full, "+--", 5, 4, 0},
    };
    for (const auto& [step, loaded, answers, enhancedCalls, restoredCalls, saved] : rows) {
        WriteFile("Sim.lnk", "");
        chmod("Sim.lnk", 0444);   // cleared by every load that gets as far as the file
        Reset();
        PutFile(key, plain);
        FailStep(step);
        CLinkDropTarget link;
        EXPECT_EQ(link.InitLinkInterfaces(), step > StepQueryPersistFile) << step;
        link.m_linkPath.Assign(Make(key));
        std::string answered = link.LoadLink() ? "+" : "-";
        const std::size_t loadCalls = DialogModel().calls.size();
        answered += link.SaveEnhanced(Make("C:\\Z\\Zelmar.exe"), Make("x"), Make(""), Make(""), profiles) ? "+" : "-";
        const std::size_t enhanced = DialogModel().calls.size() - loadCalls;
        answered += link.SaveRestored(Make("x"), Make(""), Make("")) ? "+" : "-";
        struct stat facts;
        EXPECT_EQ(fields(link) + answered, loaded + answers) << step;
        EXPECT_EQ(std::make_tuple(enhanced, DialogModel().calls.size() - loadCalls - enhanced, SaveCount(key)),
                  std::make_tuple(enhancedCalls, restoredCalls, saved)) << step;
        EXPECT_TRUE(stat("Sim.lnk", &facts) == 0 && (facts.st_mode & S_IWUSR) == (step > StepQueryPersistFile ? S_IWUSR : 0u));
    }
    // Dropped, a name with a unit above 0xFF: the attribute calls name no file, the wide path
    // still opens the link. Without an icon file of its own the shortcut shows its target.
    CLinkDropTarget wide;
    std::string above = key;
    above[above.size() - 10] = '\x4E';
    PutFile(above, LinkFile{plain.path, "", "", "", 0, ""});
    const std::string block = std::string{20, 0, 0, 0} + std::string(12, '\0') + std::string{1, 0, 0, 0} + above + '\0';
    EXPECT_TRUE(wide.InitLinkInterfaces() && wide.OnDragEnter(block.data(), block.size(), 0) && wide.OnDrop(DropEffectCopy));
    EXPECT_TRUE(wide.m_linkIconPath.Equals("C:\\Sim\\sim.exe") && wide.m_linkPath.Equals(Make(above)));
}
