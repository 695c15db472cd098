// Message maps: the entry table, handler signatures and the ON_ macros (included by afxwin.h).
#pragma once

class CCmdTarget;
typedef void (CCmdTarget::*AFX_PMSG)();

#ifndef afx_msg
#define afx_msg
#endif

// One message-map entry: which message, notification code and control ids it takes, how
// its handler is called (nSig) and the handler. nSig of a registered message entry holds
// the address of the variable with the message number.
struct AFX_MSGMAP_ENTRY {
    UINT nMessage;
    UINT nCode;
    UINT nID;
    UINT nLastID;
    UINT_PTR nSig;
    AFX_PMSG pfn;
};

struct AFX_MSGMAP {
    const AFX_MSGMAP* (*pfnGetBaseMap)();
    const AFX_MSGMAP_ENTRY* lpEntries;
};

// Handler signatures: return type, then the arguments.
enum AfxSig : UINT_PTR {
    AfxSig_end = 0,
    // commands and notifications
    AfxSigCmd_v,        // void ()
    AfxSigCmd_b,        // BOOL ()
    AfxSigCmd_RANGE,    // void (UINT nID)
    AfxSigCmd_EX,       // BOOL (UINT nID)
    AfxSigCmdUI,        // void (CCmdUI*)
    AfxSigCmdUI_RANGE,  // void (CCmdUI*, UINT nID)
    AfxSigNotify_v,     // void (NMHDR*, LRESULT*)
    AfxSigNotify_b,     // BOOL (NMHDR*, LRESULT*)
    AfxSigNotify_RANGE, // void (UINT nID, NMHDR*, LRESULT*)
    AfxSigNotify_EX,    // BOOL (UINT nID, NMHDR*, LRESULT*)
    // window messages
    AfxSig_l_w_l,       // LRESULT (WPARAM, LPARAM)
    AfxSig_v_v,         // void ()
    AfxSig_b_v,         // BOOL ()
    AfxSig_u_v,         // UINT ()
    AfxSig_i_CS,        // int (LPCREATESTRUCT)
    AfxSig_b_CS,        // BOOL (LPCREATESTRUCT)
    AfxSig_v_u_ii,      // void (UINT, int, int)
    AfxSig_v_ii,        // void (int, int)
    AfxSig_v_u_R,       // void (UINT, LPRECT)
    AfxSig_v_MMI,       // void (MINMAXINFO*)
    AfxSig_v_WP,        // void (WINDOWPOS*)
    AfxSig_v_b_NCS,     // void (BOOL, NCCALCSIZE_PARAMS*)
    AfxSig_b_D,         // BOOL (CDC*)
    AfxSig_v_w,         // void (UINT_PTR)
    AfxSig_v_u_u_SB,    // void (UINT, UINT, CScrollBar*)
    AfxSig_v_uu,        // void (UINT, UINT)
    AfxSig_v_u_p,       // void (UINT, CPoint)
    AfxSig_b_u_s_p,     // BOOL (UINT, short, CPoint)
    AfxSig_l_p,         // LRESULT (CPoint)
    AfxSig_i_W_uu,      // int (CWnd*, UINT, UINT)
    AfxSig_v_uuu,       // void (UINT, UINT, UINT)
    AfxSig_v_W,         // void (CWnd*) from WPARAM
    AfxSig_v_W2,        // void (CWnd*) from LPARAM
    AfxSig_b_W_uu,      // BOOL (CWnd*, UINT, UINT)
    AfxSig_v_W_p,       // void (CWnd*, CPoint)
    AfxSig_v_u_W_b,     // void (UINT, CWnd*, BOOL)
    AfxSig_v_b_u,       // void (BOOL, UINT)
    AfxSig_v_b,         // void (BOOL)
    AfxSig_v_M_u_b,     // void (CMenu*, UINT, BOOL)
    AfxSig_v_M,         // void (CMenu*)
    AfxSig_l_u_u_M,     // LRESULT (UINT, UINT, CMenu*)
    AfxSig_v_u_u_h,     // void (UINT, UINT, HMENU)
    AfxSig_v_i_MIS,     // void (int, LPMEASUREITEMSTRUCT)
    AfxSig_v_i_DIS,     // void (int, LPDRAWITEMSTRUCT)
    AfxSig_i_i_CIS,     // int (int, LPCOMPAREITEMSTRUCT)
    AfxSig_v_i_DEL,     // void (int, LPDELETEITEMSTRUCT)
    AfxSig_v_MIS,       // void (LPMEASUREITEMSTRUCT), reflected
    AfxSig_v_DIS,       // void (LPDRAWITEMSTRUCT), reflected
    AfxSig_i_u_LB_u,    // int (UINT, CListBox*, UINT)
    AfxSig_v_u_s,       // void (UINT, LPCTSTR)
    AfxSig_v_u_l,       // void (UINT, LPARAM)
    AfxSig_hbr_D_W_u,   // HBRUSH (CDC*, CWnd*, UINT)
    AfxSig_hbr_D_u,     // HBRUSH (CDC*, UINT), reflected
};

