// Records the messages and notifications that windows receive and compares them with an
// expected sequence, in order. A failure prints both sequences side by side.
//
//     KxMsgRecorder rec;
//     rec.Watch(parent, "parent", {WM_NOTIFY, WM_COMMAND});  // notifications it gets
//     rec.Watch(list, "list", {WM_SETFOCUS, WM_KILLFOCUS});
//     ... act ...
//     EXPECT_TRUE(rec.Matches({
//         {"list", WM_SETFOCUS},
//         KxMsg::Notify("parent", LVN_ITEMCHANGED),
//         KxMsg::Optional("parent", WM_COMMAND),
//     }));
//
// Watch subclasses the window (messages are recorded before its procedure runs) and
// gives the procedure back on Unwatch, destruction of the window or of the recorder.
// HookThread records messages sent to any window of the thread (WH_CALLWNDPROC), also
// those a window gets while it is being created.
#pragma once
#include <windows.h>
#include <gtest/gtest.h>
#include <initializer_list>
#include <string>
#include <vector>

struct KxMsg {
    enum Flags : unsigned {
        CheckWParam = 1,
        CheckLParam = 2,
        CheckCode = 4,  // WM_NOTIFY: NMHDR code; WM_COMMAND: notification code
        MayBeMissing = 8,  // expected entry that may be absent
    };
    std::string who;
    UINT message = 0;
    WPARAM wParam = 0;  // WM_NOTIFY: the control id
    LPARAM lParam = 0;
    int code = 0;
    unsigned flags = 0;

    KxMsg() = default;
    KxMsg(const char* w, UINT m) : who(w), message(m) {}
    KxMsg(const char* w, UINT m, WPARAM wp) : who(w), message(m), wParam(wp), flags(CheckWParam) {}
    KxMsg(const char* w, UINT m, WPARAM wp, LPARAM lp)
        : who(w), message(m), wParam(wp), lParam(lp), flags(CheckWParam | CheckLParam)
    {
    }
    // A WM_NOTIFY with the given code.
    static KxMsg Notify(const char* w, int code);
    // A WM_COMMAND from a control with the given notification code.
    static KxMsg Command(const char* w, int code);
    static KxMsg Optional(const char* w, UINT m);
    std::string ToString() const;
};

class KxMsgRecorder {
public:
    KxMsgRecorder();
    ~KxMsgRecorder();
    KxMsgRecorder(const KxMsgRecorder&) = delete;
    KxMsgRecorder& operator=(const KxMsgRecorder&) = delete;

    // Records the messages hWnd gets under the label who; only those listed when a list
    // is given.
    void Watch(HWND hWnd, const char* who, std::initializer_list<UINT> only = {});
    void Unwatch(HWND hWnd);
    // Records messages sent to every window of this thread whose class name is
    // className (all windows when NULL); one hook per thread at a time.
    void HookThread(const char* who, const wchar_t* className = nullptr, std::initializer_list<UINT> only = {});
    void Unhook();
    // Adds an entry by hand (from a handler under test).
    void Add(const char* who, UINT message, WPARAM wParam = 0, LPARAM lParam = 0, int code = 0);
    void Clear() { m_log.clear(); }
    const std::vector<KxMsg>& Log() const { return m_log; }

    // The log equals expected: same entries in the same order; an Optional entry may be
    // missing. Fields compared: who, message, and what each expected entry's flags ask.
    testing::AssertionResult Matches(const std::vector<KxMsg>& expected) const;

    // Name of a message for reports ("WM_SIZE", "WM_USER+5", "0xC123").
    static std::string MessageName(UINT message);

    // Internal: called by the window and hook procedures.
    void Record(const char* who, HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam);

    struct Watched;  // a subclassed window (internal)

private:
    std::vector<Watched*> m_watched;
    std::vector<KxMsg> m_log;
    std::string m_hookWho;
    std::wstring m_hookClass;
    std::vector<UINT> m_hookOnly;
    HHOOK m_hook = nullptr;
    friend LRESULT CALLBACK KxRecorderHookProc(int, WPARAM, LPARAM);
    friend LRESULT CALLBACK KxRecorderWndProc(HWND, UINT, WPARAM, LPARAM);
};
