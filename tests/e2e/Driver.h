#pragma once
// Drives the unmodified Linkwright.exe under Wine as a person would: its windows are read
// through messages, the mouse and the keys are pressed through the system's input queue, files
// are dropped by a real OLE drag, and shortcuts are made and read through the shell.
// Every wait has a deadline, so a program that hangs fails the check instead of the run.
// Each of its users (the checks, the sample tool) is one source file, so it lives in this header.

#include <windows.h>

#include <commctrl.h>
#include <ole2.h>
#include <shlobj.h>
#include <wrl/client.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <future>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "app/Resource.h"

namespace e2e {

using Names = std::vector<std::string>;
using Condition = std::function<bool()>;
inline constexpr char kDialogTitle[] = "Linkwright v1.0 for Zelmardeck";

// Texts between the check's UTF-8 and the system's UTF-16, converted by the path type, which
// leaves the text as it is.
inline std::wstring Wide(const std::string& text) { return std::filesystem::u8path(text).wstring(); }
inline std::string Utf8(const wchar_t* text) { return std::filesystem::path(text).u8string(); }

[[nodiscard]] inline bool WaitUntil(const Condition& condition, DWORD ms = 15000)
{
    for (const DWORD start = GetTickCount(); !condition(); Sleep(50))
        if (GetTickCount() - start >= ms)
            return false;
    return true;
}

// A message to another process's window, given up after 5 s (then -1).
inline LRESULT Ask(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    DWORD_PTR result = 0;
    return SendMessageTimeoutA(window, message, wParam, lParam, SMTO_ABORTIFHUNG, 5000, &result) ? result : -1;
}

inline std::string Text(HWND window)
{
    std::string text(std::max<LRESULT>(Ask(window, WM_GETTEXTLENGTH, 0, 0), 0) + 1, '\0');
    text.resize(std::max<LRESULT>(Ask(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(&text[0])), 0));
    return text;
}

// True once the window's thread is between two handlers.
[[nodiscard]] inline bool WaitIdle(HWND window) { return SendMessageTimeoutA(window, WM_NULL, 0, 0, SMTO_NORMAL, 15000, nullptr); }

inline POINT Centre(HWND window)
{
    RECT frame{};
    GetWindowRect(window, &frame);
    return POINT{(frame.left + frame.right) / 2, (frame.top + frame.bottom) / 2};
}

// A program started by a check, ended when the object goes if it still runs.
struct CRun {
    ~CRun()
    {
        if (m_process.hProcess && !WaitForEnd(0))
            TerminateProcess(m_process.hProcess, 255);
        CloseHandle(m_process.hProcess);
        CloseHandle(m_process.hThread);
    }

    [[nodiscard]] bool Start(const std::string& exe, const std::string& arguments, const std::string& folder)
    {
        std::string line = "\"" + exe + "\" " + arguments;
        STARTUPINFOA startup{sizeof(startup)};
        return CreateProcessA(exe.c_str(), &line[0], nullptr, nullptr, FALSE, 0, nullptr,
                              folder.empty() ? nullptr : folder.c_str(), &startup, &m_process);
    }

    [[nodiscard]] bool WaitForEnd(DWORD ms) const { return WaitForSingleObject(m_process.hProcess, ms) == WAIT_OBJECT_0; }

    // A visible top-level window of the process with this title (any if empty), or null once ms
    // have passed or the process has ended.
    HWND WaitForWindow(const std::string& title, DWORD ms = 15000) const
    {
        HWND found = nullptr;
        static_cast<void>(WaitUntil([&] {
            for (HWND window = nullptr; !found && (window = FindWindowExA(nullptr, window, nullptr, nullptr));)
                if (DWORD owner = 0; GetWindowThreadProcessId(window, &owner) && owner == m_process.dwProcessId
                                     && IsWindowVisible(window) && (title.empty() || Text(window) == title))
                    found = window;
            return found || WaitForEnd(0);
        }, ms));
        return found;
    }

