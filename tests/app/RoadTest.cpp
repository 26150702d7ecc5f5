// Shortcuts on their road through the dialog, on the in-memory link store: what a dropped
// shortcut is, the profile lists, Save and Restore with the registry, and restore-all.

#include "AppFixture.h"

namespace {

using ShellLinkModel::LinkFile;
using ShellLinkModel::Wide;

const char Parent[] = "Zelmardeck Shortcut|This is a shortcut to Zelmardeck itself, and cannot be modified.|0";
const char ThisProgram[] = "Linkwright|This is a shortcut to this program, and cannot be modified.|0";
const char WriteFailed[] = "Shortcut Write Error|There was an unknown problem while trying to modify this shortcut. "
                           "Try again or modify the shortcut by hand.|48";
const char Unsupported[] = "Unsupported Characters|This shortcut holds characters that Linkwright cannot keep, and cannot "
                           "be modified.|0";
const char TooLong[] = "Shortcut Too Long|The enhanced shortcut would be too long to be restored. Remove a profile or "
                       "shorten the shortcut's arguments.|0";
const char TargetRefused[] = "Linkwright|The target of this shortcut could not be set back on Restore, and the shortcut "
                             "cannot be modified.|0";
const char Line[] = " target=\"C:\\Games\\race.exe\" targetDir=\"C:\\Games\" args=\"-f <a b>\"";
const LinkFile Game = {"C:\\Games\\race.exe", "-f \"a b\"", "C:\\Games", "Race.ico", 2, ""};

std::string Joined(const Lines& lines)
{
    std::string joined;
    for (const std::string& line : lines)
        joined += (joined.empty() ? "" : ",") + line;
    return joined;
}

// One drop, Add, Remove or command after the other in one dialog. After each: the control
// set; the data (m_target|m_targetDir|m_args|m_selected|the list's rows|the name shown|
// the count of listed shortcuts); and what happened (icons, deletes of rows, the arguments
// written under QuoteChars.txt's quotes, message boxes). An icon is shown unless its file
// has none (0) or is no icon file (1); the one shown before is destroyed then. Save and
// Restore keep the data, so a shortcut is saved twice, and again after a Restore, without
// being dropped anew; a list or quote characters read cut short are read again first. A
// shortcut holding characters beyond the code page, in any of its texts, is refused at the
// drop; a line too long to be read back (16,382 bytes), and a target the shell will not take
// back on Restore, are refused at Save, which stays on; neither writes.
TEST_F(AppFixture, ShortcutsOnTheirRoadThroughTheDialog)
{
    const std::pair<const char*, LinkFile> links[] = {
        {"Race.lnk", Game},
        {"Two.lnk",
         {"C:\\Zelmar.exe", "profile=Beta profile=alpha profile=gamma profile=Alpha profile=Beta target=g", "", "", 0, ""}},
        {"Case.lnk", {"C:\\Zelmar.exe", "profile=GAMMA target=g", "", "Case.ico", 0, ""}},
        {"MINE.LNK", {"D:\\x\\MyZelmar.exe", "Profile=B TARGET=g profile=A args=\"[q]\"", "", "", 0, ""}},
        {"Other.LnK", {"E:\\zelmar.EXE", "", "", "", 0, ""}},
        {"p.lnk", {"C:\\Zelmar.exe", "profile=A", "", "", 0, ""}},
        {"t.lnk", {"C:\\Zelmar.exe", "target=g profile=\"\"", "", "", 0, ""}},
        {"self.lnk", {ProgramPath("Linkwright.exe"), "-x", "", "self.ico", 0, ""}},
        {"SELF.lnk", {ProgramPath("LINKWRIGHT.EXE"), "", "", "", 0, ""}},
        {"copy.lnk", {"C:\\Other\\Linkwright.exe", "", "W", "", 0, ""}},
        {"Long.lnk", {"C:\\Games\\race.exe", std::string(16311, 'a'), "C:\\Games", "", 0, ""}},
    };
    for (const auto& [name, file] : links)
        ShellLinkModel::PutFile(Wide(std::string("C:\\L\\") + name), file);
    // Characters beyond the code page, in each text the wide interface reads.
    const std::u16string wide[] = {u"C:\\G\\\u03A9mega.exe", u"-title \u03A9mega \u0142\u00F3d\u017A \u6E38",
                                   u"C:\\\u0141\u00F3d\u017A", u"C:\\\u6E38.ico"};
    for (LinkText which : {LinkTextPath, LinkTextArguments, LinkTextWorkingDirectory, LinkTextIconLocation}) {
        const std::string path = "C:\\L\\w" + std::to_string(which) + ".lnk";
        ShellLinkModel::PutFile(Wide(path), {"C:\\G\\omega.exe", "-x", "C:\\G", "", 0, ""});
        ShellLinkModel::PutWide(Wide(path), which, wide[which]);
    }
    WriteProgramFile("QuoteChars.txt", "LeftArgQuote=<\r\nRightArgQuote=>\r\n");
    DialogModel().icons = {{"Race.ico", reinterpret_cast<IconHandle>(0x71)}, {"Case.ico", NotAnIconFile},
                           {"self.ico", reinterpret_cast<IconHandle>(0x73)}};
    using Act = std::function<void(CLinkDlg&, CModelWindow&)>;
    auto drop = [this](const char* name) -> Act {
        return [=](CLinkDlg& d, CModelWindow&) { Drop(d, std::string("C:\\L\\") + name); };
    };
    auto pick = [](int id, std::vector<int> rows) -> Act {   // selects in the list or combo, presses Remove or Add
        return [=](CLinkDlg&, CModelWindow& w) {
            w.controls[id].selection = rows;
            w.Press(id == IDC_SELECTED_LIST ? IDC_REMOVE : IDC_ADD);
        };
    };
    auto add = [&](int entry) { return pick(IDC_PROFILE_COMBO, {entry}); };
    auto remove = [&](std::vector<int> rows) { return pick(IDC_SELECTED_LIST, rows); };
    auto fail = [](ShellLinkModel::Step step) -> Act { return [=](CLinkDlg&, CModelWindow&) { ShellLinkModel::FailStep(step); }; };
    auto press = [](int id) -> Act { return [=](CLinkDlg&, CModelWindow& w) { EXPECT_TRUE(w.Press(id)); }; };
    auto starved = [](Act then) -> Act {   // the second row's number not remembered
        return [=](CLinkDlg& d, CModelWindow& w) { FailAllocation(5); then(d, w); FailAllocation(0); };
    };
    auto reread = [](Act then) -> Act {   // after readings of the list and the quotes cut short
        return [=](CLinkDlg& d, CModelWindow& w) { d.m_listWhole = d.m_quoteCharsWhole = false; then(d, w); };
    };
    const std::string race = "C:\\Games\\race.exe|C:\\Games|-f <a b>|", save = "SetArguments profile=";
    const std::string longOne = "C:\\Games\\race.exe|C:\\Games|" + std::string(16311, 'a') + "|";   // 16,382 with Alpha
    const std::tuple<Act, const char*, std::string, Lines> steps[] = {
        {drop("Race.lnk"), Plain, race + "||Race|0", {"Redraw"}},
        {add(-1), Plain, race + "||Race|0", {}},
        {add(2), Picking, race + "Gamma|Gamma|Race|0", {}},
        {add(0), Picking, race + "Gamma,Alpha|Alpha,Gamma|Race|0", {}},
        {add(0), Picking, race + "Gamma,Alpha|Alpha,Gamma|Race|0", {}},
        {reread(press(IDOK)), Enhanced, race + "Gamma,Alpha|Alpha,Gamma|Race|1", {save + "\"Gamma\" profile=\"Alpha\"" + Line}},
        {add(1), Edited, race + "Gamma,Alpha,Beta|Alpha,Beta,Gamma|Race|1", {}},
        {press(IDOK), Enhanced, race + "Gamma,Alpha,Beta|Alpha,Beta,Gamma|Race|1",
         {save + "\"Gamma\" profile=\"Alpha\" profile=\"Beta\"" + Line}},
        {reread(press(IDC_RESTORE)), Plain, race + "||Race|0", {"SetArguments -f \"a b\""}},
        {add(1), Picking, race + "Beta|Beta|Race|0", {}},
        {press(IDOK), Enhanced, race + "Beta|Beta|Race|1", {save + "\"Beta\"" + Line}},
        {drop("Race.lnk"), Enhanced, race + "Beta|Beta|Race|1", {"DestroyIcon 0x71", "Redraw"}},
        {add(0), Edited, race + "Beta,Alpha|Alpha,Beta|Race|1", {}},
        {drop("Two.lnk"), Enhanced, "g|||Beta,alpha,gamma,Alpha,Beta|alpha,Alpha,Beta,Beta,gamma|Two|1", {}},
        {remove({1}), Edited, "g|||Beta,alpha,gamma,Beta|alpha,Beta,Beta,gamma|Two|1", {"ListDeleteItem 1"}},
        {starved(remove({0, 2, 3})), Edited, "g|||Beta|Beta|Two|1", {"ListDeleteItem 3", "ListDeleteItem 0"}},
        {remove({0}), EditedNone, "g|||||Two|1", {"ListDeleteItem 0"}},
        {remove({}), EditedNone, "g|||||Two|1", {}},
        {drop("Case.lnk"), Enhanced, "g|||GAMMA|GAMMA|Case|1", {}},
        {add(2), Enhanced, "g|||GAMMA|GAMMA|Case|1", {}},
        {drop("MINE.LNK"), Enhanced, "g||[q]|B,A|A,B|MINE|1", {}},
        {drop("Other.LnK"), Empty, "|||||Other|1", {Parent}},
        {drop("p.lnk"), Empty, "|||A||p|1", {Parent}},
        {drop("t.lnk"), Empty, "g|||||t|1", {Parent}},
        {drop("self.lnk"), Empty, "|||||self|1", {"DestroyIcon 0x71", "Redraw", ThisProgram}},
        {drop("SELF.lnk"), Empty, "|||||SELF|1", {ThisProgram}},
        {drop("copy.lnk"), Plain, "C:\\Other\\Linkwright.exe|W||||copy|1", {}},
        {drop("w0.lnk"), Empty, "|||||w0|1", {Unsupported}},
        {drop("w3.lnk"), Empty, "|||||w3|1", {Unsupported}},
        {drop("Long.lnk"), Plain, longOne + "||Long|1", {}},
        {add(0), Picking, longOne + "Alpha|Alpha|Long|1", {}},
        {press(IDOK), Picking, longOne + "Alpha|Alpha|Long|1", {TooLong}},
        {remove({0}), "combo+ add+ list+ remove+ save- restore- label-", longOne + "||Long|1", {"ListDeleteItem 0"}},
        {drop("Race.lnk"), Enhanced, race + "Beta|Beta|Race|1", {"DestroyIcon 0x73", "Redraw"}},
        {fail(ShellLinkModel::StepSave), Enhanced, race + "Beta|Beta|Race|1", {}},
        {press(IDC_RESTORE), Enhanced, race + "Beta|Beta|Race|1", {"SetArguments -f \"a b\"", WriteFailed}},
        {add(0), Edited, race + "Beta,Alpha|Alpha,Beta|Race|1", {}},
        {press(IDOK), Edited, race + "Beta,Alpha|Alpha,Beta|Race|1",
         {save + "\"Beta\" profile=\"Alpha\"" + Line, WriteFailed}},
        {fail(ShellLinkModel::StepSetPath), Edited, race + "Beta,Alpha|Alpha,Beta|Race|1", {}},
        {press(IDOK), Edited, race + "Beta,Alpha|Alpha,Beta|Race|1", {TargetRefused}},
    };
    CLinkDlg dialog;
    Run(dialog, [&](CModelWindow& window) {
        int step = 0;
        for (const auto& [act, state, held, happened] : steps) {
            SCOPED_TRACE(++step);
            DialogModel().calls.clear();
            act(dialog, window);
            Lines selected;
            for (CChainNode<CTextString>* node = dialog.m_selected.Head(); node; node = node->next)
                selected.push_back(node->payload->Text());
            EXPECT_EQ(std::string(state) + held,
                      States(window) + dialog.m_target.Text() + "|" + dialog.m_targetDir.Text() + "|" + dialog.m_args.Text() +
                          "|" + Joined(selected) + "|" + Joined(window.controls[IDC_SELECTED_LIST].items) + "|" +
                          window.controls[IDC_SHORTCUT_NAME].text + "|" + std::to_string(dialog.m_shortcuts.Count()));
            Lines events = Log({"DestroyIcon", "Redraw", "ListDeleteItem", "SetArguments"});
            events.insert(events.end(), DialogModel().messageBoxes.begin(), DialogModel().messageBoxes.end());
            DialogModel().messageBoxes.clear();
            EXPECT_EQ(happened, events);
        }
    });
    EXPECT_EQ(ReadProgramFile("ShortcutList"), Wide("C:\\L\\Race.lnk"));   // the one left enhanced
    const LinkFile saved = ShellLinkModel::GetFile(Wide("C:\\L\\Race.lnk"));   // Beta's Save, the last that went through
    EXPECT_EQ(saved.path + "|" + saved.workDir + "|" + saved.iconPath, ProgramPath("Zelmar.exe") + "|" + programFolder + "|Race.ico");
}

// A start with -RestoreAll writes back only what is enhanced, under the quote characters
// in force, and says nothing, whatever fails; the list in memory stays whole. Afterwards the
// list names what may still be enhanced: both files go when nothing is, also when the list
// is empty or missing. A shortcut is passed over, and stays listed, when characters beyond the
// code page stand in its line, which the restore writes, but not for its target, which it does
// not. Without the link object nothing can be restored and the files stay for a later run.
// The first token is the program's name. A refused start shows its message and never gets as
// far as the command line.
TEST_F(AppFixture, RestoreAllPutsBackWhatIsEnhancedWithoutAWord)
{
    const LinkFile enhanced = {"C:\\Zelmar.exe", "profile=A target=C:\\g.exe args=\"{x} [y]\"", "", "i", 1, ""};
    const LinkFile restored = {"C:\\g.exe", "\"x\" [y]", "", "i", 1, ""};
    const std::string a = Wide("C:\\a.lnk"), all = a + Wide("C:\\b.lnk") + Wide("C:\\c.lnk") + Wide("C:\\d.lnk") + Wide("C:\\e.lnk");
    auto fail = [](ShellLinkModel::Step step) { return [=] { ShellLinkModel::FailStep(step); }; };
    auto beyond = [&](LinkText which) { return [=] { ShellLinkModel::PutWide(a, which, u"C:\\G\\\u03A9"); }; };
    auto remove = [](const char* file) { return [=] { RemoveProgramFile(file); }; };
    const std::function<void()> none = [] {};
    const std::tuple<const char*, std::string, std::function<void()>, bool, int, std::string, Lines> rows[] = {
        // command line; ShortcutList; what fails; the dialog shown; writes tried (a.lnk is
        // the one enhanced shortcut); ShortcutList afterwards; the message boxes
        {"Linkwright.exe \"-RESTOREALL\"", all, none, false, 1, "(none)", {}},
        {"x -restoreall y -RestoreAll", all, none, false, 1, "(none)", {}},
        {"x -RestoreAll", all, fail(ShellLinkModel::StepSave), false, 1, a, {}},
        {"x -RestoreAll", "", none, false, 0, "(none)", {}},
        {"x -RestoreAll", all, beyond(LinkTextPath), false, 1, "(none)", {}},
        {"x -RestoreAll", all, beyond(LinkTextArguments), false, 0, a, {}},
        {"x -RestoreAll", "(none)", remove("ShortcutList"), false, 0, "(none)", {}},
        {"x -RestoreAll", all, fail(ShellLinkModel::StepCreate), false, 0, all, {}},
        {"-RestoreAll", all, none, true, 0, all, {}},
        {"x -RestoreAl -RestoreAllX RestoreAll", all, none, true, 0, all, {}},
        {"", all, none, true, 0, all, {}},
        {"x -RestoreAll", all, remove("Zelmar.exe"), false, 0, all,
         {"ZLD Not Found|Linkwright could not find Zelmardeck. Please re-install Zelmardeck.|48"}},
        {"x -RestoreAll", all, remove("Profiles"), false, 0, all, {"No Profiles|Linkwright could not find any Zelmardeck "
         "profiles.\nCreate a profile for the intended application, and restart Linkwright|0"}},
    };
    for (const auto& [commandLine, list, setUp, shown, writes, listAfter, boxes] : rows) {
        SCOPED_TRACE(commandLine + list.substr(0, 6));
        ResetModels();
        for (const auto& [path, file] : {std::pair<const char*, LinkFile>{"C:\\a.lnk", enhanced}, {"C:\\b.lnk", Game},
                                         {"C:\\c.lnk", {ProgramPath("Linkwright.exe"), "", "", "", 0, ""}},
                                         {"C:\\d.lnk", {"C:\\Zelmar.exe", "", "", "", 0, ""}}})
            ShellLinkModel::PutFile(Wide(path), file);
        DialogModel().commandLine = commandLine;
        WriteProgramFile("QuoteChars.txt", "LeftArgQuote={\r\nRightArgQuote=}\r\n");
        WriteProgramFile("ShortcutList", list);
        WriteProgramFile("ShortcutList.txt", "report");
        setUp();
        bool seen = false;
        CLinkDlg dialog;
        EXPECT_EQ(IDCANCEL, Run(dialog, [&](CModelWindow&) { seen = true; }));
        EXPECT_EQ(shown, seen);
        EXPECT_EQ(boxes, DialogModel().messageBoxes);
        EXPECT_EQ(list == all && boxes.empty() ? 5 : 0, dialog.m_shortcuts.Count());
        EXPECT_EQ(Log({"Replace"}).empty() ? enhanced : restored, ShellLinkModel::GetFile(a));
        EXPECT_EQ(writes, static_cast<int>(Log({"Save"}).size()));
        EXPECT_EQ(Lines{"SetFocus"}, Log({"SetFocus"}));
        EXPECT_EQ(boxes.empty() ? Lines{"StopOle"} : Lines{}, Log({"StopOle"}));
        EXPECT_EQ(listAfter, ReadProgramFile("ShortcutList"));
        EXPECT_EQ(listAfter == "(none)", ReadProgramFile("ShortcutList.txt") == "(none)");
        WriteProgramFile("Zelmar.exe", "MZ");
    }
}

}   // namespace
