// OLE initialisation and clipboard data: COleDataSource, COleDataObject.
#include "afxole.h"

#include <new>

namespace {

// Whether AfxOleInit initialised OLE on this thread.
thread_local bool t_oleInitialised = false;
// The data source of this process on the clipboard.
COleDataSource* volatile s_pClipboardSource = NULL;

bool SameFormat(const FORMATETC& offered, const FORMATETC& asked)
{
    return offered.cfFormat == asked.cfFormat && offered.dwAspect == asked.dwAspect &&
           (offered.tymed & asked.tymed) != 0 && (asked.lindex == -1 || asked.lindex == offered.lindex);
}

HGLOBAL CopyGlobal(HGLOBAL hSrc)
{
    const SIZE_T size = ::GlobalSize(hSrc);
    const void* src = ::GlobalLock(hSrc);
    if (src == NULL)
        return NULL;
    HGLOBAL hDst = ::GlobalAlloc(GMEM_MOVEABLE | GMEM_SHARE, size);
    if (hDst != NULL) {
        memcpy(::GlobalLock(hDst), src, size);
        ::GlobalUnlock(hDst);
    }
    ::GlobalUnlock(hSrc);
    return hDst;
}

// A copy of a cached medium that the receiver owns and frees with ReleaseStgMedium.
HRESULT CopyMedium(const STGMEDIUM& src, CLIPFORMAT cf, STGMEDIUM* pDst)
{
    *pDst = src;
    pDst->pUnkForRelease = NULL;
    switch (src.tymed) {
    case TYMED_HGLOBAL:
        pDst->hGlobal = CopyGlobal(src.hGlobal);
        return pDst->hGlobal != NULL ? S_OK : E_OUTOFMEMORY;
    case TYMED_ISTREAM:
        src.pstm->AddRef();
        return S_OK;
    case TYMED_ISTORAGE:
        src.pstg->AddRef();
        return S_OK;
    case TYMED_GDI:
    case TYMED_ENHMF:
    case TYMED_MFPICT:
        pDst->hGlobal = static_cast<HGLOBAL>(::OleDuplicateData(src.hGlobal, cf, 0));
        return pDst->hGlobal != NULL ? S_OK : E_OUTOFMEMORY;
    default:
        ZeroMemory(pDst, sizeof *pDst);
        return DV_E_TYMED;
    }
}

// Walks a fixed list of formats.
class CFormatEnum final : public IEnumFORMATETC {
public:
    CFormatEnum(const FORMATETC* pFormats, ULONG nCount, ULONG nPos = 0)
        : m_pFormats(new FORMATETC[nCount ? nCount : 1]), m_nCount(nCount), m_nPos(nPos)
    {
        for (ULONG i = 0; i < nCount; ++i)
            m_pFormats[i] = pFormats[i];
    }
    ~CFormatEnum() { delete[] m_pFormats; }

    STDMETHODIMP QueryInterface(REFIID riid, void** ppv) override
    {
        if (ppv == NULL)
            return E_POINTER;
        if (IsEqualIID(riid, IID_IUnknown) || IsEqualIID(riid, IID_IEnumFORMATETC)) {
            *ppv = static_cast<IEnumFORMATETC*>(this);
            AddRef();
            return S_OK;
        }
        *ppv = NULL;
        return E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return InterlockedIncrement(&m_nRef); }
    STDMETHODIMP_(ULONG) Release() override
    {
        const LONG n = InterlockedDecrement(&m_nRef);
        if (n == 0)
            delete this;
        return n;
    }
    STDMETHODIMP Next(ULONG celt, FORMATETC* rgelt, ULONG* pceltFetched) override
    {
        if (rgelt == NULL)
            return E_POINTER;
        ULONG n = 0;
        while (n < celt && m_nPos < m_nCount)
            rgelt[n++] = m_pFormats[m_nPos++];
        if (pceltFetched != NULL)
            *pceltFetched = n;
        return n == celt ? S_OK : S_FALSE;
    }
    STDMETHODIMP Skip(ULONG celt) override
    {
        const ULONG left = m_nCount - m_nPos;
        m_nPos += celt < left ? celt : left;
        return celt <= left ? S_OK : S_FALSE;
    }
    STDMETHODIMP Reset() override
    {
        m_nPos = 0;
        return S_OK;
    }
    STDMETHODIMP Clone(IEnumFORMATETC** ppenum) override
    {
        if (ppenum == NULL)
            return E_POINTER;
        *ppenum = new (std::nothrow) CFormatEnum(m_pFormats, m_nCount, m_nPos);
        return *ppenum != NULL ? S_OK : E_OUTOFMEMORY;
    }

private:
    FORMATETC* m_pFormats;
    ULONG m_nCount;
    ULONG m_nPos;
    LONG m_nRef = 1;
};

}  // namespace