    PROCESS_INFORMATION m_process{};
};

[[nodiscard]] inline bool WriteBytes(const std::string& path, const std::string& bytes)
{
    std::ofstream out(path, std::ios::binary);
    return out.write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush().good();
}

inline std::string ReadBytes(const std::string& path)   // "<missing>" when it cannot be read
{
    std::ifstream in(path, std::ios::binary);
    return in ? std::string(std::istreambuf_iterator<char>(in), {}) : "<missing>";
}

// The screen under the window (the desktop window: all of it) as a .ppm picture.
[[nodiscard]] inline bool Picture(HWND window, const std::string& path)
{
    Sleep(300);   // let it finish painting
    RECT rect{};
    GetWindowRect(window, &rect);
    const int width = rect.right - rect.left, height = rect.bottom - rect.top;
    BITMAPINFO info{{sizeof(BITMAPINFOHEADER), width, -height, 1, 32, BI_RGB}};
    const unsigned char* pixel = nullptr;
    const HDC screen = GetDC(nullptr), memory = CreateCompatibleDC(screen);
    const HBITMAP bitmap = CreateDIBSection(screen, &info, DIB_RGB_COLORS, (void**)&pixel, nullptr, 0);
    const HGDIOBJ old = SelectObject(memory, bitmap);
    std::string ppm = "P6\n" + std::to_string(width) + " " + std::to_string(height) + "\n255\n";
    const bool grabbed = BitBlt(memory, 0, 0, width, height, screen, rect.left, rect.top, SRCCOPY) && GdiFlush();
    for (int i = 0; grabbed && i < width * height; ++i, pixel += 4)
        ppm += {static_cast<char>(pixel[2]), static_cast<char>(pixel[1]), static_cast<char>(pixel[0])};
    DeleteObject(SelectObject(memory, old));
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);
    return grabbed && WriteBytes(path, ppm);
}

// Each event carries the place, on a scale of 0 to 65535: a pointer report of the display
// that comes in between must not move a press elsewhere.
inline bool SendPointer(POINT at, DWORD buttonEvent = 0)
{
    INPUT input{INPUT_MOUSE};
    input.mi = MOUSEINPUT{MulDiv(at.x, 65535, GetSystemMetrics(SM_CXSCREEN) - 1),
                          MulDiv(at.y, 65535, GetSystemMetrics(SM_CYSCREEN) - 1)};
    input.mi.dwFlags = MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE | buttonEvent;
    return SendInput(1, &input, sizeof(input)) == 1;
}

// The pointer brought to rest at a point of a window, or of its child there, as a person could
// click there: still there at three looks in a row after the move and the program's handling of
// it (moved again when it is not), with nothing covering the point or holding the capture. A
// tool tip left by the pointer's earlier place goes once it rests.
[[nodiscard]] inline bool RestPointer(HWND target, POINT at)
{
    int looks = -1;
    GUITHREADINFO thread{sizeof(thread)};
    return WaitUntil([&] {
        POINT now{};
        const HWND shown = WindowFromPoint(at);
        if (looks >= 0 && GetCursorPos(&now) && now.x == at.x && now.y == at.y)
            return ++looks >= 3 && GetGUIThreadInfo(GetWindowThreadProcessId(target, nullptr), &thread)
                   && !thread.hwndCapture && (shown == target || IsChild(target, shown));
        looks = SendPointer(at) && WaitIdle(GetAncestor(target, GA_ROOT)) ? 0 : -1;
        return false;
    }, 10000);
}

// A click at a point of a window, or of its child there, with its dialog brought forward.
[[nodiscard]] inline bool ClickAt(HWND target, POINT at)
{
    const HWND dialog = GetAncestor(target, GA_ROOT);
    if (GetForegroundWindow() != dialog)   // activated anew, it would move its focus
        SetForegroundWindow(dialog);
    return RestPointer(target, at) && SendPointer(at, MOUSEEVENTF_LEFTDOWN) && SendPointer(at, MOUSEEVENTF_LEFTUP);
}

// A click on a push button; false if a person could not press it (hidden, disabled, a box up).
[[nodiscard]] inline bool Press(HWND dialog, int id)
{
    const HWND button = GetDlgItem(dialog, id);   // hidden or disabled, it is not where the pointer rests
    return button && IsWindowEnabled(dialog) && ClickAt(button, Centre(button));
}

// A key pressed and let go so many times, once the window or a child of it has the focus:
// keys go where the focus is when they come in.
[[nodiscard]] inline bool PressKey(HWND window, WORD key, int times)
{
    GUITHREADINFO thread{sizeof(thread)};
    const auto focused = [&] {
        return GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &thread)
               && (thread.hwndFocus == window || IsChild(window, thread.hwndFocus));
    };
    std::vector<INPUT> keys(2 * times, INPUT{INPUT_KEYBOARD});
    for (size_t i = 0; i < keys.size(); ++i)
        keys[i].ki = KEYBDINPUT{key, 0, i % 2 ? KEYEVENTF_KEYUP : 0u};
    return WaitUntil(focused, 5000) && SendInput(keys.size(), keys.data(), sizeof(INPUT)) == keys.size();
}

