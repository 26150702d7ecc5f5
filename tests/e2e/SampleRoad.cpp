// sample_road: the main job done once on the sample installation, as a person would do it,
// for run-sample.sh on a machine without a display. Run inside the Wine desktop where
// Linkwright shows its dialog, it drags a shortcut onto the dialog, adds a profile, saves,
// restores, and writes the shortcut as the shell sees it before, after Save and after
// Restore to REPORT_FILE (a program started into a Wine desktop has no console of its own).
//
// usage: sample_road SHORTCUT "PROFILE NAME" REPORT_FILE
#include <windows.h>

#include <cstdio>
#include <string>

#include "app/Resource.h"
#include "tests/e2e/Controls.h"
#include "tests/e2e/Dragger.h"
#include "tests/e2e/Driver.h"
#include "tests/e2e/ShellLinkFile.h"

namespace {

std::string Describe(const char* when, const std::string& link)
{
    e2e::ShortcutFacts facts;
    if (e2e::ReadShortcut(link, &facts) != S_OK)
        return std::string(when) + ": the shortcut cannot be read\r\n";
    return std::string(when) + ":\r\n  target     " + facts.target + "\r\n  arguments  " + facts.arguments +
           "\r\n  folder     " + facts.workDir + "\r\n  icon       " + facts.iconPath + "," +
           std::to_string(facts.iconIndex) + "\r\n";
}

// The road; answers the first step that did not come about, or null.
const char* Road(const std::string& link, const std::string& profile, std::string& report)
{
    HWND dialog = nullptr;
    if (!e2e::WaitUntil([&] { return (dialog = FindWindowA(nullptr, e2e::kDialogTitle)) != nullptr; }, 60000))
        return "the dialog did not show";
    report += Describe("Before", link);

    DWORD effect = 0;
    if (!e2e::DragFiles(dialog, {link}, true, &effect) ||
        !e2e::WaitUntil([&] { return e2e::IsItemEnabled(dialog, IDC_ADD); }))
        return "the dropped shortcut was not taken";
    if (!e2e::PickEntry(e2e::Item(dialog, IDC_PROFILE_COMBO), profile))
        return "the profile could not be picked";
    if (!e2e::Press(dialog, IDC_ADD) || !e2e::WaitUntil([&] { return e2e::IsItemEnabled(dialog, IDOK); }))
        return "Add did not add the profile";
    if (!e2e::Press(dialog, IDOK) ||
        !e2e::WaitUntil([&] { return e2e::IsItemEnabled(dialog, IDC_RESTORE); }) || !e2e::WaitIdle(dialog))
        return "Save did not finish";
    report += Describe("After Save", link);

    if (!e2e::Press(dialog, IDC_RESTORE) ||
        !e2e::WaitUntil([&] { return !e2e::IsItemEnabled(dialog, IDC_RESTORE); }) || !e2e::WaitIdle(dialog))
        return "Restore did not finish";
    report += Describe("After Restore", link);
    return nullptr;
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 4) {
        std::fprintf(stderr, "usage: sample_road SHORTCUT \"PROFILE NAME\" REPORT_FILE\n");
        return 2;
    }
    std::string report;
    const char* failure = Road(argv[1], argv[2], report);
    if (failure)
        report += std::string("Stopped: ") + failure + "\r\n";
    FILE* out = std::fopen(argv[3], "wb");
    if (out) {
        std::fputs(report.c_str(), out);
        std::fclose(out);
    }
    return failure ? 1 : 0;
}