BOOL AFXAPI AfxOleInit()
{
    if (t_oleInitialised)
        return TRUE;
    const HRESULT hr = ::OleInitialize(NULL);
    if (FAILED(hr))
        return FALSE;
    t_oleInitialised = true;  // S_FALSE (already initialised) also needs its OleUninitialize
    return TRUE;
}

void AFXAPI AfxOleTerm(BOOL bJustRevoke)
{
    COleDataSource::FlushClipboard();
    if (!bJustRevoke && t_oleInitialised) {
        t_oleInitialised = false;
        ::OleUninitialize();
    }
}

void AFXAPI AfxFillFormatEtc(LPFORMATETC lpFormatEtc, CLIPFORMAT cfFormat, LPFORMATETC lpFormatEtcFill)
{
    if (lpFormatEtc != NULL) {
        *lpFormatEtcFill = *lpFormatEtc;
        if (lpFormatEtcFill->cfFormat == 0)
            lpFormatEtcFill->cfFormat = cfFormat;
        return;
    }
    lpFormatEtcFill->cfFormat = cfFormat;
    lpFormatEtcFill->ptd = NULL;
    lpFormatEtcFill->dwAspect = DVASPECT_CONTENT;
    lpFormatEtcFill->lindex = -1;
    lpFormatEtcFill->tymed = TYMED_HGLOBAL;
}

////////////////////////////////////////////////////////////////////////////
// COleDataSource

struct COleDataSource::Entry {
    FORMATETC format;
    STGMEDIUM medium;
};

// The object's IDataObject; its references are the data source's.
struct COleDataSource::XDataObject final : public IDataObject {
    explicit XDataObject(COleDataSource* pOwner) : m_pOwner(pOwner) {}
    COleDataSource* m_pOwner;

    STDMETHODIMP QueryInterface(REFIID riid, void** ppv) override
    {
        if (ppv == NULL)
            return E_POINTER;
        if (IsEqualIID(riid, IID_IUnknown) || IsEqualIID(riid, IID_IDataObject)) {
            *ppv = static_cast<IDataObject*>(this);
            AddRef();
            return S_OK;
        }
        *ppv = NULL;
        return E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return m_pOwner->InternalAddRef(); }
    STDMETHODIMP_(ULONG) Release() override { return m_pOwner->InternalRelease(); }

