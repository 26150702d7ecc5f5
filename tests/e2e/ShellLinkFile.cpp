#include "tests/e2e/ShellLinkFile.h"

#include <objbase.h>
#include <shlguid.h>
#include <shobjidl.h>

#include <vector>

namespace e2e {
namespace {

// Holds one reference and releases it on every way out.
template <typename T>
class ComRef {
public:
    ComRef() = default;
    ComRef(const ComRef&) = delete;
    ComRef& operator=(const ComRef&) = delete;
    ~ComRef()
    {
        if (m_p)
            m_p->Release();
    }
    T* operator->() const { return m_p; }
    T** Out() { return &m_p; }
    void** OutVoid() { return reinterpret_cast<void**>(&m_p); }

private:
    T* m_p = nullptr;
};

// COM for the length of one call.
class ComScope {
public:
    ComScope() : m_started(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {}
    ComScope(const ComScope&) = delete;
    ComScope& operator=(const ComScope&) = delete;
    ~ComScope()
    {
        if (m_started)
            CoUninitialize();
    }

private:
    bool m_started;
};

std::wstring Widen(const std::string& text)
{
    const int units = MultiByteToWideChar(CP_ACP, 0, text.c_str(), -1, nullptr, 0);
    std::wstring wide(units > 0 ? units : 1, L'\0');
    MultiByteToWideChar(CP_ACP, 0, text.c_str(), -1, &wide[0], units);
    wide.resize(wide.size() - 1);
    return wide;
}

HRESULT OpenLinkObject(ComRef<IShellLinkA>* link, ComRef<IPersistFile>* file)
{
    HRESULT hr = CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkA,
                                  link->OutVoid());
    if (FAILED(hr))
        return hr;
    return (*link)->QueryInterface(IID_IPersistFile, file->OutVoid());
}

}  // namespace

HRESULT WriteShortcut(const std::string& linkPath, const ShortcutFacts& facts)
{
    ComScope com;
    ComRef<IShellLinkA> link;
    ComRef<IPersistFile> file;
    HRESULT hr = OpenLinkObject(&link, &file);
    if (FAILED(hr))
        return hr;
    if (FAILED(hr = link->SetPath(facts.target.c_str())))
        return hr;
    if (FAILED(hr = link->SetArguments(facts.arguments.c_str())))
        return hr;
    if (FAILED(hr = link->SetWorkingDirectory(facts.workDir.c_str())))
        return hr;
    if (!facts.iconPath.empty() && FAILED(hr = link->SetIconLocation(facts.iconPath.c_str(), facts.iconIndex)))
        return hr;

    // A read-only file left by an earlier run can't be overwritten.
    const DWORD old = GetFileAttributesA(linkPath.c_str());
    if (old != INVALID_FILE_ATTRIBUTES && (old & FILE_ATTRIBUTE_READONLY))
        SetFileAttributesA(linkPath.c_str(), old & ~FILE_ATTRIBUTE_READONLY);
    if (FAILED(hr = file->Save(Widen(linkPath).c_str(), TRUE)))
        return hr;
    if (facts.readOnly && !SetFileAttributesA(linkPath.c_str(), FILE_ATTRIBUTE_READONLY))
        return HRESULT_FROM_WIN32(GetLastError());
    return S_OK;
}

HRESULT ReadShortcut(const std::string& linkPath, ShortcutFacts* facts)
{
    ComScope com;
    ComRef<IShellLinkA> link;
    ComRef<IPersistFile> file;
    HRESULT hr = OpenLinkObject(&link, &file);
    if (FAILED(hr))
        return hr;
    if (FAILED(hr = file->Load(Widen(linkPath).c_str(), STGM_READ)))
        return hr;

    std::vector<char> buffer(32768);
    const int capacity = static_cast<int>(buffer.size());
    // A shortcut without a file-system target answers S_FALSE and an empty path.
    if (FAILED(hr = link->GetPath(buffer.data(), capacity, nullptr, SLGP_RAWPATH)))
        return hr;
    facts->target = buffer.data();
    if (FAILED(hr = link->GetArguments(buffer.data(), capacity)))
        return hr;
    facts->arguments = buffer.data();
    if (FAILED(hr = link->GetWorkingDirectory(buffer.data(), capacity)))
        return hr;
    facts->workDir = buffer.data();
    if (FAILED(hr = link->GetIconLocation(buffer.data(), capacity, &facts->iconIndex)))
        return hr;
    facts->iconPath = buffer.data();

    const DWORD attributes = GetFileAttributesA(linkPath.c_str());
    facts->readOnly = attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY);
    return S_OK;
}

}  // namespace e2e
