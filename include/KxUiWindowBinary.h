// KxUiWindowBinary and its records: state of a window kept as one binary value in the host
// application's profile (CWinApp::GetProfileBinary / WriteProfileBinary).
//
// Every operation is given the container (the dialog or frame); a child record finds its child by
// control identifier. Keys:
//   placement  section "Window\<container class>"                      value "WINDOWPLACEMENT"
//   child      section "Window\<container class>\<child class>_<id>"   value "WNDSTATE"
//   splitter   section "Window\<container class>\<window class, 9 characters>_<id>"
//                                                                      value "SPLITTERPERCENT"
// where a class is the run-time class name of the window object (CDialog, CWnd for a window reached
// through a plain CWnd) and the splitter's middle part is its platform window class name cut to 9
// characters. A record that cannot name its section (no window, no child) neither reads nor writes.
#pragma once
#include "KxUiDef.h"

class CWnd;
class CMemFile;
class KxUiSplitter;

class KXUI_API KxUiWindowBinary {
public:
    KxUiWindowBinary() : m_bLoaded(false) {}
    KxUiWindowBinary(const KxUiWindowBinary&) = default;
    KxUiWindowBinary& operator=(const KxUiWindowBinary&) = default;
    virtual ~KxUiWindowBinary();

    // Appends the window's state to the stream.
    virtual void getStream(const CWnd* pWnd, CMemFile& stream) = 0;
    // Applies the stream to the window; false when it does not fit the window.
    virtual bool setFromStream(CWnd* pWnd, CMemFile& stream) = 0;
    // What to do when the profile holds no value.
    virtual bool initializeWhenNoStream(CWnd* pWnd) = 0;
    virtual CString getSectionName(const CWnd* pWnd) = 0;
    virtual CString getEntryName() = 0;

    // Reads the value and applies it, once: false for a null window or when already loaded. A value
    // that was rejected leaves the record not loaded, and the next call tries again.
    bool loadData(CWnd* pWnd);
    // Writes the window's state, loaded or not; false without an application object or a window.
    bool saveData(const CWnd* pWnd);
    void setLoaded(bool bLoaded) { m_bLoaded = bLoaded; }
    bool getLoaded() const { return m_bLoaded; }

protected:
    // The profile value into the stream, rewound; false without one.
    bool getProfileBinary(const CWnd* pWnd, CMemFile& stream);
    // The whole stream as the profile value; the stream is rewound afterwards.
    bool writeProfileBinary(const CWnd* pWnd, CMemFile& stream);

    bool m_bLoaded;
};

// A record of the container itself: section "Window\<run-time class>".
class KXUI_API KxUiContainerWindowBinary : public KxUiWindowBinary {
public:
    CString getSectionName(const CWnd* pWnd) override;
};

// A record of one child of the container: section "<container section>\<child class>_<id>".
class KXUI_API KxUiChildWindowBinary : public KxUiContainerWindowBinary {
public:
    explicit KxUiChildWindowBinary(UINT nId) : m_nId(nId) {}
    CString getSectionName(const CWnd* pWnd) override;
    UINT getId() const { return m_nId; }

protected:
    // The child, or null.
    CWnd* getCWnd(const CWnd* pWnd) const;
    // The platform class name of a window; empty for null.
    CString getWndName(const CWnd* pWnd) const;

    UINT m_nId;
};

// "WINDOWPLACEMENT": the 44-byte WINDOWPLACEMENT of the container. A window without a thick frame is
// only moved, keeping its size and show state.
class KXUI_API KxUiWindowPlacementBinary : public KxUiContainerWindowBinary {
public:
    KxUiWindowPlacementBinary() : m_bNoMove(false) {}
    void getStream(const CWnd* pWnd, CMemFile& stream) override;
    bool setFromStream(CWnd* pWnd, CMemFile& stream) override;
    bool initializeWhenNoStream(CWnd* pWnd) override;
    CString getEntryName() override;

    // Whether a stored normal position may be shown: with bAskMonitor and the platform's
    // MonitorFromRect, any rectangle has a nearest monitor; otherwise the rectangle must meet the
    // primary screen.
    static bool isOnScreen(const RECT& rcNormal, bool bAskMonitor = true);

protected:
    void setNoMove(bool bNoMove) { m_bNoMove = bNoMove; }

    bool m_bNoMove;
};

// "WNDSTATE" of a child, by its platform class: check state of a button, selection of a drop-down
// list or a tab control, text of an edit or of an editable combo box. A stored text is applied up
// to what the control takes: its text limit (EM_LIMITTEXT), and at most 32767 characters in a
// single-line control, 1,048,576 in a multi-line one.
class KXUI_API KxUiWindowStateBinary : public KxUiChildWindowBinary {
public:
    explicit KxUiWindowStateBinary(UINT nId) : KxUiChildWindowBinary(nId) {}
    void getStream(const CWnd* pWnd, CMemFile& stream) override;
    bool setFromStream(CWnd* pWnd, CMemFile& stream) override;
    bool initializeWhenNoStream(CWnd* pWnd) override;
    CString getEntryName() override;

    bool isButton(const CWnd* pWnd) const;
    bool isCombo(const CWnd* pWnd) const;
    bool isEdit(const CWnd* pWnd) const;
    bool isTabCtrl(const CWnd* pWnd) const;

protected:
    // What the child is, by its platform class (and, for a combo box, its style).
    enum Kind { kindNone, kindButton, kindDropDownList, kindComboText, kindEdit, kindTab };
    // The child's kind, resolved once per operation; kindNone without a child or for other classes.
    Kind getKind(const CWnd* pWnd) const;
};

// "SPLITTERPERCENT": the position of a splitter in percent, restored before the splitter attaches.
class KXUI_API KxUiSplitterPositionArchive : public virtual KxUiWindowBinary {
public:
    explicit KxUiSplitterPositionArchive(KxUiSplitter* pSplitter) : m_pSplitter(pSplitter) {}
    void getStream(const CWnd* pWnd, CMemFile& stream) override;
    bool setFromStream(CWnd* pWnd, CMemFile& stream) override;
    bool initializeWhenNoStream(CWnd* pWnd) override;
    CString getSectionName(const CWnd* pWnd) override;
    CString getEntryName() override;

protected:
    // The platform class name of the splitter, at most 9 characters.
    CString getWndName(const CWnd* pWnd) const;

    KxUiSplitter* m_pSplitter;
};