    STDMETHODIMP GetData(FORMATETC* pFormat, STGMEDIUM* pMedium) override
    {
        if (pFormat == NULL || pMedium == NULL)
            return E_INVALIDARG;
        ZeroMemory(pMedium, sizeof *pMedium);
        if (const Entry* e = m_pOwner->Lookup(pFormat))
            return CopyMedium(e->medium, e->format.cfFormat, pMedium);
        if (pFormat->tymed & TYMED_HGLOBAL) {
            HGLOBAL h = NULL;
            if (m_pOwner->OnRenderGlobalData(pFormat, &h) && h != NULL) {
                pMedium->tymed = TYMED_HGLOBAL;
                pMedium->hGlobal = h;
                return S_OK;
            }
        }
        if (m_pOwner->OnRenderData(pFormat, pMedium))
            return S_OK;
        return DV_E_FORMATETC;
    }
    STDMETHODIMP GetDataHere(FORMATETC* pFormat, STGMEDIUM* pMedium) override
    {
        if (pFormat == NULL || pMedium == NULL)
            return E_INVALIDARG;
        if (pMedium->tymed != TYMED_HGLOBAL || pMedium->hGlobal == NULL)
            return DV_E_TYMED;
        const Entry* e = m_pOwner->Lookup(pFormat);
        if (e == NULL || e->medium.tymed != TYMED_HGLOBAL)
            return DV_E_FORMATETC;
        const SIZE_T size = ::GlobalSize(e->medium.hGlobal);
        if (::GlobalSize(pMedium->hGlobal) < size)
            return STG_E_MEDIUMFULL;
        memcpy(::GlobalLock(pMedium->hGlobal), ::GlobalLock(e->medium.hGlobal), size);
        ::GlobalUnlock(e->medium.hGlobal);
        ::GlobalUnlock(pMedium->hGlobal);
        return S_OK;
    }
    STDMETHODIMP QueryGetData(FORMATETC* pFormat) override
    {
        if (pFormat == NULL)
            return E_INVALIDARG;
        return m_pOwner->Lookup(pFormat) != NULL ? S_OK : DV_E_FORMATETC;
    }
    STDMETHODIMP GetCanonicalFormatEtc(FORMATETC*, FORMATETC* pOut) override
    {
        if (pOut != NULL)
            pOut->ptd = NULL;
        return DATA_S_SAMEFORMATETC;
    }
    STDMETHODIMP SetData(FORMATETC*, STGMEDIUM*, BOOL) override { return E_NOTIMPL; }
    STDMETHODIMP EnumFormatEtc(DWORD dwDirection, IEnumFORMATETC** ppEnum) override
    {
        if (ppEnum == NULL)
            return E_POINTER;
        *ppEnum = NULL;
        if (dwDirection != DATADIR_GET)
            return E_NOTIMPL;
        FORMATETC* formats = new (std::nothrow) FORMATETC[m_pOwner->m_nEntries + 1];
        if (formats == NULL)
            return E_OUTOFMEMORY;
        for (int i = 0; i < m_pOwner->m_nEntries; ++i)
            formats[i] = m_pOwner->m_pEntries[i].format;
        *ppEnum = new (std::nothrow) CFormatEnum(formats, static_cast<ULONG>(m_pOwner->m_nEntries));
        delete[] formats;
        return *ppEnum != NULL ? S_OK : E_OUTOFMEMORY;
    }
    STDMETHODIMP DAdvise(FORMATETC*, DWORD, IAdviseSink*, DWORD*) override { return OLE_E_ADVISENOTSUPPORTED; }
    STDMETHODIMP DUnadvise(DWORD) override { return OLE_E_ADVISENOTSUPPORTED; }
    STDMETHODIMP EnumDAdvise(IEnumSTATDATA**) override { return OLE_E_ADVISENOTSUPPORTED; }
};

IMPLEMENT_DYNAMIC(COleDataSource, CCmdTarget)

COleDataSource::COleDataSource()
    : m_pDataObject(new XDataObject(this)), m_pEntries(NULL), m_nEntries(0), m_nMaxEntries(0), m_dwRef(1)
{
}

COleDataSource::~COleDataSource()
{
    if (s_pClipboardSource == this)
        s_pClipboardSource = NULL;
    Empty();
    delete m_pDataObject;
}

DWORD COleDataSource::InternalAddRef()
{
    return static_cast<DWORD>(InterlockedIncrement(&m_dwRef));
}

DWORD COleDataSource::InternalRelease()
{
    const LONG n = InterlockedDecrement(&m_dwRef);
    if (n == 0)
        delete this;
    return static_cast<DWORD>(n);
}

