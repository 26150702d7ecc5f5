#pragma once
// The fixture of the checks that work Linkwright's dialog: an installation with the parent,
// three profiles, a game and a plain shortcut to it, with Linkwright.exe started on it, and
// the steps a person takes, each waiting for what it brings about.

#include <gtest/gtest.h>

#include <windows.h>

#include <string>
#include <vector>

#include "tests/e2e/Driver.h"
#include "tests/e2e/Installation.h"
#include "tests/e2e/ShellLinkFile.h"

namespace e2e {

// ShortcutList.txt behind its count: "1 Shortcut", "2 Shortcuts" ...
extern const char kListNotice[];

// A file's bytes, or "<missing>".
std::string ReadBytes(const std::string& path);

class DialogTest : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    void StartProgram();

    // The window as it is on the screen now, kept for people as <name>.bmp.
    void Picture(HWND window, const std::string& name) const;

    HWND Control(int id) const { return Item(dialog, id); }
    bool Enabled(int id) const { return IsItemEnabled(dialog, id); }
    int Rows() const;
    std::vector<std::string> Chosen() const;   // the list view's rows as it shows them

    // The switches of the dialog's controls in one line, each name followed by "+" when it is
    // enabled (the label: shown) and "-" when not, to be held against a state of the dialog.
    std::string ControlSet() const;

    // Drops the shortcut (wide names) on the Empty dialog and waits until it has taken it.
    [[nodiscard]] bool DropShortcut();
    // Picks a profile and presses Add, then waits for its row.
    [[nodiscard]] bool Add(const std::string& name);
    // Selects the rows with these names by clicks, the first alone and the others with Ctrl,
    // presses Remove and waits until they have gone.
    [[nodiscard]] bool Remove(const std::vector<std::string>& names);
    // Presses Save or Restore and waits until the dialog has done with it: the Enhanced state
    // after a Save, Restore off after a Restore.
    [[nodiscard]] bool Save();
    [[nodiscard]] bool Restore();
    // A drop whose analysis shows a message box: the box's text, answered with OK.
    std::string DropExpectingBox(const std::string& path, const std::string& caption);

    CInstallation installation;
    CProgramRun run;
    HWND dialog = nullptr;
    ShortcutFacts game;
    std::string link;
};

// The control sets of the dialog's states.
extern const char kEmpty[];
extern const char kPlain[];
extern const char kPicking[];          // Picking with profiles chosen
extern const char kPickingNone[];      // Picking with every chosen profile removed again
extern const char kEnhanced[];
extern const char kEdited[];           // Edited with profiles chosen; with none, as Enhanced

}  // namespace e2e
