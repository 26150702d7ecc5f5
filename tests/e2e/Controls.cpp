#include "tests/e2e/Controls.h"

#include <commctrl.h>

#include <algorithm>
#include <cstdio>

#include "tests/e2e/Driver.h"

namespace e2e {
namespace {

bool SendKey(WORD key, DWORD flags)
{
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.dwFlags = flags;
    return SendInput(1, &input, sizeof(input)) == 1;
}

// The window of target's thread that holds the mouse capture: it gets every click, wherever
// the pointer is.
HWND CaptureOf(HWND target)
{
    GUITHREADINFO info{};
    info.cbSize = sizeof(info);
    return GetGUIThreadInfo(GetWindowThreadProcessId(target, nullptr), &info) ? info.hwndCapture : nullptr;
}

bool IsPointerAt(POINT screen)
{
    POINT now{};
    return GetCursorPos(&now) && now.x == screen.x && now.y == screen.y;
}

// Brings the pointer to rest at a point, as a hand does before it presses. The display may
// still report a place where the pointer was before, once the program under the pointer
// takes that report in; a press followed by it would be a press and a drag. So the pointer
// is moved there and must stay there while the program is idle.
bool RestPointer(HWND target, POINT screen)
{
    for (int attempt = 0; attempt < 10; ++attempt) {
        if (!SendPointer(screen) || !WaitIdle(GetAncestor(target, GA_ROOT)))
            return false;
        bool stayed = true;
        for (int look = 0; stayed && look < 5; ++look) {
            Sleep(20);
            stayed = IsPointerAt(screen);
        }
        if (stayed)
            return true;
    }
    return false;
}

// True when target, or a control inside it, is what shows at a point of the screen.
bool Shows(HWND target, POINT screen)
{
    const HWND shown = WindowFromPoint(screen);
    return shown == target || IsChild(target, shown);
}

// Clicks the left button at a point of the screen, once the pointer rests there, target shows
// there and no other window holds the capture. A tool tip shown for an earlier place of the
// pointer may cover the point; it goes away once the pointer rests on it, as for a hand.
bool ClickAt(HWND target, POINT screen, bool withControl = false)
{
    if (!WaitUntil([&] {
            const HWND capture = CaptureOf(target);
            return !capture || capture == target;
        })) {
        std::fprintf(stderr, "a click meant for \"%s\" would go to the window with the capture (%s)\n",
                     WindowText(target).c_str(), WindowClass(CaptureOf(target)).c_str());
        return false;
    }
    if (!RestPointer(target, screen)) {
        std::fprintf(stderr, "the pointer would not stay on \"%s\"\n", WindowText(target).c_str());
        return false;
    }
    if (!WaitUntil([&] { return Shows(target, screen); }, 3000)) {
        const HWND shown = WindowFromPoint(screen);
        std::fprintf(stderr, "a click meant for \"%s\" would land on \"%s\" (%s)\n", WindowText(target).c_str(),
                     WindowText(shown).c_str(), WindowClass(shown).c_str());
        return false;
    }
    bool sent = !withControl || SendKey(VK_CONTROL, 0);
    sent = sent && SendPointer(screen, MOUSEEVENTF_LEFTDOWN) && SendPointer(screen, MOUSEEVENTF_LEFTUP);
    return (!withControl || SendKey(VK_CONTROL, KEYEVENTF_KEYUP)) && sent;
}

// The dialog that holds a control, brought to the front unless it is there already:
// activating it anew would close an open drop-down list.
void BringToFront(HWND control)
{
    const HWND dialog = GetAncestor(control, GA_ROOT);
    if (GetForegroundWindow() != dialog)
        SetForegroundWindow(dialog);
}

struct ListSearch {
    DWORD processId;
    HWND found;
};

BOOL CALLBACK FindDroppedList(HWND window, LPARAM context)
{
    ListSearch* search = reinterpret_cast<ListSearch*>(context);
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    if (owner != search->processId || !IsWindowVisible(window) || WindowClass(window) != "ComboLBox")
        return TRUE;
    search->found = window;
    return FALSE;
}

// Memory in the process of a window. The list view's messages carry pointers that the system
// does not copy across processes, as it does for the standard controls' messages, so they
// must point into the list view's own process.
class CForeignBlock {
public:
    CForeignBlock(HWND window, size_t size)
    {
        DWORD processId = 0;
        GetWindowThreadProcessId(window, &processId);
        m_process = OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, processId);
        if (m_process)
            m_address = static_cast<char*>(VirtualAllocEx(m_process, nullptr, size, MEM_COMMIT | MEM_RESERVE,
                                                          PAGE_READWRITE));
    }
    CForeignBlock(const CForeignBlock&) = delete;
    CForeignBlock& operator=(const CForeignBlock&) = delete;
    ~CForeignBlock()
    {
        if (m_address)
            VirtualFreeEx(m_process, m_address, 0, MEM_RELEASE);
        if (m_process)
            CloseHandle(m_process);
    }