LPDATAOBJECT COleDataSource::GetDataObject()
{
    return m_pDataObject;
}

const COleDataSource::Entry* COleDataSource::Lookup(const FORMATETC* lpFormatEtc) const
{
    for (int i = 0; i < m_nEntries; ++i)
        if (SameFormat(m_pEntries[i].format, *lpFormatEtc))
            return &m_pEntries[i];
    return NULL;
}

void COleDataSource::CacheGlobalData(CLIPFORMAT cfFormat, HGLOBAL hGlobal, LPFORMATETC lpFormatEtc)
{
    if (hGlobal == NULL)
        return;
    STGMEDIUM medium = {};
    medium.tymed = TYMED_HGLOBAL;
    medium.hGlobal = hGlobal;
    FORMATETC format;
    AfxFillFormatEtc(lpFormatEtc, cfFormat, &format);
    format.tymed = TYMED_HGLOBAL;
    CacheData(cfFormat, &medium, &format);
}

void COleDataSource::CacheData(CLIPFORMAT cfFormat, LPSTGMEDIUM lpStgMedium, LPFORMATETC lpFormatEtc)
{
    if (lpStgMedium == NULL || lpStgMedium->tymed == TYMED_NULL)
        return;
    FORMATETC format;
    AfxFillFormatEtc(lpFormatEtc, cfFormat, &format);
    format.tymed = lpStgMedium->tymed;
    // A format cached again replaces the earlier data.
    for (int i = 0; i < m_nEntries; ++i) {
        Entry& e = m_pEntries[i];
        if (e.format.cfFormat == format.cfFormat && e.format.dwAspect == format.dwAspect &&
            e.format.tymed == format.tymed && e.format.lindex == format.lindex) {
            ::ReleaseStgMedium(&e.medium);
            e.medium = *lpStgMedium;
            return;
        }
    }
    if (m_nEntries == m_nMaxEntries) {
        const int nMax = m_nMaxEntries == 0 ? 4 : m_nMaxEntries * 2;
        Entry* p = new Entry[nMax];
        for (int i = 0; i < m_nEntries; ++i)
            p[i] = m_pEntries[i];
        delete[] m_pEntries;
        m_pEntries = p;
        m_nMaxEntries = nMax;
    }
    Entry& e = m_pEntries[m_nEntries++];
    e.format = format;
    e.format.ptd = NULL;
    e.medium = *lpStgMedium;
}

void COleDataSource::Empty()
{
    for (int i = 0; i < m_nEntries; ++i)
        ::ReleaseStgMedium(&m_pEntries[i].medium);
    delete[] m_pEntries;
    m_pEntries = NULL;
    m_nEntries = m_nMaxEntries = 0;
}

void COleDataSource::SetClipboard()
{
    if (SUCCEEDED(::OleSetClipboard(GetDataObject())))
        s_pClipboardSource = this;
    // The clipboard holds its own reference now; this one was the creator's.
    InternalRelease();
}

void PASCAL COleDataSource::FlushClipboard()
{
    if (GetClipboardOwner() != NULL)
        ::OleFlushClipboard();
}

COleDataSource* PASCAL COleDataSource::GetClipboardOwner()
{
    COleDataSource* p = s_pClipboardSource;
    if (p == NULL || ::OleIsCurrentClipboard(p->GetDataObject()) != S_OK)
        return NULL;
    return p;
}

BOOL COleDataSource::OnRenderGlobalData(LPFORMATETC, HGLOBAL*)
{
    return FALSE;
}

BOOL COleDataSource::OnRenderData(LPFORMATETC, LPSTGMEDIUM)
{
    return FALSE;
}

////////////////////////////////////////////////////////////////////////////
// COleDataObject

COleDataObject::COleDataObject() : m_lpDataObject(NULL), m_lpEnumerator(NULL), m_bAutoRelease(TRUE)
{
}

COleDataObject::~COleDataObject()
{
    Release();
}

