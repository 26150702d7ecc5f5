#pragma once
// A small driver for checks that use the real Windows program as a person would: start it,
// find its windows, read what they show, press buttons, take a picture.
//
// Everything works across processes, through window messages and the screen, so the
// program under test is the unmodified .exe. Waits poll with a deadline and never block
// for good: a program that hangs fails the check instead of the run.

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

namespace e2e {

// The title of Linkwright's dialog, by which its window is found.
extern const char kDialogTitle[];

// A program started by a check. The destructor ends it if it still runs.
class CProgramRun {
public:
    CProgramRun() = default;
    CProgramRun(const CProgramRun&) = delete;
    CProgramRun& operator=(const CProgramRun&) = delete;
    ~CProgramRun();

    // Starts exePath with the given argument text behind its quoted name, in folder.
    [[nodiscard]] bool Start(const std::string& exePath, const std::string& arguments,
                             const std::string& folder);
    DWORD ProcessId() const { return m_process.dwProcessId; }
    bool HasEnded() const;
    // True once the process has ended within timeoutMs.
    [[nodiscard]] bool WaitForEnd(DWORD timeoutMs) const;
    DWORD ExitCode() const;   // STILL_ACTIVE while it runs
    void Kill();

    // The top-level windows of the process, visible ones only unless told otherwise.
    std::vector<HWND> TopWindows(bool visibleOnly = true) const;
    // First visible top-level window of the process with this exact title, or null after
    // timeoutMs. An empty title takes any visible window.
    HWND WaitForWindow(const std::string& title, DWORD timeoutMs) const;

private:
    PROCESS_INFORMATION m_process{};
};

// A message to a window of another process, given up after a few seconds (then -1) so that
// a hung program fails the check instead of stopping it.
LRESULT Ask(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

std::string WindowText(HWND window);
std::string WindowClass(HWND window);

// Controls of a dialog by id. A missing control counts as disabled and hidden.
HWND Item(HWND dialog, int id);
bool IsItemEnabled(HWND dialog, int id);
bool IsItemVisible(HWND dialog, int id);

// The entries of a combo box's list part in their order, and the index of its current entry
// (-1 for none).
std::vector<std::string> ComboEntries(HWND combo);
int ComboCurrent(HWND combo);

// What a standard message box shows.
enum class MessageIcon { None, Exclamation, Hand, Question, Asterisk, Unknown };
const char* MessageIconName(MessageIcon icon);

struct MessageBoxFacts {
    std::string caption;
    std::string text;                  // of the text's static control, as the box shows it
    MessageIcon icon = MessageIcon::None;
    std::vector<std::string> buttons;  // captions of the visible push buttons, in z-order
};

// Reads a message box window. The icon is told from its pixels on the screen against the
// system's own icons, so the box must be in front and drawn.
[[nodiscard]] bool ReadMessageBox(HWND box, MessageBoxFacts* facts);

// Polls condition until it holds, for timeoutMs at the most.
[[nodiscard]] bool WaitUntil(const std::function<bool()>& condition, DWORD timeoutMs = 15000);
// True once the window's thread has finished the handler it is in: a sent message is taken
// up only between two handlers.
[[nodiscard]] bool WaitIdle(HWND window);

// Saves the window as it is on the screen to a 24-bit .bmp file.
[[nodiscard]] bool SaveWindowPicture(HWND window, const std::string& bmpPath);

// Windows path of a path of the host's file system, as the program sees it under Wine.
std::string HostPath(const std::string& posixPath);

}  // namespace e2e
