// Framework helpers for code that builds its own windows: in-memory dialog templates.
#pragma once
#include "afxwin.h"

// Builds a dialog template in memory, for CDialog::CreateIndirect / InitModalIndirect.
// Coordinates are dialog units. The template stays valid while the builder lives and
// is not changed.
class KXAFX_API CDialogTemplateBuilder {
public:
    // DS_SETFONT is added when lpszFont is given.
    CDialogTemplateBuilder(LPCTSTR lpszCaption, DWORD dwStyle, const RECT& rect,
                           LPCTSTR lpszFont = L"MS Shell Dlg", WORD wPointSize = 8, DWORD dwExStyle = 0);
    ~CDialogTemplateBuilder();
    CDialogTemplateBuilder(const CDialogTemplateBuilder&) = delete;
    CDialogTemplateBuilder& operator=(const CDialogTemplateBuilder&) = delete;

    // Adds a control of a window class given by name ("BUTTON", "EDIT", WC_LISTVIEW, ...).
    // WS_CHILD and WS_VISIBLE are added to dwStyle.
    void AddItem(LPCTSTR lpszClass, LPCTSTR lpszText, DWORD dwStyle, const RECT& rect, WORD nID,
                 DWORD dwExStyle = 0);
    int GetItemCount() const;
    LPCDLGTEMPLATE GetTemplate();
    // Size of the template in bytes.
    size_t GetSize() const;

private:
    struct Impl;
    Impl* m_pImpl;
};
