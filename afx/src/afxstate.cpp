// Module states, the per-thread state and the handle maps.
#include "afxwin.h"
#include <unordered_map>
#include <utility>
#include <vector>

namespace {

struct ThreadState : _AFX_THREAD_STATE {
    std::vector<std::pair<const AFX_HANDLEMAP_CLASS*, CHandleMap*>> maps;
};

void WINAPI FreeThreadState(void* p)
{
    auto* ts = static_cast<ThreadState*>(p);
    if (ts == nullptr)
        return;
    for (auto& m : ts->maps)
        delete m.second;
    if (ts->m_hHookOldCbtFilter != nullptr)
        ::UnhookWindowsHookEx(ts->m_hHookOldCbtFilter);
    delete ts;
}

DWORD ThreadStateSlot()
{
    // Fiber-local storage: its callback frees a thread's state when the thread ends.
    static const DWORD slot = ::FlsAlloc(FreeThreadState);
    return slot;
}

}  // namespace

_AFX_THREAD_STATE* AFXAPI AfxGetThreadState()
{
    const DWORD slot = ThreadStateSlot();
    auto* ts = static_cast<ThreadState*>(::FlsGetValue(slot));
    if (ts == nullptr) {
        ts = new ThreadState();
        ts->m_pHandleMaps = &ts->maps;
        ::FlsSetValue(slot, ts);
    }
    return ts;
}

AFX_MODULE_STATE* AFXAPI AfxGetAppModuleState()
{
    static AFX_MODULE_STATE state = [] {
        HINSTANCE h = ::GetModuleHandleW(nullptr);
        return AFX_MODULE_STATE{h, h, nullptr, nullptr, FALSE};
    }();
    return &state;
}

AFX_MODULE_STATE* AFXAPI AfxGetModuleState()
{
    AFX_MODULE_STATE* p = AfxGetThreadState()->m_pModuleState;
    return p != nullptr ? p : AfxGetAppModuleState();
}

AFX_MODULE_STATE* AFXAPI AfxSetModuleState(AFX_MODULE_STATE* pNewState)
{
    _AFX_THREAD_STATE* ts = AfxGetThreadState();
    AFX_MODULE_STATE* prev = ts->m_pModuleState != nullptr ? ts->m_pModuleState : AfxGetAppModuleState();
    ts->m_pModuleState = pNewState;
    return prev;
}

AFX_MAINTAIN_STATE2::AFX_MAINTAIN_STATE2(AFX_MODULE_STATE* pNewState)
    : m_pPrevModuleState(AfxGetThreadState()->m_pModuleState)
{
    AfxGetThreadState()->m_pModuleState = pNewState;
}

AFX_MAINTAIN_STATE2::~AFX_MAINTAIN_STATE2()
{
    AfxGetThreadState()->m_pModuleState = m_pPrevModuleState;
}

HINSTANCE AFXAPI AfxGetInstanceHandle()
{
    return AfxGetModuleState()->m_hCurrentInstanceHandle;
}

HINSTANCE AFXAPI AfxGetResourceHandle()
{
    return AfxGetModuleState()->m_hCurrentResourceHandle;
}

void AFXAPI AfxSetResourceHandle(HINSTANCE hInstResource)
{
    if (hInstResource != nullptr)
        AfxGetModuleState()->m_hCurrentResourceHandle = hInstResource;
}

HINSTANCE AFXAPI AfxFindResourceHandle(LPCTSTR, LPCTSTR)
{
    return AfxGetResourceHandle();
}

// A DLL module without an application object of its own works for the process's
// application: the library's exported functions switch to their module state for their
// resources but still use the host's profile and main window.
CWinApp* AFXAPI AfxGetApp()
{
    CWinApp* app = AfxGetModuleState()->m_pCurrentWinApp;
    return app != nullptr ? app : AfxGetAppModuleState()->m_pCurrentWinApp;
}

CWinThread* AFXAPI AfxGetThread()
{
    CWinThread* t = AfxGetThreadState()->m_pCurrentWinThread;
    return t != nullptr ? t : AfxGetApp();
}

CWnd* AFXAPI AfxGetMainWnd()
{
    CWinThread* t = AfxGetThread();
    return t != nullptr ? t->GetMainWnd() : nullptr;
}

LPCTSTR AFXAPI AfxGetAppName()
{
    AFX_MODULE_STATE* p = AfxGetModuleState();
    if (p->m_lpszCurrentAppName != nullptr)
        return p->m_lpszCurrentAppName;
    CWinApp* app = AfxGetApp();
    return app != nullptr && app->m_pszAppName != nullptr ? app->m_pszAppName : L"";
}

////////////////////////////////////////////////////////////////////////////
// Handle maps

struct CHandleMap::Impl {
    std::unordered_map<HANDLE, CObject*> permanent;
    std::unordered_map<HANDLE, CObject*> temporary;
};

CHandleMap::CHandleMap(const AFX_HANDLEMAP_CLASS* pClass) : m_pClass(pClass), m_pImpl(new Impl) {}

CHandleMap::~CHandleMap()
{
    DeleteTemp();
    delete m_pImpl;
}

CObject* CHandleMap::FromHandle(HANDLE h)
{
    if (h == nullptr)
        return nullptr;
    if (CObject* p = LookupPermanent(h))
        return p;
    auto it = m_pImpl->temporary.find(h);
    if (it != m_pImpl->temporary.end())
        return it->second;
    CObject* p = m_pClass->pfnNewTemp(h);
    m_pImpl->temporary.emplace(h, p);
    return p;
}

CObject* CHandleMap::LookupPermanent(HANDLE h) const
{
    auto it = m_pImpl->permanent.find(h);
    return it != m_pImpl->permanent.end() ? it->second : nullptr;
}

CObject* CHandleMap::LookupTemporary(HANDLE h) const
{
    auto it = m_pImpl->temporary.find(h);
    return it != m_pImpl->temporary.end() ? it->second : nullptr;
}

void CHandleMap::SetPermanent(HANDLE h, CObject* pObject)
{
    m_pImpl->permanent[h] = pObject;
}

void CHandleMap::RemoveHandle(HANDLE h)
{
    m_pImpl->permanent.erase(h);
}

void CHandleMap::DeleteTemp()
{
    // Deleting an object may ask for new temporaries: take the set out first.
    std::unordered_map<HANDLE, CObject*> temps;
    temps.swap(m_pImpl->temporary);
    for (auto& t : temps)
        m_pClass->pfnDeleteTemp(t.second);
}

CHandleMap* AFXAPI AfxGetHandleMap(const AFX_HANDLEMAP_CLASS* pClass, BOOL bCreate)
{
    auto* ts = static_cast<ThreadState*>(AfxGetThreadState());
    for (auto& m : ts->maps) {
        if (m.first == pClass)
            return m.second;
    }
    if (!bCreate)
        return nullptr;
    ts->maps.emplace_back(pClass, new CHandleMap(pClass));
    return ts->maps.back().second;
}

void AFXAPI AfxLockTempMaps()
{
    ++AfxGetThreadState()->m_nTempMapLock;
}

BOOL AFXAPI AfxUnlockTempMaps(BOOL bDeleteTemps)
{
    auto* ts = static_cast<ThreadState*>(AfxGetThreadState());
    if (ts->m_nTempMapLock == 0 || --ts->m_nTempMapLock != 0)
        return FALSE;
    if (bDeleteTemps) {
        for (size_t i = 0; i < ts->maps.size(); ++i)
            ts->maps[i].second->DeleteTemp();
    }
    return TRUE;
}