inline Names ComboEntries(HWND combo)
{
    // Asked in wide form: Wine hands the narrow form of this message across processes as wide text.
    Names entries;
    for (LRESULT i = 0, count = Ask(combo, CB_GETCOUNT, 0, 0); i < count; ++i) {
        std::wstring text(256, L'\0');
        SendMessageTimeoutW(combo, CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(&text[0]), SMTO_ABORTIFHUNG, 5000, nullptr);
        entries.push_back(Utf8(text.c_str()));
    }
    return entries;
}

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
// The hand of a drag: it carries the pointer from one point to the other in 8 rounds of the
// drag loop and drops 4 rounds later. It lives on the drag thread's stack, so nobody counts its
// references.
struct CHand : IDropSource {
    CHand(POINT start, POINT end) : from(start), to(end) {}
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override
    {
        *object = IsEqualIID(iid, IID_IDropSource) || IsEqualIID(iid, IID_IUnknown) ? this : nullptr;
        return *object ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE GiveFeedback(DWORD) override { return DRAGDROP_S_USEDEFAULTCURSORS; }
    HRESULT STDMETHODCALLTYPE QueryContinueDrag(BOOL, DWORD) override
    {
        const int step = std::min(++rounds, 8);
        const POINT at{from.x + (to.x - from.x) * step / 8, from.y + (to.y - from.y) * step / 8};
        return rounds > 12 ? DRAGDROP_S_DROP : SendPointer(at) ? S_OK : DRAGDROP_S_CANCEL;
    }

    POINT from, to;
    int rounds = 0;
};
#pragma GCC diagnostic pop

// Linkwright's dialog worked a step at a time: each step waits for what it brings about and
// for the end of its handler, and says whether all of that came about.
struct Session {
    HWND Control(int id) const { return GetDlgItem(dialog, id); }
    bool Enabled(int id) const { return IsWindowEnabled(Control(id)) != 0; }
    int Rows() const { return static_cast<int>(Ask(Control(IDC_SELECTED_LIST), LVM_GETITEMCOUNT, 0, 0)); }

    // A drag of files of one folder onto the dialog's centre, on a thread of its own so that the
    // check can answer a box that the drop shows. Dropped waits for its end, then for taken: the
    // drop's analysis runs after the drop, from a posted message.
    void Drag(const Names& names)
    {
        std::packaged_task<DWORD()> task([window = dialog, names] {
            // OLE for the drag's while, to its end after the objects below are given back.
            const struct Ole { Ole() { OleInitialize(nullptr); } ~Ole() { OleUninitialize(); } } ole;
            DWORD answer = DROPEFFECT_NONE;
            // The data object of the files' folder in the shell, as a drag from a folder window
            // carries it.
            std::vector<std::unique_ptr<ITEMIDLIST, decltype(&ILFree)>> items;
            std::vector<LPCITEMIDLIST> children;
            for (const std::string& name : names)
                if (const PIDLIST_ABSOLUTE item = ILCreateFromPathW(Wide(name).c_str()))
                    children.push_back(ILFindLastID(items.emplace_back(item, &ILFree).get()));
            Microsoft::WRL::ComPtr<IShellFolder> folder;
            Microsoft::WRL::ComPtr<IDataObject> data;
            if (items.size() == names.size() && SUCCEEDED(SHBindToParent(items[0].get(), IID_PPV_ARGS(&folder), nullptr))
                && SUCCEEDED(folder->GetUIObjectOf(nullptr, children.size(), children.data(), IID_IDataObject, nullptr, &data))) {
                // From the screen's bottom right corner, clear of the centred dialog.
                CHand hand({GetSystemMetrics(SM_CXSCREEN) - 30, GetSystemMetrics(SM_CYSCREEN) - 30}, Centre(window));
                DoDragDrop(data.Get(), &hand, DROPEFFECT_COPY | DROPEFFECT_LINK, &answer);
            }
            return answer;
        });
        drag = task.get_future().share();
        std::thread(std::move(task)).detach();
    }

