// KxUiListCtrlLog: a message log on a report list view with one column.
#pragma once
#include "KxUiDef.h"
#include <afxwin.h>
#include <afxcmn.h>
#include <afxcoll.h>

// The model: every line of a message is one row of column 0, optionally with one of the
// five standard system icons in front of it. Rows are only appended (each append scrolls the
// newest row into view) and removed by the user's selection (cut, delete). The column only
// ever widens: a line wider than the column makes it that wide (less 2 pixels).
//
// The small-image list holds the system icons in a fixed order; an icon is named by the
// identifier LoadIcon takes:
//   0 IDI_APPLICATION, 1 IDI_HAND (error), 2 IDI_QUESTION, 3 IDI_EXCLAMATION (warning),
//   4 IDI_ASTERISK (information). Any other identifier shows the error icon.
//
// Use: create (or subclass) a list view with LVS_REPORT, then append.
//
//     KxUiListCtrlLog log;
//     log.Create(WS_CHILD | WS_VISIBLE | WS_BORDER | LVS_REPORT | LVS_NOCOLUMNHEADER,
//                rect, this, IDC_LOG);
//     log.putMessageInLog(L"Compiling main.cpp");
//     log.putMessageInLog(L"main.cpp(12): unused variable 'x'", IDI_EXCLAMATION);
//
// The parent's menu provides the user's commands: a right click (or the context-menu key)
// shows the parent's first submenu, whose commands reach the parent, which calls selectAll,
// copy, cut or suppression.
class KXUI_API KxUiListCtrlLog : public CListCtrl {
    DECLARE_DYNAMIC(KxUiListCtrlLog)
public:
    // The image list is created empty; it is filled when the window is subclassed.
    KxUiListCtrlLog();
    ~KxUiListCtrlLog() override;

    // Appends each line of text as a row without an icon. NULL or "" appends nothing.
    void putMessageInLog(const wchar_t* text);
    // The same, each row with the icon named by icon (an IDI_* identifier).
    void putMessageInLog(const wchar_t* text, const wchar_t* icon);

    // Selects every row.
    void selectAll();
    // Puts the selected rows on the clipboard (see getStringForClipBoard).
    void copy();
    // copy, then suppression.
    void cut();
    // Deletes the selected rows.
    void suppression();

    // The small-image list the rows' icons come from.
    CImageList& GetLogImageList() { return m_imageList; }

protected:
    // Appends one row at the end and scrolls it into view; icon NULL: no image.
    void addMessageInLog(const wchar_t* line);
    void addMessageInLog(const wchar_t* line, const wchar_t* icon);
    // Splits text at each line feed into lines (see the implementation for the rules).
    void getAllLigne(const wchar_t* text, CStringArray& lines);
    // Builds the image list of the five system icons and makes it the small-image list.
    void initImageList();
    // Image index of an IDI_* identifier; 1 (error) for any other.
    int getIndiceOfIconInImageList(const wchar_t* icon);
    // Column 0 becomes width - 2 pixels wide; width -1 stands for the client width.
    void setColumnWidth(int width);
    // Width of text in pixels, in the font of a paint context on the control.
    int getWidthOf(const wchar_t* text);
    // The selected rows' texts, ascending, each followed by "\n".
    CString getStringForClipBoard();
    // Shows the parent's first submenu at point (screen coordinates).
    void PopupMenu(CPoint* point);

    // Overridables.
    void PreSubclassWindow() override;

    afx_msg int OnCreate(LPCREATESTRUCT lpCreateStruct);
    afx_msg void OnContextMenu(CWnd* pWnd, CPoint point);
    afx_msg void OnInsertitem(NMHDR* pNMHDR, LRESULT* pResult);
    afx_msg void OnDeleteitem(NMHDR* pNMHDR, LRESULT* pResult);
    afx_msg void OnSize(UINT nType, int cx, int cy);
    DECLARE_MESSAGE_MAP()

    CImageList m_imageList;

private:
    // The set-up after the list view exists: full-row selection, icons, column 0.
    void SetUpList(bool bSubclassing);
    // True while the window is being created and its set-up waits for WM_CREATE.
    bool m_bSetUpPending;
};