// Reflected messages come back to the child as WM_REFLECT_BASE + message.
#define WM_REFLECT_BASE 0xBC00
// WM_CTLCOLORxxx reach a message map as this one message with an AFX_CTLCOLOR.
#ifndef WM_CTLCOLOR
#define WM_CTLCOLOR 0x0019
#endif
// Commands ask their handlers with these codes.
#define CN_COMMAND 0
#define CN_UPDATE_COMMAND_UI ((UINT)(-1))

struct AFX_CTLCOLOR {
    HWND hWnd;
    HDC hDC;
    UINT nCtlType;
};

struct AFX_NOTIFY {
    LRESULT* pResult;
    NMHDR* pNMHDR;
};

#define DECLARE_MESSAGE_MAP()                                   \
protected:                                                      \
    static const AFX_MSGMAP* PASCAL GetThisMessageMap();        \
    virtual const AFX_MSGMAP* GetMessageMap() const;

#define BEGIN_MESSAGE_MAP(theClass, baseClass)                                    \
    const AFX_MSGMAP* theClass::GetMessageMap() const { return GetThisMessageMap(); } \
    const AFX_MSGMAP* PASCAL theClass::GetThisMessageMap()                        \
    {                                                                             \
        using ThisClass [[maybe_unused]] = theClass;                              \
        using TheBaseClass = baseClass;                                           \
        static const AFX_MSGMAP_ENTRY _messageEntries[] = {

#define END_MESSAGE_MAP()                                                          \
            { 0, 0, 0, 0, AfxSig_end, (AFX_PMSG)nullptr }                          \
        };                                                                         \
        static const AFX_MSGMAP messageMap = { &TheBaseClass::GetThisMessageMap,   \
                                               &_messageEntries[0] };              \
        return &messageMap;                                                        \
    }

// Command, notification and user-message entries take the handler as a member pointer
// expression (&CMyWnd::OnFoo); the ON_WM_ entries name the fixed handler themselves.

// Internal: an entry for window message msg whose handler has the given member type.
#define _AFX_WM_ENTRY(msg, sig, type, fn) \
    { msg, 0, 0, 0, sig, (AFX_PMSG)(static_cast<type>(&ThisClass::fn)) },

// ---- commands, notifications and user messages ----
#define ON_COMMAND(id, memberFxn) \
    { WM_COMMAND, CN_COMMAND, (WORD)(id), (WORD)(id), AfxSigCmd_v, \
      static_cast<AFX_PMSG>(memberFxn) },
#define ON_COMMAND_EX(id, memberFxn) \
    { WM_COMMAND, CN_COMMAND, (WORD)(id), (WORD)(id), AfxSigCmd_EX, \
      (AFX_PMSG)(static_cast<BOOL (CCmdTarget::*)(UINT)>(memberFxn)) },
#define ON_COMMAND_RANGE(id, idLast, memberFxn) \
    { WM_COMMAND, CN_COMMAND, (WORD)(id), (WORD)(idLast), AfxSigCmd_RANGE, \
      (AFX_PMSG)(static_cast<void (CCmdTarget::*)(UINT)>(memberFxn)) },
