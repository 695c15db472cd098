// OLE: initialisation and uniform data transfer through the clipboard (COleDataSource,
// COleDataObject).
#pragma once
#include "afxwin.h"
#include <ole2.h>

// Initialises OLE on the calling thread (OleInitialize); TRUE when OLE is usable. Undone
// by AfxOleTerm, which the thread calls before it ends.
KXAFX_API BOOL AFXAPI AfxOleInit();
// Renders and releases the data this thread put on the clipboard, then uninitialises OLE
// if AfxOleInit initialised it.
KXAFX_API void AFXAPI AfxOleTerm(BOOL bJustRevoke = FALSE);

////////////////////////////////////////////////////////////////////////////
// COleDataSource: data offered to others, in several formats.
//
// Reference counted: it starts with one reference, its creator's. SetClipboard hands
// that reference to the clipboard, which deletes the object when it lets it go; an
// object that never reaches the clipboard is deleted by its creator.

class KXAFX_API COleDataSource : public CCmdTarget {
    DECLARE_DYNAMIC(COleDataSource)
public:
    COleDataSource();
    virtual ~COleDataSource();

    // Offers hGlobal in format cfFormat; the object owns it from now on (freed on
    // Empty or destruction). lpFormatEtc NULL: TYMED_HGLOBAL, DVASPECT_CONTENT.
    void CacheGlobalData(CLIPFORMAT cfFormat, HGLOBAL hGlobal, LPFORMATETC lpFormatEtc = NULL);
    // Offers a storage medium (HGLOBAL, IStream, GDI object, ...); owned from now on.
    void CacheData(CLIPFORMAT cfFormat, LPSTGMEDIUM lpStgMedium, LPFORMATETC lpFormatEtc = NULL);
    // Frees every cached format.
    void Empty();
    // Puts this object on the clipboard and gives it the creator's reference.
    void SetClipboard();
    // Renders what this thread put on the clipboard, so that it stays after the thread
    // or its OLE ends.
    static void PASCAL FlushClipboard();
    // The object of this process that owns the clipboard, or NULL.
    static COleDataSource* PASCAL GetClipboardOwner();

    // The data object interface (not AddRef'ed).
    LPDATAOBJECT GetDataObject();

    // Reference counting of the object's interface.
    DWORD InternalAddRef();
    DWORD InternalRelease();

    // Overridables: fill lpStgMedium for a format that is not cached; FALSE when the
    // format is not offered.
    virtual BOOL OnRenderGlobalData(LPFORMATETC lpFormatEtc, HGLOBAL* phGlobal);
    virtual BOOL OnRenderData(LPFORMATETC lpFormatEtc, LPSTGMEDIUM lpStgMedium);

protected:
    struct Entry;
    struct XDataObject;
    friend struct XDataObject;
    const Entry* Lookup(const FORMATETC* lpFormatEtc) const;

    XDataObject* m_pDataObject;
    Entry* m_pEntries;
    int m_nEntries;
    int m_nMaxEntries;
    LONG m_dwRef;
};

////////////////////////////////////////////////////////////////////////////
// COleDataObject: data offered by someone else (the clipboard or a drop).

class KXAFX_API COleDataObject {
public:
    COleDataObject();
    ~COleDataObject();
    COleDataObject(const COleDataObject&) = delete;
    COleDataObject& operator=(const COleDataObject&) = delete;

    // Wraps lpDataObject; with bAutoRelease it is released by Release or the destructor.
    void Attach(LPDATAOBJECT lpDataObject, BOOL bAutoRelease = TRUE);
    LPDATAOBJECT Detach();
    void Release();
    // Wraps the clipboard's data object; FALSE when it cannot be had.
    BOOL AttachClipboard();

    // Walks the formats on offer.
    void BeginEnumFormats();
    BOOL GetNextFormat(LPFORMATETC lpFormatEtc);

    BOOL IsDataAvailable(CLIPFORMAT cfFormat, LPFORMATETC lpFormatEtc = NULL);
    // A copy of the data in a global block the caller frees, or NULL.
    HGLOBAL GetGlobalData(CLIPFORMAT cfFormat, LPFORMATETC lpFormatEtc = NULL);
    // The medium as the source gives it; the caller calls ReleaseStgMedium.
    BOOL GetData(CLIPFORMAT cfFormat, LPSTGMEDIUM lpStgMedium, LPFORMATETC lpFormatEtc = NULL);

    LPDATAOBJECT m_lpDataObject;
    LPENUMFORMATETC m_lpEnumerator;
    BOOL m_bAutoRelease;
};

// A FORMATETC for cfFormat: the given one, or content aspect on a global block.
KXAFX_API void AFXAPI AfxFillFormatEtc(LPFORMATETC lpFormatEtc, CLIPFORMAT cfFormat, LPFORMATETC lpFormatEtcFill);
