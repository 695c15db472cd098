// Random attach, detach, destroy and delete sequences over several real windows, checked
// against a model of which hooks each window should have. Hooks act from inside their own
// passes (destroying the window, sending detach messages, deleting or attaching other hooks,
// sending the window another message), the cases that once made the manager read freed memory.
//
// After every operation, for every window: its procedure is its own exactly when the model
// says it has no hook left; a probe message reaches the model's hooks newest first in both
// passes; auto-delete hooks are deleted exactly when the manager detached them, and no other
// hook is ever deleted by the manager.
//
// Header only, without GoogleTest, so the core suite runs a short fixed-seed form and the
// benchmark program a long one.
#pragma once
#include "KxUiWndProcMgr.h"
#include <windows.h>
#include <algorithm>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

class KxWndProcStress {
public:
    struct Report {
        long sequences = 0;
        long operations = 0;
        long actionsInPasses = 0;    // hooks that destroyed, detached, deleted, attached or re-sent
        long windowsDestroyed = 0;
        long hooksDeleted = 0;       // by the manager (auto-delete) or by their owner
        long checks = 0;
        long failures = 0;
        std::string firstFailure;

        std::string Summary() const
        {
            char text[320];
            std::snprintf(text, sizeof text,
                          "%ld sequences, %ld operations, %ld actions inside passes, %ld windows destroyed, "
                          "%ld hooks deleted, %ld checks, %ld failures",
                          sequences, operations, actionsInPasses, windowsDestroyed, hooksDeleted, checks, failures);
            return text;
        }
    };

    // nWindows windows and nHooks hooks per sequence, nOps random operations each.
    static Report Run(unsigned seed, int nSequences, int nOps = 8, int nWindows = 3, int nHooks = 6)
    {
        KxWndProcStress stress(seed);
        for (int s = 0; s < nSequences && stress.m_report.failures == 0; ++s)
            stress.Sequence(nOps, nWindows, nHooks);
        stress.DestroyWindows();
        return stress.m_report;
    }

private:
    enum Action { actNone, actDestroy, actDetachAll, actDetachOne, actDeleteHook, actAttach, actResend, actCount };
    enum : UINT { kProbe = WM_APP + 40, kResent = WM_APP + 41 };
    enum : unsigned { kAlive = 0xA11CE, kDead = 0xDEAD };

    struct Hook;
    struct Window {
        HWND hWnd = nullptr;
        std::vector<Hook*> hooks;   // the model: oldest first
    };

    struct Hook : KxUiWndProc {
        Hook(KxWndProcStress& owner, int id, bool autoDelete) : m_owner(owner), m_id(id)
        {
            m_nAutoDelete = autoDelete ? 1 : 0;
        }
        ~Hook() override
        {
            if (m_magic != kAlive)
                m_owner.Fail("hook " + std::to_string(m_id) + " deleted twice");
            m_magic = kDead;
            m_owner.Destroyed(this);
        }
        int windowProc(HWND hWnd, UINT message, WPARAM, LPARAM, LRESULT& result) override
        {
            return Pass(hWnd, message, result, true);
        }
        void windowProcCallBack(HWND hWnd, UINT message, WPARAM, LPARAM, LRESULT& result) override
        {
            Pass(hWnd, message, result, false);
        }
        int Pass(HWND hWnd, UINT message, LRESULT& result, bool before)
        {
            if (m_magic != kAlive) {
                m_owner.Fail("hook " + std::to_string(m_id) + " called after it was deleted");
                return 0;
            }
            if (message == kProbe && m_owner.m_bVerifying)
                m_owner.m_log.push_back(m_id * 2 + (before ? 0 : 1));
            if ((message == kProbe || message == kResent) && m_action != actNone && m_bActBefore == before) {
                const Action action = m_action;
                m_action = actNone;
                ++m_running;
                m_owner.Act(*this, hWnd, action);
                --m_running;
                // Still here: an auto-delete hook detached by its own action lives until its
                // pass has returned.
                if (m_magic != kAlive)
                    m_owner.Fail("hook " + std::to_string(m_id) + " deleted under its own pass");
            }
            (void)result;
            return 0;
        }

        KxWndProcStress& m_owner;
        const int m_id;
        unsigned m_magic = kAlive;
        Action m_action = actNone;
        bool m_bActBefore = true;
        int m_running = 0;     // actions of this hook on the stack: it must not be deleted by them
        bool m_bDoomed = false;   // the model says the manager has deleted or will delete it
    };

    explicit KxWndProcStress(unsigned seed) : m_random(seed) {}

