#include "tests/e2e/Dragger.h"

#include <ole2.h>
#include <shlobj.h>

#include <cstring>

#include "tests/e2e/Controls.h"

namespace e2e {

namespace {

const int kSteps = 8;          // rounds that carry the pointer to the drop point
const int kHoverRounds = 4;    // rounds over the drop point before the button is let go

const char kFilesClass[] = "LinkwrightCheckFiles";

// Where the files lie: a small window in a corner of the screen, clear of the target.
HWND CreateFilesWindow(HWND target)
{
    WNDCLASSA type{};
    type.lpfnWndProc = DefWindowProcA;
    type.hInstance = GetModuleHandleA(nullptr);
    type.hCursor = LoadCursor(nullptr, IDC_ARROW);
    type.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
    type.lpszClassName = kFilesClass;
    RegisterClassA(&type);   // fails harmlessly when an earlier drag registered it

    const int size = 48;
    const int margin = 8;
    const int right = GetSystemMetrics(SM_CXSCREEN) - size - margin;
    const int bottom = GetSystemMetrics(SM_CYSCREEN) - size - margin;
    const POINT corners[] = {{margin, margin}, {right, margin}, {margin, bottom}, {right, bottom}};
    RECT frame{};
    GetWindowRect(target, &frame);
    for (const POINT& corner : corners) {
        const RECT place{corner.x, corner.y, corner.x + size, corner.y + size};
        RECT overlap{};
        if (!IntersectRect(&overlap, &place, &frame))
            return CreateWindowExA(WS_EX_TOPMOST | WS_EX_TOOLWINDOW, kFilesClass, "Files",
                                   WS_POPUP | WS_BORDER | WS_VISIBLE, place.left, place.top, size, size, nullptr,
                                   nullptr, type.hInstance, nullptr);
    }
    return nullptr;
}

// Presses the left button on the files' window: true once the press has reached it.
bool PressOn(HWND files)
{
    const POINT point = Centre(files);
    if (!SendPointer(point) || !SendPointer(point, MOUSEEVENTF_LEFTDOWN))
        return false;
    const DWORD start = GetTickCount();
    MSG message;
    while (GetTickCount() - start < 5000) {
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
            if (message.hwnd == files && message.message == WM_LBUTTONDOWN)
                return true;
            DispatchMessageA(&message);
        }
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 50, QS_ALLINPUT);
    }
    return false;
}

}  // namespace

HRESULT STDMETHODCALLTYPE CHandDrag::QueryInterface(REFIID iid, void** object)
{
    if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDropSource)) {
        *object = this;
        return S_OK;
    }
    *object = nullptr;
    return E_NOINTERFACE;
}

HRESULT STDMETHODCALLTYPE CHandDrag::QueryContinueDrag(BOOL escape, DWORD keyState)
{
    if (escape)
        return DRAGDROP_S_CANCEL;
    if (!(keyState & MK_LBUTTON))
        return DRAGDROP_S_DROP;
    ++m_rounds;
    bool sent = true;
    if (m_rounds <= kSteps) {
        const POINT step{m_from.x + (m_to.x - m_from.x) * m_rounds / kSteps,
                         m_from.y + (m_to.y - m_from.y) * m_rounds / kSteps};
        sent = SendPointer(step);
    } else if (m_rounds == kSteps + kHoverRounds) {
        sent = SendPointer(m_to, MOUSEEVENTF_LEFTUP);
    }
    return sent ? S_OK : DRAGDROP_S_CANCEL;
}

CFileData::CFileData(std::string bytes) : m_bytes(std::move(bytes)) {}

HRESULT STDMETHODCALLTYPE CFileData::QueryInterface(REFIID iid, void** object)
{
    if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDataObject)) {
        *object = this;
        return S_OK;
    }
    *object = nullptr;
    return E_NOINTERFACE;
}

HRESULT STDMETHODCALLTYPE CFileData::GetData(FORMATETC* format, STGMEDIUM* medium)
{
    if (QueryGetData(format) != S_OK)
        return DV_E_FORMATETC;
    HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, m_bytes.size());
    if (!block)
        return E_OUTOFMEMORY;
    std::memcpy(GlobalLock(block), m_bytes.data(), m_bytes.size());
    GlobalUnlock(block);
    medium->tymed = TYMED_HGLOBAL;
    medium->hGlobal = block;
    medium->pUnkForRelease = nullptr;
    return S_OK;
}

HRESULT STDMETHODCALLTYPE CFileData::QueryGetData(FORMATETC* format)
{
    return format->cfFormat == CF_HDROP && (format->tymed & TYMED_HGLOBAL) ? S_OK : DV_E_FORMATETC;
}

HRESULT STDMETHODCALLTYPE CFileData::GetCanonicalFormatEtc(FORMATETC*, FORMATETC* out)
{
    out->ptd = nullptr;
    return E_NOTIMPL;
}

std::string DropFilesBlock(const std::vector<std::string>& names, bool wide)
{
    DROPFILES header = {};
    header.pFiles = sizeof(header);
    header.fWide = wide ? TRUE : FALSE;
    std::string block(reinterpret_cast<const char*>(&header), sizeof(header));
    const std::string terminator(wide ? 2 : 1, '\0');
    for (const std::string& name : names) {
        for (char ch : name) {
            block += ch;
            if (wide)
                block += '\0';
        }
        block += terminator;
    }
    return block + terminator;
}


CDrag::~CDrag()
{
    if (m_thread.joinable())
        m_thread.detach();
}

void CDrag::Start(HWND window, const std::vector<std::string>& names, bool wide)
{
    m_state = std::make_shared<State>();
    m_state->ended = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    m_thread = std::thread([state = m_state, window, block = DropFilesBlock(names, wide)]() {
        OleInitialize(nullptr);
        const HWND files = CreateFilesWindow(window);
        if (files && PressOn(files)) {
            CFileData data(block);
            CHandDrag hand(Centre(files), Centre(window));
            DoDragDrop(&data, &hand, DROPEFFECT_COPY | DROPEFFECT_LINK, &state->effect);
        }
        // A drag that failed to start or ended on its own leaves no button down.
        if (GetAsyncKeyState(VK_LBUTTON) & 0x8000)
            static_cast<void>(SendPointer(Centre(window), MOUSEEVENTF_LEFTUP));
        if (files)
            DestroyWindow(files);
        OleUninitialize();
        SetEvent(state->ended);
    });
}

bool CDrag::Finish(DWORD timeoutMs, DWORD* effect)
{
    if (!m_state || WaitForSingleObject(m_state->ended, timeoutMs) != WAIT_OBJECT_0)
        return false;
    m_thread.join();
    *effect = m_state->effect;
    return true;
}

bool DragFiles(HWND window, const std::vector<std::string>& names, bool wide, DWORD* effect)
{
    CDrag drag;
    drag.Start(window, names, wide);
    return drag.Finish(20000, effect);
}

}  // namespace e2e
