#include "tests/e2e/DialogTest.h"

#include <commctrl.h>

#include <algorithm>

#include "app/Resource.h"
#include "tests/e2e/Controls.h"
#include "tests/e2e/Dragger.h"

namespace e2e {

const char kListNotice[] =
    " currently modified. Do not delete the file \"ShortcutList\" or Zelmardeck\r\n"
    "will not be able to restore these shortcuts if you uninstall.\r\n";

const char kEmpty[] = "combo- add- list- remove- save- restore- label- help+ close+";
const char kPlain[] = "combo+ add+ list- remove- save- restore- label- help+ close+";
const char kPicking[] = "combo+ add+ list+ remove+ save+ restore- label- help+ close+";
const char kPickingNone[] = "combo+ add+ list+ remove+ save- restore- label- help+ close+";
const char kEnhanced[] = "combo+ add+ list+ remove+ save- restore+ label+ help+ close+";
const char kEdited[] = "combo+ add+ list+ remove+ save+ restore+ label+ help+ close+";

std::string ReadBytes(const std::string& path)
{
    std::string bytes;
    HANDLE file = CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return "<missing>";
    char buffer[4096];
    DWORD got = 0;
    while (ReadFile(file, buffer, sizeof(buffer), &got, nullptr) && got > 0)
        bytes.append(buffer, got);
    CloseHandle(file);
    return bytes;
}

void DialogTest::SetUp()
{
    ASSERT_TRUE(installation.IsReady());
    ASSERT_TRUE(installation.AddProgram());
    ASSERT_TRUE(installation.AddParent());
    ASSERT_TRUE(installation.AddProfile("wheel.idprof", "Racing Wheel"));
    ASSERT_TRUE(installation.AddProfile("yoke.idprof", "Flight Yoke"));
    ASSERT_TRUE(installation.AddProfile("stick.idprof", "Arcade Stick"));
    ASSERT_TRUE(installation.AddFolder("Games"));
    ASSERT_TRUE(installation.AddGame("Games\\Racer.exe"));
    ASSERT_TRUE(installation.AddFolder("Links"));
    game.target = installation.Path("Games\\Racer.exe");
    game.arguments = "-map \"C:\\My Maps\\one.map\" -fast";
    game.workDir = installation.Path("Games");
    game.iconPath = game.target;
    link = installation.Path("Links\\Racer.lnk");
    ASSERT_EQ(WriteShortcut(link, game), S_OK);
}

void DialogTest::TearDown()
{
    if (dialog && IsWindow(dialog)) {
        EXPECT_TRUE(Press(dialog, IDCANCEL));
        EXPECT_TRUE(run.WaitForEnd(20000)) << "Close did not end the program";
    }
}

void DialogTest::StartProgram()
{
    ASSERT_TRUE(run.Start(installation.Path("Linkwright.exe"), "", installation.Folder()));
    dialog = run.WaitForWindow(kDialogTitle, 30000);
    ASSERT_NE(dialog, nullptr) << "the dialog did not show";
}

void DialogTest::Picture(HWND window, const std::string& name) const
{
    Sleep(300);   // let it finish painting
    EXPECT_TRUE(SaveWindowPicture(window, ArtifactFolder() + "\\" + name + ".bmp")) << name;
}

int DialogTest::Rows() const
{
    return static_cast<int>(Ask(Control(IDC_SELECTED_LIST), LVM_GETITEMCOUNT, 0, 0));
}

std::vector<std::string> DialogTest::Chosen() const
{
    return ListRows(Control(IDC_SELECTED_LIST));
}

std::string DialogTest::ControlSet() const
{
    struct Switch {
        const char* name;
        int id;
    };
    const Switch switches[] = {
        {"combo", IDC_PROFILE_COMBO}, {"add", IDC_ADD},        {"list", IDC_SELECTED_LIST},
        {"remove", IDC_REMOVE},       {"save", IDOK},          {"restore", IDC_RESTORE},
        {"label", IDC_ENABLED_LABEL}, {"help", IDC_HELP_BUTTON}, {"close", IDCANCEL},
    };
    std::string line;
    for (const Switch& item : switches) {
        const bool on = item.id == IDC_ENABLED_LABEL ? IsItemVisible(dialog, item.id) : Enabled(item.id);
        line += std::string(line.empty() ? "" : " ") + item.name + (on ? "+" : "-");
    }
    return line;
}

bool DialogTest::DropShortcut()
{
    DWORD effect = 0;
    return DragFiles(dialog, {link}, true, &effect) && WaitUntil([&] { return Enabled(IDC_ADD); })
           && WaitIdle(dialog);
}

bool DialogTest::Add(const std::string& name)
{
    const int before = Rows();
    return PickEntry(Control(IDC_PROFILE_COMBO), name) && Press(dialog, IDC_ADD)
           && WaitUntil([&] { return Rows() == before + 1; });
}

bool DialogTest::Remove(const std::vector<std::string>& names)
{
    const HWND list = Control(IDC_SELECTED_LIST);
    const int before = Rows();
    for (size_t i = 0; i < names.size(); ++i) {
        const std::vector<std::string> rows = Chosen();
        const auto row = std::find(rows.begin(), rows.end(), names[i]);
        if (row == rows.end() || !ClickRow(list, static_cast<int>(row - rows.begin()), i > 0))
            return false;
        if (!WaitUntil([&] { return SelectedRows(list).size() == i + 1; }))
            return false;
    }
    return Press(dialog, IDC_REMOVE)
           && WaitUntil([&] { return Rows() == before - static_cast<int>(names.size()); });
}

bool DialogTest::Save()
{
    return Press(dialog, IDOK) && WaitUntil([&] { return !Enabled(IDOK) && Enabled(IDC_RESTORE); })
           && WaitIdle(dialog);
}

bool DialogTest::Restore()
{
    return Press(dialog, IDC_RESTORE) && WaitUntil([&] { return !Enabled(IDC_RESTORE); }) && WaitIdle(dialog);
}

std::string DialogTest::DropExpectingBox(const std::string& path, const std::string& caption)
{
    CDrag drag;
    drag.Start(dialog, {path}, true);
    const HWND box = run.WaitForWindow(caption, 15000);
    MessageBoxFacts facts;
    if (!box || !ReadMessageBox(box, &facts))
        return "<no box \"" + caption + "\">";
    EXPECT_TRUE(Press(box, IDOK));
    DWORD effect = 0;
    EXPECT_TRUE(drag.Finish(20000, &effect));
    return facts.text;
}

}  // namespace e2e