#define ON_COMMAND_EX_RANGE(id, idLast, memberFxn) \
    { WM_COMMAND, CN_COMMAND, (WORD)(id), (WORD)(idLast), AfxSigCmd_EX, \
      (AFX_PMSG)(static_cast<BOOL (CCmdTarget::*)(UINT)>(memberFxn)) },
#define ON_UPDATE_COMMAND_UI(id, memberFxn) \
    { WM_COMMAND, CN_UPDATE_COMMAND_UI, (WORD)(id), (WORD)(id), AfxSigCmdUI, \
      (AFX_PMSG)(static_cast<void (CCmdTarget::*)(CCmdUI*)>(memberFxn)) },
#define ON_UPDATE_COMMAND_UI_RANGE(id, idLast, memberFxn) \
    { WM_COMMAND, CN_UPDATE_COMMAND_UI, (WORD)(id), (WORD)(idLast), AfxSigCmdUI, \
      (AFX_PMSG)(static_cast<void (CCmdTarget::*)(CCmdUI*)>(memberFxn)) },
#define ON_NOTIFY(wNotifyCode, id, memberFxn) \
    { WM_NOTIFY, (WORD)(int)(wNotifyCode), (WORD)(id), (WORD)(id), AfxSigNotify_v, \
      (AFX_PMSG)(static_cast<void (CCmdTarget::*)(NMHDR*, LRESULT*)>(memberFxn)) },
#define ON_NOTIFY_RANGE(wNotifyCode, id, idLast, memberFxn) \
    { WM_NOTIFY, (WORD)(int)(wNotifyCode), (WORD)(id), (WORD)(idLast), AfxSigNotify_RANGE, \
      (AFX_PMSG)(static_cast<void (CCmdTarget::*)(UINT, NMHDR*, LRESULT*)>(memberFxn)) },
#define ON_NOTIFY_EX(wNotifyCode, id, memberFxn) \
    { WM_NOTIFY, (WORD)(int)(wNotifyCode), (WORD)(id), (WORD)(id), AfxSigNotify_EX, \
      (AFX_PMSG)(static_cast<BOOL (CCmdTarget::*)(UINT, NMHDR*, LRESULT*)>(memberFxn)) },
#define ON_NOTIFY_EX_RANGE(wNotifyCode, id, idLast, memberFxn) \
    { WM_NOTIFY, (WORD)(int)(wNotifyCode), (WORD)(id), (WORD)(idLast), AfxSigNotify_EX, \
      (AFX_PMSG)(static_cast<BOOL (CCmdTarget::*)(UINT, NMHDR*, LRESULT*)>(memberFxn)) },
#define ON_NOTIFY_REFLECT(wNotifyCode, memberFxn) \
    { WM_NOTIFY + WM_REFLECT_BASE, (WORD)(int)(wNotifyCode), 0, 0, AfxSigNotify_v, \
      (AFX_PMSG)(static_cast<void (CCmdTarget::*)(NMHDR*, LRESULT*)>(memberFxn)) },
#define ON_NOTIFY_REFLECT_EX(wNotifyCode, memberFxn) \
    { WM_NOTIFY + WM_REFLECT_BASE, (WORD)(int)(wNotifyCode), 0, 0, AfxSigNotify_b, \
      (AFX_PMSG)(static_cast<BOOL (CCmdTarget::*)(NMHDR*, LRESULT*)>(memberFxn)) },
#define ON_CONTROL(wNotifyCode, id, memberFxn) \
    { WM_COMMAND, (WORD)(wNotifyCode), (WORD)(id), (WORD)(id), AfxSigCmd_v, \
      static_cast<AFX_PMSG>(memberFxn) },
#define ON_CONTROL_RANGE(wNotifyCode, id, idLast, memberFxn) \
    { WM_COMMAND, (WORD)(wNotifyCode), (WORD)(id), (WORD)(idLast), AfxSigCmd_RANGE, \
      (AFX_PMSG)(static_cast<void (CCmdTarget::*)(UINT)>(memberFxn)) },
