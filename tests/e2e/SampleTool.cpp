// sample_tool: the sample installation's helper, run under Wine.
//
//   sample_tool shortcut LINK TARGET [-args TEXT] [-dir FOLDER] [-icon FILE [-index N]] [-readonly]
//     writes the shortcut LINK to TARGET through the shell; without -icon it names no icon.
//   sample_tool road LINK "PROFILE NAME" REPORT PICTURE
//     run inside the Wine desktop where Linkwright shows its dialog: waits for the dialog,
//     saves a picture of the screen to PICTURE (.ppm), drags LINK onto the dialog, adds the
//     profile, saves and restores, and closes Linkwright. REPORT receives the shortcut before,
//     after Save and after Restore (a program started into a Wine desktop has no console).
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "app/Resource.h"
#include "tests/e2e/Driver.h"

namespace {

using namespace e2e;

int MakeShortcut(int argc, char** argv)
{
    Shortcut facts{argv[3]};
    for (int i = 4; i < argc; ++i) {
        const std::string option = argv[i];
        const std::string value = option != "-readonly" && i + 1 < argc ? argv[++i] : "";
        if (option == "-readonly")
            facts.readOnly = true;
        else if (option == "-args")
            facts.arguments = value;
        else if (option == "-dir")
            facts.folder = value;
        else if (option == "-icon")
            facts.icon = value;
        else if (option == "-index")
            facts.index = std::atoi(value.c_str());
    }
    if (WriteShortcut(argv[2], facts))
        return 0;
    std::fprintf(stderr, "sample_tool: could not write %s\n", argv[2]);
    return 1;
}

// The road; answers the first step that did not come about, or null.
const char* Road(const std::string& link, const std::string& profile, const std::string& picture, std::string& report)
{
    HWND dialog = nullptr;
    if (!WaitUntil([&] { return (dialog = FindWindowA(nullptr, kDialogTitle)) && IsWindowVisible(dialog); }, 90000))
        return "the dialog did not show";
    Sleep(1500);   // let it finish painting
    if (!Picture(GetDesktopWindow(), picture))
        return "the picture could not be saved";
    report += "Before:\r\n" + ReadShortcut(link);
    DWORD effect = 0;
    CDrag drag;
    drag.Start(dialog, {link}, true);
    const auto enabled = [&](int id) { return IsWindowEnabled(GetDlgItem(dialog, id)) != 0; };
    if (!drag.Finish(20000, &effect) || !WaitUntil([&] { return enabled(IDC_ADD); }))
        return "the dropped shortcut was not taken";
    if (!PickEntry(GetDlgItem(dialog, IDC_PROFILE_COMBO), profile) || !Press(dialog, IDC_ADD)
        || !WaitUntil([&] { return enabled(IDOK); }))
        return "the profile could not be added";
    if (!Press(dialog, IDOK) || !WaitUntil([&] { return enabled(IDC_RESTORE); }) || !WaitIdle(dialog))
        return "Save did not finish";
    report += "After Save:\r\n" + ReadShortcut(link);
    if (!Press(dialog, IDC_RESTORE) || !WaitUntil([&] { return !enabled(IDC_RESTORE); }) || !WaitIdle(dialog))
        return "Restore did not finish";
    report += "After Restore:\r\n" + ReadShortcut(link);
    if (!Press(dialog, IDCANCEL) || !WaitUntil([&] { return !IsWindow(dialog); }))
        return "Linkwright did not close";
    return nullptr;
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc >= 4 && std::strcmp(argv[1], "shortcut") == 0)
        return MakeShortcut(argc, argv);
    if (argc != 6 || std::strcmp(argv[1], "road") != 0) {
        std::fprintf(stderr, "usage: sample_tool shortcut LINK TARGET [options] | road LINK PROFILE REPORT PICTURE\n");
        return 2;
    }
    std::string report;
    if (const char* failure = Road(argv[2], argv[3], argv[5], report))
        report += std::string("Stopped: ") + failure + "\r\n";
    return WriteBytes(argv[4], report) ? 0 : 1;
}