    bool IsReady() const { return m_address != nullptr; }
    char* At(size_t offset) const { return m_address + offset; }
    bool Write(size_t offset, const void* data, size_t size)
    {
        return WriteProcessMemory(m_process, At(offset), data, size, nullptr) != 0;
    }
    bool Read(size_t offset, void* data, size_t size) const
    {
        return ReadProcessMemory(m_process, At(offset), data, size, nullptr) != 0;
    }

private:
    HANDLE m_process = nullptr;
    char* m_address = nullptr;
};

constexpr size_t kRowTextMax = 260;

std::string RowText(CForeignBlock& block, HWND list, int row)
{
    LVITEMA item{};
    item.cchTextMax = kRowTextMax;
    item.pszText = block.At(sizeof(item));
    char text[kRowTextMax] = {};
    if (!block.Write(0, &item, sizeof(item))
        || Ask(list, LVM_GETITEMTEXTA, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(block.At(0))) < 0
        || !block.Read(sizeof(item), text, sizeof(text)))
        return "<unreadable>";
    text[kRowTextMax - 1] = '\0';
    return text;
}

}  // namespace

POINT Centre(HWND window)
{
    RECT frame{};
    GetWindowRect(window, &frame);
    return POINT{(frame.left + frame.right) / 2, (frame.top + frame.bottom) / 2};
}

bool SendPointer(POINT screen, DWORD buttonEvent)
{
    INPUT input{};
    input.type = INPUT_MOUSE;
    // Every event carries the place itself, on a scale of 0 to 65535 over the screen: a
    // pointer event of the display that comes in between must not move a press elsewhere.
    input.mi.dwFlags = MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE | buttonEvent;
    input.mi.dx = MulDiv(screen.x, 65535, GetSystemMetrics(SM_CXSCREEN) - 1);
    input.mi.dy = MulDiv(screen.y, 65535, GetSystemMetrics(SM_CYSCREEN) - 1);
    return SendInput(1, &input, sizeof(input)) == 1;
}

bool Press(HWND dialog, int id)
{
    const HWND button = Item(dialog, id);
    if (!button || !IsWindowVisible(button) || !IsWindowEnabled(button) || !IsWindowEnabled(dialog))
        return false;
    BringToFront(button);
    return ClickAt(button, Centre(button));
}

bool PickEntry(HWND combo, const std::string& text)
{
    const std::vector<std::string> entries = ComboEntries(combo);
    const auto entry = std::find(entries.begin(), entries.end(), text);
    if (entry == entries.end() || !IsWindowEnabled(combo))
        return false;
    const int index = static_cast<int>(entry - entries.begin());

    // The arrow is the button at the right end of the closed box.
    BringToFront(combo);
    RECT frame{};
    GetWindowRect(combo, &frame);
    const POINT arrow{frame.right - GetSystemMetrics(SM_CXVSCROLL) / 2 - 2, (frame.top + frame.bottom) / 2};
    ListSearch search{0, nullptr};
    GetWindowThreadProcessId(combo, &search.processId);
    if (!ClickAt(combo, arrow) || !WaitUntil([&] {
            search.found = nullptr;
            EnumWindows(FindDroppedList, reinterpret_cast<LPARAM>(&search));
            return search.found != nullptr;
        }))
        return false;

    // The dropped list shows whole entries of one height from its top entry on.
    const HWND dropped = search.found;
    const LRESULT top = Ask(dropped, LB_GETTOPINDEX, 0, 0);
    const LRESULT height = Ask(dropped, LB_GETITEMHEIGHT, 0, 0);
    RECT client{};
    GetClientRect(dropped, &client);
    POINT point{client.right / 2, static_cast<LONG>((index - top) * height + height / 2)};
    if (top < 0 || height <= 0 || point.y < 0 || point.y >= client.bottom)
        return false;
    ClientToScreen(dropped, &point);
    return ClickAt(dropped, point)
           && WaitUntil([&] { return ComboCurrent(combo) == index && Ask(combo, CB_GETDROPPEDSTATE, 0, 0) == FALSE; });
}

std::vector<std::string> ListRows(HWND list)
{
    std::vector<std::string> rows;
    CForeignBlock block(list, sizeof(LVITEMA) + kRowTextMax);
    const LRESULT count = Ask(list, LVM_GETITEMCOUNT, 0, 0);
    for (int row = 0; block.IsReady() && row < count; ++row)
        rows.push_back(RowText(block, list, row));
    return rows;
}

std::vector<int> SelectedRows(HWND list)
{
    std::vector<int> rows;
    for (LRESULT row = -1; (row = Ask(list, LVM_GETNEXTITEM, static_cast<WPARAM>(row), LVNI_SELECTED)) >= 0;)
        rows.push_back(static_cast<int>(row));
    return rows;
}

bool ClickRow(HWND list, int row, bool withControl)
{
    if (!IsWindowEnabled(list))
        return false;
    BringToFront(list);
    Ask(list, LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
    CForeignBlock block(list, sizeof(RECT));
    RECT bounds{};
    bounds.left = LVIR_BOUNDS;
    if (!block.IsReady() || !block.Write(0, &bounds, sizeof(bounds))
        || Ask(list, LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(block.At(0))) <= 0
        || !block.Read(0, &bounds, sizeof(bounds)))
        return false;
    // Near the row's left end, on its text: the row may be wider than the list shows.
    POINT point{bounds.left + 20, (bounds.top + bounds.bottom) / 2};
    ClientToScreen(list, &point);
    return ClickAt(list, point, withControl);
}

}  // namespace e2e