#define ON_CONTROL_REFLECT(wNotifyCode, memberFxn) \
    { WM_COMMAND + WM_REFLECT_BASE, (WORD)(wNotifyCode), 0, 0, AfxSigCmd_v, \
      static_cast<AFX_PMSG>(memberFxn) },
#define ON_CONTROL_REFLECT_EX(wNotifyCode, memberFxn) \
    { WM_COMMAND + WM_REFLECT_BASE, (WORD)(wNotifyCode), 0, 0, AfxSigCmd_b, \
      (AFX_PMSG)(static_cast<BOOL (CCmdTarget::*)()>(memberFxn)) },
#define ON_MESSAGE(message, memberFxn) \
    { message, 0, 0, 0, AfxSig_l_w_l, \
      (AFX_PMSG)(static_cast<LRESULT (CWnd::*)(WPARAM, LPARAM)>(memberFxn)) },
#define ON_REGISTERED_MESSAGE(nMessageVariable, memberFxn) \
    { 0xC000, 0, 0, 0, (UINT_PTR)(UINT*)(&nMessageVariable), \
      (AFX_PMSG)(static_cast<LRESULT (CWnd::*)(WPARAM, LPARAM)>(memberFxn)) },

// ---- control notification shorthands ----
#define ON_BN_CLICKED(id, memberFxn) ON_CONTROL(BN_CLICKED, id, memberFxn)
#define ON_BN_DOUBLECLICKED(id, memberFxn) ON_CONTROL(BN_DOUBLECLICKED, id, memberFxn)
#define ON_BN_SETFOCUS(id, memberFxn) ON_CONTROL(BN_SETFOCUS, id, memberFxn)
#define ON_BN_KILLFOCUS(id, memberFxn) ON_CONTROL(BN_KILLFOCUS, id, memberFxn)
#define ON_EN_CHANGE(id, memberFxn) ON_CONTROL(EN_CHANGE, id, memberFxn)
#define ON_EN_UPDATE(id, memberFxn) ON_CONTROL(EN_UPDATE, id, memberFxn)
#define ON_EN_SETFOCUS(id, memberFxn) ON_CONTROL(EN_SETFOCUS, id, memberFxn)
#define ON_EN_KILLFOCUS(id, memberFxn) ON_CONTROL(EN_KILLFOCUS, id, memberFxn)
#define ON_EN_MAXTEXT(id, memberFxn) ON_CONTROL(EN_MAXTEXT, id, memberFxn)
#define ON_EN_HSCROLL(id, memberFxn) ON_CONTROL(EN_HSCROLL, id, memberFxn)
#define ON_EN_VSCROLL(id, memberFxn) ON_CONTROL(EN_VSCROLL, id, memberFxn)
#define ON_LBN_SELCHANGE(id, memberFxn) ON_CONTROL(LBN_SELCHANGE, id, memberFxn)
#define ON_LBN_DBLCLK(id, memberFxn) ON_CONTROL(LBN_DBLCLK, id, memberFxn)
#define ON_LBN_SELCANCEL(id, memberFxn) ON_CONTROL(LBN_SELCANCEL, id, memberFxn)
#define ON_LBN_SETFOCUS(id, memberFxn) ON_CONTROL(LBN_SETFOCUS, id, memberFxn)
#define ON_LBN_KILLFOCUS(id, memberFxn) ON_CONTROL(LBN_KILLFOCUS, id, memberFxn)
#define ON_CBN_SELCHANGE(id, memberFxn) ON_CONTROL(CBN_SELCHANGE, id, memberFxn)
#define ON_CBN_DBLCLK(id, memberFxn) ON_CONTROL(CBN_DBLCLK, id, memberFxn)
#define ON_CBN_SETFOCUS(id, memberFxn) ON_CONTROL(CBN_SETFOCUS, id, memberFxn)
#define ON_CBN_KILLFOCUS(id, memberFxn) ON_CONTROL(CBN_KILLFOCUS, id, memberFxn)
#define ON_CBN_EDITCHANGE(id, memberFxn) ON_CONTROL(CBN_EDITCHANGE, id, memberFxn)
#define ON_CBN_EDITUPDATE(id, memberFxn) ON_CONTROL(CBN_EDITUPDATE, id, memberFxn)
#define ON_CBN_DROPDOWN(id, memberFxn) ON_CONTROL(CBN_DROPDOWN, id, memberFxn)
#define ON_CBN_CLOSEUP(id, memberFxn) ON_CONTROL(CBN_CLOSEUP, id, memberFxn)
#define ON_CBN_SELENDOK(id, memberFxn) ON_CONTROL(CBN_SELENDOK, id, memberFxn)
#define ON_CBN_SELENDCANCEL(id, memberFxn) ON_CONTROL(CBN_SELENDCANCEL, id, memberFxn)
#define ON_STN_CLICKED(id, memberFxn) ON_CONTROL(STN_CLICKED, id, memberFxn)
#define ON_STN_DBLCLK(id, memberFxn) ON_CONTROL(STN_DBLCLK, id, memberFxn)
#define ON_STN_ENABLE(id, memberFxn) ON_CONTROL(STN_ENABLE, id, memberFxn)
#define ON_STN_DISABLE(id, memberFxn) ON_CONTROL(STN_DISABLE, id, memberFxn)

