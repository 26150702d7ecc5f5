#pragma once
// The dialog's controls worked with the mouse, as a person works them: the pointer is moved
// and the button pressed through the system's input queue, at the place where the control
// shows on the screen. A click goes to whatever lies under the pointer, so every click first
// makes sure that the control meant is the one there.
//
// Input is taken up in the order it was given, but after the handlers of messages sent in
// the meantime: a check waits for what a click brings about, not for the click.

#include <windows.h>

#include <string>
#include <vector>

namespace e2e {

// The centre of a window on the screen.
POINT Centre(HWND window);

// Moves the pointer to a point of the screen and gives a mouse button event there (0: none).
[[nodiscard]] bool SendPointer(POINT screen, DWORD buttonEvent = 0);

// Presses a push button with a click. False if the button is missing, hidden or disabled, or
// its window is disabled (a message box is up), which a person could not press either.
[[nodiscard]] bool Press(HWND dialog, int id);

// Opens the drop-down list of a combo box with a click on its arrow and clicks the entry with
// this text; true once that entry is the current one and the list has closed.
[[nodiscard]] bool PickEntry(HWND combo, const std::string& text);

// The rows of a list view in the order it shows them, and the rows selected now, ascending.
std::vector<std::string> ListRows(HWND list);
std::vector<int> SelectedRows(HWND list);
// Clicks a row of a list view: alone it becomes the selection, with Ctrl held it is added.
[[nodiscard]] bool ClickRow(HWND list, int row, bool withControl);

}  // namespace e2e
