#include "KxMsgRecorder.h"
#include <algorithm>
#include <cstdio>
#include <map>
#include <sstream>

struct KxMsgRecorder::Watched {
    KxMsgRecorder* owner;
    HWND hWnd;
    WNDPROC previous;
    std::string who;
    std::vector<UINT> only;
};

namespace {

std::map<HWND, KxMsgRecorder::Watched*>& WatchedWindows()
{
    static std::map<HWND, KxMsgRecorder::Watched*> windows;
    return windows;
}

KxMsgRecorder* g_hookOwner = nullptr;

bool Wanted(const std::vector<UINT>& only, UINT message)
{
    return only.empty() || std::find(only.begin(), only.end(), message) != only.end();
}

}  // namespace

LRESULT CALLBACK KxRecorderWndProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    auto it = WatchedWindows().find(hWnd);
    if (it == WatchedWindows().end())
        return ::DefWindowProcW(hWnd, message, wParam, lParam);
    KxMsgRecorder::Watched* w = it->second;
    if (Wanted(w->only, message))
        w->owner->Record(w->who.c_str(), hWnd, message, wParam, lParam);
    const WNDPROC previous = w->previous;
    if (message == WM_NCDESTROY)
        w->owner->Unwatch(hWnd);
    return ::CallWindowProcW(previous, hWnd, message, wParam, lParam);
}

