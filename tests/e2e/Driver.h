#pragma once
// Drives the unmodified Linkwright.exe under Wine as a person would: its windows are read
// through messages, the mouse is moved and pressed through the system's input queue, files
// are dropped by a real OLE drag, and shortcuts are made and read through the shell.
// Every wait has a deadline, so a program that hangs fails the check instead of the run.

#include <windows.h>

#include <functional>
#include <future>
#include <string>
#include <vector>

namespace e2e {

using Names = std::vector<std::string>;
inline constexpr char kDialogTitle[] = "Linkwright v1.0 for Zelmardeck";

// A program started by a check, ended when the object goes if it still runs.
class CRun {
public:
    CRun() = default;
    CRun(const CRun&) = delete;
    CRun& operator=(const CRun&) = delete;
    ~CRun();
    [[nodiscard]] bool Start(const std::string& exe, const std::string& arguments, const std::string& folder);
    [[nodiscard]] bool WaitForEnd(DWORD ms) const { return WaitForSingleObject(m_process.hProcess, ms) == WAIT_OBJECT_0; }
    // A visible top-level window of the process of this class (any if null) and title (any if
    // empty), or null once ms have passed or the process has ended.
    HWND WaitForWindow(const std::string& title, DWORD ms = 15000, const char* windowClass = nullptr) const;

private:
    PROCESS_INFORMATION m_process{};
};

// A message to another process's window, given up after 5 s (then -1).
LRESULT Ask(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
std::string Text(HWND window);
[[nodiscard]] bool WaitUntil(const std::function<bool()>& condition, DWORD ms = 15000);
// True once the window's thread is between two handlers.
[[nodiscard]] inline bool WaitIdle(HWND window) { return SendMessageTimeoutA(window, WM_NULL, 0, 0, SMTO_NORMAL, 15000, nullptr); }

// What a standard message box shows: "caption|text|icon or no icon|its buttons' texts".
std::string ReadBox(HWND box);

// The screen under the window (the desktop window: all of it) as a .ppm picture.
[[nodiscard]] bool Picture(HWND window, const std::string& path);

// The pointer brought to rest at a point: moved there, and still there while the program is idle.
[[nodiscard]] bool RestPointer(HWND target, POINT screen);
// A click on a push button; false if a person could not press it (hidden, disabled, a box up).
[[nodiscard]] bool Press(HWND dialog, int id);
std::vector<std::string> ComboEntries(HWND combo);
// Opens a combo box's list with its arrow and clicks the entry; true once it is current.
[[nodiscard]] bool PickEntry(HWND combo, const std::string& text);
// A click at a point of a window, or of its child there; false if a person could not click there
// (something covers it or holds the capture). inDialog: the window's dialog is brought forward.
[[nodiscard]] bool ClickAt(HWND target, POINT screen, bool inDialog = true);

// Linkwright's dialog worked a step at a time: each step waits for what it brings about and
// for the end of its handler, and says whether all of that came about.
struct Session {
    HWND Control(int id) const { return GetDlgItem(dialog, id); }
    bool Enabled(int id) const { return IsWindowEnabled(Control(id)) != 0; }
    int Rows() const;
    // A drag of files of one folder onto the dialog's centre, on a thread of its own so that the
    // check can answer a box that the drop shows. Dropped waits for its end, then for taken: the
    // drop's analysis runs after the drop, from a posted message.
    void Drag(const Names& names);
    [[nodiscard]] bool Dropped(const std::function<bool()>& taken);
    [[nodiscard]] bool Drop(const Names& names, const std::function<bool()>& taken) { Drag(names); return Dropped(taken); }
    [[nodiscard]] bool Click(int id, const std::function<bool()>& done);
    [[nodiscard]] bool Add(const std::string& profile);
    [[nodiscard]] bool Save();

    HWND dialog = nullptr;
    std::shared_future<DWORD> drag;   // the last drag's DROPEFFECT_..., shared with its thread, which may outlive a check
};

// A shortcut as the shell's wide interface has it; texts in UTF-8. icon empty: none of its own.
struct Shortcut {
    std::string target, arguments, folder, icon;
    int index = 0;
    bool readOnly = false;
};
[[nodiscard]] bool WriteShortcut(const std::string& path, const Shortcut& facts);
// The shortcut's fields one per line, for comparisons that show what differs and for reports.
std::string ReadShortcut(const std::string& path);
std::string Describe(const Shortcut& facts);

std::string ReadBytes(const std::string& path);   // "<missing>" when it cannot be read
[[nodiscard]] bool WriteBytes(const std::string& path, const std::string& bytes);

}  // namespace e2e
