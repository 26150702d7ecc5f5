// CLinkDropTarget's link side on the in-memory link object: what each failing step leaves
// behind, the proof of a Save, and loads that are whole or change nothing.

#include <sys/stat.h>

#include "platform/model/DialogModel.h"
#include "platform/model/ShellLinkModel.h"
#include "platform/posix/IoFaults.h"
#include "shortcuts/LinkDropTarget.h"
#include "tests/files/FilesFixture.h"

using namespace ShellLinkModel;

TEST_F(FilesFixture, LinkOnTheModel)
{
    // Its icon file is named as the enhanced one's folder: a garbled save moves the arguments
    // and the folder but leaves the icon as it was.
    const LinkFile plain{"C:\\Sim\\sim.exe", "-c \"a b\"", "C:\\Sim", "C:\\Z", 3, "kept"};
    const LinkFile restored{"x", "", "", "C:\\Z", 3, "kept"};
    const std::string key = Wide(Full("Sim.lnk")), temporary = key.substr(0, key.size() - 1) + Wide(".lw.tmp");
    CChain<CTextString> profiles;
    ASSERT_TRUE(InsertEntry(profiles, Make("Flight")));
    // The step that fails (past the last: the next save is garbled); whether the load, the
    // proof, the enhanced and the restored save answer true; the shortcut afterwards.
    const std::tuple<int, const char*, LinkFile> rows[] = {
        {StepCreate, "----", plain}, {StepQueryPersistFile, "----", plain}, {StepLoad, "----", plain},
        {StepGetDescription, "----", plain}, {StepSetPath, "+---", plain}, {StepSetWorkingDirectory, "++--", plain},
        {StepSetIconLocation, "++-+", restored}, {StepSave, "++--", plain}, {StepReplace, "++--", plain},
        {StepDelete, "++++", restored}, {StepDelete + 1, "++-+", restored},
    };
    for (const auto& [step, answers, after] : rows) {
        WriteFile("Sim.lnk", "");
        chmod("Sim.lnk", 0444);   // cleared by every load that gets as far as the file
        Reset();
        PutFile(key, plain);
        step > StepDelete ? Garbles().FailAt(1) : FailStep(static_cast<Step>(step));
        CLinkDropTarget link;
        CTextString line(0);
        std::string answered = link.InitLinkInterfaces() && link.LoadLink(Make(key)) ? "+" : "-";
        answered += link.ProveEnhanced(Make("x"), Make(""), Make(""), profiles, line) == SaveRefusal::None ? "+" : "-";
        answered += link.SaveEnhanced(Make("C:\\Z\\Zelmar.exe"), line) ? "+" : "-";
        answered += link.SaveRestored(Make("x"), Make(""), Make("")) ? "+" : "-";
        struct stat facts;
        EXPECT_EQ(answered, answers) << step;
        EXPECT_TRUE(GetFile(key) == after && GetFile(temporary) == LinkFile()) << step;
        EXPECT_TRUE(stat("Sim.lnk", &facts) == 0 && (facts.st_mode & S_IWUSR) == (step > StepQueryPersistFile ? S_IWUSR : 0u));
    }

    chmod("Sim.lnk", 0644);   // a load of a writable shortcut writes nothing to the disk
    CLinkDropTarget reader;
    IoWrites().FailAt(0);
    EXPECT_TRUE(reader.InitLinkInterfaces() && reader.LoadLink(Make(key)) && IoWrites().Made() == 0);

    // A load reads what a later load reads whole: 16,381 bytes, as a reading that fills the
    // 16,383 bytes it is given may have been cut short (b, with a terminator; d, without one).
    // A failed load keeps what the one before read, and tells a missing shortcut.
    Reset();
    for (auto [name, length] : {std::pair<const char*, int>{"a.lnk", 16381}, {"b.lnk", 16382}, {"d.lnk", 16383}})
        PutFile(Wide(name), {"C:\\g.exe", std::string(length, 'a'), "", "", 0, ""});
    CLinkDropTarget link;
    bool missing = false;
    ASSERT_TRUE(link.InitLinkInterfaces() && link.LoadLink(Make(Wide("a.lnk")), &missing) && !missing);
    EXPECT_FALSE(link.LoadLink(Make(Wide("b.lnk")), &missing) || link.LoadLink(Make(Wide("d.lnk")), &missing) || missing ||
                 link.LoadLink(Make(Wide("c.lnk")), &missing));
    EXPECT_TRUE(missing && link.m_linkPath.Equals(Make(Wide("a.lnk"))) && link.m_linkArgs.Length() == 16381);

    // The proof: the line a load reads whole, taken apart as it was made (a quote in the target
    // and an empty profile are not), an icon file without look-alikes, and a target the shell
    // takes back.
    CTextString line(0);
    const int room = LongestLinkText - static_cast<int>(std::string(" target=\"C:\\g.exe\" args=\"\"").size());
    const std::tuple<std::string, std::string, SaveRefusal> proofs[] = {
        {"C:\\g.exe", std::string(room, 'a'), SaveRefusal::None},
        {"C:\\g.exe", std::string(room + 1, 'a'), SaveRefusal::TooLong},
        {"C:\\g\".exe", "", SaveRefusal::Unsupported},
    };
    profiles.Clear();
    for (const auto& [target, args, refusal] : proofs)
        EXPECT_EQ(link.ProveEnhanced(Make(target), Make(""), Make(args), profiles, line), refusal) << args.size();
    ASSERT_TRUE(InsertEntry(profiles, Make("")));   // no item of its own on the line
    EXPECT_EQ(link.ProveEnhanced(Make("C:\\g.exe"), Make(""), Make(""), profiles, line), SaveRefusal::Unsupported);
    profiles.Clear();
    FailStep(StepSetPath);
    EXPECT_EQ(link.ProveEnhanced(Make("C:\\g.exe"), Make(""), Make(""), profiles, line), SaveRefusal::TargetRefused);
    PutWide(Wide("a.lnk"), LinkTextIconLocation, u"C:\\\u6E38.ico");
    ASSERT_TRUE(link.LoadLink(Make(Wide("a.lnk"))));
    EXPECT_EQ(link.ProveEnhanced(Make("C:\\g.exe"), Make(""), Make(""), profiles, line), SaveRefusal::Unsupported);

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
