// KxUiLayoutManagerWndBinary: layout manager that loads and saves the records of its container.
#include "KxUiLayoutManagerWndBinary.h"
#include <afxwin.h>

IMPLEMENT_DYNCREATE(KxUiLayoutManagerWndBinary, KxUiLayoutManager)

KxUiLayoutManagerWndBinary::KxUiLayoutManagerWndBinary()
{
}

KxUiLayoutManagerWndBinary::~KxUiLayoutManagerWndBinary()
{
}

void KxUiLayoutManagerWndBinary::Attach(CWnd* pContainer)
{
    KxUiLayoutManager::Attach(pContainer);
    bool bAll = true;
    for (INT_PTR i = 0; i < m_archives.GetSize(); ++i)
        bAll = m_archives[i]->loadData(pContainer) && bAll;
    (void)bAll;   // a record that failed stays not loaded and says so itself
}

void KxUiLayoutManagerWndBinary::Detach()
{
    KxUiLayoutManager::Detach();
}

void KxUiLayoutManagerWndBinary::addArchive(KxUiWindowBinary* pArchive)
{
    if (pArchive)
        m_archives.Add(pArchive);
}

void KxUiLayoutManagerWndBinary::addArchive(CWnd* pWnd, KxUiContainerWindowBinary* pArchive)
{
    if (!pArchive)
        return;
    m_archives.Add(pArchive);
    pArchive->loadData(pWnd);
}

int KxUiLayoutManagerWndBinary::windowProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)
{
    if (message == WM_DESTROY && m_pContainer && m_pContainer->GetSafeHwnd() == hWnd) {
        for (INT_PTR i = 0; i < m_archives.GetSize(); ++i)
            m_archives[i]->saveData(m_pContainer);
        m_archives.RemoveAll();
    }
    return KxUiLayoutManager::windowProc(hWnd, message, wParam, lParam, result);
}
