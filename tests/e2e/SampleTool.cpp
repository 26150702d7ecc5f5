// sample_tool: the sample installation's helper, run under Wine.
//
//   sample_tool shortcut LINK TARGET ARGUMENTS FOLDER ICON READONLY(0|1)
//     writes the shortcut LINK through the shell; an empty ICON names no icon of its own.
//   sample_tool road LINK "PROFILE NAME" REPORT PICTURE
//     run inside the Wine desktop where Linkwright shows its dialog: waits for the dialog,
//     saves a picture of the screen to PICTURE (.ppm), drags LINK onto the dialog, adds the
//     profile, saves, restores and closes Linkwright. REPORT receives the shortcut before,
//     after Save and after Restore (a program started into a Wine desktop has no console).
#include "tests/e2e/Driver.h"

using namespace e2e;

// The road; false at the first step that did not come about. The report gets the shortcut
// before, after Save and after Restore.
static bool Road(const std::string& link, const std::string& profile, const std::string& picture, std::string& report)
{
    Session lw;
    const auto shortcut = [&](const char* when) { report += when + ReadShortcut(link); return true; };
    if (!WaitUntil([&] { return IsWindowVisible(lw.dialog = FindWindowA(nullptr, kDialogTitle)); }, 90000))
        return false;
    Sleep(1500);   // let it finish painting
    return Picture(GetDesktopWindow(), picture) && shortcut("Before:\r\n")
           && lw.Drop({link}, [&] { return lw.Enabled(IDC_ADD); }) && lw.Add(profile) && lw.Save() && shortcut("After Save:\r\n")
           && lw.Click(IDC_RESTORE, [&] { return !lw.Enabled(IDC_RESTORE); }) && shortcut("After Restore:\r\n")
           && Press(lw.dialog, IDCANCEL) && WaitUntil([&] { return !IsWindow(lw.dialog); });
}

int main(int argc, char** argv)
{
    if (argc == 8 && argv[1] == std::string("shortcut"))
        return WriteShortcut(argv[2], Shortcut{argv[3], argv[4], argv[5], argv[6], 0, argv[7][0] == '1'}) ? 0 : 1;
    if (argc != 6 || argv[1] != std::string("road"))
        return 2;
    std::string report;
    if (!Road(argv[2], argv[3], argv[5], report))
        report += "Stopped: the road did not come to its end\r\n";
    return WriteBytes(argv[4], report) ? 0 : 1;
}
