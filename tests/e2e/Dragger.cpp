#include "tests/e2e/Dragger.h"

#include <ole2.h>
#include <shlobj.h>

#include <cstring>

namespace e2e {

HRESULT STDMETHODCALLTYPE CHeldDrag::QueryInterface(REFIID iid, void** object)
{
    if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDropSource)) {
        *object = this;
        return S_OK;
    }
    *object = nullptr;
    return E_NOINTERFACE;
}

HRESULT STDMETHODCALLTYPE CHeldDrag::QueryContinueDrag(BOOL, DWORD)
{
    Sleep(20);
    return ++m_rounds < 6 ? S_OK : DRAGDROP_S_DROP;
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
        RECT frame;
        GetWindowRect(window, &frame);
        SetForegroundWindow(window);
        SetCursorPos((frame.left + frame.right) / 2, (frame.top + frame.bottom) / 2);
        CFileData data(block);
        CHeldDrag source;
        DoDragDrop(&data, &source, DROPEFFECT_COPY | DROPEFFECT_LINK, &state->effect);
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
