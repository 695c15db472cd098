// Drives a modal loop (a dialog's DoModal, a system dialog) from inside, without blocking a test: a
// thread timer polls until the modal window is ready, runs the test's script once, and if the loop is
// still running after a time limit, calls a rescue that must end it (and the test fails).
//
//     KxModalDriver drive;
//     INT_PTR r = drive.Run([&] { return sheet.DoModal(); },
//                           [&] { return sheet.GetSafeHwnd() != nullptr; },
//                           [&] { sheet.PressButton(KxUiOptionSheet::btnOK); },
//                           [&] { sheet.EndDialog(-2); });
//     EXPECT_TRUE(drive.ScriptRan());
#pragma once
#include <windows.h>
#include <functional>

class KxModalDriver {
public:
    template <class RunFn>
    auto Run(RunFn run, std::function<bool()> ready, std::function<void()> script, std::function<void()> rescue,
             DWORD dwLimitMs = 8000) -> decltype(run())
    {
        m_ready = std::move(ready);
        m_script = std::move(script);
        m_rescue = std::move(rescue);
        m_bRan = m_bRescued = false;
        m_dwStart = ::GetTickCount();
        m_dwLimit = dwLimitMs;
        Current() = this;
        const UINT_PTR timer = ::SetTimer(nullptr, 0, 20, &KxModalDriver::OnTimer);
        auto result = run();
        ::KillTimer(nullptr, timer);
        Current() = nullptr;
        return result;
    }
    bool ScriptRan() const { return m_bRan; }
    bool Rescued() const { return m_bRescued; }

private:
    static KxModalDriver*& Current()
    {
        static KxModalDriver* s_current = nullptr;
        return s_current;
    }
    static void CALLBACK OnTimer(HWND, UINT, UINT_PTR, DWORD)
    {
        KxModalDriver* self = Current();
        if (self == nullptr || self->m_bBusy)
            return;
        self->m_bBusy = true;
        if (!self->m_bRan && self->m_ready()) {
            self->m_bRan = true;
            self->m_script();
        } else if (!self->m_bRescued && ::GetTickCount() - self->m_dwStart > self->m_dwLimit) {
            self->m_bRescued = true;
            self->m_rescue();
        }
        self->m_bBusy = false;
    }

    std::function<bool()> m_ready;
    std::function<void()> m_script;
    std::function<void()> m_rescue;
    bool m_bRan = false;
    bool m_bRescued = false;
    bool m_bBusy = false;
    DWORD m_dwStart = 0;
    DWORD m_dwLimit = 0;
};