// ---- window messages (handlers have the framework's fixed names) ----
#define ON_WM_CREATE() _AFX_WM_ENTRY(WM_CREATE, AfxSig_i_CS, int (CWnd::*)(LPCREATESTRUCT), OnCreate)
#define ON_WM_NCCREATE() _AFX_WM_ENTRY(WM_NCCREATE, AfxSig_b_CS, BOOL (CWnd::*)(LPCREATESTRUCT), OnNcCreate)
#define ON_WM_DESTROY() _AFX_WM_ENTRY(WM_DESTROY, AfxSig_v_v, void (CWnd::*)(), OnDestroy)
#define ON_WM_NCDESTROY() _AFX_WM_ENTRY(WM_NCDESTROY, AfxSig_v_v, void (CWnd::*)(), OnNcDestroy)
#define ON_WM_CLOSE() _AFX_WM_ENTRY(WM_CLOSE, AfxSig_v_v, void (CWnd::*)(), OnClose)
#define ON_WM_SIZE() _AFX_WM_ENTRY(WM_SIZE, AfxSig_v_u_ii, void (CWnd::*)(UINT, int, int), OnSize)
#define ON_WM_SIZING() _AFX_WM_ENTRY(WM_SIZING, AfxSig_v_u_R, void (CWnd::*)(UINT, LPRECT), OnSizing)
#define ON_WM_MOVE() _AFX_WM_ENTRY(WM_MOVE, AfxSig_v_ii, void (CWnd::*)(int, int), OnMove)
#define ON_WM_GETMINMAXINFO() \
    _AFX_WM_ENTRY(WM_GETMINMAXINFO, AfxSig_v_MMI, void (CWnd::*)(MINMAXINFO*), OnGetMinMaxInfo)
#define ON_WM_WINDOWPOSCHANGING() \
    _AFX_WM_ENTRY(WM_WINDOWPOSCHANGING, AfxSig_v_WP, void (CWnd::*)(WINDOWPOS*), OnWindowPosChanging)
#define ON_WM_WINDOWPOSCHANGED() \
    _AFX_WM_ENTRY(WM_WINDOWPOSCHANGED, AfxSig_v_WP, void (CWnd::*)(WINDOWPOS*), OnWindowPosChanged)
#define ON_WM_NCCALCSIZE() \
    _AFX_WM_ENTRY(WM_NCCALCSIZE, AfxSig_v_b_NCS, void (CWnd::*)(BOOL, NCCALCSIZE_PARAMS*), OnNcCalcSize)