void COleDataObject::Attach(LPDATAOBJECT lpDataObject, BOOL bAutoRelease)
{
    Release();
    m_lpDataObject = lpDataObject;
    m_bAutoRelease = bAutoRelease;
}

LPDATAOBJECT COleDataObject::Detach()
{
    if (m_lpEnumerator != NULL) {
        m_lpEnumerator->Release();
        m_lpEnumerator = NULL;
    }
    LPDATAOBJECT p = m_lpDataObject;
    m_lpDataObject = NULL;
    return p;
}

void COleDataObject::Release()
{
    const BOOL bRelease = m_bAutoRelease;
    LPDATAOBJECT p = Detach();
    if (p != NULL && bRelease)
        p->Release();
}

BOOL COleDataObject::AttachClipboard()
{
    Release();
    LPDATAOBJECT p = NULL;
    if (FAILED(::OleGetClipboard(&p)) || p == NULL)
        return FALSE;
    Attach(p, TRUE);
    return TRUE;
}

void COleDataObject::BeginEnumFormats()
{
    if (m_lpEnumerator != NULL) {
        m_lpEnumerator->Release();
        m_lpEnumerator = NULL;
    }
    if (m_lpDataObject != NULL)
        m_lpDataObject->EnumFormatEtc(DATADIR_GET, &m_lpEnumerator);
}

BOOL COleDataObject::GetNextFormat(LPFORMATETC lpFormatEtc)
{
    if (m_lpEnumerator == NULL || lpFormatEtc == NULL)
        return FALSE;
    ULONG fetched = 0;
    if (m_lpEnumerator->Next(1, lpFormatEtc, &fetched) != S_OK || fetched != 1)
        return FALSE;
    if (lpFormatEtc->ptd != NULL) {  // a target device we do not use
        ::CoTaskMemFree(lpFormatEtc->ptd);
        lpFormatEtc->ptd = NULL;
    }
    return TRUE;
}

BOOL COleDataObject::IsDataAvailable(CLIPFORMAT cfFormat, LPFORMATETC lpFormatEtc)
{
    if (m_lpDataObject == NULL)
        return FALSE;
    FORMATETC format;
    AfxFillFormatEtc(lpFormatEtc, cfFormat, &format);
    if (lpFormatEtc == NULL)
        format.tymed = TYMED_HGLOBAL | TYMED_ISTREAM | TYMED_ISTORAGE | TYMED_GDI | TYMED_MFPICT | TYMED_ENHMF;
    return m_lpDataObject->QueryGetData(&format) == S_OK;
}

BOOL COleDataObject::GetData(CLIPFORMAT cfFormat, LPSTGMEDIUM lpStgMedium, LPFORMATETC lpFormatEtc)
{
    if (m_lpDataObject == NULL || lpStgMedium == NULL)
        return FALSE;
    FORMATETC format;
    AfxFillFormatEtc(lpFormatEtc, cfFormat, &format);
    ZeroMemory(lpStgMedium, sizeof *lpStgMedium);
    return m_lpDataObject->GetData(&format, lpStgMedium) == S_OK;
}

HGLOBAL COleDataObject::GetGlobalData(CLIPFORMAT cfFormat, LPFORMATETC lpFormatEtc)
{
    FORMATETC format;
    AfxFillFormatEtc(lpFormatEtc, cfFormat, &format);
    format.tymed = TYMED_HGLOBAL;
    STGMEDIUM medium;
    if (!GetData(cfFormat, &medium, &format))
        return NULL;
    if (medium.tymed != TYMED_HGLOBAL) {
        ::ReleaseStgMedium(&medium);
        return NULL;
    }
    if (medium.pUnkForRelease == NULL)
        return medium.hGlobal;  // the block is ours
    // The source keeps the block: hand out a copy.
    HGLOBAL hCopy = CopyGlobal(medium.hGlobal);
    ::ReleaseStgMedium(&medium);
    return hCopy;
}