    static LRESULT CALLBACK OwnProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam)
    {
        if (message == kProbe)
            return 42;
        return ::DefWindowProcW(hWnd, message, wParam, lParam);
    }

    static HWND NewWindow()
    {
        static bool registered = false;
        if (!registered) {
            WNDCLASSW wc = {};
            wc.lpfnWndProc = &OwnProc;
            wc.hInstance = ::GetModuleHandleW(nullptr);
            wc.lpszClassName = L"KxWndProcStress";
            ::RegisterClassW(&wc);
            registered = true;
        }
        return ::CreateWindowExW(0, L"KxWndProcStress", L"", WS_OVERLAPPED, 0, 0, 50, 50, nullptr, nullptr,
                                 ::GetModuleHandleW(nullptr), nullptr);
    }

    int Pick(int n) { return n > 0 ? (int)(m_random() % (unsigned)n) : 0; }

    void Fail(const std::string& what)
    {
        if (m_report.failures++ == 0)
            m_report.firstFailure = "sequence " + std::to_string(m_report.sequences) + ", operation " +
                                    std::to_string(m_nOp) + ": " + what;
    }

    // --- the model ------------------------------------------------------------------------------

    Window* WindowOf(HWND hWnd)
    {
        for (Window& w : m_windows)
            if (w.hWnd == hWnd)
                return &w;
        return nullptr;
    }

    static bool Holds(const Window& w, const Hook* h)
    {
        return std::find(w.hooks.begin(), w.hooks.end(), h) != w.hooks.end();
    }

    // Hooks leaving a window in the model: the manager deletes those with the flag.
    void Leave(Window& w, std::vector<Hook*> leaving)
    {
        for (Hook* h : leaving) {
            w.hooks.erase(std::remove(w.hooks.begin(), w.hooks.end(), h), w.hooks.end());
            if (h->m_nAutoDelete == 1 && !h->m_bDoomed) {
                h->m_bDoomed = true;
                Forget(h);
            }
        }
    }

    // A hook that is being deleted leaves every window.
    void Forget(Hook* h)
    {
        for (Window& w : m_windows)
            w.hooks.erase(std::remove(w.hooks.begin(), w.hooks.end(), h), w.hooks.end());
    }

    void Destroyed(Hook* h)
    {
        ++m_report.hooksDeleted;
        if (!h->m_bDoomed)
            Fail("hook " + std::to_string(h->m_id) + " deleted though nobody asked for it");
        for (Hook*& slot : m_hooks)
            if (slot == h)
                slot = nullptr;
    }

    void ModelDetachAll(Window& w) { Leave(w, w.hooks); }

    void ModelDetachOne(Window& w, Hook* h)
    {
        if (w.hooks.size() == 1)
            ModelDetachAll(w);
        else if (Holds(w, h))
            Leave(w, {h});
    }

    bool ModelAttach(Window& w, Hook* h)
    {
        if (!w.hWnd || Holds(w, h))
            return false;
        w.hooks.push_back(h);
        return true;
    }

    // --- operations -----------------------------------------------------------------------------

    Hook* RandomHook()
    {
        std::vector<Hook*> live;
        for (Hook* h : m_hooks)
            if (h && !h->m_bDoomed)
                live.push_back(h);
        return live.empty() ? nullptr : live[(size_t)Pick((int)live.size())];
    }

    // An auto-delete hook belongs to one window at a time, so that the manager deleting it
    // leaves no other window holding it.
    bool MayAttach(const Window& w, const Hook* h) const
    {
        if (h->m_nAutoDelete != 1)
            return true;
        for (const Window& other : m_windows)
            if (&other != &w && Holds(other, h))
                return false;
        return true;
    }

    void DoAttach(Window& w, Hook* h)
    {
        if (!h || !MayAttach(w, h))
            return;
        const bool expected = ModelAttach(w, h);
        if (kxUiWndProcMgr().attach(w.hWnd, h) != expected)
            Fail("attach answered other than expected");
    }

    void DoDeleteHook(Hook* h)
    {
        h->m_bDoomed = true;
        Forget(h);
        delete h;
    }

    void Act(Hook& self, HWND hWnd, Action action)
    {
        Window* w = WindowOf(hWnd);
        if (!w)
            return;
        ++m_report.actionsInPasses;
        switch (action) {
        case actDestroy:
            ModelDetachAll(*w);
            w->hWnd = nullptr;
            ++m_report.windowsDestroyed;
            ::DestroyWindow(hWnd);
            break;
        case actDetachAll:
            ModelDetachAll(*w);
            kxUiWndProcMgr().sendDetachMessage(hWnd, nullptr);
            break;
        case actDetachOne: {
            Hook* target = RandomHook();
            if (!target)
                break;
            // Also the acting hook itself, or one acting further up the stack: the manager
            // keeps an auto-delete hook alive until the pass it runs in has returned.
            ModelDetachOne(*w, target);
            kxUiWndProcMgr().sendDetachMessage(hWnd, target);
            break;
        }
        case actDeleteHook: {
            Hook* target = RandomHook();
            if (target && target != &self && target->m_running == 0)
                DoDeleteHook(target);
            break;
        }
        case actAttach:
            DoAttach(*w, RandomHook());
            break;
        case actResend:
            ::SendMessageW(hWnd, kResent, 0, 0);
            if (::IsWindow(hWnd))
                ::SendMessageW(hWnd, kProbe, 0, 0);
            break;
        default:
            break;
        }
    }

    void Operation()
    {
        Window& w = m_windows[(size_t)Pick((int)m_windows.size())];
        if (!w.hWnd) {
            w.hWnd = NewWindow();
            w.hooks.clear();
            if (!w.hWnd)
                Fail("no window");
            return;
        }
        for (Hook*& h : m_hooks) {
            if (!h)
                h = new Hook(*this, m_nextId++, Pick(2) == 0);
        }
        switch (Pick(11)) {
        case 0:
        case 1:
        case 2:
            DoAttach(w, RandomHook());
            break;
        case 3:
            if (Hook* h = RandomHook()) {
                ModelDetachOne(w, h);
                kxUiWndProcMgr().sendDetachMessage(w.hWnd, h);
            }
            break;
        case 4:
            ModelDetachAll(w);
            kxUiWndProcMgr().sendDetachMessage(w.hWnd, nullptr);
            break;
        case 5:
            ModelDetachAll(w);
            ++m_report.windowsDestroyed;
            ::DestroyWindow(w.hWnd);
            w.hWnd = nullptr;
            break;
        case 6:
            if (Hook* h = RandomHook())
                DoDeleteHook(h);
            break;
        default: {
            // Some of the window's hooks act from inside a pass of a probe message; one more
            // hook first, so that most probes meet several.
            DoAttach(w, RandomHook());
            for (Hook* h : w.hooks) {
                if (Pick(2) == 0) {
                    h->m_action = (Action)(1 + Pick(actCount - 1));
                    h->m_bActBefore = Pick(2) == 0;
                }
            }
            ::SendMessageW(w.hWnd, kProbe, 0, 0);
            for (Hook* h : m_hooks)
                if (h)
                    h->m_action = actNone;
            break;
        }
        }
    }

    // The manager against the model, for every window.
    void Check()
    {
        for (Window& w : m_windows) {
            if (!w.hWnd)
                continue;
            ++m_report.checks;
            if (!::IsWindow(w.hWnd)) {
                Fail("a window died unexpectedly");
                continue;
            }
            const bool own = ::GetWindowLongPtrW(w.hWnd, GWLP_WNDPROC) == reinterpret_cast<LONG_PTR>(&OwnProc);
            if (own != w.hooks.empty()) {
                Fail(w.hooks.empty() ? "the procedure was not restored when the last hook went"
                                     : "the procedure was restored while hooks remain");
                continue;
            }
            std::vector<int> expected;
            for (auto it = w.hooks.rbegin(); it != w.hooks.rend(); ++it)
                expected.push_back((*it)->m_id * 2);
            for (auto it = w.hooks.rbegin(); it != w.hooks.rend(); ++it)
                expected.push_back((*it)->m_id * 2 + 1);
            m_log.clear();
            m_bVerifying = true;
            const LRESULT answer = ::SendMessageW(w.hWnd, kProbe, 0, 0);
            m_bVerifying = false;
            if (answer != 42)
                Fail("the window's answer was lost");
            if (m_log != expected)
                Fail("the hooks called are not the model's, newest first");
        }
        for (Hook* h : m_hooks)
            if (h && h->m_bDoomed)
                Fail("hook " + std::to_string(h->m_id) + " was detached with auto-delete but not deleted");
    }

    // One sequence over the windows left by the previous one (windows destroyed by it are made
    // again): creating windows is the slow part of a run, not the manager.
    void Sequence(int nOps, int nWindows, int nHooks)
    {
        m_windows.resize((size_t)nWindows);
        for (Window& w : m_windows) {
            if (!w.hWnd)
                w.hWnd = NewWindow();
        }
        m_hooks.assign((size_t)nHooks, nullptr);
        for (m_nOp = 0; m_nOp < nOps && m_report.failures == 0; ++m_nOp) {
            Operation();
            ++m_report.operations;
            Check();
        }
        // Clean up: every hook leaves its window by the detach message (the auto-delete ones
        // are deleted by the manager), then the others are deleted by their owner.
        for (Window& w : m_windows) {
            if (w.hWnd && !w.hooks.empty()) {
                ModelDetachAll(w);
                kxUiWndProcMgr().sendDetachMessage(w.hWnd, nullptr);
            }
        }
        for (Hook* h : m_hooks)
            if (h)
                DoDeleteHook(h);
        ++m_report.sequences;
    }

    void DestroyWindows()
    {
        for (Window& w : m_windows) {
            if (w.hWnd)
                ::DestroyWindow(w.hWnd);
        }
        m_windows.clear();
    }

    std::mt19937 m_random;
    Report m_report;
    std::vector<Window> m_windows;
    std::vector<Hook*> m_hooks;
    std::vector<int> m_log;
    bool m_bVerifying = false;
    int m_nextId = 1;
    int m_nOp = 0;
};