#define ON_WM_NCHITTEST() _AFX_WM_ENTRY(WM_NCHITTEST, AfxSig_l_p, LRESULT (CWnd::*)(CPoint), OnNcHitTest)
#define ON_WM_PAINT() _AFX_WM_ENTRY(WM_PAINT, AfxSig_v_v, void (CWnd::*)(), OnPaint)
#define ON_WM_NCPAINT() _AFX_WM_ENTRY(WM_NCPAINT, AfxSig_v_v, void (CWnd::*)(), OnNcPaint)
#define ON_WM_ERASEBKGND() _AFX_WM_ENTRY(WM_ERASEBKGND, AfxSig_b_D, BOOL (CWnd::*)(CDC*), OnEraseBkgnd)
#define ON_WM_TIMER() _AFX_WM_ENTRY(WM_TIMER, AfxSig_v_w, void (CWnd::*)(UINT_PTR), OnTimer)
#define ON_WM_HSCROLL() \
    _AFX_WM_ENTRY(WM_HSCROLL, AfxSig_v_u_u_SB, void (CWnd::*)(UINT, UINT, CScrollBar*), OnHScroll)
#define ON_WM_VSCROLL() \
    _AFX_WM_ENTRY(WM_VSCROLL, AfxSig_v_u_u_SB, void (CWnd::*)(UINT, UINT, CScrollBar*), OnVScroll)
#define ON_WM_HSCROLL_REFLECT() \
    _AFX_WM_ENTRY(WM_HSCROLL + WM_REFLECT_BASE, AfxSig_v_uu, void (CWnd::*)(UINT, UINT), HScroll)
#define ON_WM_VSCROLL_REFLECT() \
    _AFX_WM_ENTRY(WM_VSCROLL + WM_REFLECT_BASE, AfxSig_v_uu, void (CWnd::*)(UINT, UINT), VScroll)
#define ON_WM_LBUTTONDOWN() _AFX_WM_ENTRY(WM_LBUTTONDOWN, AfxSig_v_u_p, void (CWnd::*)(UINT, CPoint), OnLButtonDown)
#define ON_WM_LBUTTONUP() _AFX_WM_ENTRY(WM_LBUTTONUP, AfxSig_v_u_p, void (CWnd::*)(UINT, CPoint), OnLButtonUp)
#define ON_WM_LBUTTONDBLCLK() \
    _AFX_WM_ENTRY(WM_LBUTTONDBLCLK, AfxSig_v_u_p, void (CWnd::*)(UINT, CPoint), OnLButtonDblClk)
#define ON_WM_RBUTTONDOWN() _AFX_WM_ENTRY(WM_RBUTTONDOWN, AfxSig_v_u_p, void (CWnd::*)(UINT, CPoint), OnRButtonDown)
#define ON_WM_RBUTTONUP() _AFX_WM_ENTRY(WM_RBUTTONUP, AfxSig_v_u_p, void (CWnd::*)(UINT, CPoint), OnRButtonUp)
#define ON_WM_RBUTTONDBLCLK() \
    _AFX_WM_ENTRY(WM_RBUTTONDBLCLK, AfxSig_v_u_p, void (CWnd::*)(UINT, CPoint), OnRButtonDblClk)
#define ON_WM_MBUTTONDOWN() _AFX_WM_ENTRY(WM_MBUTTONDOWN, AfxSig_v_u_p, void (CWnd::*)(UINT, CPoint), OnMButtonDown)
#define ON_WM_MBUTTONUP() _AFX_WM_ENTRY(WM_MBUTTONUP, AfxSig_v_u_p, void (CWnd::*)(UINT, CPoint), OnMButtonUp)
#define ON_WM_MBUTTONDBLCLK() \
    _AFX_WM_ENTRY(WM_MBUTTONDBLCLK, AfxSig_v_u_p, void (CWnd::*)(UINT, CPoint), OnMButtonDblClk)
#define ON_WM_MOUSEMOVE() _AFX_WM_ENTRY(WM_MOUSEMOVE, AfxSig_v_u_p, void (CWnd::*)(UINT, CPoint), OnMouseMove)
#define ON_WM_MOUSEWHEEL() \
    _AFX_WM_ENTRY(WM_MOUSEWHEEL, AfxSig_b_u_s_p, BOOL (CWnd::*)(UINT, short, CPoint), OnMouseWheel)
