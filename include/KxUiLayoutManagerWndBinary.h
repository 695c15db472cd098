// KxUiLayoutManagerWndBinary: a layout manager that also keeps its container's state in the profile.
//
// It owns the records given to addArchive. Attach loads each record once; when the container receives
// WM_DESTROY, before the layout manager sees it, every record writes its value and all records are
// deleted. Typical use in OnInitDialog:
//     m_splitterPos = new KxUiSplitterPositionArchive(&m_splitter);
//     m_layout.addArchive(m_splitterPos);                  // before Attach: restored before attachHorz
//     m_layout.addArchive(new KxUiWindowStateBinary(IDC_CHECK));
//     m_layout.Attach(this);                               // loads the records above
//     ... constraints, m_splitter.attachHorz(&m_layout, ...) ...
//     m_layout.addArchive(this, new KxUiWindowPlacementBinary);   // loaded at once: resizes and lays out
// Add the placement after the constraints, so the restored size is laid out by them.
#pragma once
#include "KxUiLayoutManager.h"
#include "KxUiWindowBinary.h"
#include "KxArrayPtrDelete.h"

class KXUI_API KxUiLayoutManagerWndBinary : public KxUiLayoutManager {
    DECLARE_DYNCREATE(KxUiLayoutManagerWndBinary)
public:
    KxUiLayoutManagerWndBinary();
    virtual ~KxUiLayoutManagerWndBinary();

    // KxUiLayoutManager::Attach, then loadData on every record in order.
    void Attach(CWnd* pContainer) override;
    void Detach() override;

    // Takes ownership of the record; null is ignored.
    void addArchive(KxUiWindowBinary* pArchive);
    // Takes ownership of the record and loads it at once for the window.
    void addArchive(CWnd* pWnd, KxUiContainerWindowBinary* pArchive);
    int getArchiveCount() const { return (int)m_archives.GetSize(); }

    // Saves and deletes the records on the container's WM_DESTROY, then lets the layout manager run.
    int windowProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;

protected:
    KxArrayPtrDelete<CArray<KxUiWindowBinary*, KxUiWindowBinary*>> m_archives;
};
