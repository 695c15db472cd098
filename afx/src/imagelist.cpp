// CImageList: image lists of the common controls.
#include "afxcmn.h"

namespace {

CObject* NewTempImageList(HANDLE h)
{
    CImageList* p = new CImageList;
    p->m_hImageList = static_cast<HIMAGELIST>(h);
    return p;
}

void DeleteTempImageList(CObject* p)
{
    CImageList* list = static_cast<CImageList*>(p);
    list->m_hImageList = NULL;  // a temporary object never destroys the list it wraps
    delete list;
}

const AFX_HANDLEMAP_CLASS imageListMapClass = {NewTempImageList, DeleteTempImageList};

CHandleMap* ImageListMap(BOOL bCreate = TRUE)
{
    return AfxGetHandleMap(&imageListMapClass, bCreate);
}

HBITMAP BitmapOf(CBitmap* pBitmap)
{
    return static_cast<HBITMAP>(pBitmap->GetSafeHandle());
}

}  // namespace

IMPLEMENT_DYNCREATE(CImageList, CObject)

CImageList::~CImageList()
{
    DeleteImageList();
}

HIMAGELIST CImageList::GetSafeHandle() const
{
    // Called through NULL pointers by design; see CGdiObject::GetSafeHandle.
    const CImageList* volatile self = this;
    return self != nullptr ? self->m_hImageList : NULL;
}

CImageList* PASCAL CImageList::FromHandle(HIMAGELIST hImageList)
{
    return static_cast<CImageList*>(ImageListMap()->FromHandle(hImageList));
}

CImageList* PASCAL CImageList::FromHandlePermanent(HIMAGELIST hImageList)
{
    CHandleMap* map = ImageListMap(FALSE);
    return map == NULL ? NULL : static_cast<CImageList*>(map->LookupPermanent(hImageList));
}

void PASCAL CImageList::DeleteTempMap()
{
    if (CHandleMap* map = ImageListMap(FALSE))
        map->DeleteTemp();
}

BOOL CImageList::Attach(HIMAGELIST hImageList)
{
    if (hImageList == NULL || m_hImageList != NULL)
        return FALSE;
    m_hImageList = hImageList;
    ImageListMap()->SetPermanent(m_hImageList, this);
    return TRUE;
}

HIMAGELIST CImageList::Detach()
{
    HIMAGELIST h = m_hImageList;
    if (h != NULL) {
        if (CHandleMap* map = ImageListMap(FALSE))
            if (map->LookupPermanent(h) == this)
                map->RemoveHandle(h);
    }
    m_hImageList = NULL;
    return h;
}

BOOL CImageList::DeleteImageList()
{
    if (m_hImageList == NULL)
        return FALSE;
    return ImageList_Destroy(Detach());
}

BOOL CImageList::Create(int cx, int cy, UINT nFlags, int nInitial, int nGrow)
{
    return m_hImageList == NULL && Attach(ImageList_Create(cx, cy, nFlags, nInitial, nGrow));
}

BOOL CImageList::Create(UINT nBitmapID, int cx, int nGrow, COLORREF crMask)
{
    return Create(MAKEINTRESOURCEW(nBitmapID), cx, nGrow, crMask);
}

BOOL CImageList::Create(LPCTSTR lpszBitmapID, int cx, int nGrow, COLORREF crMask)
{
    if (m_hImageList != NULL || lpszBitmapID == NULL)
        return FALSE;
    return Attach(ImageList_LoadImageW(AfxGetResourceHandle(), lpszBitmapID, cx, nGrow, crMask, IMAGE_BITMAP,
                                       LR_CREATEDIBSECTION));
}

BOOL CImageList::Create(CImageList& imagelist1, int nImage1, CImageList& imagelist2, int nImage2, int dx, int dy)
{
    return m_hImageList == NULL &&
           Attach(ImageList_Merge(imagelist1.m_hImageList, nImage1, imagelist2.m_hImageList, nImage2, dx, dy));
}

BOOL CImageList::Create(CImageList* pImageList)
{
    HIMAGELIST src = pImageList->GetSafeHandle();
    return m_hImageList == NULL && src != NULL && Attach(ImageList_Duplicate(src));
}

int CImageList::Add(CBitmap* pbmImage, CBitmap* pbmMask)
{
    if (m_hImageList == NULL || BitmapOf(pbmImage) == NULL)
        return -1;
    return ImageList_Add(m_hImageList, BitmapOf(pbmImage), BitmapOf(pbmMask));
}