    [[nodiscard]] bool Dropped(const Condition& taken)
    {
        return drag.wait_for(std::chrono::seconds(20)) == std::future_status::ready && WaitUntil(taken) && WaitIdle(dialog);
    }
    [[nodiscard]] bool Drop(const Names& names, const Condition& taken) { Drag(names); return Dropped(taken); }
    [[nodiscard]] bool Click(int id, const Condition& done) { return Press(dialog, id) && WaitUntil(done) && WaitIdle(dialog); }
    [[nodiscard]] bool Save() { return Click(IDOK, [&] { return !Enabled(IDOK) && Enabled(IDC_RESTORE); }); }
    // The profile made the combo box's current entry from the keyboard, as a person does: a click
    // on the box's edit part (all of it but the arrow), then an arrow key for each entry between
    // the current one and it. Then Add, which brings one more row.
    [[nodiscard]] bool Add(const std::string& profile)
    {
        const HWND combo = Control(IDC_PROFILE_COMBO);
        const Names entries = ComboEntries(combo);
        const LRESULT index = std::find(entries.begin(), entries.end(), profile) - entries.begin();
        const LRESULT now = Ask(combo, CB_GETCURSEL, 0, 0);
        return index < static_cast<LRESULT>(entries.size()) && ClickAt(combo, Centre(combo))
               && PressKey(combo, index < now ? VK_UP : VK_DOWN, std::max(index - now, now - index))
               && WaitUntil([&] { return Ask(combo, CB_GETCURSEL, 0, 0) == index; })
               && Click(IDC_ADD, [&, rows = Rows() + 1] { return Rows() == rows; });
    }

    HWND dialog = nullptr;
    std::shared_future<DWORD> drag;   // the last drag's DROPEFFECT_..., shared with its thread, which may outlive a check
};

// A shortcut as the shell's wide interface has it; texts in UTF-8. icon empty: none of its own.
struct Shortcut {
    std::string target, arguments, folder, icon;
    int index = 0;
    bool readOnly = false;
};

// Runs work on a new shell link object through its wide interface. COM, once started on the
// thread, stays for the process: the checks' thread comes back to it again and again.
inline bool WithLink(const std::function<bool(IShellLinkW*, IPersistFile*)>& work)
{
    Microsoft::WRL::ComPtr<IShellLinkW> link;
    Microsoft::WRL::ComPtr<IPersistFile> file;
    return SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))
           && SUCCEEDED(CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&link)))
           && SUCCEEDED(link.As(&file)) && work(link.Get(), file.Get());
}

[[nodiscard]] inline bool WriteShortcut(const std::string& path, const Shortcut& facts)
{
    return WithLink([&](IShellLinkW* link, IPersistFile* file) {
        return SUCCEEDED(link->SetPath(Wide(facts.target).c_str()))
               && SUCCEEDED(link->SetArguments(Wide(facts.arguments).c_str()))
               && SUCCEEDED(link->SetWorkingDirectory(Wide(facts.folder).c_str()))
               && (facts.icon.empty() || SUCCEEDED(link->SetIconLocation(Wide(facts.icon).c_str(), facts.index)))
               && SUCCEEDED(file->Save(Wide(path).c_str(), TRUE))
               && (!facts.readOnly || SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY));
    });
}

// The shortcut's fields one per line, for comparisons that show what differs and for reports.
inline std::string Describe(const Shortcut& facts)
{
    return "  target     " + facts.target + "\r\n  arguments  " + facts.arguments + "\r\n  folder     " + facts.folder
           + "\r\n  icon       " + facts.icon + "," + std::to_string(facts.index) + (facts.readOnly ? " read-only\r\n" : "\r\n");
}

inline std::string ReadShortcut(const std::string& path)
{
    Shortcut facts;
    std::wstring text(32768, L'\0');
    const auto got = [&](HRESULT hr, std::string& field) { field = Utf8(text.c_str()); return SUCCEEDED(hr); };
    // A shortcut without a file-system target answers S_FALSE and an empty path.
    const bool read = WithLink([&](IShellLinkW* link, IPersistFile* file) {
        return SUCCEEDED(file->Load(Wide(path).c_str(), STGM_READ))
               && got(link->GetPath(&text[0], 32768, nullptr, SLGP_RAWPATH), facts.target)
               && got(link->GetArguments(&text[0], 32768), facts.arguments)
               && got(link->GetWorkingDirectory(&text[0], 32768), facts.folder)
               && got(link->GetIconLocation(&text[0], 32768, &facts.index), facts.icon);
    });
    facts.readOnly = GetFileAttributesA(path.c_str()) & FILE_ATTRIBUTE_READONLY;
    return read ? Describe(facts) : "<unreadable>";
}

}  // namespace e2e