LRESULT CALLBACK KxRecorderHookProc(int code, WPARAM wParam, LPARAM lParam)
{
    if (code == HC_ACTION && g_hookOwner != nullptr) {
        const auto* cwp = reinterpret_cast<const CWPSTRUCT*>(lParam);
        KxMsgRecorder* r = g_hookOwner;
        bool match = Wanted(r->m_hookOnly, cwp->message);
        if (match && !r->m_hookClass.empty()) {
            wchar_t cls[128] = {};
            ::GetClassNameW(cwp->hwnd, cls, 128);
            match = ::lstrcmpiW(cls, r->m_hookClass.c_str()) == 0;
        }
        if (match)
            r->Record(r->m_hookWho.c_str(), cwp->hwnd, cwp->message, cwp->wParam, cwp->lParam);
    }
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

KxMsg KxMsg::Notify(const char* w, int code)
{
    KxMsg m(w, WM_NOTIFY);
    m.code = code;
    m.flags = CheckCode;
    return m;
}

KxMsg KxMsg::Command(const char* w, int code)
{
    KxMsg m(w, WM_COMMAND);
    m.code = code;
    m.flags = CheckCode;
    return m;
}

KxMsg KxMsg::Optional(const char* w, UINT msg)
{
    KxMsg m(w, msg);
    m.flags = KxMsg::MayBeMissing;
    return m;
}

std::string KxMsg::ToString() const
{
    std::ostringstream s;
    s << who << ": " << KxMsgRecorder::MessageName(message);
    if (message == WM_NOTIFY || message == WM_COMMAND)
        s << " code=" << code;
    if (flags & CheckWParam)
        s << " w=" << static_cast<unsigned long long>(wParam);
    if (flags & CheckLParam)
        s << " l=" << static_cast<long long>(lParam);
    if (flags & MayBeMissing)
        s << " (optional)";
    return s.str();
}

KxMsgRecorder::KxMsgRecorder() = default;

KxMsgRecorder::~KxMsgRecorder()
{
    Unhook();
    while (!m_watched.empty())
        Unwatch(m_watched.back()->hWnd);
}

void KxMsgRecorder::Watch(HWND hWnd, const char* who, std::initializer_list<UINT> only)
{
    if (!::IsWindow(hWnd) || WatchedWindows().count(hWnd) != 0)
        return;
    auto* w = new Watched{this, hWnd, nullptr, who, std::vector<UINT>(only)};
    WatchedWindows()[hWnd] = w;
    m_watched.push_back(w);
    w->previous = reinterpret_cast<WNDPROC>(
        ::SetWindowLongPtrW(hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(KxRecorderWndProc)));
}

void KxMsgRecorder::Unwatch(HWND hWnd)
{
    auto it = std::find_if(m_watched.begin(), m_watched.end(), [hWnd](Watched* w) { return w->hWnd == hWnd; });
    if (it == m_watched.end())
        return;
    Watched* w = *it;
    m_watched.erase(it);
    WatchedWindows().erase(hWnd);
    // Give the procedure back only if nobody subclassed the window after us.
    if (::IsWindow(hWnd) &&
        reinterpret_cast<WNDPROC>(::GetWindowLongPtrW(hWnd, GWLP_WNDPROC)) == KxRecorderWndProc)
        ::SetWindowLongPtrW(hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(w->previous));
    delete w;
}

void KxMsgRecorder::HookThread(const char* who, const wchar_t* className, std::initializer_list<UINT> only)
{
    Unhook();
    m_hookWho = who;
    m_hookClass = className != nullptr ? className : L"";
    m_hookOnly.assign(only.begin(), only.end());
    g_hookOwner = this;
    m_hook = ::SetWindowsHookExW(WH_CALLWNDPROC, KxRecorderHookProc, nullptr, ::GetCurrentThreadId());
}

void KxMsgRecorder::Unhook()
{
    if (m_hook != nullptr) {
        ::UnhookWindowsHookEx(m_hook);
        m_hook = nullptr;
    }
    if (g_hookOwner == this)
        g_hookOwner = nullptr;
}

void KxMsgRecorder::Add(const char* who, UINT message, WPARAM wParam, LPARAM lParam, int code)
{
    KxMsg m(who, message);
    m.wParam = wParam;
    m.lParam = lParam;
    m.code = code;
    m_log.push_back(m);
}

void KxMsgRecorder::Record(const char* who, HWND, UINT message, WPARAM wParam, LPARAM lParam)
{
    int code = 0;
    if (message == WM_NOTIFY && lParam != 0) {
        const auto* nmhdr = reinterpret_cast<const NMHDR*>(lParam);
        code = static_cast<int>(nmhdr->code);
        wParam = nmhdr->idFrom;
    } else if (message == WM_COMMAND) {
        code = HIWORD(wParam);
    }
    Add(who, message, wParam, lParam, code);
}

testing::AssertionResult KxMsgRecorder::Matches(const std::vector<KxMsg>& expected) const
{
    auto same = [](const KxMsg& e, const KxMsg& a) {
        return e.who == a.who && e.message == a.message && (!(e.flags & KxMsg::CheckWParam) || e.wParam == a.wParam) &&
               (!(e.flags & KxMsg::CheckLParam) || e.lParam == a.lParam) &&
               (!(e.flags & KxMsg::CheckCode) || e.code == a.code);
    };
    size_t i = 0, j = 0;
    size_t failAt = SIZE_MAX;
    while (i < expected.size() || j < m_log.size()) {
        if (i < expected.size() && j < m_log.size() && same(expected[i], m_log[j])) {
            ++i;
            ++j;
        } else if (i < expected.size() && (expected[i].flags & KxMsg::MayBeMissing)) {
            ++i;
        } else {
            failAt = j;
            break;
        }
    }
    if (failAt == SIZE_MAX)
        return testing::AssertionSuccess();
    // Side by side: expected on the left, recorded on the right.
    std::ostringstream s;
    s << "message sequence differs at recorded entry " << failAt << ":\n";
    const size_t rows = std::max(expected.size(), m_log.size());
    char line[256];
    std::snprintf(line, sizeof line, "   %-4s %-44s %s\n", "#", "expected", "recorded");
    s << line;
    for (size_t r = 0; r < rows; ++r) {
        const std::string e = r < expected.size() ? expected[r].ToString() : "";
        const std::string a = r < m_log.size() ? m_log[r].ToString() : "";
        std::snprintf(line, sizeof line, "%s %-4zu %-44s %s\n", r == failAt ? ">>" : "  ", r, e.c_str(), a.c_str());
        s << line;
    }
    return testing::AssertionFailure() << s.str();
}

std::string KxMsgRecorder::MessageName(UINT message)
{
    static const std::map<UINT, const char*> names = {
#define KX_NAME(m) {m, #m}
        KX_NAME(WM_NULL), KX_NAME(WM_CREATE), KX_NAME(WM_DESTROY), KX_NAME(WM_MOVE), KX_NAME(WM_SIZE),
        KX_NAME(WM_ACTIVATE), KX_NAME(WM_SETFOCUS), KX_NAME(WM_KILLFOCUS), KX_NAME(WM_ENABLE),
        KX_NAME(WM_SETREDRAW), KX_NAME(WM_SETTEXT), KX_NAME(WM_GETTEXT), KX_NAME(WM_GETTEXTLENGTH),
        KX_NAME(WM_PAINT), KX_NAME(WM_CLOSE), KX_NAME(WM_QUIT), KX_NAME(WM_ERASEBKGND),
        KX_NAME(WM_SYSCOLORCHANGE), KX_NAME(WM_SHOWWINDOW), KX_NAME(WM_SETTINGCHANGE), KX_NAME(WM_ACTIVATEAPP),
        KX_NAME(WM_CANCELMODE), KX_NAME(WM_SETCURSOR), KX_NAME(WM_MOUSEACTIVATE), KX_NAME(WM_GETMINMAXINFO),
        KX_NAME(WM_DRAWITEM), KX_NAME(WM_MEASUREITEM), KX_NAME(WM_DELETEITEM), KX_NAME(WM_VKEYTOITEM),
        KX_NAME(WM_CHARTOITEM), KX_NAME(WM_SETFONT), KX_NAME(WM_GETFONT), KX_NAME(WM_COMPAREITEM),
        KX_NAME(WM_WINDOWPOSCHANGING), KX_NAME(WM_WINDOWPOSCHANGED), KX_NAME(WM_NOTIFY),
        KX_NAME(WM_CONTEXTMENU), KX_NAME(WM_STYLECHANGING), KX_NAME(WM_STYLECHANGED), KX_NAME(WM_GETICON),
        KX_NAME(WM_SETICON), KX_NAME(WM_NCCREATE), KX_NAME(WM_NCDESTROY), KX_NAME(WM_NCCALCSIZE),
        KX_NAME(WM_NCHITTEST), KX_NAME(WM_NCPAINT), KX_NAME(WM_NCACTIVATE), KX_NAME(WM_GETDLGCODE),
        KX_NAME(WM_NCMOUSEMOVE), KX_NAME(WM_KEYDOWN), KX_NAME(WM_KEYUP), KX_NAME(WM_CHAR),
        KX_NAME(WM_DEADCHAR), KX_NAME(WM_SYSKEYDOWN), KX_NAME(WM_SYSKEYUP), KX_NAME(WM_SYSCHAR),
        KX_NAME(WM_INITDIALOG), KX_NAME(WM_COMMAND), KX_NAME(WM_SYSCOMMAND), KX_NAME(WM_TIMER),
        KX_NAME(WM_HSCROLL), KX_NAME(WM_VSCROLL), KX_NAME(WM_INITMENU), KX_NAME(WM_INITMENUPOPUP),
        KX_NAME(WM_MENUSELECT), KX_NAME(WM_MENUCHAR), KX_NAME(WM_ENTERIDLE), KX_NAME(WM_CTLCOLORMSGBOX),
        KX_NAME(WM_CTLCOLOREDIT), KX_NAME(WM_CTLCOLORLISTBOX), KX_NAME(WM_CTLCOLORBTN), KX_NAME(WM_CTLCOLORDLG),
        KX_NAME(WM_CTLCOLORSCROLLBAR), KX_NAME(WM_CTLCOLORSTATIC), KX_NAME(WM_MOUSEMOVE),
        KX_NAME(WM_LBUTTONDOWN), KX_NAME(WM_LBUTTONUP), KX_NAME(WM_LBUTTONDBLCLK), KX_NAME(WM_RBUTTONDOWN),
        KX_NAME(WM_RBUTTONUP), KX_NAME(WM_RBUTTONDBLCLK), KX_NAME(WM_MBUTTONDOWN), KX_NAME(WM_MBUTTONUP),
        KX_NAME(WM_MOUSEWHEEL), KX_NAME(WM_PARENTNOTIFY), KX_NAME(WM_ENTERMENULOOP), KX_NAME(WM_EXITMENULOOP),
        KX_NAME(WM_SIZING), KX_NAME(WM_CAPTURECHANGED), KX_NAME(WM_MOVING), KX_NAME(WM_MOUSELEAVE),
        KX_NAME(WM_PRINT), KX_NAME(WM_PRINTCLIENT), KX_NAME(WM_NEXTDLGCTL), KX_NAME(WM_ENTERSIZEMOVE),
        KX_NAME(WM_EXITSIZEMOVE), KX_NAME(WM_IME_SETCONTEXT), KX_NAME(WM_IME_NOTIFY),
#undef KX_NAME
    };
    auto it = names.find(message);
    if (it != names.end())
        return it->second;
    char buf[32];
    if (message >= 0xBC00 && message < 0xC000 && names.count(message - 0xBC00))
        return std::string("reflected ") + names.at(message - 0xBC00);
    if (message >= WM_USER && message < WM_APP)
        std::snprintf(buf, sizeof buf, "WM_USER+%u", message - WM_USER);
    else if (message >= WM_APP && message < 0xC000)
        std::snprintf(buf, sizeof buf, "WM_APP+%u", message - WM_APP);
    else
        std::snprintf(buf, sizeof buf, "0x%04X", message);
    return buf;
}