#define ON_WM_MOUSELEAVE() _AFX_WM_ENTRY(WM_MOUSELEAVE, AfxSig_v_v, void (CWnd::*)(), OnMouseLeave)
#define ON_WM_MOUSEACTIVATE() \
    _AFX_WM_ENTRY(WM_MOUSEACTIVATE, AfxSig_i_W_uu, int (CWnd::*)(CWnd*, UINT, UINT), OnMouseActivate)
#define ON_WM_KEYDOWN() _AFX_WM_ENTRY(WM_KEYDOWN, AfxSig_v_uuu, void (CWnd::*)(UINT, UINT, UINT), OnKeyDown)
#define ON_WM_KEYUP() _AFX_WM_ENTRY(WM_KEYUP, AfxSig_v_uuu, void (CWnd::*)(UINT, UINT, UINT), OnKeyUp)
#define ON_WM_SYSKEYDOWN() \
    _AFX_WM_ENTRY(WM_SYSKEYDOWN, AfxSig_v_uuu, void (CWnd::*)(UINT, UINT, UINT), OnSysKeyDown)
#define ON_WM_SYSKEYUP() _AFX_WM_ENTRY(WM_SYSKEYUP, AfxSig_v_uuu, void (CWnd::*)(UINT, UINT, UINT), OnSysKeyUp)
#define ON_WM_CHAR() _AFX_WM_ENTRY(WM_CHAR, AfxSig_v_uuu, void (CWnd::*)(UINT, UINT, UINT), OnChar)
#define ON_WM_SYSCHAR() _AFX_WM_ENTRY(WM_SYSCHAR, AfxSig_v_uuu, void (CWnd::*)(UINT, UINT, UINT), OnSysChar)
#define ON_WM_DEADCHAR() _AFX_WM_ENTRY(WM_DEADCHAR, AfxSig_v_uuu, void (CWnd::*)(UINT, UINT, UINT), OnDeadChar)
#define ON_WM_SETFOCUS() _AFX_WM_ENTRY(WM_SETFOCUS, AfxSig_v_W, void (CWnd::*)(CWnd*), OnSetFocus)
#define ON_WM_KILLFOCUS() _AFX_WM_ENTRY(WM_KILLFOCUS, AfxSig_v_W, void (CWnd::*)(CWnd*), OnKillFocus)
#define ON_WM_CAPTURECHANGED() \
    _AFX_WM_ENTRY(WM_CAPTURECHANGED, AfxSig_v_W2, void (CWnd::*)(CWnd*), OnCaptureChanged)
#define ON_WM_CANCELMODE() _AFX_WM_ENTRY(WM_CANCELMODE, AfxSig_v_v, void (CWnd::*)(), OnCancelMode)
#define ON_WM_SETCURSOR() \
    _AFX_WM_ENTRY(WM_SETCURSOR, AfxSig_b_W_uu, BOOL (CWnd::*)(CWnd*, UINT, UINT), OnSetCursor)
#define ON_WM_CONTEXTMENU() \
    _AFX_WM_ENTRY(WM_CONTEXTMENU, AfxSig_v_W_p, void (CWnd::*)(CWnd*, CPoint), OnContextMenu)
#define ON_WM_GETDLGCODE() _AFX_WM_ENTRY(WM_GETDLGCODE, AfxSig_u_v, UINT (CWnd::*)(), OnGetDlgCode)
#define ON_WM_ACTIVATE() \
    _AFX_WM_ENTRY(WM_ACTIVATE, AfxSig_v_u_W_b, void (CWnd::*)(UINT, CWnd*, BOOL), OnActivate)
#define ON_WM_SHOWWINDOW() _AFX_WM_ENTRY(WM_SHOWWINDOW, AfxSig_v_b_u, void (CWnd::*)(BOOL, UINT), OnShowWindow)
#define ON_WM_ENABLE() _AFX_WM_ENTRY(WM_ENABLE, AfxSig_v_b, void (CWnd::*)(BOOL), OnEnable)
#define ON_WM_INITMENU() _AFX_WM_ENTRY(WM_INITMENU, AfxSig_v_M, void (CWnd::*)(CMenu*), OnInitMenu)
#define ON_WM_INITMENUPOPUP() \
    _AFX_WM_ENTRY(WM_INITMENUPOPUP, AfxSig_v_M_u_b, void (CWnd::*)(CMenu*, UINT, BOOL), OnInitMenuPopup)
