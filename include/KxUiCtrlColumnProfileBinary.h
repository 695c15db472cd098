// KxUiCtrlColumnProfileBinary: the column widths of a list in a dialog, kept between runs.
//
// A record of one child of the container (section as for every child record, value
// "SIZECOLUMN"). The child's run-time class picks the format, first match wins:
//   KxUiListCtrlBase with its show/hide-column menu   the list's own SaveState/RestoreState
//   CListCtrl (any other list)                         list format
//   anything else                                      nothing written, reading fails
// List format, 32-bit little-endian integers: the column count n (header items), then n widths
// in column index order. A stored profile of another column count is applied as far as both
// sides have columns and reported as failure, so that the record stays not loaded.
//
// When the profile holds nothing yet, the flags size the columns the first time: 2 fits each
// column to its header text, 4 to its contents, 6 to the larger of the two (one pixel more when
// the header is the wider); flags below 2 size nothing and fail.
//
//     KxUiCtrlColumnProfileBinary profile(IDC_ORDERS, 6);
//     profile.loadData(this);     // in OnInitDialog: stored widths, or the first-time fit
//     profile.saveData(this);     // when the dialog closes
#pragma once
#include "KxUiWindowBinary.h"

class KXUI_API KxUiCtrlColumnProfileBinary : public KxUiChildWindowBinary {
public:
    // Fit to the header text the first time.
    static const int sizeToHeader = 2;
    // Fit to the contents the first time.
    static const int sizeToContents = 4;

    explicit KxUiCtrlColumnProfileBinary(UINT nId, int nFlags = 0) : KxUiChildWindowBinary(nId), m_nFlags(nFlags) {}

    void getStream(const CWnd* pWnd, CMemFile& stream) override;
    bool setFromStream(CWnd* pWnd, CMemFile& stream) override;
    bool initializeWhenNoStream(CWnd* pWnd) override;
    // "SIZECOLUMN".
    CString getEntryName() override;

    int getFlags() const { return m_nFlags; }
    void setFlags(int nFlags) { m_nFlags = nFlags; }

protected:
    // The child's format.
    enum Kind { kindNone, kindListState, kindList };
    Kind getKind(CWnd* pChild) const;

    int m_nFlags;  // first-time sizing: sizeToHeader, sizeToContents or both
};
