// Counts the window-positioning calls a module makes: while a probe lives, the module's import entries
// for these user32 functions point to counters that pass every call on to the real function.
#pragma once
#include <windows.h>
#include <cstring>

class KxTestImportProbe {
public:
    enum Fn { beginDefer, defer, endDefer, setWindowPos, moveWindow, fnCount };

    explicit KxTestImportProbe(const wchar_t* pszModule)
    {
        static const char* const names[fnCount] = {"BeginDeferWindowPos", "DeferWindowPos", "EndDeferWindowPos",
                                                   "SetWindowPos", "MoveWindow"};
        void* const counters[fnCount] = {reinterpret_cast<void*>(&countBegin), reinterpret_cast<void*>(&countDefer),
                                         reinterpret_cast<void*>(&countEnd), reinterpret_cast<void*>(&countSetPos),
                                         reinterpret_cast<void*>(&countMove)};
        HMODULE hModule = ::GetModuleHandleW(pszModule);
        for (int i = 0; i < fnCount; ++i) {
            counts()[i] = 0;
            m_slots[i] = hModule ? findImport(hModule, names[i]) : nullptr;
            real()[i] = m_slots[i] ? *m_slots[i] : nullptr;
            if (m_slots[i])
                patch(m_slots[i], counters[i]);
        }
    }
    ~KxTestImportProbe()
    {
        for (int i = 0; i < fnCount; ++i)
            if (m_slots[i])
                patch(m_slots[i], real()[i]);
    }
    KxTestImportProbe(const KxTestImportProbe&) = delete;
    KxTestImportProbe& operator=(const KxTestImportProbe&) = delete;

    int count(Fn fn) const { return counts()[fn]; }
    // Whether the module imports the function at all (a probe on nothing proves nothing).
    bool imports(Fn fn) const { return m_slots[fn] != nullptr; }

private:
    static int* counts() { static int n[fnCount]; return n; }
    static void** real() { static void* p[fnCount]; return p; }

    static HDWP WINAPI countBegin(int n)
    {
        ++counts()[beginDefer];
        return reinterpret_cast<decltype(&::BeginDeferWindowPos)>(real()[beginDefer])(n);
    }
    static HDWP WINAPI countDefer(HDWP h, HWND w, HWND after, int x, int y, int cx, int cy, UINT f)
    {
        ++counts()[defer];
        return reinterpret_cast<decltype(&::DeferWindowPos)>(real()[defer])(h, w, after, x, y, cx, cy, f);
    }
    static BOOL WINAPI countEnd(HDWP h)
    {
        ++counts()[endDefer];
        return reinterpret_cast<decltype(&::EndDeferWindowPos)>(real()[endDefer])(h);
    }
    static BOOL WINAPI countSetPos(HWND w, HWND after, int x, int y, int cx, int cy, UINT f)
    {
        ++counts()[setWindowPos];
        return reinterpret_cast<decltype(&::SetWindowPos)>(real()[setWindowPos])(w, after, x, y, cx, cy, f);
    }
    static BOOL WINAPI countMove(HWND w, int x, int y, int cx, int cy, BOOL r)
    {
        ++counts()[moveWindow];
        return reinterpret_cast<decltype(&::MoveWindow)>(real()[moveWindow])(w, x, y, cx, cy, r);
    }

    // The import address table entry of a user32 function in the module.
    static void** findImport(HMODULE hModule, const char* pszName)
    {
        BYTE* base = reinterpret_cast<BYTE*>(hModule);
        auto* dos = reinterpret_cast<IMAGE_DOS_HEADER*>(base);
        auto* nt = reinterpret_cast<IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
        const IMAGE_DATA_DIRECTORY& dir = nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
        if (!dir.VirtualAddress)
            return nullptr;
        for (auto* imp = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(base + dir.VirtualAddress); imp->Name; ++imp) {
            if (::lstrcmpiA(reinterpret_cast<const char*>(base + imp->Name), "user32.dll") != 0)
                continue;
            auto* names = reinterpret_cast<IMAGE_THUNK_DATA*>(base + (imp->OriginalFirstThunk ? imp->OriginalFirstThunk : imp->FirstThunk));
            auto* slots = reinterpret_cast<IMAGE_THUNK_DATA*>(base + imp->FirstThunk);
            for (; names->u1.AddressOfData; ++names, ++slots) {
                if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal))
                    continue;
                auto* byName = reinterpret_cast<IMAGE_IMPORT_BY_NAME*>(base + names->u1.AddressOfData);
                if (std::strcmp(reinterpret_cast<const char*>(byName->Name), pszName) == 0)
                    return reinterpret_cast<void**>(&slots->u1.Function);
            }
        }
        return nullptr;
    }
    static void patch(void** slot, void* value)
    {
        DWORD old;
        ::VirtualProtect(slot, sizeof(void*), PAGE_READWRITE, &old);
        *slot = value;
        ::VirtualProtect(slot, sizeof(void*), old, &old);
    }

    void** m_slots[fnCount];
};