#define ON_WM_MENUCHAR() \
    _AFX_WM_ENTRY(WM_MENUCHAR, AfxSig_l_u_u_M, LRESULT (CWnd::*)(UINT, UINT, CMenu*), OnMenuChar)
#define ON_WM_MENUSELECT() \
    _AFX_WM_ENTRY(WM_MENUSELECT, AfxSig_v_u_u_h, void (CWnd::*)(UINT, UINT, HMENU), OnMenuSelect)
#define ON_WM_MEASUREITEM() \
    _AFX_WM_ENTRY(WM_MEASUREITEM, AfxSig_v_i_MIS, void (CWnd::*)(int, LPMEASUREITEMSTRUCT), OnMeasureItem)
#define ON_WM_DRAWITEM() \
    _AFX_WM_ENTRY(WM_DRAWITEM, AfxSig_v_i_DIS, void (CWnd::*)(int, LPDRAWITEMSTRUCT), OnDrawItem)
#define ON_WM_COMPAREITEM() \
    _AFX_WM_ENTRY(WM_COMPAREITEM, AfxSig_i_i_CIS, int (CWnd::*)(int, LPCOMPAREITEMSTRUCT), OnCompareItem)
#define ON_WM_DELETEITEM() \
    _AFX_WM_ENTRY(WM_DELETEITEM, AfxSig_v_i_DEL, void (CWnd::*)(int, LPDELETEITEMSTRUCT), OnDeleteItem)
#define ON_WM_MEASUREITEM_REFLECT() _AFX_WM_ENTRY(WM_MEASUREITEM + WM_REFLECT_BASE, AfxSig_v_MIS, \
    void (CWnd::*)(LPMEASUREITEMSTRUCT), MeasureItem)
#define ON_WM_DRAWITEM_REFLECT() _AFX_WM_ENTRY(WM_DRAWITEM + WM_REFLECT_BASE, AfxSig_v_DIS, \
    void (CWnd::*)(LPDRAWITEMSTRUCT), DrawItem)
#define ON_WM_VKEYTOITEM() \
    _AFX_WM_ENTRY(WM_VKEYTOITEM, AfxSig_i_u_LB_u, int (CWnd::*)(UINT, CListBox*, UINT), OnVKeyToItem)
#define ON_WM_CHARTOITEM() \
    _AFX_WM_ENTRY(WM_CHARTOITEM, AfxSig_i_u_LB_u, int (CWnd::*)(UINT, CListBox*, UINT), OnCharToItem)
#define ON_WM_PARENTNOTIFY() \
    _AFX_WM_ENTRY(WM_PARENTNOTIFY, AfxSig_v_u_l, void (CWnd::*)(UINT, LPARAM), OnParentNotify)
#define ON_WM_SETTINGCHANGE() \
    _AFX_WM_ENTRY(WM_SETTINGCHANGE, AfxSig_v_u_s, void (CWnd::*)(UINT, LPCTSTR), OnSettingChange)
#define ON_WM_SYSCOLORCHANGE() _AFX_WM_ENTRY(WM_SYSCOLORCHANGE, AfxSig_v_v, void (CWnd::*)(), OnSysColorChange)
#define ON_WM_CTLCOLOR() \
    _AFX_WM_ENTRY(WM_CTLCOLOR, AfxSig_hbr_D_W_u, HBRUSH (CWnd::*)(CDC*, CWnd*, UINT), OnCtlColor)
#define ON_WM_CTLCOLOR_REFLECT() \
    _AFX_WM_ENTRY(WM_CTLCOLOR + WM_REFLECT_BASE, AfxSig_hbr_D_u, HBRUSH (CWnd::*)(CDC*, UINT), CtlColor)
