// A shortcut's road through the dialog on the in-memory link store: what a dropped shortcut
// is, the profile lists, Save and Restore with the registry, and the restore-all run.

#include "AppFixture.h"

#include <map>

namespace {

using ShellLinkModel::LinkFile;
using ShellLinkModel::Wide;

const LinkFile Game = {"C:\\Games\\race.exe", "-f \"a b\"", "C:\\Games", "C:\\Games\\race.ico", 2, "kept"};

// m_target|m_targetDir|m_args|m_selected, the names joined by commas.
std::string Fields(const CLinkDlg& dialog)
{
    std::string fields =
        std::string(dialog.m_target.Text()) + "|" + dialog.m_targetDir.Text() + "|" + dialog.m_args.Text() + "|";
    for (CChainNode<CTextString>* node = dialog.m_selected.Head(); node; node = node->next)
        fields += std::string(node->prev ? "," : "") + node->payload->Text();
    return fields;
}

// The message boxes so far as "caption|text|flags", forgotten afterwards.
Lines TakeBoxes()
{
    Lines boxes;
    for (const ModelMessageBox& box : DialogModel().messageBoxes)
        boxes.push_back(box.caption + "|" + box.text + "|" + std::to_string(box.flags));
    DialogModel().messageBoxes.clear();
    return boxes;
}

const std::string WriteFailed =
    "Shortcut Write Error|There was an unknown problem while trying to modify this shortcut. Try again or modify the "
    "shortcut by hand.|48";

// One drop after the other in one dialog. The icon file of each shortcut is its target; an
// icon is shown unless the file has none (0) or is no icon file (1), and the one shown
// before is then destroyed. Refused shortcuts get their icon and name shown too.
TEST_F(AppFixture, ADroppedShortcutIsEnhancedAParentThisProgramOrPlain)
{
    struct Row {
        const char* link;
        std::string target;
        const char* args;
        std::uintptr_t icon;
        const char* caption;
        const char* state;
        std::string fields;
        const char* iconCalls;
    };
    const std::map<std::string, std::string> texts = {
        {"Zelmardeck Shortcut", "This is a shortcut to Zelmardeck itself, and cannot be modified."},
        {"Linkwright", "This is a shortcut to this program, and cannot be modified."}};
    const std::string self = ProgramPath("Linkwright.exe");
    const Row rows[] = {
        {"Race.lnk", "C:\\Games\\race.exe", "-f \"a b\"", 0x71, "", Plain, "C:\\Games\\race.exe|C:\\W|-f [a b]|", "Redraw"},
        {"MINE.LNK", "D:\\x\\MyZelmar.exe", "Profile=\"B\" TARGET=\"C:\\g.exe\" profile=\"A\" args=\"[q]\"", 1, "",
         Enhanced, "C:\\g.exe||[q]|B,A", ""},
        {"Other.LnK", "E:\\zelmar.EXE", "", 0, "Zelmardeck Shortcut", Empty, "|||", ""},
        {"p.lnk", "C:\\Zelmar.exe", "profile=\"A\"", 0x72, "Zelmardeck Shortcut", Empty, "|||A", "DestroyIconHandle 0x71 Redraw"},
        {"t.lnk", "C:\\Zelmar.exe", "target=\"C:\\g.exe\" profile=\"\"", 0, "Zelmardeck Shortcut", Empty, "C:\\g.exe|||", ""},
        {"self.lnk", self, "-x", 0x73, "Linkwright", Empty, "|||", "DestroyIconHandle 0x72 Redraw"},
        {"SELF.lnk", ProgramPath("LINKWRIGHT.EXE"), "", 0, "Linkwright", Empty, "|||", ""},
        {"copy.lnk", "C:\\Other\\Linkwright.exe", "", 0, "", Plain, "C:\\Other\\Linkwright.exe|C:\\W||", ""},
        {"longer.lnk", self + "x", "", 0, "", Plain, self + "x|C:\\W||", ""},
        {"short.lnk", "mar.exe", "", 0, "", Plain, "mar.exe|C:\\W||", ""},
        {".lnk", "C:\\a.exe", "", 0, "", Plain, "C:\\a.exe|C:\\W||", ""},
    };
    CLinkDlg dialog;
    Run(dialog, [&](CModelWindow& window) {
        for (const Row& row : rows) {
            SCOPED_TRACE(row.link);
            const std::string link = std::string("C:\\L\\") + row.link;
            ShellLinkModel::PutFile(Wide(link), {row.target, row.args, "C:\\W", "", 3, ""});
            DialogModel().fileIcons[row.target] = reinterpret_cast<IconHandle>(row.icon);
            DialogModel().calls.clear();
            ASSERT_TRUE(Drop(dialog, link));
            const std::string box = *row.caption ? row.caption + ("|" + texts.at(row.caption) + "|0") : "";
            EXPECT_EQ(box.empty() ? Lines{} : Lines{box}, TakeBoxes());
            EXPECT_EQ(row.state, States(window));
            EXPECT_EQ(row.fields, Fields(dialog));
            EXPECT_EQ(row.state == std::string(Enhanced), dialog.m_isEnhanced);
            std::string iconCalls;
            for (const std::string& line : Log({"DestroyIconHandle", "Redraw"}))
                iconCalls += (iconCalls.empty() ? "" : " ") + line;
            EXPECT_EQ(row.iconCalls, iconCalls);
            EXPECT_EQ(Lines{"ExtractIconFrom " + row.target + " 3"}, Log({"ExtractIconFrom"}));
            EXPECT_EQ(link.substr(5, link.size() - 9), window.controls[IDC_SHORTCUT_NAME].text);
        }
    });
}

// Every step leaves its control set, list rows, shortcut file and ShortcutList. Save and
// Restore keep the dialog's data: a shortcut is saved twice, and saved after a Restore,
// without being dropped anew. A failed write says so and changes nothing.
TEST_F(AppFixture, TheRoadOfOneShortcut)
{
    const std::string link = "C:\\L\\Race.lnk", listed = Wide(link);
    ShellLinkModel::PutFile(listed, Game);
    auto saved = [&](const std::string& profiles) {
        return LinkFile{ProgramPath("Zelmar.exe"),
                        profiles + " target=\"C:\\Games\\race.exe\" targetDir=\"C:\\Games\" args=\"-f [a b]\"",
                        folder, Game.iconPath, 2, "kept"};
    };
    const LinkFile beta = saved("profile=\"Beta\"");
    auto add = [](int entry) { return [entry](CLinkDlg&, CModelWindow& w) { EXPECT_TRUE(Add(w, entry)); }; };
    auto press = [](int id) { return [id](CLinkDlg&, CModelWindow& w) { EXPECT_TRUE(w.Press(id)); }; };
    auto drop = [&](CLinkDlg& d, CModelWindow&) { EXPECT_TRUE(Drop(d, link)); };
    struct Step {
        std::function<void(CLinkDlg&, CModelWindow&)> act;
        const char* state;
        Lines rows;
        LinkFile file;
        std::string list;
        std::string box;
    };
    const Step steps[] = {
        {drop, Plain, {}, Game, "", ""},
        {[](CLinkDlg&, CModelWindow& w) { w.Select(IDC_PROFILE_COMBO, {}); w.Press(IDC_ADD); }, Plain, {}, Game, "", ""},
        {add(2), Picking, {"Gamma"}, Game, "", ""},
        {add(0), Picking, {"Alpha", "Gamma"}, Game, "", ""},
        {add(0), Picking, {"Alpha", "Gamma"}, Game, "", ""},
        {press(IDOK), Enhanced, {"Alpha", "Gamma"}, saved("profile=\"Gamma\" profile=\"Alpha\""), listed, ""},
        {add(1), Edited, {"Alpha", "Beta", "Gamma"}, saved("profile=\"Gamma\" profile=\"Alpha\""), listed, ""},
        {press(IDOK), Enhanced, {"Alpha", "Beta", "Gamma"}, saved("profile=\"Gamma\" profile=\"Alpha\" profile=\"Beta\""), listed, ""},
        {press(IDC_RESTORE), Plain, {}, Game, "", ""},
        {add(1), Picking, {"Beta"}, Game, "", ""},
        {press(IDOK), Enhanced, {"Beta"}, beta, listed, ""},
        {drop, Enhanced, {"Beta"}, beta, listed, ""},
        {[](CLinkDlg&, CModelWindow& w) { w.Select(IDC_SELECTED_LIST, {0}); w.Press(IDC_REMOVE); }, EditedNone, {}, beta, listed, ""},
        {add(0), Edited, {"Alpha"}, beta, listed, ""},
        {[](CLinkDlg&, CModelWindow&) { ShellLinkModel::FailStep(ShellLinkModel::StepSave); }, Edited, {"Alpha"}, beta, listed, ""},
        {press(IDOK), Edited, {"Alpha"}, beta, listed, WriteFailed},
        {press(IDC_RESTORE), Edited, {"Alpha"}, beta, listed, WriteFailed},
    };
    CLinkDlg dialog;
    Run(dialog, [&](CModelWindow& window) {
        for (const Step& step : steps) {
            SCOPED_TRACE(&step - steps);
            step.act(dialog, window);
            EXPECT_EQ(step.state, States(window));
            EXPECT_EQ(step.rows, window.controls[IDC_SELECTED_LIST].items);
            EXPECT_EQ(step.file, ShellLinkModel::GetFile(listed));
            EXPECT_EQ(step.list, ReadProgramFile("ShortcutList"));
            EXPECT_EQ(step.box.empty() ? Lines{} : Lines{step.box}, TakeBoxes());
        }
    });
}

// Rows are matched to names: each selected row takes away the first node of its name, byte
// for byte, and the rows go from the list from the highest down. The list finds a name in
// any case, so one it shows can't be added again.
TEST_F(AppFixture, RemoveTakesTheFirstNodeOfEachSelectedRowsName)
{
    const std::pair<std::vector<int>, std::string> rows[] = {   // the list shows alpha, Alpha, Beta, Beta, gamma
        {{}, "Beta,alpha,gamma,Alpha,Beta"},
        {{1}, "Beta,alpha,gamma,Beta 1"},
        {{0, 2, 4}, "Alpha,Beta 4 2 0"},
        {{2, 3}, "alpha,gamma,Alpha 3 2"},
        {{0, 1, 2, 3, 4}, " 4 3 2 1 0"},
    };
    const std::string link = "C:\\L\\Two.lnk";
    ShellLinkModel::PutFile(Wide(link), {"C:\\Zelmar.exe", "profile=Beta profile=alpha profile=gamma profile=Alpha "
                                         "profile=Beta target=C:\\g.exe", "", "", 0, ""});
    CLinkDlg dialog;
    Run(dialog, [&](CModelWindow& window) {
        for (const auto& [selected, after] : rows) {
            ASSERT_TRUE(Drop(dialog, link));
            DialogModel().calls.clear();
            EXPECT_TRUE(window.Select(IDC_SELECTED_LIST, selected) && window.Press(IDC_REMOVE));
            std::string left = Fields(dialog);
            for (const std::string& line : Log({"ListDeleteItem 1008 "}))
                left += " " + line.substr(20);
            EXPECT_EQ("C:\\g.exe|||" + after, left);
            EXPECT_EQ(selected.empty() ? Enhanced : after[0] == ' ' ? EditedNone : Edited, States(window));
            EXPECT_TRUE(window.controls[IDC_SELECTED_LIST].selection.empty());
        }
        ASSERT_TRUE(Drop(dialog, link));
        EXPECT_TRUE(Add(window, 2));
        EXPECT_EQ(Enhanced, States(window));
        EXPECT_EQ("C:\\g.exe|||Beta,alpha,gamma,Alpha,Beta", Fields(dialog));
    });
}

// Restore-all writes back only what is enhanced, under the quote characters in force, and
// says nothing, whatever fails. The list in memory stays whole, and both list files go,
// also when the list is empty or missing. Without the link object nothing can be restored,
// and the files stay for a later run. The first token is the program's name.
TEST_F(AppFixture, RestoreAllPutsBackWhatIsEnhancedWithoutAWord)
{
    const LinkFile enhanced = {"C:\\Zelmar.exe", "profile=A target=C:\\g.exe args=\"{x} [y]\"", "", "i", 1, ""};
    const LinkFile restored = {"C:\\g.exe", "\"x\" [y]", "", "i", 1, ""};
    const std::string all = Wide("C:\\a.lnk") + Wide("C:\\b.lnk") + Wide("C:\\c.lnk") + Wide("C:\\d.lnk") + Wide("C:\\e.lnk");
    struct Row {
        const char* commandLine;
        std::string list;
        int failing;   // a step of the link store that fails, or -1
        bool ran;
        int saves;     // of a.lnk, the one enhanced shortcut, and of all together
        bool listsStay;
    };
    const Row rows[] = {
        {"Linkwright.exe \"-RESTOREALL\"", all, -1, true, 1, false},
        {"x -restoreall y -RestoreAll", all, -1, true, 1, false},
        {"x -RestoreAll", all, ShellLinkModel::StepSave, true, 0, false},
        {"x -RestoreAll", "", -1, true, 0, false},
        {"x -RestoreAll", "missing", -1, true, 0, false},
        {"x -RestoreAll", all, ShellLinkModel::StepCreate, true, 0, true},
        {"-RestoreAll", all, -1, false, 0, true},
        {"x -RestoreAl -RestoreAllX RestoreAll", all, -1, false, 0, true},
        {"", all, -1, false, 0, true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(&row - rows);
        ResetModels();
        for (const auto& [path, file] : {std::pair<const char*, LinkFile>{"C:\\a.lnk", enhanced}, {"C:\\b.lnk", Game},
                                         {"C:\\c.lnk", {ProgramPath("Linkwright.exe"), "", "", "", 0, ""}},
                                         {"C:\\d.lnk", {"C:\\Zelmar.exe", "", "", "", 0, ""}}})
            ShellLinkModel::PutFile(Wide(path), file);
        if (row.failing >= 0)
            ShellLinkModel::FailStep(static_cast<ShellLinkModel::Step>(row.failing));
        DialogModel().commandLine = row.commandLine;
        WriteProgramFile("QuoteChars.txt", "LeftArgQuote={\r\nRightArgQuote=}\r\n");
        WriteProgramFile("ShortcutList", row.list);
        WriteProgramFile("ShortcutList.txt", "report");
        if (row.list == "missing")
            RemoveProgramFile("ShortcutList");
        bool shown = false;
        CLinkDlg dialog;
        EXPECT_EQ(IDCANCEL, Run(dialog, [&](CModelWindow&) { shown = true; }));
        EXPECT_EQ(!row.ran, shown);
        EXPECT_TRUE(DialogModel().messageBoxes.empty());
        EXPECT_FALSE(dialog.m_restoringAll);
        EXPECT_EQ(row.list == all ? 5 : 0, dialog.m_shortcuts.Count());
        EXPECT_EQ(row.saves ? restored : enhanced, ShellLinkModel::GetFile(Wide("C:\\a.lnk")));
        int saves = 0;
        for (const char* path : {"C:\\a.lnk", "C:\\b.lnk", "C:\\c.lnk", "C:\\d.lnk", "C:\\e.lnk"})
            saves += ShellLinkModel::SaveCount(Wide(path));
        EXPECT_EQ(row.saves, saves);
        EXPECT_EQ(row.listsStay, ProgramFileExists("ShortcutList.txt"));
        EXPECT_EQ(row.listsStay && row.list != "missing", ProgramFileExists("ShortcutList"));
    }
}

}   // namespace