int CImageList::Add(CBitmap* pbmImage, COLORREF crMask)
{
    if (m_hImageList == NULL || BitmapOf(pbmImage) == NULL)
        return -1;
    return ImageList_AddMasked(m_hImageList, BitmapOf(pbmImage), crMask);
}

BOOL CImageList::Replace(int nImage, CBitmap* pbmImage, CBitmap* pbmMask)
{
    if (m_hImageList == NULL || BitmapOf(pbmImage) == NULL)
        return FALSE;
    return ImageList_Replace(m_hImageList, nImage, BitmapOf(pbmImage), BitmapOf(pbmMask));
}

BOOL CImageList::Copy(int iDst, CImageList* pSrc, int iSrc, UINT uFlags)
{
    HIMAGELIST src = pSrc->GetSafeHandle();
    return src != NULL && ImageList_Copy(m_hImageList, iDst, src, iSrc, uFlags);
}

BOOL CImageList::Draw(CDC* pDC, int nImage, POINT pt, UINT nStyle)
{
    HDC hDC = pDC->GetSafeHdc();
    return hDC != NULL && ImageList_Draw(m_hImageList, nImage, hDC, pt.x, pt.y, nStyle);
}

BOOL CImageList::DrawEx(CDC* pDC, int nImage, POINT pt, SIZE sz, COLORREF clrBk, COLORREF clrFg, UINT nStyle)
{
    HDC hDC = pDC->GetSafeHdc();
    return hDC != NULL &&
           ImageList_DrawEx(m_hImageList, nImage, hDC, pt.x, pt.y, sz.cx, sz.cy, clrBk, clrFg, nStyle);
}

BOOL CImageList::DrawIndirect(IMAGELISTDRAWPARAMS* pimldp)
{
    if (pimldp == NULL)
        return FALSE;
    pimldp->cbSize = sizeof(IMAGELISTDRAWPARAMS);
    pimldp->himl = m_hImageList;
    return ImageList_DrawIndirect(pimldp);
}

BOOL CImageList::DrawIndirect(CDC* pDC, int nImage, POINT pt, SIZE sz, POINT ptOrigin, UINT fStyle, DWORD dwRop,
                              COLORREF rgbBack, COLORREF rgbFore, DWORD fState, DWORD Frame, COLORREF crEffect)
{
    IMAGELISTDRAWPARAMS p = {};
    p.hdcDst = pDC->GetSafeHdc();
    if (p.hdcDst == NULL)
        return FALSE;
    p.i = nImage;
    p.x = pt.x;
    p.y = pt.y;
    p.cx = sz.cx;
    p.cy = sz.cy;
    p.xBitmap = ptOrigin.x;
    p.yBitmap = ptOrigin.y;
    p.rgbBk = rgbBack;
    p.rgbFg = rgbFore;
    p.fStyle = fStyle;
    p.dwRop = dwRop;
    p.fState = fState;
    p.Frame = Frame;
    p.crEffect = crEffect;
    return DrawIndirect(&p);
}

CImageList* PASCAL CImageList::GetDragImage(LPPOINT lpPoint, LPPOINT lpPointHotSpot)
{
    return FromHandle(ImageList_GetDragImage(lpPoint, lpPointHotSpot));
}

BOOL PASCAL CImageList::DragEnter(CWnd* pWndLock, CPoint point)
{
    return ImageList_DragEnter(pWndLock->GetSafeHwnd(), point.x, point.y);
}

BOOL PASCAL CImageList::DragLeave(CWnd* pWndLock)
{
    return ImageList_DragLeave(pWndLock->GetSafeHwnd());
}

////////////////////////////////////////////////////////////////////////////
// Registration of the common-control classes

BOOL AFXAPI AfxInitCommonControls(DWORD dwICC)
{
    // Classes already registered; a second registration is harmless, so two threads
    // racing here at most register one class twice.
    static volatile LONG registered = 0;
    const DWORD missing = dwICC & ~static_cast<DWORD>(registered);
    if (missing == 0)
        return TRUE;
    INITCOMMONCONTROLSEX icc = {sizeof icc, missing};
    if (!InitCommonControlsEx(&icc))
        return FALSE;
    InterlockedOr(&registered, static_cast<LONG>(missing));
    return TRUE;
}
