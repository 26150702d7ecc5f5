#include "tests/e2e/Driver.h"

#include <cstdio>
#include <cstdlib>

namespace e2e {

const char kDialogTitle[] = "Linkwright v1.0 for Zelmardeck";
namespace {

constexpr DWORD kPollMs = 50;
constexpr UINT kMessageTimeoutMs = 5000;

LRESULT AskWide(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    DWORD_PTR result = 0;
    if (!SendMessageTimeoutW(window, message, wParam, lParam, SMTO_ABORTIFHUNG, kMessageTimeoutMs, &result))
        return -1;
    return static_cast<LRESULT>(result);
}

std::string Narrow(const wchar_t* text)
{
    const int bytes = WideCharToMultiByte(CP_ACP, 0, text, -1, nullptr, 0, nullptr, nullptr);
    std::string narrow(bytes > 0 ? static_cast<size_t>(bytes) : 1, '\0');
    WideCharToMultiByte(CP_ACP, 0, text, -1, &narrow[0], bytes, nullptr, nullptr);
    narrow.resize(narrow.size() - 1);
    return narrow;
}

// A screen rectangle as 32-bit pixels, top row first.
struct Pixels {
    int width = 0;
    int height = 0;
    std::vector<DWORD> data;
};

// Copies the rectangle through a top-down 32-bit DIB section. With source null it reads the
// screen, otherwise the memory DC given.
bool Grab(HDC source, int x, int y, int width, int height, Pixels* out)
{
    if (width <= 0 || height <= 0)
        return false;
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    void* bits = nullptr;
    const HDC screen = GetDC(nullptr);
    const HDC memory = CreateCompatibleDC(screen);
    const HBITMAP bitmap = CreateDIBSection(screen, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    bool ok = false;
    if (memory && bitmap) {
        const HGDIOBJ old = SelectObject(memory, bitmap);
        ok = BitBlt(memory, 0, 0, width, height, source ? source : screen, x, y, SRCCOPY) != 0;
        GdiFlush();
        if (ok) {
            const DWORD* pixels = static_cast<const DWORD*>(bits);
            out->width = width;
            out->height = height;
            out->data.assign(pixels, pixels + static_cast<size_t>(width) * height);
        }
        SelectObject(memory, old);
    }
    if (bitmap)
        DeleteObject(bitmap);
    if (memory)
        DeleteDC(memory);
    ReleaseDC(nullptr, screen);
    return ok;
}

// The icon drawn as a static control draws it, on a plain ground of the given colour.
bool DrawReference(HICON icon, int width, int height, COLORREF ground, Pixels* out)
{
    const HDC screen = GetDC(nullptr);
    const HDC memory = CreateCompatibleDC(screen);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, width, height);
    ReleaseDC(nullptr, screen);
    if (!memory || !bitmap) {
        if (bitmap)
            DeleteObject(bitmap);
        if (memory)
            DeleteDC(memory);
        return false;
    }
    const HGDIOBJ old = SelectObject(memory, bitmap);
    const HBRUSH brush = CreateSolidBrush(ground);
    const RECT all{0, 0, width, height};
    FillRect(memory, &all, brush);
    DeleteObject(brush);
    DrawIconEx(memory, 0, 0, icon, width, height, 0, nullptr, DI_NORMAL);
    const bool ok = Grab(memory, 0, 0, width, height, out);
    SelectObject(memory, old);
    DeleteObject(bitmap);
    DeleteDC(memory);
    return ok;
}

bool Near(DWORD a, DWORD b)
{
    for (int shift = 0; shift < 24; shift += 8) {
        const int difference = static_cast<int>((a >> shift) & 0xFF) - static_cast<int>((b >> shift) & 0xFF);
        if (std::abs(difference) > 8)
            return false;
    }
    return true;
}

// Share of the icon's opaque pixels that the screen shows unchanged. Pixels that differ
// between a black and a white ground are (partly) transparent and say nothing.
double Likeness(const Pixels& shown, HICON icon)
{
    Pixels onBlack;
    Pixels onWhite;
    if (!DrawReference(icon, shown.width, shown.height, RGB(0, 0, 0), &onBlack)
        || !DrawReference(icon, shown.width, shown.height, RGB(255, 255, 255), &onWhite))
        return 0.0;
    size_t opaque = 0;
    size_t same = 0;
    for (size_t i = 0; i < shown.data.size(); ++i) {
        if (!Near(onBlack.data[i], onWhite.data[i]))
            continue;
        ++opaque;
        same += Near(onBlack.data[i], shown.data[i]) ? 1 : 0;
    }
    return opaque == 0 ? 0.0 : static_cast<double>(same) / static_cast<double>(opaque);
}

MessageIcon TellIcon(HWND iconControl)
{
    RECT rect{};
    GetWindowRect(iconControl, &rect);
    Pixels shown;
    if (!Grab(nullptr, rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top, &shown))
        return MessageIcon::Unknown;
    struct Candidate {
        MessageIcon kind;
        LPCSTR id;
    };
    const Candidate candidates[] = {
        {MessageIcon::Exclamation, IDI_EXCLAMATION},
        {MessageIcon::Hand, IDI_HAND},
        {MessageIcon::Question, IDI_QUESTION},
        {MessageIcon::Asterisk, IDI_ASTERISK},
    };
    MessageIcon best = MessageIcon::Unknown;
    double bestLikeness = 0.9;
    for (const Candidate& candidate : candidates) {
        const double likeness = Likeness(shown, LoadIconA(nullptr, candidate.id));
        if (likeness > bestLikeness) {
            bestLikeness = likeness;
            best = candidate.kind;
        }
    }
    return best;
}

struct WindowSearch {
    DWORD processId;
    bool visibleOnly;
    std::vector<HWND>* found;
};

BOOL CALLBACK CollectTopWindow(HWND window, LPARAM context)
{
    const WindowSearch* search = reinterpret_cast<const WindowSearch*>(context);
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    if (owner == search->processId && (!search->visibleOnly || IsWindowVisible(window)))
        search->found->push_back(window);
    return TRUE;
}

BOOL CALLBACK CollectChild(HWND window, LPARAM context)
{
    reinterpret_cast<std::vector<HWND>*>(context)->push_back(window);
    return TRUE;
}

std::vector<HWND> Children(HWND parent)
{
    std::vector<HWND> children;
    EnumChildWindows(parent, CollectChild, reinterpret_cast<LPARAM>(&children));
    return children;
}

bool WriteBitmapFile(const std::string& path, const Pixels& pixels)
{
    // 24-bit rows, bottom row first, each padded to 4 bytes.
    const int rowBytes = (pixels.width * 3 + 3) & ~3;
    const DWORD imageBytes = static_cast<DWORD>(rowBytes) * pixels.height;
    BITMAPFILEHEADER file{};
    BITMAPINFOHEADER info{};
    file.bfType = 0x4D42;
    file.bfOffBits = sizeof(file) + sizeof(info);
    file.bfSize = file.bfOffBits + imageBytes;
    info.biSize = sizeof(info);
    info.biWidth = pixels.width;
    info.biHeight = pixels.height;
    info.biPlanes = 1;
    info.biBitCount = 24;
    info.biCompression = BI_RGB;
    info.biSizeImage = imageBytes;

    std::vector<unsigned char> rows(imageBytes, 0);
    for (int y = 0; y < pixels.height; ++y) {
        unsigned char* row = &rows[static_cast<size_t>(pixels.height - 1 - y) * rowBytes];
        for (int x = 0; x < pixels.width; ++x) {
            const DWORD pixel = pixels.data[static_cast<size_t>(y) * pixels.width + x];
            row[x * 3] = static_cast<unsigned char>(pixel & 0xFF);
            row[x * 3 + 1] = static_cast<unsigned char>((pixel >> 8) & 0xFF);
            row[x * 3 + 2] = static_cast<unsigned char>((pixel >> 16) & 0xFF);
        }
    }
    FILE* out = std::fopen(path.c_str(), "wb");
    if (!out)
        return false;
    const bool ok = std::fwrite(&file, sizeof(file), 1, out) == 1 && std::fwrite(&info, sizeof(info), 1, out) == 1
                    && std::fwrite(rows.data(), 1, rows.size(), out) == rows.size();
    return std::fclose(out) == 0 && ok;
}

}  // namespace

CProgramRun::~CProgramRun()
{
    if (!m_process.hProcess)
        return;
    if (!HasEnded())
        Kill();
    CloseHandle(m_process.hThread);
    CloseHandle(m_process.hProcess);
}

bool CProgramRun::Start(const std::string& exePath, const std::string& arguments, const std::string& folder)
{
    std::string line = "\"" + exePath + "\"";
    if (!arguments.empty())
        line += " " + arguments;
    STARTUPINFOA startup{};
    startup.cb = sizeof(startup);
    if (CreateProcessA(exePath.c_str(), &line[0], nullptr, nullptr, FALSE, 0, nullptr,
                       folder.empty() ? nullptr : folder.c_str(), &startup, &m_process))
        return true;
    std::fprintf(stderr, "could not start %s (error %lu)\n", line.c_str(), GetLastError());
    return false;
}

bool CProgramRun::HasEnded() const
{
    return WaitForEnd(0);
}

bool CProgramRun::WaitForEnd(DWORD timeoutMs) const
{
    return m_process.hProcess && WaitForSingleObject(m_process.hProcess, timeoutMs) == WAIT_OBJECT_0;
}

DWORD CProgramRun::ExitCode() const
{
    DWORD code = STILL_ACTIVE;
    if (m_process.hProcess)
        GetExitCodeProcess(m_process.hProcess, &code);
    return code;
}

void CProgramRun::Kill()
{
    if (m_process.hProcess) {
        TerminateProcess(m_process.hProcess, 255);
        WaitForSingleObject(m_process.hProcess, 5000);
    }
}

std::vector<HWND> CProgramRun::TopWindows(bool visibleOnly) const
{
    std::vector<HWND> found;
    WindowSearch search{m_process.dwProcessId, visibleOnly, &found};
    EnumWindows(CollectTopWindow, reinterpret_cast<LPARAM>(&search));
    return found;
}

HWND CProgramRun::WaitForWindow(const std::string& title, DWORD timeoutMs) const
{
    const DWORD start = GetTickCount();
    for (;;) {
        for (HWND window : TopWindows())
            if (title.empty() || WindowText(window) == title)
                return window;
        if (GetTickCount() - start >= timeoutMs || HasEnded())
            return nullptr;
        Sleep(kPollMs);
    }
}

LRESULT Ask(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    DWORD_PTR result = 0;
    if (!SendMessageTimeoutA(window, message, wParam, lParam, SMTO_ABORTIFHUNG, kMessageTimeoutMs, &result))
        return -1;
    return static_cast<LRESULT>(result);
}

std::string WindowText(HWND window)
{
    const LRESULT length = Ask(window, WM_GETTEXTLENGTH, 0, 0);
    if (length <= 0)
        return std::string();
    std::vector<char> text(static_cast<size_t>(length) + 1, '\0');
    const LRESULT copied = Ask(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    return copied > 0 ? std::string(text.data(), static_cast<size_t>(copied)) : std::string();
}

std::string WindowClass(HWND window)
{
    char name[256] = {};
    GetClassNameA(window, name, sizeof(name));
    return name;
}

HWND Item(HWND dialog, int id)
{
    return GetDlgItem(dialog, id);
}

bool IsItemEnabled(HWND dialog, int id)
{
    const HWND item = Item(dialog, id);
    return item && IsWindowEnabled(item);
}

bool IsItemVisible(HWND dialog, int id)
{
    const HWND item = Item(dialog, id);
    return item && (GetWindowLongA(item, GWL_STYLE) & WS_VISIBLE);
}

std::vector<std::string> ComboEntries(HWND combo)
{
    std::vector<std::string> entries;
    const LRESULT count = Ask(combo, CB_GETCOUNT, 0, 0);
    for (LRESULT i = 0; i < count; ++i) {
        // Asked in wide form: Wine hands the narrow form of this message across processes
        // as wide text.
        const LRESULT length = AskWide(combo, CB_GETLBTEXTLEN, i, 0);
        std::vector<wchar_t> text(length > 0 ? static_cast<size_t>(length) + 1 : 1, L'\0');
        if (length > 0)
            AskWide(combo, CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(text.data()));
        entries.push_back(Narrow(text.data()));
    }
    return entries;
}

int ComboCurrent(HWND combo)
{
    const LRESULT current = Ask(combo, CB_GETCURSEL, 0, 0);
    return current == CB_ERR ? -1 : static_cast<int>(current);
}

bool WaitUntil(const std::function<bool()>& condition, DWORD timeoutMs)
{
    const DWORD start = GetTickCount();
    while (!condition()) {
        if (GetTickCount() - start >= timeoutMs)
            return false;
        Sleep(50);
    }
    return true;
}

bool WaitIdle(HWND window)
{
    return SendMessageTimeoutA(window, WM_NULL, 0, 0, SMTO_NORMAL, 15000, nullptr) != 0;
}

const char* MessageIconName(MessageIcon icon)
{
    switch (icon) {
    case MessageIcon::None: return "none";
    case MessageIcon::Exclamation: return "exclamation";
    case MessageIcon::Hand: return "hand";
    case MessageIcon::Question: return "question";
    case MessageIcon::Asterisk: return "asterisk";
    case MessageIcon::Unknown: break;
    }
    return "unknown";
}

bool ReadMessageBox(HWND box, MessageBoxFacts* facts)
{
    if (!box || !IsWindow(box))
        return false;
    facts->caption = WindowText(box);
    facts->text.clear();
    facts->icon = MessageIcon::None;
    facts->buttons.clear();
    HWND iconControl = nullptr;
    for (HWND child : Children(box)) {
        if (!IsWindowVisible(child))
            continue;
        const std::string kind = WindowClass(child);
        const LONG style = GetWindowLongA(child, GWL_STYLE);
        if (lstrcmpiA(kind.c_str(), "Static") == 0) {
            if ((style & SS_TYPEMASK) == SS_ICON) {
                if (Ask(child, STM_GETICON, 0, 0) != 0)
                    iconControl = child;
            } else if (facts->text.empty()) {
                facts->text = WindowText(child);
            }
        } else if (lstrcmpiA(kind.c_str(), "Button") == 0) {
            facts->buttons.push_back(WindowText(child));
        }
    }
    if (iconControl) {
        // The box may have come up a moment ago: let it finish drawing before the screen is read.
        SetForegroundWindow(box);
        RedrawWindow(box, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
        Sleep(300);
        facts->icon = TellIcon(iconControl);
    }
    return true;
}

bool SaveWindowPicture(HWND window, const std::string& bmpPath)
{
    RECT rect{};
    if (!GetWindowRect(window, &rect))
        return false;
    Pixels pixels;
    return Grab(nullptr, rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top, &pixels)
           && WriteBitmapFile(bmpPath, pixels);
}

std::string HostPath(const std::string& posixPath)
{
    std::string path = posixPath;
    for (char& c : path)
        if (c == '/')
            c = '\\';
    return posixPath.empty() || posixPath[0] != '/' ? path : "Z:" + path;
}

}  // namespace e2e
